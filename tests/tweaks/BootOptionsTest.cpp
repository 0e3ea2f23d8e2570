// The boot options: what Msdos.sys reads as, and the file's bytes and
// attributes after Apply.
#include "foundation/Baseline.h"
#include "foundation/HostFiles.h"
#include "tweaks/BootOptions.h"
#include "tweaks/TweakBench.h"
#include "tweaks/TweakEditing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace glyphmoor {
namespace {

// Msdos.sys changes with the machine's next save, as an Apply ends.
Status WriteAndSave(TweakTree& tree, Machine& machine) {
    TRY(WriteBootOptions(tree, machine));
    return machine.Save();
}

using test::TweakBench;

// A Windows 98 Msdos.sys as Setup leaves it: CRLF, a [Paths] section, the
// comment and padding lines after [Options].
constexpr std::string_view kMsdosSys =
    "[Paths]\r\nWinDir=C:\\WINDOWS\r\nWinBootDir=C:\\WINDOWS\r\nHostWinBootDrv=C\r\n\r\n"
    "[Options]\r\nBootMulti=1\r\nBootGUI=1\r\nDoubleSpace=1\r\nDriveSpace=1\r\nNetwork=0\r\n"
    ";\r\n;The following lines are required for compatibility with other programs.\r\n"
    ";Do not remove them (MSDOS.SYS needs to be >1024 bytes).\r\n"
    ";xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxa\r\n";

std::filesystem::path MsdosSys(const TweakBench& bench) {
    return bench.machine->Env().HostPath(kMsdosSysPath);
}

void PutFile(const std::filesystem::path& path, std::string_view bytes, std::uint32_t attributes) {
    std::ofstream(path, std::ios::binary) << bytes;
    ASSERT_TRUE(WriteHostAttributes(path, attributes).ok());
}

std::string State(const TweakBench& bench, std::string_view key) {
    const TweakNode* node = bench.tree.Find(key);
    if (node == nullptr) {
        return "missing";
    }
    return node->kind == TweakKind::Value ? node->pending : (node->IsOn() ? "on" : "off");
}

TEST(BootOptions, ReadsEachKeyByItsRule) {
    struct Case {
        std::string_view file;  // the section's lines; empty: no file at all
        std::string_view key;
        std::string_view expected;
    };
    const Case cases[] = {
        {"", "Enable F5-F8 Function Keys", "on"},
        {"", "Startup Delay", "2"},
        {"", "Always boot into Startup Menu", "off"},
        {"", "Startup Menu Delay", "4"},
        {"", "Always boot into Safe Mode", "off"},
        {"", "Enable Network Support", "on"},
        {"BootDelay=abc\r\n", "Startup Delay", "2"},
        {"BootDelay=7\r\n", "Startup Delay", "7"},
        {"BootDelay=-1\r\n", "Startup Delay", "2"},
        {"BootMenuDelay=\r\n", "Startup Menu Delay", "4"},
        {"BootMenuDelay=12\r\n", "Startup Menu Delay", "12"},
        {"BootMenu=yes\r\n", "Always boot into Startup Menu", "off"},
        {"BootMenu=1\r\n", "Always boot into Startup Menu", "on"},
        {"BootKeys=0\r\n", "Enable F5-F8 Function Keys", "off"},
        {"BootKeys=no\r\n", "Enable F5-F8 Function Keys", "on"},
        {"Logo=0\r\n", "Display Windows Splash Screen", "off"},
        {"BootFailSafe=1\r\n", "Always boot into Safe Mode", "on"},
        {"Network=0\r\n", "Enable Network Support", "off"},
        {"bootgui = 0\r\n", "Boot into Windows Graphical User Interface", "off"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.file) + " " + std::string(c.key));
        TweakBench bench;
        if (!c.file.empty()) {
            PutFile(MsdosSys(bench), "[Options]\r\n" + std::string(c.file), kAttrNormal);
        }
        bench.Built();
        BuildBootGroups(bench.tree);
        EXPECT_EQ(State(bench, c.key), c.expected);
    }
}

TEST(BootOptions, GroupsFollowTheCatalogueAndNotOnWindowsNt) {
    TweakBench win98;
    win98.Built();
    BuildBootGroups(win98.tree);
    EXPECT_TRUE(win98.tree.BootOptionsLoaded());
    EXPECT_EQ(win98.tree.TopGroupOf("Startup Menu Delay"), "Startup Menu");
    EXPECT_EQ(win98.tree.Find("Startup Menu Delay")->text, "Menu Delay");
    EXPECT_EQ(win98.tree.BootMenuDefault(), "0");

    TweakBench nt(test::WinNtSystem());
    nt.Built();
    BuildBootGroups(nt.tree);
    EXPECT_FALSE(nt.tree.BootOptionsLoaded());
    EXPECT_EQ(nt.tree.Find("Boot"), nullptr);
    nt.Toggle("Beep On Errors");
    EXPECT_TRUE(WriteAndSave(nt.tree, *nt.machine).ok());
    EXPECT_FALSE(std::filesystem::exists(MsdosSys(nt)));
}

TEST(BootOptions, ApplyRewritesOnlyTheChangedGroupsKeys) {
    const std::string_view header = kMsdosSys.substr(0, kMsdosSys.find("[Options]\r\n") + 11);
    const std::string_view tail = kMsdosSys.substr(kMsdosSys.find(";\r\n"));
    struct Case {
        std::string_view toggle;
        std::string_view entries;  // the section's own entries afterwards
        std::string_view added;    // new entries: after the section's last line, the padding
    };
    const Case cases[] = {
        {"Enable Network Support",
         "BootMulti=1\r\nBootGUI=1\r\nDoubleSpace=1\r\nDriveSpace=1\r\nNetwork=1\r\n",
         "BootWarn=1\r\nBootFailSafe=0\r\n"},
        {"Boot into Windows Graphical User Interface",
         "BootMulti=1\r\nBootGUI=0\r\nDoubleSpace=1\r\nDriveSpace=1\r\nNetwork=0\r\n", "BootWin=1\r\n"},
        {"Always boot into Startup Menu",
         "BootMulti=1\r\nBootGUI=1\r\nDoubleSpace=1\r\nDriveSpace=1\r\nNetwork=0\r\n",
         "BootMenu=1\r\nBootMenuDefault=0\r\nBootMenuDelay=4\r\n"},
        {"Display Windows Splash Screen",
         "BootMulti=1\r\nBootGUI=1\r\nDoubleSpace=1\r\nDriveSpace=1\r\nNetwork=0\r\n",
         "BootKeys=1\r\nBootDelay=2\r\nLogo=0\r\nAutoScan=1\r\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.toggle);
        TweakBench bench;
        const auto file = MsdosSys(bench);
        PutFile(file, kMsdosSys, kAttrReadOnly | kAttrHidden | kAttrSystem);
        bench.Built();
        BuildBootGroups(bench.tree);
        bench.Toggle(c.toggle);
        EXPECT_TRUE(WriteAndSave(bench.tree, *bench.machine).ok());
        EXPECT_EQ(test::FileBytes(file),
                  std::string(header) + std::string(c.entries) + std::string(tail) + std::string(c.added));
        EXPECT_EQ(ReadHostAttributes(file), kAttrHidden | kAttrSystem | kAttrArchive);
        EXPECT_FALSE(bench.tree.AnyGroupChanged());
    }
}

TEST(BootOptions, ApplyWithNothingChangedLeavesTheFileAlone) {
    TweakBench bench;
    const auto file = MsdosSys(bench);
    PutFile(file, kMsdosSys, kAttrReadOnly | kAttrHidden | kAttrSystem);
    const auto before = ReadHostAttributes(file);
    bench.Built();
    BuildBootGroups(bench.tree);
    bench.Toggle("Beep On Errors");
    EXPECT_TRUE(WriteAndSave(bench.tree, *bench.machine).ok());
    EXPECT_EQ(test::FileBytes(file), kMsdosSys);
    EXPECT_EQ(ReadHostAttributes(file), before);
}

TEST(BootOptions, NoFileIsMadeOnlyWhenAGroupIsApplied) {
    TweakBench bench;
    const auto file = MsdosSys(bench);
    bench.Built();
    BuildBootGroups(bench.tree);
    EXPECT_TRUE(WriteAndSave(bench.tree, *bench.machine).ok());
    EXPECT_FALSE(std::filesystem::exists(file));

    ScrollTweakValue(bench.tree, bench.state, "Startup Delay", 9);
    EXPECT_TRUE(WriteBootOptions(bench.tree, *bench.machine).ok());
    EXPECT_FALSE(std::filesystem::exists(file)) << "the file is made with the registry's save";
    ASSERT_TRUE(bench.machine->Save().ok());
    EXPECT_EQ(test::FileBytes(file), "[Options]\r\nBootKeys=1\r\nBootDelay=9\r\nLogo=1\r\nAutoScan=1\r\n");
    EXPECT_EQ(ReadHostAttributes(file), kAttrHidden | kAttrSystem | kAttrArchive);
    // Undo all removes what the program made.
    const auto files = PlanUndo(bench.machine->Registry().Inner(), bench.machine->Env()).files;
    EXPECT_NE(std::find(files.begin(), files.end(), std::string(kMsdosSysPath)), files.end());
}

TEST(BootOptions, TheDefaultMenuItemIsWrittenBackAsRead) {
    TweakBench bench;
    const auto file = MsdosSys(bench);
    PutFile(file, "[Options]\r\nBootMenuDefault=3\r\nBootMenuDelay=x\r\n", kAttrNormal);
    bench.Built();
    BuildBootGroups(bench.tree);
    bench.Toggle("Always boot into Startup Menu");
    EXPECT_TRUE(WriteAndSave(bench.tree, *bench.machine).ok());
    EXPECT_EQ(test::FileBytes(file), "[Options]\r\nBootMenuDefault=3\r\nBootMenuDelay=4\r\nBootMenu=1\r\n");
}

TEST(BootOptions, RestoreDefaultsKeepsTheBootOptions) {
    TweakBench bench;
    PutFile(MsdosSys(bench), "[Options]\r\nBootKeys=0\r\nBootDelay=5\r\n", kAttrNormal);
    bench.Built();
    BuildBootGroups(bench.tree);
    RestoreTweakDefaults(bench.tree, bench.state);
    EXPECT_EQ(State(bench, "Enable F5-F8 Function Keys"), "off");
    EXPECT_EQ(State(bench, "Startup Delay"), "5");
    EXPECT_FALSE(bench.tree.GroupChanged("Boot"));
}

}  // namespace
}  // namespace glyphmoor
