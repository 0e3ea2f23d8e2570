// The ini commands, wired to the profile files: Windows paths through the
// machine's drives, host paths without one, and what is refused. The rules of
// reading and writing a profile file are the profile tests'.
#include "CliRun.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

constexpr const char* kMsdosSys = "[Paths]\r\nWinDir=C:\\WINDOWS\r\n\r\n[Options]\r\nBootGUI=1\r\nLogo=0\r\n";

class IniCommands : public ::testing::Test {
protected:
    void SetUp() override { m_dir.Write("drive_c/MSDOS.SYS", kMsdosSys); }
    // "ini ARGS" on the folder as a machine (its drive_c is C:\), or on none.
    CliRun Ini(std::vector<std::string> args, bool onMachine = true) const {
        args.insert(args.begin(), "ini");
        if (onMachine) {
            args.insert(args.begin(), {"--machine", m_dir.Path().string()});
        }
        return RunCliCaptured(args);
    }
    TempDir m_dir;
};

TEST_F(IniCommands, ReadKeysAndWriteTheMachinesFile) {
    const struct {
        std::vector<std::string> args;
        std::string out;
    } steps[] = {
        {{"read", "c:\\msdos.sys", "options", "bootgui"}, "1\n"},
        {{"read", "C:\\No such file.ini", "Options", "BootGUI"}, "\n"},
        {{"keys", "C:\\Msdos.sys", "Options"}, "BootGUI\nLogo\n"},
        {{"write", "C:\\Msdos.sys", "Options", "BootGUI", "0"}, ""},
        {{"read", "C:\\MSDOS.SYS", "Options", "BootGUI"}, "0\n"},
    };
    for (const auto& step : steps) {
        const CliRun run = Ini(step.args);
        EXPECT_EQ(run.status, 0) << step.args[0] << ": " << run.err;
        EXPECT_EQ(run.out, step.out) << step.args[0] << " " << step.args[1];
    }
    EXPECT_EQ(m_dir.Read("drive_c/MSDOS.SYS"),
              "[Paths]\r\nWinDir=C:\\WINDOWS\r\n\r\n[Options]\r\nBootGUI=0\r\nLogo=0\r\n");
}

TEST_F(IniCommands, HostPathsMakeNewFiles) {
    const auto path = m_dir.Path() / "new.ini";
    EXPECT_EQ(Ini({"write", path.string(), "Desktop Icons", "My Computer", "C:\\x.ico,0"}, false).status, 0);
    EXPECT_EQ(m_dir.Read("new.ini"), "[Desktop Icons]\r\nMy Computer=C:\\x.ico,0\r\n");
    if (!HostPathsHaveDriveLetters()) {
        // With a machine at hand, a host path still names the host's file.
        EXPECT_EQ(Ini({"read", path.string(), "desktop icons", "my computer"}).out, "C:\\x.ico,0\n");
    }
}

TEST_F(IniCommands, AFolderIsNoProfileFile) {
    const std::vector<std::vector<std::string>> commands = {
        {"write", "s", "k", "v"}, {"read", "s", "k"}, {"keys", "s"}};
    for (const auto& args : commands) {
        std::vector<std::string> words = args;
        words.insert(words.begin() + 1, m_dir.Path().string());
        const CliRun run = Ini(words, false);
        EXPECT_EQ(run.status, 1) << args[0];
        EXPECT_NE(run.err.find("folder"), std::string::npos) << args[0] << ": " << run.err;
        EXPECT_EQ(run.out, "") << args[0];
    }
    EXPECT_EQ(Ini({"read", "x.ini", "s"}, false).status, kExitUsage);
}

}  // namespace
}  // namespace glyphmoor::test
