#include "CliRun.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

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
         "(Default)\tdefault text\nb\thex:00,e9,ff,41\nbig\tdword:ffffffff (4294967295)\n"
         "n\tdword:fffffffb (4294967291)\nname\t  padded  \n"},
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
    };
    for (const auto& c : cases) {
        const CliRun run = Cli(machine, c.args);
        EXPECT_EQ(run.status, c.status) << c.args.back();
        EXPECT_NE(run.err.find(c.err), std::string::npos) << run.err;
        EXPECT_EQ(run.out, "");
    }
}

TEST(RegCommands, ValuesShowEachTypeAsWhatItIs) {
    TempMachine machine(Win98System(),
                        "\n[Software\\\\Types] 0\n"
                        "\"binary\"=hex:00,01,fe\n"
                        "\"empty binary\"=hex:\n"
                        "\"expand\"=str(2):\"%windir%\\\\a\"\n"
                        "\"multi\"=str(7):\"one\\0two\\0\"\n"
                        "\"number\"=dword:0000002a\n"
                        "\"odd\"=hex(4):01,02\n"
                        "\"qword\"=hex(b):01,00,00,00,00,00,00,00\n"
                        "\"text\"=\"caf\\x00e9\\tx\"\n");
    const CliRun run = Cli(machine, {"reg", "values", "HKEY_CURRENT_USER\\Software\\Types"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out,
              "binary\thex:00,01,fe\n"
              "empty binary\thex:\n"
              "expand\t%windir%\\a\n"
              "multi\tone\\x00two\n"
              "number\tdword:0000002a (42)\n"
              "odd\thex(4):01,02\n"
              "qword\thex(11):01,00,00,00,00,00,00,00\n"
              "text\tcaf\\xe9\\x09x\n");
}

TEST(RegCommands, AChangeThatStoresNothingFailsWithTheReason) {
    TempMachine machine;
    struct Case {
        std::vector<std::string> args;
        std::string err;
    };
    const Case cases[] = {
        {{"reg", "write", "HKEY_NOPE\\Software", "v", "x"}, "'HKEY_NOPE' is not a root key"},
        {{"reg", "write", "HKEY_DYN_DATA\\Software", "v", "x"}, "The handle is invalid."},
        {{"reg", "write", "", "v", "x"}, "an empty path: '' is not a root key"},
        {{"reg", "write", "\\", "v", "x"}, "'' is not a root key"},
        {{"reg", "write", "HKEY_USERS\\S-1-5-99", "v", "x"}, "Access is denied."},
        {{"reg", "write-dword", "HKEY_NOPE", "v", "1"}, "'HKEY_NOPE' is not a root key"},
        {{"reg", "write-binary", "HKEY_USERS\\S-1-5-99\\k", "v", "00"}, "Access is denied."},
        {{"reg", "create-key", "HKEY_NOPE\\k"}, "'HKEY_NOPE' is not a root key"},
        {{"reg", "write", "HKEY_CURRENT_USER\\\\Software", "v", "x"}, "The specified path is invalid."},
        {{"reg", "delete-key", "HKEY_CURRENT_USER\\Software", "Absent"}, "cannot find"},
        {{"reg", "delete-key", "HKEY_CURRENT_USER\\Absent", "Child"}, "cannot find"},
    };
    const std::string before = machine.Folder().Read("user.reg");
    for (const auto& c : cases) {
        const CliRun run = Cli(machine, c.args);
        EXPECT_EQ(run.status, 1) << c.args[1] << " " << c.args[2];
        EXPECT_NE(run.err.find(c.err), std::string::npos) << run.err;
        EXPECT_NE(run.err.find("reg " + c.args[1]), std::string::npos) << run.err;
    }
    EXPECT_EQ(machine.Folder().Read("user.reg"), before);
}

TEST(RegCommands, ShortRootNamesAreTheRootsTheyStandFor) {
    TempMachine machine;
    struct Case {
        std::string shortPath;
        std::string fullPath;
    };
    const Case cases[] = {
        {"HKCU\\Software\\Short", "HKEY_CURRENT_USER\\Software\\Short"},
        {"hklm\\Software\\Short", "HKEY_LOCAL_MACHINE\\Software\\Short"},
        {"HKCR\\.short", "HKEY_CLASSES_ROOT\\.short"},
        {"HKU\\.Default\\Short", "HKEY_USERS\\.Default\\Short"},
        {"HkCc\\Short", "HKEY_CURRENT_CONFIG\\Short"},
    };
    for (const auto& c : cases) {
        ASSERT_EQ(Cli(machine, {"reg", "write", c.shortPath, "v", "short"}).status, 0) << c.shortPath;
        EXPECT_EQ(Cli(machine, {"reg", "read", c.fullPath, "v"}).out, "short\n") << c.shortPath;
        EXPECT_EQ(Cli(machine, {"reg", "read", c.shortPath, "v"}).out, "short\n") << c.shortPath;
        EXPECT_EQ(Cli(machine, {"reg", "exists", c.shortPath}).out, "true\n") << c.shortPath;
    }
    EXPECT_EQ(Cli(machine, {"reg", "write", "HKCUX\\Software", "v", "x"}).status, 1);
}

TEST(RegCommands, AMachineThatCannotBeOpenedIsNamedInTheError) {
    TempMachine machine;
    machine.Folder().Write("system.reg", "REGEDIT4\n");
    const CliRun run = Cli(machine, {"reg", "read", kKey, "x"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("system.reg:1: not a Wine registry file"), std::string::npos) << run.err;

    const CliRun absent = RunCliCaptured({"--machine", "/nonexistent/machine", "reg", "keys", "HKEY_USERS"});
    EXPECT_EQ(absent.status, 1);
    EXPECT_NE(absent.err.find("does not exist"), std::string::npos);
}

}  // namespace
}  // namespace glyphmoor::test
