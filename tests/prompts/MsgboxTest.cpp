// Every message of the program through the scripted prompt: its exact text,
// icon, buttons, width and check box, and what its answer gives back.
#include "foundation/AppEnvironment.h"
#include "foundation/Startup.h"
#include "foundation/modRegistry.h"
#include "prompts/modMsgbox.h"
#include "support/ScriptedPrompt.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <functional>

namespace glyphmoor {
namespace {

constexpr std::int16_t kStop = 32513;
constexpr std::int16_t kQuestion = 32514;
constexpr std::int16_t kExclamation = 32515;
constexpr std::int16_t kInformation = 32516;

constexpr int kNoResult = -1;

// A machine of one flavour with everything a message needs.
class MsgboxTest : public ::testing::Test {
protected:
    explicit MsgboxTest(std::string_view system = test::Win98System())
        : m_folder(system),
          m_machine(m_folder.Open()),
          m_app(InitEnvironment(m_machine->Env())),
          m_prompt(m_system, m_app.helpFile) {
        m_system.SetOpensDocuments(false);
    }

    MsgContext Context() { return {m_prompt, m_machine->Registry(), m_system, m_app, m_state}; }
    RegistryStore& Registry() { return m_machine->Registry(); }

    test::TempMachine m_folder;
    std::unique_ptr<Machine> m_machine;
    AppEnvironment m_app;
    RecordingSystem m_system;
    AppState m_state;
    ScriptedPrompt m_prompt;
};

struct MessageRow {
    const char* name;
    std::function<int(MsgContext&)> call;
    PromptRequest expected;
    PromptAnswer answer;
    int result;  // kNoResult for a message that gives nothing back
};

PromptRequest Request(std::string text, std::int16_t icon, std::array<std::string, 3> buttons,
                      std::int16_t width = 4200, std::string check = {}) {
    return {std::move(text), std::move(buttons), icon, width, std::move(check)};
}

const std::string kSure = "\n\nAre you sure you want to change this setting?";
const std::string kContinue = "\n\nAre you sure you want to continue?";

std::vector<MessageRow> MessageTable() {
    const auto none = [](auto message) {
        return [message](MsgContext& c) {
            message(c);
            return kNoResult;
        };
    };
    return {
        {"MsgEffectNextStart", none(MsgEffectNextStart),
         Request("One or more of these changes you have made will only take effect the next time you start "
                 "Windows.",
                 kInformation, {"OK", "", ""}),
         PromptAnswer::Press(0), kNoResult},
        {"MsgLowColourDisplay", [](MsgContext& c) { return MsgLowColourDisplay(c, 8); },
         Request(
             "Your display is currently configured for 256 colours or less.\n\nTo use high colour icons, "
             "your "
             "display's colour palette must be set to either High Colour or True Colour.\n\nYou can change "
             "your colour palette settings by selecting the \"Settings...\" button below.",
             kStop, {"OK", "&Settings...", ""}),
         PromptAnswer::Press(0), 0},
        {"MsgConfirmNotepadAllFiles", MsgConfirmNotepadAllFiles,
         Request(
             "Adding Notepad to all files causes conflicts with the Microsoft Office shortcut bar." + kSure,
             kQuestion, {"Cancel", "OK", ""}),
         PromptAnswer::Press(1), 1},
        {"MsgConfirmHideNetwork", MsgConfirmHideNetwork,
         Request("Hiding Network Neighborhood disables shell support for Universal Naming Convention (UNC) "
                 "notation." +
                     kSure,
                 kExclamation, {"&Help", "Cancel", "OK"}),
         PromptAnswer::Press(2), 2},
        {"MsgConfirmDisableDesktop", MsgConfirmDisableDesktop,
         Request(
             "Disabling the Desktop causes a conflict with Internet Explorer 4.0 which may make this change "
             "irreversable." +
                 kSure,
             kExclamation, {"Cancel", "OK", ""}),
         PromptAnswer::Press(0), 0},
        {"MsgConfirmRestorePointers", MsgConfirmRestorePointers,
         Request("Restoring all your Windows 98 pointers will return them to Microsoft setup defaults." +
                     kContinue,
                 kQuestion, {"Cancel", "OK", ""}),
         PromptAnswer::Press(1), 1},
        {"MsgConfirmRestoreIcons", MsgConfirmRestoreIcons,
         Request("Restoring all your Windows 98 system icons will return them to Microsoft setup defaults." +
                     kContinue,
                 kQuestion, {"Cancel", "OK", ""}),
         PromptAnswer::Escape(), 4},
        {"MsgConfirmRestoreSettings", MsgConfirmRestoreSettings,
         Request(
             "Restoring all your Windows 98 system settings will return them to Microsoft setup defaults." +
                 kContinue,
             kQuestion, {"Cancel", "OK", ""}),
         PromptAnswer::Press(1), 1},
        {"MsgSaveBeforeClosing", MsgSaveBeforeClosing,
         Request("Would you like to save your changes before closing?", kQuestion, {"Cancel", "No", "Yes"}),
         PromptAnswer::Press(2), 2},
        {"MsgInvalidThemeFile",
         [](MsgContext& c) {
             MsgInvalidThemeFile(c, "C:\\Themes\\Broken.gmtheme");
             return kNoResult;
         },
         Request("The file C:\\Themes\\Broken.gmtheme does not appear to be a valid theme file.", kStop,
                 {"OK", "", ""}),
         PromptAnswer::Press(0), kNoResult},
        {"MsgConfirmOverwriteTheme", [](MsgContext& c) { return MsgConfirmOverwriteTheme(c, "Mountains"); },
         Request("Are you sure you want to overwrite the Icon Theme:\n\nMountains\n\n\nIf you tick the box "
                 "below, "
                 "theme files will automatically be overwritten when you click save.",
                 kQuestion, {"&Cancel", "No", "Yes"}, 4200, "Do not ask me this question next time"),
         PromptAnswer::Press(1), 1},
        {"MsgRestartNow",
         [](MsgContext& c) {
             MsgRestartNow(c);
             return kNoResult;
         },
         Request("You will need to restart your computer for one or more of these changes to take "
                 "effect.\n\nWould "
                 "you like to restart your computer now?",
                 kQuestion, {"No", "Yes", ""}),
         PromptAnswer::Press(0), kNoResult},
        {"MsgShellNotified", none(MsgShellNotified),
         Request(
             "Glyphmoor has notified Windows 98 of your changes.\n\nWindows 95 and Windows NT contains flaws "
             "that can cause these changes to be ignored under certain conditions.\n\nIf your changes are "
             "not "
             "applied you will need to select the \"Rebuild Icon Cache\" option from the File menu.\n\nFor "
             "more "
             "information about this problem, please select the \"Help\" button below.",
             kExclamation, {"&Help", "OK", ""}, 4600, "Do not show this dialog again"),
         PromptAnswer::Press(1), kNoResult},
        {"MsgNameRequired", none(MsgNameRequired),
         Request("You must provide a name for your system icon.", kExclamation, {"OK", "", ""}),
         PromptAnswer::Press(0), kNoResult},
        {"MsgConfirmRemoveDesktopIni", MsgConfirmRemoveDesktopIni,
         Request(
             "Restoring this icon will remove the 'desktop.ini' file from the selected folder." + kContinue,
             kQuestion, {"Cancel", "OK", ""}),
         PromptAnswer::Press(1), 1},
        {"MsgConfirmRemoveAutorun", MsgConfirmRemoveAutorun,
         Request("Restoring this icon will remove the 'autorun.inf' file from the selected hard drive." +
                     kContinue,
                 kQuestion, {"Cancel", "OK", ""}),
         PromptAnswer::Press(0), 0},
        {"MsgSelectCustomisedItem", none(MsgSelectCustomisedItem),
         Request("You must select a customised folder or hard drive before it can be restored to the default "
                 "icon.",
                 kInformation, {"OK", "", ""}),
         PromptAnswer::Press(0), kNoResult},
        {"MsgSelectThemeForFavorites", none(MsgSelectThemeForFavorites),
         Request("You must open or select a theme before it can be added to your Favorites menu.",
                 kInformation, {"OK", "", ""}),
         PromptAnswer::Press(0), kNoResult},
        {"MsgConfirmDeleteTheme", [](MsgContext& c) { return MsgConfirmDeleteTheme(c, "Ocean Blue"); },
         Request("You are about to delete the theme 'Ocean Blue' and all the icons associated with it." +
                     kContinue,
                 kQuestion, {"Cancel", "OK", ""}),
         PromptAnswer::Press(1), 1},
        {"MsgNt4Ie4Limited", none(MsgNt4Ie4Limited),
         Request(
             "Glyphmoor has detected that you are using Windows NT 4.0 with Internet Explorer 4.0 Active "
             "Desktop installed.\n\nDue to an Internet Explorer bug, this shell will corrupt your icons "
             "after "
             "processing some updates on NT. We are working around this bug, but for the moment only a "
             "limited "
             "set of icon changes will be applied on NT4 + IE4 systems with this beta of Glyphmoor.\n\nWe "
             "have "
             "tested this beta with the official Internet Explorer 5 release and have not experienced the "
             "problem there, so this beta will function fully on NT4 + IE5.\n\nPlease note that this problem "
             "should not occur with Windows 95/98 or Windows 2000 betas.",
             kInformation, {"OK", "", ""}, 5000),
         PromptAnswer::Press(0), kNoResult},
        {"MsgConfirmPermanentDelete",
         [](MsgContext& c) { return MsgConfirmPermanentDelete(c, "Volume Control"); },
         Request("Are you sure you want to permanently delete 'Volume Control'?", kQuestion,
                 {"No", "Yes", ""}),
         PromptAnswer::Press(1), 1},
        {"MsgNt4ActiveDesktopNote", none(MsgNt4ActiveDesktopNote),
         Request(
             "Please note that we are still working around an error on Windows NT4 systems that have Active "
             "Desktop installed. Not all of the icons will immediately change on these systems (though many "
             "will).\n\nA temporary workaround, should you wish to try it, is to kill EXPLORER.EXE and then "
             "use "
             "Glyphmoor to Rebuild Icon Cache. Restart Explorer and all your icons should now have the "
             "correct "
             "package applied.",
             kInformation, {"OK", "", ""}, 5000),
         PromptAnswer::Press(0), kNoResult},
    };
}

TEST_F(MsgboxTest, EveryMessageShowsItsTextIconButtonsAndCheckBox) {
    const auto table = MessageTable();
    for (const auto& row : table) {
        SCOPED_TRACE(row.name);
        ScriptedPrompt prompt(m_system, m_app.helpFile, {row.answer});
        MsgContext c{prompt, Registry(), m_system, m_app, m_state};
        const int result = row.call(c);
        ASSERT_EQ(prompt.Shown().size(), 1U);
        const PromptRequest& shown = prompt.Shown()[0];
        EXPECT_EQ(shown.text, row.expected.text);
        EXPECT_EQ(shown.iconId, row.expected.iconId);
        EXPECT_EQ(shown.buttons, row.expected.buttons);
        EXPECT_EQ(shown.textWidth, row.expected.textWidth);
        EXPECT_EQ(shown.checkText, row.expected.checkText);
        EXPECT_EQ(result, row.result);
        EXPECT_EQ(prompt.AnswersLeft(), 0U);
        EXPECT_EQ(prompt.Unanswered(), 0U);
    }
    EXPECT_EQ(table.size(), 22U);
}

TEST_F(MsgboxTest, SaveBeforeClosingAsksTheCloseSequencesQuestion) {
    m_prompt.Answer({PromptAnswer::Press(1)});
    auto c = Context();
    EXPECT_EQ(MsgSaveBeforeClosing(c), 1);
    EXPECT_EQ(m_prompt.Shown()[0].text, kSaveChangesQuestion);
    m_state.applyEnabled = true;
    EXPECT_EQ(CloseActionFor(m_state, MsgSaveBeforeClosing(c)), CloseAction::Cancel);
}

TEST_F(MsgboxTest, LowColourWarningOnlyAtExactlyEightBits) {
    const struct {
        int bits;
        bool shown;
    } cases[] = {{1, false}, {4, false}, {8, true}, {15, false}, {16, false}, {24, false}, {32, false}};
    for (const auto& row : cases) {
        ScriptedPrompt prompt(m_system, m_app.helpFile, {PromptAnswer::Press(0)});
        MsgContext c{prompt, Registry(), m_system, m_app, m_state};
        EXPECT_EQ(MsgLowColourDisplay(c, row.bits), 0) << row.bits;
        EXPECT_EQ(prompt.Shown().size(), row.shown ? 1U : 0U) << row.bits;
    }
}

TEST_F(MsgboxTest, WindowsNameFollowsTheFlavour) {
    const struct {
        std::string system;
        const char* name;
    } cases[] = {
        {"\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion] "
         "1700000000\n\"VersionNumber\"=\"4.00.950\"\n",
         "Windows 95"},
        {test::Win98System(), "Windows 98"},
        {test::WinNtSystem(), "Windows NT"},
    };
    for (const auto& row : cases) {
        test::TempMachine folder(row.system);
        auto machine = folder.Open();
        const AppEnvironment app = InitEnvironment(machine->Env());
        ScriptedPrompt prompt(m_system, app.helpFile, {PromptAnswer::Press(0), PromptAnswer::Press(0)});
        MsgContext c{prompt, machine->Registry(), m_system, app, m_state};
        MsgConfirmRestoreIcons(c);
        MsgShellNotified(c);
        ASSERT_EQ(prompt.Shown().size(), 2U);
        EXPECT_TRUE(prompt.Shown()[0].text.starts_with("Restoring all your " + std::string(row.name) +
                                                       " system icons will"));
        EXPECT_TRUE(prompt.Shown()[1].text.starts_with("Glyphmoor has notified " + std::string(row.name) +
                                                       " of your changes.\n\n"));
    }
}

// "Dialog Overwrite": only 1 silences; a tick is stored whatever closed the dialog.
TEST_F(MsgboxTest, OverwriteQuestionSilencedOnlyByOne) {
    const struct {
        const char* stored;  // nullptr: no value
        bool shown;
    } cases[] = {{nullptr, true}, {"0", true}, {"2", true}, {"1", false}, {"-1", true}};
    for (const auto& row : cases) {
        SCOPED_TRACE(row.stored ? row.stored : "absent");
        DeleteRegValue(Registry(), kSettingsPath, kDialogOverwrite);
        if (row.stored != nullptr) {
            SetRegDword(Registry(), kSettingsPath, kDialogOverwrite, std::stoi(row.stored));
        }
        ScriptedPrompt prompt(m_system, m_app.helpFile, {PromptAnswer::Press(0)});
        MsgContext c{prompt, Registry(), m_system, m_app, m_state};
        const std::int16_t result = MsgConfirmOverwriteTheme(c, "Theme");
        EXPECT_EQ(prompt.Shown().size(), row.shown ? 1U : 0U);
        EXPECT_EQ(result, row.shown ? 0 : 2);
    }
}

TEST_F(MsgboxTest, OverwriteTickStoredEvenOnCancel) {
    m_prompt.Answer({PromptAnswer::Press(0, true)});
    auto c = Context();
    EXPECT_EQ(MsgConfirmOverwriteTheme(c, "Theme"), 0);
    EXPECT_EQ(GetRegDword(Registry(), kSettingsPath, kDialogOverwrite), 1);
    // From then on the question answers "Yes" without a dialog.
    EXPECT_EQ(MsgConfirmOverwriteTheme(c, "Theme"), 2);
    EXPECT_EQ(m_prompt.Shown().size(), 1U);
}

TEST_F(MsgboxTest, OverwriteUntickedLeavesNoValue) {
    m_prompt.Answer({PromptAnswer::Press(2, false)});
    auto c = Context();
    EXPECT_EQ(MsgConfirmOverwriteTheme(c, "Theme"), 2);
    EXPECT_EQ(GetRegDword(Registry(), kSettingsPath, kDialogOverwrite), kRegDwordUnreadable);
}

// Escape keeps the box of the last button press, here that of an earlier
// message, and the overwrite question stores it.
TEST_F(MsgboxTest, OverwriteAfterEscapeStoresAnEarlierTick) {
    auto c = Context();
    m_prompt.Answer({PromptAnswer::Press(1, true)});
    MsgShellNotified(c);
    DeleteRegValue(Registry(), kSettingsPath, kDialogRebuild);
    m_prompt.Answer({PromptAnswer::Escape()});
    EXPECT_EQ(MsgConfirmOverwriteTheme(c, "Theme"), 4);
    EXPECT_EQ(GetRegDword(Registry(), kSettingsPath, kDialogOverwrite), 1);
}

TEST_F(MsgboxTest, ShellNotifiedClearsRebuildPendingAndStoresTheTick) {
    auto c = Context();
    m_state.rebuildPending = true;
    m_prompt.Answer({PromptAnswer::Press(1, false)});
    MsgShellNotified(c);
    EXPECT_FALSE(m_state.rebuildPending);
    EXPECT_EQ(GetRegDword(Registry(), kSettingsPath, kDialogRebuild), kRegDwordUnreadable);

    m_state.rebuildPending = true;
    m_prompt.Answer({PromptAnswer::Press(1, true)});
    MsgShellNotified(c);
    EXPECT_FALSE(m_state.rebuildPending);
    EXPECT_EQ(GetRegDword(Registry(), kSettingsPath, kDialogRebuild), 1);

    // Silenced: nothing shows and the flag stays.
    m_state.rebuildPending = true;
    MsgShellNotified(c);
    EXPECT_TRUE(m_state.rebuildPending);
    EXPECT_EQ(m_prompt.Shown().size(), 2U);
}

TEST_F(MsgboxTest, ShellNotifiedHelpOpensNothing) {
    auto c = Context();
    m_prompt.Answer({PromptAnswer::Press(0), PromptAnswer::Press(1)});
    MsgShellNotified(c);
    EXPECT_TRUE(m_system.Calls().empty());
    EXPECT_EQ(m_prompt.PromptResult(), 1);
}

struct RestartRow {
    const char* name;
    PromptAnswer answer;
    bool restarts;
};

void PrintTo(const RestartRow& row, std::ostream* os) {
    *os << row.name;
}

class RestartTest : public MsgboxTest, public ::testing::WithParamInterface<std::tuple<RestartRow, bool>> {
protected:
    RestartTest() : MsgboxTest(std::get<1>(GetParam()) ? test::WinNtSystem() : test::Win98System()) {}
};

TEST_P(RestartTest, ActsOnItsAnswer) {
    const auto& [row, nt] = GetParam();
    m_state.restartNeeded = true;
    m_prompt.Answer({row.answer});
    auto c = Context();
    MsgRestartNow(c);
    std::vector<std::string> expected;
    if (row.restarts) {
        if (nt) {
            expected.emplace_back("EnableShutdownPrivilege");
        }
        expected.emplace_back("ExitWindowsEx 0x2 0xffffffff");
    }
    EXPECT_EQ(m_system.Calls(), expected);
    EXPECT_EQ(m_state.restartPending, !row.restarts);
    EXPECT_EQ(m_state.restartNeeded, row.restarts);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, RestartTest,
    ::testing::Combine(::testing::Values(RestartRow{"No", PromptAnswer::Press(0), false},
                                         RestartRow{"Yes", PromptAnswer::Press(1), true},
                                         RestartRow{"Escape", PromptAnswer::Escape(), true}),
                       ::testing::Bool()),
    [](const auto& row) {
        return std::string(std::get<0>(row.param).name) + (std::get<1>(row.param) ? "OnNt" : "On98");
    });

}  // namespace
}  // namespace glyphmoor
