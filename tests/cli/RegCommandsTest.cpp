#include "CliRun.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>
#include <sstream>

namespace glyphmoor::test {
namespace {

constexpr const char* kKey = "HKEY_CURRENT_USER\\Software\\Cli";

TEST(RegCommands, WritesAreReadBackByEveryReadCommand) {
    TempMachine machine;
    struct Step {
        std::vector<std::string> args;
        std::string out;
    };
    const Step steps[] = {
        {{"reg", "write", kKey, "", "default text"}, ""},
        {{"reg", "write", kKey, "name", "  padded  "}, ""},
        {{"reg", "write-dword", kKey, "n", "-5"}, ""},
        {{"reg", "write-dword", kKey, "big", "4294967295"}, ""},
        {{"reg", "write-binary", kKey, "b", "00e9ff41"}, ""},
        {{"reg", "read", kKey, ""}, "default text\n"},
        {{"reg", "read", kKey, "name"}, "padded\n"},
        {{"reg", "read", kKey, "absent"}, "Error\n"},
        {{"reg", "read-dword", kKey, "n"}, "-5\n"},
        {{"reg", "read-dword", kKey, "big"}, "-1\n"},
        {{"reg", "read-dword", kKey, "absent"}, "10\n"},
        {{"reg", "read-binary", kKey, "b"}, "00e9ff41\n"},
        {{"reg", "read-binary", kKey, "absent"}, "Error\n"},
        {{"reg", "values", kKey},
         "(Default)\tdefault text\nb\t\\x00\\xe9\\xffA\nbig\t\\xff\\xff\\xff\\xff\n"
         "n\t\\xfb\\xff\\xff\\xff\nname\t  padded  \n"},
        {{"reg", "create-key", std::string(kKey) + "\\Sub\\Deeper"}, ""},
        {{"reg", "keys", kKey}, "Sub\n"},
        {{"reg", "exists", std::string(kKey) + "\\Sub\\Deeper"}, "true\n"},
        {{"reg", "delete-key", std::string(kKey) + "\\Sub", "Deeper"}, ""},
        {{"reg", "exists", std::string(kKey) + "\\Sub\\Deeper"}, "false\n"},
        {{"reg", "delete-value", kKey, "name"}, ""},
        {{"reg", "read", kKey, "name"}, "Error\n"},
    };
    for (const auto& step : steps) {
        const CliRun run = Cli(machine, step.args);
        EXPECT_EQ(run.status, 0) << step.args[1] << ": " << run.err;
        EXPECT_EQ(run.out, step.out) << step.args[1];
    }
    // Every command ran in a process of its own: what was written is on disk.
    EXPECT_NE(machine.Folder().Read("user.reg").find("[Software\\\\Cli]"), std::string::npos);
}

TEST(RegCommands, BadCommandLinesAreRefusedWithUsage) {
    TempMachine machine;
    struct Case {
        std::vector<std::string> args;
        int status;
        std::string err;
    };
    const Case cases[] = {
        {{"reg", "read", kKey}, 2, "usage: glyphmoor-cli reg read PATH NAME"},
        {{"reg", "write-dword", kKey, "n", "ten"}, 2, "'ten' is not a 32-bit number"},
        {{"reg", "write-dword", kKey, "n", "4294967296"}, 2, "is not a 32-bit number"},
        {{"reg", "write-binary", kKey, "b", "abc"}, 2, "is not hex bytes"},
        {{"reg", "frobnicate"}, 2, "unknown command 'reg frobnicate'"},
        {{"nothing"}, 2, "unknown command 'nothing'"},
    };
    for (const auto& c : cases) {
        const CliRun run = Cli(machine, c.args);
        EXPECT_EQ(run.status, c.status) << c.args.back();
        EXPECT_NE(run.err.find(c.err), std::string::npos) << run.err;
        EXPECT_EQ(run.out, "");
    }
}

TEST(RegCommands, AMachineThatCannotBeOpenedIsNamedInTheError) {
    TempMachine machine;
    machine.Folder().Write("system.reg", "REGEDIT4\n");
    const CliRun run = Cli(machine, {"reg", "read", kKey, "x"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("system.reg:1: not a Wine registry file"), std::string::npos) << run.err;

    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(RunCli({"--machine", "/nonexistent/machine", "reg", "keys", "HKEY_USERS"}, out, err), 1);
    EXPECT_NE(err.str().find("does not exist"), std::string::npos);
}

TEST(RegCommands, HelpListsEveryCommand) {
    std::ostringstream out;
    std::ostringstream err;
    EXPECT_EQ(RunCli({"help"}, out, err), 0);
    for (const char* command :
         {"reg read PATH NAME", "reg write-binary PATH NAME HEX", "reg values PATH", "--machine DIR"}) {
        EXPECT_NE(out.str().find(command), std::string::npos) << command;
    }
}

}  // namespace
}  // namespace glyphmoor::test
