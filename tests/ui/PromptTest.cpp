// ShowPrompt's rules through the scripted prompt, the silent prompt's
// answers, the help keywords and the dialog's layout in twips.
#include "foundation/System.h"
#include "ui/core/PromptLayout.h"
#include "ui/core/ScriptedPrompt.h"
#include "ui/core/SilentPrompt.h"

#include <gtest/gtest.h>

namespace glyphmoor {
namespace {

constexpr const char* kHelpFile = "C:\\Program Files\\Glyphmoor\\Glyphmoor.hlp";

class PromptTest : public ::testing::Test {
protected:
    PromptTest() { m_system.SetOpensDocuments(false); }

    std::int16_t Show(std::string text, std::string_view left, std::string_view middle,
                      std::string_view right, std::string_view check = {}) {
        m_prompt.SetPromptText(std::move(text));
        return m_prompt.ShowPrompt(left, middle, right, 32514, 0, check);
    }

    RecordingSystem m_system;
    ScriptedPrompt m_prompt{m_system, kHelpFile};
};

TEST_F(PromptTest, CaptionsGoRightToLeftAndWidthZeroIs4200) {
    m_prompt.Answer({PromptAnswer::Press(2)});
    EXPECT_EQ(Show("Text", "Left", "Middle", "Right", "Check"), 2);
    const PromptRequest& shown = m_prompt.Shown().at(0);
    EXPECT_EQ(shown.buttons, (std::array<std::string, 3>{"Right", "Middle", "Left"}));
    EXPECT_EQ(m_prompt.PromptButtons(), shown.buttons);
    EXPECT_EQ(shown.textWidth, 4200);
    EXPECT_EQ(shown.checkText, "Check");
    EXPECT_EQ(shown.iconId, 32514);
    EXPECT_EQ(m_prompt.PromptIconId(), "32514");
}

TEST_F(PromptTest, ClosedWithoutAButtonGivesFour) {
    m_prompt.Answer({PromptAnswer::Press(0), PromptAnswer::Escape()});
    EXPECT_EQ(Show("First", "", "", "OK"), 0);
    // Each dialog starts at 4, whatever the last one gave.
    EXPECT_EQ(Show("Second", "", "", "OK"), 4);
}

TEST_F(PromptTest, AHiddenButtonCannotBePressed) {
    m_prompt.Answer({PromptAnswer::Press(2), PromptAnswer::Escape()});
    EXPECT_EQ(Show("Text", "", "", "OK"), 4);
}

TEST_F(PromptTest, HelpThenEscapeGivesTheHelpButtonsIndex) {
    m_prompt.Answer({PromptAnswer::Press(0), PromptAnswer::Escape()});
    EXPECT_EQ(Show("Hiding Network Neighborhood", "OK", "Cancel", "&Help"), 0);
    ASSERT_EQ(m_system.Calls().size(), 1U);
    EXPECT_EQ(m_system.Calls()[0],
              std::string("WinHelp \"") + kHelpFile + "\" 0x105 \"Hide, Network Neighborhood\"");
}

TEST_F(PromptTest, SettingsKeepsTheDialogOpenUntilAnotherButton) {
    m_prompt.Answer({PromptAnswer::Press(1), PromptAnswer::Press(1), PromptAnswer::Press(0)});
    EXPECT_EQ(Show("Low colour", "", "&Settings...", "OK"), 0);
    EXPECT_EQ(m_system.Calls(), (std::vector<std::string>{
                                    "WinExec \"rundll32.exe shell32.dll,Control_RunDLL desk.cpl,,3\" 2",
                                    "WinExec \"rundll32.exe shell32.dll,Control_RunDLL desk.cpl,,3\" 2"}));
    EXPECT_EQ(m_prompt.AnswersLeft(), 0U);
}

TEST_F(PromptTest, TickIsTakenAtTheButtonPressOnly) {
    // Ticked, then Escape: the tick is not taken.
    m_prompt.Answer({PromptAnswer::Press(0, false)});
    Show("One", "", "", "OK", "Box");
    EXPECT_FALSE(m_prompt.PromptDontShowAgain());
    m_prompt.Answer({PromptAnswer::Escape()});
    Show("Two", "", "", "OK", "Box");
    EXPECT_FALSE(m_prompt.PromptDontShowAgain());

    // A tick at a press lasts through later messages closed by Escape.
    m_prompt.Answer({PromptAnswer::Press(0, true), PromptAnswer::Escape()});
    Show("Three", "", "", "OK", "Box");
    EXPECT_TRUE(m_prompt.PromptDontShowAgain());
    Show("Four", "", "", "OK");
    EXPECT_TRUE(m_prompt.PromptDontShowAgain());
}

TEST_F(PromptTest, HelpPressTakesTheBoxToo) {
    m_prompt.Answer({PromptAnswer::Press(0, true), PromptAnswer::Escape()});
    EXPECT_EQ(Show("Anything", "", "OK", "&Help", "Box"), 0);
    EXPECT_TRUE(m_prompt.PromptDontShowAgain());
    EXPECT_TRUE(m_system.Calls().empty());
}

TEST_F(PromptTest, RunningOutOfAnswersClosesAsEscape) {
    EXPECT_EQ(Show("Text", "", "", "OK"), 4);
    EXPECT_EQ(m_prompt.Unanswered(), 1U);
}

TEST(HelpKeywordFor, ByTheFirstTenCharacters) {
    const struct {
        const char* text;
        const char* keyword;  // nullptr: none
    } cases[] = {
        {"Lumenvarde", "Icon Cache"},
        {"Lumenvarde has notified", "Icon Cache"},
        {"Hiding Network Neighborhood disables", "Hide, Network Neighborhood"},
        {"The program", "Introduction, Explorer"},
        {"Hiding Ne", nullptr},
        {"hiding Network", nullptr},
        {"Glyphmoor has notified Windows 98 of your changes.", nullptr},
        {"", nullptr},
    };
    for (const auto& row : cases) {
        const auto keyword = HelpKeywordFor(row.text);
        if (row.keyword == nullptr) {
            EXPECT_FALSE(keyword.has_value()) << row.text;
        } else {
            EXPECT_EQ(keyword.value_or("(none)"), row.keyword) << row.text;
        }
    }
}

TEST(SilentPrompt, PressesTheSafeButtonWithoutTheBox) {
    RecordingSystem system;
    SilentPrompt prompt(system, kHelpFile);
    const struct {
        std::array<const char*, 3> captions;  // left, middle, right
        std::int16_t result;
    } cases[] = {
        {{"", "", "OK"}, 0},      {{"Yes", "No", "&Cancel"}, 0},      {{"OK", "Cancel", "&Help"}, 1},
        {{"", "OK", "&Help"}, 1}, {{"", "&Settings...", "&Help"}, 4},
    };
    for (const auto& row : cases) {
        prompt.SetPromptText(row.captions[0]);
        EXPECT_EQ(prompt.ShowPrompt(row.captions[0], row.captions[1], row.captions[2], 32514, 0, "Box"),
                  row.result)
            << row.captions[2];
        EXPECT_FALSE(prompt.PromptDontShowAgain());
    }
    EXPECT_EQ(prompt.Answered().size(), 5U);
    EXPECT_TRUE(system.Calls().empty());
}

PromptRequest LayoutRequest(std::array<std::string, 3> buttons, std::int16_t width = 4200,
                            std::string check = {}) {
    return {"Text", std::move(buttons), 32516, width, std::move(check)};
}

TEST(LayoutPrompt, ShortTextKeepsTheLabelAsTallAsTheIcon) {
    for (int textHeight : {0, 195, 495}) {
        const PromptLayout layout = LayoutPrompt(LayoutRequest({"OK", "", ""}), textHeight);
        EXPECT_EQ(layout.label, (TwipsRect{720, 120, 4200, 495})) << textHeight;
        EXPECT_EQ(layout.dialogHeight, 495 + 950 + 270);
        EXPECT_EQ(layout.buttons[0].top, 495 + 350);
        EXPECT_GT(layout.buttons[0].top, layout.icon.Bottom());
    }
    EXPECT_EQ(LayoutPrompt(LayoutRequest({"OK", "", ""}), 496).label.height, 496);
}

TEST(LayoutPrompt, ButtonsStandByIndexFromTheRight) {
    const PromptLayout layout = LayoutPrompt(LayoutRequest({"OK", "", ""}, 5000), 1200, {300, 45});
    EXPECT_EQ(layout.dialogWidth, 6000);
    EXPECT_EQ(layout.dialogHeight, 1200 + 950 + 300);
    EXPECT_EQ(layout.clientWidth, 6000 - 90);
    EXPECT_EQ(layout.clientHeight, 1200 + 950 - 90);
    EXPECT_EQ(layout.buttons[0], (TwipsRect{6000 - 1325, 1550, 1095, 375}));
    EXPECT_EQ(layout.buttons[1], (TwipsRect{6000 - 1325 - 1210, 1550, 1095, 375}));
    EXPECT_EQ(layout.buttons[2], (TwipsRect{6000 - 1325 - 2420, 1550, 1095, 375}));
    EXPECT_EQ(layout.buttonVisible, (std::array<bool, 3>{true, false, false}));
    EXPECT_FALSE(layout.checkVisible);
    // Every button stays inside the client area.
    EXPECT_LT(layout.buttons[0].Right(), layout.clientWidth);
    EXPECT_LT(layout.buttons[0].Bottom(), layout.clientHeight);
}

TEST(LayoutPrompt, HiddenButtonsLeaveTheOthersInPlace) {
    const PromptLayout all = LayoutPrompt(LayoutRequest({"Cancel", "No", "Yes"}), 600);
    const PromptLayout middleHidden = LayoutPrompt(LayoutRequest({"Cancel", "", "Yes"}), 600);
    EXPECT_EQ(all.buttons, middleHidden.buttons);
    EXPECT_EQ(middleHidden.buttonVisible, (std::array<bool, 3>{true, false, true}));
}

TEST(LayoutPrompt, CheckBoxGrowsTheDialogBy405) {
    const PromptLayout without = LayoutPrompt(LayoutRequest({"&Help", "OK", ""}, 4600), 1800);
    const PromptLayout with =
        LayoutPrompt(LayoutRequest({"&Help", "OK", ""}, 4600, "Do not show this dialog again"), 1800);
    EXPECT_EQ(with.dialogHeight - without.dialogHeight, 405);
    EXPECT_EQ(with.clientHeight - without.clientHeight, 405);
    EXPECT_TRUE(with.checkVisible);
    EXPECT_EQ(with.checkCaption, "&Do not show this dialog again");
    EXPECT_EQ(with.check.left, with.label.left);
    EXPECT_EQ(with.check.top, 1800 + 300);
    EXPECT_EQ(with.buttons[0].top, 1800 + 750);
    EXPECT_EQ(with.buttons[0].left, without.buttons[0].left);
    EXPECT_LT(with.check.Bottom(), with.buttons[0].top);
}

}  // namespace
}  // namespace glyphmoor
