// Every message of the program through the scripted prompt: the rules its
// text, icon, buttons, width and check box follow, and what its answer gives back.
#include "foundation/AppEnvironment.h"
#include "foundation/Startup.h"
#include "foundation/modRegistry.h"
#include "prompts/modMsgbox.h"
#include "support/ScriptedPrompt.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <algorithm>
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
    MsgboxTest()
        : m_machine(m_folder.Open()),
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

// Each message, called with arguments where it takes any.
struct MessageRow {
    const char* name;
    std::function<int(MsgContext&)> call;
    bool givesResult;
};

std::vector<MessageRow> MessageTable() {
    const auto none = [](auto message) {
        return [message](MsgContext& c) {
            message(c);
            return kNoResult;
        };
    };
    const auto withText = [](void (*message)(MsgContext&, std::string_view), const char* text) {
        return [message, text](MsgContext& c) {
            message(c, text);
            return kNoResult;
        };
    };
    return {
        {"MsgEffectNextStart", none(MsgEffectNextStart), false},
        {"MsgLowColourDisplay", [](MsgContext& c) { return MsgLowColourDisplay(c, 8); }, true},
        {"MsgConfirmNotepadAllFiles", MsgConfirmNotepadAllFiles, true},
        {"MsgConfirmHideNetwork", MsgConfirmHideNetwork, true},
        {"MsgConfirmDisableDesktop", MsgConfirmDisableDesktop, true},
        {"MsgConfirmRestorePointers", MsgConfirmRestorePointers, true},
        {"MsgConfirmRestoreIcons", MsgConfirmRestoreIcons, true},
        {"MsgConfirmRestoreSettings", MsgConfirmRestoreSettings, true},
        {"MsgSaveBeforeClosing", MsgSaveBeforeClosing, true},
        {"MsgInvalidThemeFile", withText(MsgInvalidThemeFile, "C:\\Themes\\Broken.gmtheme"), false},
        {"MsgConfirmOverwriteTheme", [](MsgContext& c) { return MsgConfirmOverwriteTheme(c, "Mountains"); },
         true},
        {"MsgRestartNow", none(MsgRestartNow), false},
        {"MsgShellNotified", none(MsgShellNotified), false},
        {"MsgNameRequired", none(MsgNameRequired), false},
        {"MsgConfirmRemoveDesktopIni", MsgConfirmRemoveDesktopIni, true},
        {"MsgConfirmRemoveAutorun", MsgConfirmRemoveAutorun, true},
        {"MsgSelectCustomisedItem", none(MsgSelectCustomisedItem), false},
        {"MsgSelectThemeForFavorites", none(MsgSelectThemeForFavorites), false},
        {"MsgConfirmDeleteTheme", [](MsgContext& c) { return MsgConfirmDeleteTheme(c, "Ocean Blue"); }, true},
        {"MsgNt4Ie4Limited", none(MsgNt4Ie4Limited), false},
        {"MsgConfirmPermanentDelete",
         [](MsgContext& c) { return MsgConfirmPermanentDelete(c, "Volume Control"); }, true},
        {"MsgNt4ActiveDesktopNote", none(MsgNt4ActiveDesktopNote), false},
    };
}

// The buttons that close the dialog (not "&Help" or "&Settings...").
std::vector<std::string> ClosingButtons(const PromptRequest& request) {
    std::vector<std::string> closing;
    for (const std::string& caption : request.buttons) {
        if (!caption.empty() && caption != kHelpCaption && caption != kSettingsCaption) {
            closing.push_back(caption);
        }
    }
    return closing;
}

// What every message must satisfy: shown once with a stock icon; paragraphs
// joined by two line feeds, no blanks at either end; the safe answer in
// Command(0) or, after "&Help", the first closing button (the one the silent
// prompt presses), which is never a "Yes" or an "OK" beside a "Cancel"; the
// label 4200 twips wide unless widened; a check box only on the two messages
// that can be silenced; PromptResult handed back.
TEST_F(MsgboxTest, EveryMessageFollowsTheRulesOfAMessage) {
    const std::array<std::int16_t, 4> icons = {kStop, kQuestion, kExclamation, kInformation};
    for (const auto& row : MessageTable()) {
        SCOPED_TRACE(row.name);
        for (const PromptAnswer& answer : {PromptAnswer::Press(0), PromptAnswer::Escape()}) {
            ScriptedPrompt prompt(m_system, m_app.helpFile, {answer});
            MsgContext c{prompt, Registry(), m_system, m_app, m_state};
            const int result = row.call(c);
            ASSERT_EQ(prompt.Shown().size(), 1U);
            const PromptRequest& shown = prompt.Shown()[0];
            EXPECT_NE(std::find(icons.begin(), icons.end(), shown.iconId), icons.end());
            ASSERT_FALSE(shown.text.empty());
            EXPECT_NE(shown.text.front(), ' ');
            EXPECT_NE(shown.text.back(), ' ');
            EXPECT_NE(shown.text.back(), '\n');
            if (std::string_view(row.name) != "MsgConfirmOverwriteTheme") {
                std::string joined = shown.text;
                for (auto at = joined.find("\n\n"); at != std::string::npos; at = joined.find("\n\n")) {
                    joined.replace(at, 2, " | ");
                }
                EXPECT_EQ(joined.find('\n'), std::string::npos) << shown.text;
                EXPECT_EQ(joined.find("|  |"), std::string::npos) << shown.text;
            }
            const auto closing = ClosingButtons(shown);
            ASSERT_FALSE(closing.empty());
            const std::string& safe = closing.front();
            if (closing.size() == 1) {
                EXPECT_EQ(safe, "OK");
            } else {
                EXPECT_TRUE(safe == "Cancel" || safe == "&Cancel" || safe == "No") << safe;
            }
            EXPECT_TRUE(shown.textWidth == 4200 || shown.textWidth == 4600 || shown.textWidth == 5000);
            const bool silenced = std::string_view(row.name) == "MsgConfirmOverwriteTheme" ||
                                  std::string_view(row.name) == "MsgShellNotified";
            EXPECT_EQ(shown.checkText.empty(), !silenced);
            if (row.givesResult) {
                EXPECT_EQ(result, answer.kind == PromptAnswer::Kind::Escape ? kPromptNoButton : 0);
            } else {
                EXPECT_EQ(result, kNoResult);
            }
        }
    }
}

// What the texts say where it matters: the arguments in their places, the
// keyword the help button looks up, and the texts whose wording is the
// program's own, spelling included. (The Windows name: WindowsNameFollowsTheFlavour
// and the icon-cache rebuild's notice.)
TEST_F(MsgboxTest, TextsCarryTheirArgumentsAndTheProgramsWording) {
    const auto textOf = [this](const std::function<int(MsgContext&)>& call) {
        ScriptedPrompt prompt(m_system, m_app.helpFile, {PromptAnswer::Press(0)});
        MsgContext c{prompt, Registry(), m_system, m_app, m_state};
        call(c);
        return prompt.Shown().empty() ? std::string() : prompt.Shown()[0].text;
    };
    const struct {
        const char* name;
        std::string_view contains;
    } rows[] = {
        {"MsgInvalidThemeFile", "The file C:\\Themes\\Broken.gmtheme does not"},
        {"MsgConfirmDeleteTheme", "the theme 'Ocean Blue' and all the icons"},
        {"MsgConfirmPermanentDelete", "permanently delete 'Volume Control'?"},
        {"MsgShellNotified",
         "Glyphmoor has notified Windows 98 of your changes.\n\nWindows 95 and Windows NT contains flaws"},
        {"MsgConfirmDisableDesktop", "which may make this change irreversable."},
        {"MsgLowColourDisplay", "256 colours or less"},
        {"MsgNt4Ie4Limited", "Windows 95/98 or Windows 2000 betas."},
        {"MsgConfirmOverwriteTheme",
         "Are you sure you want to overwrite the Icon Theme:\n\nMountains\n\n\nIf you tick the box below, "
         "theme "
         "files will automatically be overwritten when you click save."},
    };
    const auto table = MessageTable();
    for (const auto& row : rows) {
        const auto found = std::find_if(table.begin(), table.end(), [&](const MessageRow& m) {
            return std::string_view(m.name) == row.name;
        });
        ASSERT_NE(found, table.end()) << row.name;
        EXPECT_NE(textOf(found->call).find(row.contains), std::string::npos) << row.name;
    }
    EXPECT_EQ(HelpKeywordFor(textOf(MsgConfirmHideNetwork)).value_or(""), "Hide, Network Neighborhood");
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
        ScriptedPrompt prompt(m_system, app.helpFile, {PromptAnswer::Press(0)});
        MsgContext c{prompt, machine->Registry(), m_system, app, m_state};
        MsgConfirmRestoreIcons(c);
        ASSERT_EQ(prompt.Shown().size(), 1U);
        EXPECT_TRUE(prompt.Shown()[0].text.starts_with("Restoring all your " + std::string(row.name) +
                                                       " system icons will"));
    }
}

// "Dialog Overwrite": only 1 silences, and then the answer is "Yes". A tick is
// stored whatever closed the dialog, Escape keeping the box of the last button
// press (here an earlier message's); no tick, no value.
TEST_F(MsgboxTest, OverwriteQuestionIsSilencedOnlyByOneAndStoresTheTick) {
    const struct {
        const char* name;
        const char* stored;  // nullptr: no value
        PromptAnswer answer;
        std::int16_t result;
        bool shown;
        std::optional<std::int32_t> after;  // "Dialog Overwrite" afterwards
    } cases[] = {
        {"absent", nullptr, PromptAnswer::Press(2), 2, true, kRegDwordUnreadable},
        {"0", "0", PromptAnswer::Press(0), 0, true, std::nullopt},
        {"2", "2", PromptAnswer::Press(0), 0, true, std::nullopt},
        {"-1", "-1", PromptAnswer::Press(0), 0, true, std::nullopt},
        {"1", "1", PromptAnswer::Press(0), 2, false, 1},
        {"ticked at Cancel", nullptr, PromptAnswer::Press(0, true), 0, true, 1},
        {"Escape after an earlier tick", nullptr, PromptAnswer::Escape(), 4, true, 1},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        DeleteRegValue(Registry(), kSettingsPath, kDialogOverwrite);
        if (row.stored != nullptr) {
            SetRegDword(Registry(), kSettingsPath, kDialogOverwrite, std::stoi(row.stored));
        }
        ScriptedPrompt prompt(m_system, m_app.helpFile);
        MsgContext c{prompt, Registry(), m_system, m_app, m_state};
        if (row.answer.kind == PromptAnswer::Kind::Escape) {
            prompt.Answer({PromptAnswer::Press(1, true)});
            MsgShellNotified(c);
            DeleteRegValue(Registry(), kSettingsPath, kDialogRebuild);
        }
        const std::size_t before = prompt.Shown().size();
        prompt.Answer({row.answer});
        EXPECT_EQ(MsgConfirmOverwriteTheme(c, "Theme"), row.result);
        EXPECT_EQ(prompt.Shown().size() - before, row.shown ? 1U : 0U);
        if (row.after) {
            EXPECT_EQ(GetRegDword(Registry(), kSettingsPath, kDialogOverwrite), *row.after);
        }
    }
}

// The notice clears the pending rebuild and stores its tick; silenced, nothing
// shows and the rebuild stays pending. Its help opens nothing.
TEST_F(MsgboxTest, ShellNotifiedClearsRebuildPendingAndStoresTheTick) {
    auto c = Context();
    const struct {
        std::vector<PromptAnswer> answers;
        std::size_t shown;  // in all, so far
        bool pending;
        std::int32_t stored;
    } steps[] = {
        {{PromptAnswer::Press(0), PromptAnswer::Press(1, false)}, 1, false, kRegDwordUnreadable},
        {{PromptAnswer::Press(1, true)}, 2, false, 1},
        {{}, 2, true, 1},
    };
    for (const auto& step : steps) {
        m_state.rebuildPending = true;
        for (const PromptAnswer& answer : step.answers) {
            m_prompt.Answer({answer});
        }
        MsgShellNotified(c);
        EXPECT_EQ(m_prompt.Shown().size(), step.shown);
        EXPECT_EQ(m_state.rebuildPending, step.pending);
        EXPECT_EQ(GetRegDword(Registry(), kSettingsPath, kDialogRebuild), step.stored);
    }
    EXPECT_TRUE(m_system.Calls().empty());
}

// The restart question: "Yes" and Escape restart (on Windows NT with the
// privilege enabled first); "No" leaves the restart pending.
TEST(MsgRestartNow, ActsOnItsAnswer) {
    const struct {
        const char* name;
        PromptAnswer answer;
        bool restarts;
    } rows[] = {{"No", PromptAnswer::Press(0), false},
                {"Yes", PromptAnswer::Press(1), true},
                {"Escape", PromptAnswer::Escape(), true}};
    for (const bool nt : {false, true}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(row.name) + (nt ? " on NT" : " on 98"));
            test::TempMachine folder(nt ? test::WinNtSystem() : test::Win98System());
            const auto machine = folder.Open();
            const AppEnvironment app = InitEnvironment(machine->Env());
            RecordingSystem system;
            system.SetOpensDocuments(false);
            ScriptedPrompt prompt(system, app.helpFile, {row.answer});
            AppState state;
            state.restartNeeded = true;
            MsgContext c{prompt, machine->Registry(), system, app, state};
            MsgRestartNow(c);
            std::vector<std::string> expected;
            if (row.restarts && nt) {
                expected.emplace_back("EnableShutdownPrivilege");
            }
            if (row.restarts) {
                expected.emplace_back("ExitWindowsEx 0x2 0xffffffff");
            }
            EXPECT_EQ(system.Calls(), expected);
            EXPECT_EQ(state.restartPending, !row.restarts);
            EXPECT_EQ(state.restartNeeded, row.restarts);
        }
    }
}

}  // namespace
}  // namespace glyphmoor
