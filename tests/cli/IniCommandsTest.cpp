// The ini commands, run in-process with captured output.
#include "cli/Cli.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>

namespace glyphmoor {
namespace {

struct CommandRun {
    int status;
    std::string out, err;
};

// "ini ARGS", on the machine folder `machine` (which maps C:\ to its drive_c) or on none.
CommandRun Ini(const std::vector<std::string>& args, const std::filesystem::path* machine) {
    std::vector<std::string> words;
    if (machine != nullptr) {
        words = {"--machine", machine->string()};
    }
    words.emplace_back("ini");
    words.insert(words.end(), args.begin(), args.end());
    std::ostringstream out, err;
    const int status = RunCli(words, out, err);
    return {status, out.str(), err.str()};
}

std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class IniCommands : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directories(m_dir.Path() / "drive_c" / "WINDOWS");
        std::ofstream(m_dir.Path() / "drive_c" / "MSDOS.SYS", std::ios::binary)
            << "[Paths]\r\nWinDir=C:\\WINDOWS\r\n\r\n[Options]\r\n;comment\r\nBootGUI=1\r\nLogo = \"0\" \r\n"
               "Network\r\nBootGUI=2\r\n";
    }
    test::TempDir m_dir;
    std::filesystem::path m_machine = m_dir.Path();
};

TEST_F(IniCommands, ReadKeysAndWriteThroughTheMachine) {
    const struct {
        std::vector<std::string> args;
        int status;
        std::string out;
    } cases[] = {
        {{"read", "C:\\Msdos.sys", "options", "bootgui"}, 0, "1\n"},
        {{"read", "c:\\msdos.sys", "Options", "Logo"}, 0, "0\n"},
        {{"read", "C:\\Msdos.sys", "Options", "Network"}, 0, "\n"},
        {{"read", "C:\\No such file.ini", "Options", "BootGUI"}, 0, "\n"},
        {{"keys", "C:\\Msdos.sys", "Options"}, 0, "BootGUI\nLogo\nBootGUI\n"},
        {{"keys", "C:\\Msdos.sys", "Nothing"}, 0, ""},
        {{"write", "C:\\Msdos.sys", "Options", "BootGUI", "0"}, 0, ""},
        {{"read", "C:\\Msdos.sys", "Options", "BootGUI"}, 0, "0\n"},
    };
    for (const auto& c : cases) {
        const CommandRun run = Ini(c.args, &m_machine);
        EXPECT_EQ(run.status, c.status) << c.args[0] << " " << c.args[1];
        EXPECT_EQ(run.out, c.out) << c.args[0] << " " << c.args[1];
        EXPECT_EQ(run.err, "");
    }
    EXPECT_EQ(ReadAll(m_dir.Path() / "drive_c" / "MSDOS.SYS"),
              "[Paths]\r\nWinDir=C:\\WINDOWS\r\n\r\n[Options]\r\n;comment\r\nBootGUI=0\r\nLogo = \"0\" \r\n"
              "Network\r\nBootGUI=2\r\n");
}

TEST_F(IniCommands, HostPathsAndNewFiles) {
    const auto path = m_dir.Path() / "new.ini";
    EXPECT_EQ(Ini({"write", path.string(), "Desktop Icons", "My Computer", "C:\\x.ico,0"}, nullptr).status,
              0);
    EXPECT_EQ(ReadAll(path), "[Desktop Icons]\r\nMy Computer=C:\\x.ico,0\r\n");
    if (!test::HostPathsHaveDriveLetters()) {
        // With a machine at hand, a host path still names the host's file.
        EXPECT_EQ(Ini({"read", path.string(), "desktop icons", "my computer"}, &m_machine).out,
                  "C:\\x.ico,0\n");
    }
}

TEST_F(IniCommands, ThroughTheDispatcherOnAMachineFolder) {
    std::ostringstream out, err;
    const std::string machine = m_dir.Path().string();
    EXPECT_EQ(
        RunCli({"--machine", machine, "ini", "write", "C:\\msdos.sys", "Options", "Logo", "1"}, out, err), 0)
        << err.str();
    EXPECT_EQ(RunCli({"--machine", machine, "ini", "keys", "C:\\MSDOS.SYS", "options"}, out, err), 0)
        << err.str();
    EXPECT_EQ(out.str(), "BootGUI\nLogo\nBootGUI\n");
    EXPECT_EQ(ReadAll(m_dir.Path() / "drive_c" / "MSDOS.SYS"),
              "[Paths]\r\nWinDir=C:\\WINDOWS\r\n\r\n[Options]\r\n;comment\r\nBootGUI=1\r\nLogo=1\r\n"
              "Network\r\nBootGUI=2\r\n");
}

TEST_F(IniCommands, Failures) {
    EXPECT_EQ(Ini({}, nullptr).status, 2);
    EXPECT_EQ(Ini({"read", "x.ini", "s"}, nullptr).status, 2);
    EXPECT_EQ(Ini({"frobnicate"}, nullptr).status, 2);
    // A folder is no profile file: every command says so.
    const std::vector<std::vector<std::string>> commands = {
        {"write", "s", "k", "v"}, {"read", "s", "k"}, {"keys", "s"}};
    for (const auto& args : commands) {
        std::vector<std::string> words = args;
        words.insert(words.begin() + 1, m_dir.Path().string());
        const CommandRun run = Ini(words, nullptr);
        EXPECT_EQ(run.status, 1) << args[0];
        EXPECT_NE(run.err.find("folder"), std::string::npos) << args[0] << ": " << run.err;
        EXPECT_EQ(run.out, "") << args[0];
    }
}

}  // namespace
}  // namespace glyphmoor
