// Runs glyphmoor-cli in-process with its output captured.
#pragma once

#include "cli/Cli.h"
#include "foundation/DefaultMachine.h"
#include "foundation/Machine.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace glyphmoor::test {

struct CliRun {
    int status;
    std::string out;
    std::string err;
};

inline CliRun RunCliCaptured(const std::vector<std::string>& args) {
    std::ostringstream out;
    std::ostringstream err;
    const int status = RunCli(args, out, err);
    return {status, out.str(), err.str()};
}

// The same on a machine folder (--machine DIR before the arguments).
inline CliRun Cli(const TempMachine& machine, std::vector<std::string> args) {
    args.insert(args.begin(), {"--machine", machine.Dir().string()});
    return RunCliCaptured(args);
}

// The lines of a command's output, each split at its tabs.
inline std::vector<std::vector<std::string>> TabFields(const std::string& text) {
    std::vector<std::vector<std::string>> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        std::vector<std::string> fields;
        std::size_t start = 0;
        for (auto tab = line.find('\t'); tab != std::string::npos; tab = line.find('\t', start)) {
            fields.push_back(line.substr(start, tab - start));
            start = tab + 1;
        }
        fields.push_back(line.substr(start));
        lines.push_back(fields);
    }
    return lines;
}

// A fresh default machine in a folder of the test's own, and the command line
// run on it.
class DefaultMachineCli : public ::testing::Test {
protected:
    DefaultMachineCli() {
        EXPECT_TRUE(EnsureSeededMachine(Dir(), SeedDirs()).ok());
        auto machine = OpenMachineFolder(Dir());
        EXPECT_TRUE(machine.ok());
        m_machine = std::move(*machine);
    }
    [[nodiscard]] std::filesystem::path Dir() const { return m_home.Path() / "machine"; }
    [[nodiscard]] CliRun Run(std::vector<std::string> args) const {
        args.insert(args.begin(), {"--machine", Dir().string()});
        return RunCliCaptured(args);
    }
    [[nodiscard]] std::filesystem::path Host(std::string_view windowsPath) const {
        return m_machine->Env().HostPath(windowsPath);
    }
    [[nodiscard]] std::string Read(std::string_view windowsPath) const {
        return FileBytes(Host(windowsPath)).value_or("");
    }

    TempDir m_home;
    std::unique_ptr<Machine> m_machine;
};

}  // namespace glyphmoor::test
