// Building the Tweak Shell tree: its order and captions, the Display group's
// condition, and every read rule with the asymmetries the program keeps.
#include "tweaks/TweakBench.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

namespace glyphmoor {
namespace {

using test::TweakBench;

constexpr std::string_view kDesk = "HKEY_CURRENT_USER\\Control Panel\\desktop";
constexpr std::string_view kPolicy =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Policies\\Explorer";

std::vector<std::string> TopGroups(const TweakTree& tree) {
    std::vector<std::string> groups;
    for (const TweakNode& node : tree.Nodes()) {
        if (node.kind == TweakKind::Group && node.parent.empty()) {
            groups.push_back(node.key);
        }
    }
    return groups;
}

TEST(TweakTree, GroupsInOrderAndDisplayOnlyWhereAvailable) {
    const std::vector<std::string> without = {"General",    "Explorer",  "Icons",       "Mouse",
                                              "Start Menu", "Wallpaper", "Restrictions"};
    std::vector<std::string> with = without;
    with.insert(with.begin() + 1, "Display");

    TweakBench win98;
    EXPECT_EQ(TopGroups(win98.Built()), without);
    EXPECT_FALSE(win98.tree.DisplayTweaksAvailable());
    EXPECT_EQ(win98.tree.Find("Font Smoothing"), nullptr);

    TweakBench plus;
    plus.Set("HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Plus!\\Setup", "COOL.DLL", "");
    EXPECT_EQ(TopGroups(plus.Built()), with);

    TweakBench nt(test::WinNtSystem());
    EXPECT_EQ(TopGroups(nt.Built()), with);
    EXPECT_TRUE(nt.tree.DisplayTweaksAvailable());
}

TEST(TweakTree, ItemsKeepTheirOrderParentsAndShortTexts) {
    TweakBench bench;
    const TweakTree& tree = bench.Built();
    std::vector<std::string> mouse;
    for (const TweakNode& node : tree.Nodes()) {
        if (bench.tree.TopGroupOf(node.key) == "Mouse") {
            mouse.push_back(node.parent + "/" + node.text);
        }
    }
    EXPECT_EQ(mouse,
              (std::vector<std::string>{"/Mouse", "Mouse/Swap Mouse Buttons", "Mouse/Double Click",
                                        "Double Click/Width", "Double Click/Height", "Double Click/Speed",
                                        "Mouse/Drag", "Drag/Width", "Drag/Height"}));
    const TweakNode* cascade = tree.Find("Printers.{2227A280-3AEA-1069-A2DE-08002B30309D}");
    ASSERT_NE(cascade, nullptr);
    EXPECT_EQ(cascade->text, "Printers");
    EXPECT_EQ(cascade->parent, "Cascading Menus");
    EXPECT_EQ(bench.Image("Double Click Width"), kTweakImageValue);
    EXPECT_EQ(tree.Nodes().back().key, "Disable Shut Down Command");
}

struct ReadCase {
    const char* name;
    std::string_view path;
    std::string_view value;
    std::string_view text;  // empty with dword < 0: the value is absent
    std::int32_t dword;
    const char* key;
    bool on;
    bool nt = false;
};

// An item's state by its read rule.
TEST(TweakTree, ItemStateFollowsTheReadRule) {
    // dword -1: a text (none when empty); -2: an empty text.
    const ReadCase cases[] = {
        {"BeepNoIsOff", "HKEY_CURRENT_USER\\Control Panel\\Sound", "Beep", "NO", -1, "Beep On Errors", false},
        {"BeepAnythingElseIsOn", "HKEY_CURRENT_USER\\Control Panel\\Sound", "Beep", "maybe", -1,
         "Beep On Errors", true},
        {"BeepMissingIsOn", "HKEY_CURRENT_USER\\Control Panel\\Sound", "Beep", "", -1, "Beep On Errors",
         true},
        {"AnimationZeroIsOff", "HKEY_CURRENT_USER\\Control Panel\\desktop\\WindowMetrics", "MinAnimate", "0",
         -1, "Window Animation", false},
        {"NetHoodOneIsOff", kPolicy, "NoNetHood", "", 1, "Hide Network Neighborhood", false},
        {"NetHood999IsOn", kPolicy, "NoNetHood", "", 999, "Hide Network Neighborhood", true},
        {"NoDrivesPartMaskIsOff", kPolicy, "NoDrives", "", 4, "Hide Drives in 'My Computer'", false},
        {"NoDrivesAllLettersIsOn", kPolicy, "NoDrives", "", 67108863, "Hide Drives in 'My Computer'", true},
        {"NoFindOneIsOn", kPolicy, "NoFind", "", 1, "Remove 'Find' Command", true},
        {"SmoothingTwoIsOffOnNt", kDesk, "FontSmoothing", "2", -1, "Font Smoothing", false, true},
        {"SmoothingOneIsOnOnNt", kDesk, "FontSmoothing", "1", -1, "Font Smoothing", true, true},
        {"ExploreEmptyCommandIsOn", "HKEY_CLASSES_ROOT\\Folder\\Shell\\RootExplore\\Command", "", "", -2,
         "Explore From Here", true},
        {"ExploreMissingIsOff", "HKEY_CLASSES_ROOT\\Folder\\Shell\\RootExplore\\Command", "", "", -1,
         "Explore From Here", false},
        {"PromptComparedWithoutCase", "HKEY_CLASSES_ROOT\\Directory\\Shell\\DosHere\\Command", "",
         "c:\\windows\\COMMAND.COM /k cd \"%1\"", -1, "Command Prompt From Here", true},
        {"NtPromptIsCmd", "HKEY_CLASSES_ROOT\\Directory\\Shell\\DosHere\\Command", "",
         "C:\\WINNT\\system32\\cmd.exe /k cd \"%1\"", -1, "Command Prompt From Here", true, true},
        {"DelayUntilClicked", kDesk, "MenuShowDelay", "65535", -1, "Delay Until Clicked", true},
        {"OverlayIsTheProgramsBlankIcon",
         "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\explorer\\Shell Icons", "29",
         "C:\\Program Files\\Glyphmoor\\blank.ico", -1, "Remove Shortcut Overlay", true},
        {"TaskbarRunValueExists", "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run",
         "Hide Taskbar", "anything", -1, "Hide the Taskbar from use", true}};
    for (const ReadCase& c : cases) {
        SCOPED_TRACE(c.name);
        TweakBench bench(c.nt ? test::WinNtSystem() : test::Win98System());
        if (c.dword >= 0) {
            bench.SetDword(c.path, c.value, c.dword);
        } else if (!c.text.empty() || c.dword == -2) {
            bench.Set(c.path, c.value, c.text);
        }
        bench.Built();
        EXPECT_EQ(bench.tree.IsOn(c.key), c.on);
    }
}

TEST(TweakTree, BinaryValuesReadOnWhateverTheyHold) {
    const std::string explorer = "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer";
    TweakBench fresh;
    fresh.Built();
    EXPECT_FALSE(fresh.tree.IsOn("Save Settings on Exit"));
    EXPECT_FALSE(fresh.tree.IsOn("\"Shortcut to\" Prefix on New Shortcuts"));

    TweakBench set;
    SetRegBinary(set.machine->Registry(), kPolicy, "NoSaveSettings", std::string("\x01\0\0\0", 4));
    SetRegBinary(set.machine->Registry(), explorer, "link", std::string("\x1e\0\0\0", 4));
    set.Built();
    EXPECT_TRUE(set.tree.IsOn("Save Settings on Exit"));
    EXPECT_TRUE(set.tree.IsOn("\"Shortcut to\" Prefix on New Shortcuts"));
}

TEST(TweakTree, ValueItemsTakeTheStoredNumberOrTheirDefault) {
    TweakBench bench;
    bench.Set(kDesk, "DoubleClickWidth", "7");
    bench.Set(kDesk, "DragWidth", "");
    bench.Set(kDesk, "MenuShowDelay", "65535");
    bench.Built();
    const auto pending = [&](std::string_view key) { return bench.tree.Find(key)->pending; };
    EXPECT_EQ(pending("Double Click Width"), "7");
    EXPECT_EQ(pending("Drag Width"), "2");
    EXPECT_EQ(pending("Double Click Speed"), "500");
    EXPECT_EQ(pending("Menu Show Delay"), "400");
    EXPECT_TRUE(bench.tree.IsOn("Delay Until Clicked"));
}

TEST(TweakTree, CascadingMenuIsOnWhenItsFolderExists) {
    TweakBench bench;
    const std::string startMenu = "C:\\WINDOWS\\Start Menu";
    bench.Set("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
              "Start Menu", startMenu);
    const std::string key = "Control Panel.{21EC2020-3AEA-1069-A2DD-08002B30309D}";
    std::filesystem::create_directories(bench.machine->Env().HostPath(startMenu + "\\" + key));
    bench.Built();
    EXPECT_TRUE(bench.tree.IsOn(key));
    EXPECT_FALSE(bench.tree.IsOn("Printers.{2227A280-3AEA-1069-A2DE-08002B30309D}"));
    EXPECT_EQ(bench.tree.StartMenuFolder(), startMenu + "\\");
}

}  // namespace
}  // namespace glyphmoor
