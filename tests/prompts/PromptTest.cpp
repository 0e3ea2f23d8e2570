// ShowPrompt's rules through the scripted prompt, the silent prompt's
// answers and the help keywords.
#include "foundation/System.h"
#include "prompts/SilentPrompt.h"
#include "support/ScriptedPrompt.h"

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

}  // namespace
}  // namespace glyphmoor
