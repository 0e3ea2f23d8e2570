// folder-icon show, set and restore on the default machine: the files and
// attributes after each command, and what is refused with nothing made.
#include "CliRun.h"
#include "foundation/DefaultMachine.h"
#include "foundation/HostFiles.h"
#include "foundation/Machine.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;

const std::string kShell32 = "C:\\WINDOWS\\SYSTEM\\shell32.dll";

class FolderIconCommands : public ::testing::Test {
protected:
    FolderIconCommands() {
        EXPECT_TRUE(EnsureSeededMachine(Dir(), SeedDirs()).ok());
        auto machine = OpenMachineFolder(Dir());
        EXPECT_TRUE(machine.ok());
        m_machine = std::move(*machine);
    }
    fs::path Dir() const { return m_home.Path() / "machine"; }
    CliRun Run(std::vector<std::string> args) const {
        args.insert(args.begin(), {"--machine", Dir().string()});
        return RunCliCaptured(args);
    }
    fs::path Host(std::string_view windowsPath) const { return m_machine->Env().HostPath(windowsPath); }
    std::string Read(std::string_view windowsPath) const {
        std::ifstream in(Host(windowsPath), std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }

    TempDir m_home;
    std::unique_ptr<Machine> m_machine;
};

TEST_F(FolderIconCommands, FolderSetShownAndRestored) {
    EXPECT_EQ(Run({"folder-icon", "show", "c:\\windows"}).out, "Windows Default Icon\n");

    const CliRun set = Run({"folder-icon", "set", "c:\\windows\\", kShell32, "3"});
    ASSERT_EQ(set.status, 0) << set.err;
    EXPECT_EQ(Read("C:\\WINDOWS\\desktop.ini"),
              "[.ShellClassInfo]\r\nIconFile=" + kShell32 + "\r\nIconIndex=3\r\n");
    EXPECT_EQ(ReadHostAttributes(Host("C:\\WINDOWS")), kAttrDirectory | kAttrSystem);
    EXPECT_EQ(ReadHostAttributes(Host("C:\\WINDOWS\\desktop.ini")), kAttrArchive | kAttrHidden);
    EXPECT_EQ(Run({"folder-icon", "show", "C:\\WINDOWS"}).out, kShell32 + "\t3\n");

    const CliRun asked = Run({"folder-icon", "restore", "C:\\Windows"});
    EXPECT_EQ(asked.status, 1);
    EXPECT_EQ(asked.err.substr(0, 80),
              "Restoring this icon will remove the 'desktop.ini' file from the selected folder.");
    EXPECT_TRUE(fs::exists(Host("C:\\WINDOWS\\desktop.ini")));

    ASSERT_EQ(Run({"folder-icon", "restore", "C:\\Windows", "--yes"}).status, 0);
    EXPECT_FALSE(fs::exists(Host("C:\\WINDOWS\\desktop.ini")));
    EXPECT_EQ(ReadHostAttributes(Host("C:\\WINDOWS")), kAttrDirectory);
    EXPECT_TRUE(fs::exists(Host("C:\\WINDOWS\\SYSTEM\\shell32.dll")));

    const CliRun again = Run({"folder-icon", "restore", "C:\\Windows", "--yes"});
    EXPECT_EQ(again.status, 1);
    EXPECT_EQ(again.err,
              "You must select a customised folder or hard drive before it can be restored to the default "
              "icon.\n");
}

TEST_F(FolderIconCommands, DriveSetShownAndRestored) {
    ASSERT_EQ(Run({"folder-icon", "set", "c:", "shell32.dll", "8"}).status, 0);
    EXPECT_EQ(Read("C:\\autorun.inf"), "[AUTORUN]\r\nIcon=" + kShell32 + ",8\r\n");
    EXPECT_EQ(Run({"folder-icon", "show", "C:\\"}).out, kShell32 + "\t8\n");
    const CliRun asked = Run({"folder-icon", "restore", "C:\\"});
    EXPECT_NE(asked.err.find("'autorun.inf' file from the selected hard drive"), std::string::npos)
        << asked.err;
    ASSERT_EQ(Run({"folder-icon", "restore", "C:\\", "--yes"}).status, 0);
    EXPECT_FALSE(fs::exists(Host("C:\\autorun.inf")));
}

TEST_F(FolderIconCommands, RefusedWithNothingMade) {
    struct Case {
        std::vector<std::string> args;
        int status;
        const char* says;
    };
    const std::vector<Case> cases = {
        {{"set", "C:\\Nowhere", kShell32, "3"}, 1, "the machine has no folder C:\\Nowhere"},
        {{"set", "C:\\WINDOWS", kShell32, "three"}, 2, "not a whole number"},
        {{"set", "C:\\WINDOWS", "C:\\WINDOWS\\nothing.dll", "0"}, 1, "the machine has no file"},
        {{"set", "C:\\WINDOWS", kShell32, "5000"}, 1, "holds no icon at index 5000"},
        {{"set", "WINDOWS", kShell32, "1"}, 1, "not a Windows path"},
        {{"show", "C:\\Nowhere"}, 1, "the machine has no folder"},
        {{"restore", "C:\\WINDOWS", "--now"}, 2, "usage"},
    };
    for (const Case& c : cases) {
        std::vector<std::string> args = c.args;
        args.insert(args.begin(), "folder-icon");
        const CliRun run = Run(args);
        EXPECT_EQ(run.status, c.status) << args[2];
        EXPECT_NE(run.err.find(c.says), std::string::npos) << run.err;
    }
    EXPECT_FALSE(fs::exists(Host("C:\\Nowhere")));
    EXPECT_FALSE(fs::exists(Host("C:\\WINDOWS\\desktop.ini")));
}

}  // namespace
}  // namespace glyphmoor::test
