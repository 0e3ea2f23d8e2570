// folder-icon show, set and restore on the default machine, and what is
// refused with nothing made. The files' keys and attributes are the folder
// icon tests'.
#include "CliRun.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;

const std::string kShell32 = "C:\\WINDOWS\\SYSTEM\\shell32.dll";

using FolderIconCommands = DefaultMachineCli;

TEST_F(FolderIconCommands, FolderSetShownAndRestored) {
    EXPECT_EQ(Run({"folder-icon", "show", "c:\\windows"}).out, "Windows Default Icon\n");

    const CliRun set = Run({"folder-icon", "set", "c:\\windows\\", kShell32, "3"});
    ASSERT_EQ(set.status, 0) << set.err;
    EXPECT_EQ(Read("C:\\WINDOWS\\desktop.ini"),
              "[.ShellClassInfo]\r\nIconFile=" + kShell32 + "\r\nIconIndex=3\r\n");
    EXPECT_EQ(Run({"folder-icon", "show", "C:\\WINDOWS"}).out, kShell32 + "\t3\n");

    const CliRun asked = Run({"folder-icon", "restore", "C:\\Windows"});
    EXPECT_EQ(asked.status, 1);
    EXPECT_EQ(asked.err.substr(0, 80),
              "Restoring this icon will remove the 'desktop.ini' file from the selected folder.");
    EXPECT_TRUE(fs::exists(Host("C:\\WINDOWS\\desktop.ini")));

    ASSERT_EQ(Run({"folder-icon", "restore", "C:\\Windows", "--yes"}).status, 0);
    EXPECT_FALSE(fs::exists(Host("C:\\WINDOWS\\desktop.ini")));

    const CliRun again = Run({"folder-icon", "restore", "C:\\Windows", "--yes"});
    EXPECT_EQ(again.status, 1);
    EXPECT_EQ(again.err,
              "You must select a customised folder or hard drive before it can be restored to the default "
              "icon.\n");
}

TEST_F(FolderIconCommands, DriveSetShownAndRestored) {
    ASSERT_EQ(Run({"folder-icon", "set", "c:", "shell32.dll", "8"}).status, 0);
    EXPECT_EQ(Read("C:\\autorun.inf"), "[AUTORUN]\r\nIcon=" + kShell32 + ",8\r\n");
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
