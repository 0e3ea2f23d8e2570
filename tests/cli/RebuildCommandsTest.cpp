#include "CliRun.h"
#include "foundation/modRegistry.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>
#include <sstream>

namespace glyphmoor::test {
namespace {

constexpr const char* kWrite =
    "write\tHKEY_CURRENT_USER\\Control Panel\\desktop\\WindowMetrics\tShell Icon Size\t";
constexpr const char* kSend = "send\tWM_SETTINGCHANGE 0x2e 0\n";

TEST(RebuildCommands, PrintsTheLeverAndBroadcastsAndSavesTheSize) {
    TempMachine machine(
        Win98System(),
        "\n[Control Panel\\\\desktop\\\\WindowMetrics] 1700000000\n\"Shell Icon Size\"=\"48\"\n");
    const CliRun run = Cli(machine, {"rebuild-icons"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, std::string(kWrite) + "49\n" + kSend + kWrite + "48\n" + kSend);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(Cli(machine, {"reg", "read", "HKEY_CURRENT_USER\\Control Panel\\desktop\\WindowMetrics",
                            "Shell Icon Size"})
                  .out,
              "48\n");
}

TEST(RebuildCommands, AbsentSizeIsSavedAs32AndNoNoticeIsSilenced) {
    TempMachine machine;
    const CliRun run = Cli(machine, {"rebuild-icons"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, std::string(kWrite) + "33\n" + kSend + kWrite + "32\n" + kSend);
    const auto reopened = machine.Open();
    EXPECT_EQ(GetRegString(reopened->Registry(), "HKEY_CURRENT_USER\\Control Panel\\desktop\\WindowMetrics",
                           "Shell Icon Size"),
              "32");
    EXPECT_EQ(GetRegDword(reopened->Registry(), "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings",
                          "Dialog Rebuild"),
              kRegDwordUnreadable);
}

TEST(RebuildCommands, RefusedOnNt4WithTheIe4DesktopShell) {
    TempMachine machine(
        WinNtSystem() +
            "\n[Software\\\\Microsoft\\\\Internet Explorer] 1700000000\n\"Version\"=\"4.72.3110.0\"\n",
        "\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\Explorer\\\\MenuOrder\\\\Start "
        "Menu] 1700000000\n");
    const CliRun run = Cli(machine, {"rebuild-icons"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(
        run.err,
        "glyphmoor-cli: the icon cache was not rebuilt: Glyphmoor has detected that you are using Windows NT "
        "4.0 with Internet Explorer 4.0 Active Desktop installed.\n");
    EXPECT_EQ(Cli(machine, {"reg", "read", "HKEY_CURRENT_USER\\Control Panel\\desktop\\WindowMetrics",
                            "Shell Icon Size"})
                  .out,
              "Error\n");
}

TEST(RebuildCommands, TakesNoArguments) {
    TempMachine machine;
    const CliRun run = Cli(machine, {"rebuild-icons", "now"});
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.err.find("usage: glyphmoor-cli rebuild-icons"), std::string::npos);
}

}  // namespace
}  // namespace glyphmoor::test
