// The default machine, made afresh in a folder of the test's own, with its
// catalogue built as the Icons & Cursors page has it.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/DefaultMachine.h"
#include "foundation/Machine.h"
#include "icons/IconCatalogue.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <string>

namespace glyphmoor::test {

// Every file and folder under a folder, by its relative path, with a file's
// contents or "<folder>".
inline std::map<std::string, std::string> Tree(const std::filesystem::path& root) {
    std::map<std::string, std::string> tree;
    std::error_code ec;
    for (const auto& e : std::filesystem::recursive_directory_iterator(root, ec)) {
        std::ifstream in(e.path(), std::ios::binary);
        tree[std::filesystem::relative(e.path(), root).generic_string()] =
            e.is_directory() ? "<folder>" : std::string(std::istreambuf_iterator<char>(in), {});
    }
    return tree;
}

class ThemeMachine : public ::testing::Test {
protected:
    ThemeMachine() : m_machine(OpenSeeded(m_home)), m_app(InitEnvironment(m_machine->Env())) {
        m_catalogue.emplace(m_machine->Registry(), m_app);
        m_catalogue->DetectShellIcons();
        m_catalogue->BuildCursorCatalogue();
    }

    static std::unique_ptr<Machine> OpenSeeded(const TempDir& home) {
        const auto dir = home.Path() / "machine";
        EXPECT_TRUE(EnsureSeededMachine(dir, SeedDirs()).ok());
        auto machine = OpenMachineFolder(dir);
        if (!machine.ok()) {
            ADD_FAILURE() << machine.reason();
            std::abort();
        }
        return std::move(*machine);
    }

    IconCatalogue& Catalogue() { return *m_catalogue; }
    SystemIconEntry& Entry(int group, std::string_view key) {
        SystemIconEntry* entry = Catalogue().Group(group).Find(key);
        if (entry == nullptr) {
            ADD_FAILURE() << "no entry " << key;
            std::abort();
        }
        return *entry;
    }
    std::filesystem::path Host(std::string_view windowsPath) const {
        return m_machine->Env().HostPath(windowsPath);
    }
    void WriteFile(std::string_view windowsPath, std::string_view text) const {
        const auto host = Host(windowsPath);
        std::filesystem::create_directories(host.parent_path());
        std::ofstream(host, std::ios::binary) << text;
    }

    TempDir m_home;
    std::unique_ptr<Machine> m_machine;
    AppEnvironment m_app;
    std::optional<IconCatalogue> m_catalogue;
    AppState m_state;
};

}  // namespace glyphmoor::test
