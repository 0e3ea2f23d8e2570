// Runs glyphmoor-cli in-process with its output captured.
#pragma once

#include "cli/Cli.h"
#include "support/TempMachine.h"

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

}  // namespace glyphmoor::test
