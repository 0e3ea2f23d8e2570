// The tweaks commands: the listing, setting with its refusals, restoring.
#include "CliRun.h"
#include "cli/TweakCommands.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

const std::string kReadDesk = "HKEY_CURRENT_USER\\Control Panel\\desktop";

TEST(TweakCommands, ListsEveryNodeWithKindParentKeyTextAndState) {
    const TempMachine machine;
    const CliRun run = Cli(machine, {"tweaks"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_TRUE(run.out.starts_with(
        "group\t\tGeneral\tGeneral\t\ncheck\tGeneral\tBeep On Errors\tBeep On Errors\ton\n"));
    EXPECT_NE(run.out.find("value\tDouble Click\tDouble Click Speed\tSpeed\t500\n"), std::string::npos);
    EXPECT_NE(run.out.find(
                  "check\tCascading Menus\tPrinters.{2227A280-3AEA-1069-A2DE-08002B30309D}\tPrinters\toff\n"),
              std::string::npos);
}

TEST(TweakCommands, SetAppliesAndSaysWhetherARestartIsNeeded) {
    const TempMachine machine;
    CliRun run = Cli(machine, {"tweaks", "set", "smooth scrolling=on", "Double Click Speed=650"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "no restart needed\n");
    EXPECT_EQ(Cli(machine, {"reg", "read-dword", kReadDesk, "SmoothScroll"}).out, "1\n");
    EXPECT_EQ(
        Cli(machine, {"reg", "read", "HKEY_CURRENT_USER\\Control Panel\\Mouse", "DoubleClickSpeed"}).out,
        "650\n");
    run = Cli(machine, {"tweaks", "set", "Menu Show Delay=100"});
    EXPECT_EQ(run.out, "restart needed\n");
}

// The boot options are listed and set as the other tweaks; how they read and
// write Msdos.sys is the boot option tests'.
TEST(TweakCommands, BootOptionsAreKeysOfMsdosSys) {
    const TempMachine machine;
    machine.Folder().Write("drive_c/MSDOS.SYS", "[Options]\r\nBootDelay=abc\r\nNetwork=0\r\n");
    const std::string network = "check\tSafe Mode\tEnable Network Support\tEnable Network Support\t";
    EXPECT_NE(Cli(machine, {"tweaks"}).out.find(network + "off\n"), std::string::npos);
    const CliRun run = Cli(machine, {"tweaks", "set", "enable network support=on"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(machine.Folder().Read("drive_c/MSDOS.SYS"),
              "[Options]\r\nBootDelay=abc\r\nNetwork=1\r\nBootWarn=1\r\nBootFailSafe=0\r\n");
}

TEST(StartupCommands, ListAddAndDeleteWithItsQuestion) {
    const TempMachine machine;
    const std::string uninstall =
        "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Old";
    ASSERT_EQ(Cli(machine, {"reg", "write", uninstall, "DisplayName", "Old Game"}).status, 0);
    ASSERT_EQ(Cli(machine, {"startup", "add", "user-run", "Clock", "C:\\clock.exe /min"}).status, 0);
    EXPECT_EQ(Cli(machine, {"startup", "user-run"}).out, "user-run\tClock\tC:\\clock.exe /min\n");
    EXPECT_NE(Cli(machine, {"startup"}).out.find("uninstall\tOld Game\t\n"), std::string::npos);

    CliRun run = Cli(machine, {"startup", "delete", "uninstall", "Old Game"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.starts_with("Are you sure you want to permanently delete 'Old Game'?")) << run.err;
    EXPECT_EQ(Cli(machine, {"reg", "read", uninstall, "DisplayName"}).out, "Old Game\n");
    ASSERT_EQ(Cli(machine, {"startup", "delete", "uninstall", "old game", "--yes"}).status, 0);
    EXPECT_EQ(Cli(machine, {"startup", "uninstall"}).out, "");

    EXPECT_EQ(Cli(machine, {"startup", "add", "uninstall", "New", "x.exe"}).status, 1);
    EXPECT_EQ(Cli(machine, {"startup", "delete", "run", "Nothing", "--yes"}).status, 1);
    EXPECT_EQ(Cli(machine, {"startup", "services"}).status, 1);
}

TEST(TweakCommands, RefusalsChangeNothing) {
    const TempMachine machine;
    struct Case {
        std::vector<std::string> args;
        int status;
        std::string errStart;
    };
    const Case cases[] = {
        {{"tweaks", "set", "Beep On Error=off"},
         1,
         "glyphmoor-cli: no tweak 'Beep On Error'; the nearest: 'Beep On Errors'"},
        {{"tweaks", "set", "Double Click Speed=901"},
         1,
         "glyphmoor-cli: 'Double Click Speed' takes a number from 0 to 900"},
        {{"tweaks", "set", "Drag Width=-1"}, 1, "glyphmoor-cli: 'Drag Width' takes a number from 0 to 32"},
        {{"tweaks", "set", "Quick View=yes"}, 1, "glyphmoor-cli: 'Quick View' takes on or off"},
        {{"tweaks", "set", "Mouse=on"}, 1, "glyphmoor-cli: 'Mouse' is a group"},
        {{"tweaks", "set", "Smooth Scrolling=on", "Disable Desktop=on"}, 1, "Disabling the Desktop causes"},
        {{"tweaks", "set", "no equals sign"}, 2, ""},
        {{"tweaks", "restore-defaults"}, 1, "Restoring all your Windows 98 system settings"},
    };
    for (const Case& c : cases) {
        const CliRun run = Cli(machine, c.args);
        EXPECT_EQ(run.status, c.status) << c.args.back();
        EXPECT_TRUE(run.err.starts_with(c.errStart)) << run.err;
    }
    EXPECT_EQ(Cli(machine, {"reg", "exists", "HKEY_CURRENT_USER\\Control Panel\\desktop"}).out, "false\n");
}

TEST(TweakCommands, YesAnswersTheQuestionAndRestoreDefaultsWritesThem) {
    const TempMachine machine;
    const std::string policy =
        "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Policies\\Explorer";
    CliRun run = Cli(machine, {"tweaks", "set", "Disable Desktop=on", "--yes"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, "restart needed\n");
    EXPECT_EQ(Cli(machine, {"reg", "read-dword", policy, "NoDesktop"}).out, "1\n");
    run = Cli(machine, {"tweaks", "restore-defaults", "--yes"});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(Cli(machine, {"reg", "read-dword", policy, "NoDesktop"}).out, "0\n");
    EXPECT_EQ(Cli(machine, {"reg", "read", "HKEY_CURRENT_USER\\Control Panel\\Sound", "Beep"}).out, "Yes\n");
}

TEST(TweakCommands, NearestKeysPreferKeysThatContainTheText) {
    const std::vector<std::string> known = {"Drag Width", "Drag Height", "Double Click Width", "Note Pad"};
    EXPECT_EQ(NearestKeys("width", known, 2), (std::vector<std::string>{"Drag Width", "Double Click Width"}));
    EXPECT_EQ(NearestKeys("Note Pd", known, 1), (std::vector<std::string>{"Note Pad"}));
}

}  // namespace
}  // namespace glyphmoor::test
