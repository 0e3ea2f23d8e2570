// Editing the tree: toggles with their questions and flags, the value
// editor's limits, and restoring the defaults.
#include "tweaks/TweakBench.h"
#include "tweaks/TweakEditing.h"

#include <gtest/gtest.h>

namespace glyphmoor {
namespace {

using test::TweakBench;

struct ConfirmCase {
    const char* name;
    const char* key;
    int press;  // the button pressed: Command(index)
    bool turnedOn;
    std::string_view question;  // how the question begins
};

// Only "OK" turns the item on. Buttons are counted from the right: Command(0)
// is the rightmost.
TEST(TweakEditing, OnlyOkTurnsAConfirmedItemOn) {
    const ConfirmCase cases[] = {{"NotepadOk", "Note Pad", 1, true, "Adding Notepad"},
                                 {"NotepadCancel", "Note Pad", 0, false, "Adding Notepad"},
                                 {"NetworkOk", "Hide Network Neighborhood", 2, true, "Hiding Network"},
                                 {"NetworkCancel", "Hide Network Neighborhood", 1, false, "Hiding Network"},
                                 {"DesktopOk", "Disable Desktop", 1, true, "Disabling the Desktop"},
                                 {"DesktopCancel", "Disable Desktop", 0, false, "Disabling the Desktop"}};
    for (const ConfirmCase& c : cases) {
        SCOPED_TRACE(c.name);
        TweakBench bench;
        bench.Built();
        bench.prompt.Answer({PromptAnswer::Press(c.press)});
        MsgContext messages = bench.Messages();
        const ToggleOutcome outcome = ToggleTweak(bench.tree, messages, c.key);
        ASSERT_EQ(bench.prompt.Shown().size(), 1U);
        EXPECT_TRUE(bench.prompt.Shown()[0].text.starts_with(c.question));
        EXPECT_EQ(outcome, c.turnedOn ? ToggleOutcome::TurnedOn : ToggleOutcome::Refused);
        EXPECT_EQ(bench.Image(c.key), c.turnedOn ? kTweakImageOn : kTweakImageOff);
        EXPECT_EQ(bench.state.applyEnabled, c.turnedOn);
        EXPECT_EQ(bench.tree.GroupChanged(bench.tree.TopGroupOf(c.key)), c.turnedOn);
        EXPECT_EQ(bench.state.restartNeeded, c.turnedOn && std::string_view(c.key) != "Note Pad");
    }
}

TEST(TweakEditing, EscapeRefusesAndTurningOffNeverAsks) {
    TweakBench bench;
    bench.Built();
    bench.prompt.Answer({PromptAnswer::Escape()});
    MsgContext messages = bench.Messages();
    EXPECT_EQ(ToggleTweak(bench.tree, messages, "Disable Desktop"), ToggleOutcome::Refused);
    bench.tree.Find("Disable Desktop")->image = kTweakImageOn;
    EXPECT_EQ(ToggleTweak(bench.tree, messages, "Disable Desktop"), ToggleOutcome::TurnedOff);
    EXPECT_EQ(bench.prompt.Shown().size(), 1U);
    EXPECT_EQ(ToggleTweak(bench.tree, messages, "Restrictions"), ToggleOutcome::NotToggled);
    EXPECT_EQ(ToggleTweak(bench.tree, messages, "Double Click Speed"), ToggleOutcome::NotToggled);
}

TEST(TweakEditing, ColourNoticeOnlyAtEightBitsAndNeverRefuses) {
    for (const int bits : {4, 8, 16}) {
        TweakBench bench;
        bench.Built(DisplayCaps{bits, 640, 480});
        bench.prompt.Answer({PromptAnswer::Press(1)});  // "OK"
        MsgContext messages = bench.Messages();
        EXPECT_EQ(ToggleTweak(bench.tree, messages, "Show Icons Using All Possible Colours"),
                  ToggleOutcome::TurnedOn);
        EXPECT_EQ(bench.prompt.Shown().size(), bits == 8 ? 1U : 0U) << bits;
    }
}

struct FlagCase {
    const char* key;
    bool rebuild;
    bool restart98;
    bool restartNt;
};

TEST(TweakEditing, TogglesSetTheirFlagsAndEveryRestrictionRestartsOnNt) {
    const FlagCase cases[] = {
        {"Bitmap Thumbnail as Default Icon", true, false, false},
        {"Large Icons", true, false, false},
        {"Beep On Errors", false, false, false},
        {"Show Icons Using All Possible Colours", false, true, true},
        {"\"Shortcut to\" Prefix on New Shortcuts", false, true, true},
        {"Hide 'Entire Network' in Network Neighborhood", true, false, true},
        {"Disable Shut Down Command", true, false, true},
        {"Hide Network Neighborhood", false, true, true},
    };
    for (const FlagCase& c : cases) {
        for (const bool nt : {false, true}) {
            TweakBench bench(nt ? test::WinNtSystem() : test::Win98System());
            bench.Built();
            bench.prompt.Answer({PromptAnswer::Press(2)});  // "OK" where asked
            MsgContext messages = bench.Messages();
            ASSERT_NE(ToggleTweak(bench.tree, messages, c.key), ToggleOutcome::Refused) << c.key;
            EXPECT_EQ(bench.state.rebuildPending, c.rebuild) << c.key;
            EXPECT_EQ(bench.state.restartNeeded, nt ? c.restartNt : c.restart98) << c.key << nt;
        }
    }
}

TEST(TweakEditing, ScrollingPastTheLimitBeepsAndSnapsBack) {
    TweakBench bench;
    bench.Built(DisplayCaps{32, 800, 600});
    struct Case {
        const char* key;
        int to;
        int expected;
        bool beeped;
    };
    for (const Case& c :
         {Case{"Double Click Speed", 950, 900, true}, Case{"Double Click Speed", 900, 900, false},
          Case{"Drag Width", 33, 32, true}, Case{"Menu Show Delay", 10000, 9999, true},
          Case{"Wallpaper Horizontal Origin", 801, 800, true},
          Case{"Wallpaper Vertical Origin", 600, 600, false}}) {
        const auto edit = ScrollTweakValue(bench.tree, bench.state, c.key, c.to);
        ASSERT_TRUE(edit) << c.key;
        EXPECT_EQ(edit->scrollValue, c.expected) << c.key;
        EXPECT_EQ(edit->beeped, c.beeped) << c.key;
        EXPECT_EQ(bench.tree.Find(c.key)->pending, std::to_string(c.expected));
    }
    EXPECT_TRUE(bench.state.restartNeeded);
    EXPECT_TRUE(bench.tree.GroupChanged("Mouse"));
    EXPECT_FALSE(ScrollTweakValue(bench.tree, bench.state, "Beep On Errors", 1));
}

TEST(TweakEditing, TypedTextTakesItsLeadingNumber) {
    TweakBench bench;
    bench.Built();
    struct Case {
        const char* text;
        const char* pending;
    };
    for (const Case& c : {Case{"45", "45"}, Case{"  12px", "12"}, Case{"abc", "0"}, Case{"-5", "0"},
                          Case{"99999999999", "900"}, Case{"", ""}}) {
        ASSERT_TRUE(TypeTweakValue(bench.tree, bench.state, "Double Click Speed", c.text));
        EXPECT_EQ(bench.tree.Find("Double Click Speed")->pending, c.pending) << c.text;
    }
    EXPECT_FALSE(bench.state.restartNeeded);
}

TEST(TweakEditing, RestoreDefaultsSetsTheDefaultColumn) {
    TweakBench bench;
    bench.Set("HKEY_CURRENT_USER\\Control Panel\\Sound", "Beep", "No");
    bench.Set("HKEY_CURRENT_USER\\Control Panel\\desktop", "MenuShowDelay", "65535");
    bench.Set("HKEY_CURRENT_USER\\Control Panel\\desktop", "DoubleClickSpeed", "700");
    bench.Set("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run", "Hide Taskbar", "x");
    bench.Built();
    RestoreTweakDefaults(bench.tree, bench.state);
    EXPECT_EQ(bench.Image("Beep On Errors"), kTweakImageOn);
    EXPECT_EQ(bench.Image("Save Settings on Exit"), kTweakImageOn);
    EXPECT_EQ(bench.Image("Smooth Scrolling"), kTweakImageOff);
    // Not reset: the taskbar, and "Delay Until Clicked"; the value item gets the box instead.
    EXPECT_EQ(bench.Image("Hide the Taskbar from use"), kTweakImageOn);
    EXPECT_EQ(bench.Image("Delay Until Clicked"), kTweakImageOn);
    EXPECT_EQ(bench.Image("Menu Show Delay"), kTweakImageOff);
    EXPECT_EQ(bench.tree.Find("Double Click Speed")->pending, "500");
    EXPECT_TRUE(bench.state.rebuildPending);
    EXPECT_TRUE(bench.state.applyEnabled);
    EXPECT_TRUE(bench.tree.GroupChanged("Restrictions"));
    EXPECT_FALSE(bench.tree.GroupChanged("Display"));
}

}  // namespace
}  // namespace glyphmoor
