// The icon-cache rebuild on each flavour: its registry writes and broadcasts
// in order, the Windows NT 4.0 branches, the notice, restart and reminder.
#include "foundation/AppEnvironment.h"
#include "foundation/ChangeLog.h"
#include "foundation/Startup.h"
#include "foundation/modRegistry.h"
#include "icons/IconCacheRebuild.h"
#include "support/ScriptedPrompt.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

namespace glyphmoor {
namespace {

const std::string kWin95System =
    "\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion] 1700000000\n\"VersionNumber\"=\"4.00.950\"\n";

std::string WithIe(const std::string& system, std::string_view version) {
    return system + "\n[Software\\\\Microsoft\\\\Internet Explorer] 1700000000\n\"Version\"=\"" +
           std::string(version) + "\"\n";
}

std::string WithIconSize(std::string_view size) {
    return "\n[Control Panel\\\\desktop\\\\WindowMetrics] 1700000000\n\"Shell Icon Size\"=\"" +
           std::string(size) + "\"\n";
}

const std::string kShellNotifiedStart = "Glyphmoor has notified ";
const std::string kNt4Ie4Start = "Glyphmoor has detected that you are using Windows NT 4.0";
const std::string kActiveDesktopStart = "Please note that we are still working around an error";

// A machine whose registry and system calls are logged in one sequence.
class Rebuild {
public:
    explicit Rebuild(std::string_view system, std::string_view user = "")
        : m_folder(system, user),
          m_machine(m_folder.Open()),
          m_registry(m_machine->Registry(), m_log),
          m_loggedSystem(m_system, m_log),
          m_app(InitEnvironment(m_machine->Env())),
          m_prompt(m_loggedSystem, m_app.helpFile) {
        m_system.SetOpensDocuments(false);
        m_state.rebuildPending = true;
    }

    MsgContext Context() { return {m_prompt, m_registry, m_loggedSystem, m_app, m_state}; }
    RebuildOutcome Run(bool newShell = false) {
        RebuildHooks hooks;
        hooks.desktopUpdateShell = [this, newShell] {
            ++shellAsked;
            return newShell;
        };
        hooks.refreshIconLists = [this] { refreshedBeforeNotice.push_back(m_prompt.Shown().size()); };
        auto c = Context();
        return RebuildIconCache(c, hooks);
    }
    [[nodiscard]] std::string IconSize() {
        return GetRegString(m_machine->Registry(), kWindowMetricsPath, kShellIconSizeName);
    }
    [[nodiscard]] std::vector<std::string> Texts() const {
        std::vector<std::string> starts;
        for (const auto& request : m_prompt.Shown()) {
            starts.push_back(request.text);
        }
        return starts;
    }

    test::TempMachine m_folder;
    std::unique_ptr<Machine> m_machine;
    ChangeLog m_log;
    LoggingRegistry m_registry;
    RecordingSystem m_system;
    LoggingSystem m_loggedSystem;
    AppEnvironment m_app;
    AppState m_state;
    ScriptedPrompt m_prompt;
    int shellAsked = 0;
    std::vector<std::size_t> refreshedBeforeNotice;
};

std::vector<std::string> Lever(std::string_view bigger, std::string_view size) {
    const std::string write =
        "write\tHKEY_CURRENT_USER\\Control Panel\\desktop\\WindowMetrics\tShell Icon Size\t";
    return {write + std::string(bigger), "send\tWM_SETTINGCHANGE 0x2e 0", write + std::string(size),
            "send\tWM_SETTINGCHANGE 0x2e 0"};
}

// An absent size is written as 33 then 32, a size of 48 as 49 then 48; the
// notice names the flavour.
TEST(RebuildIconCache, EachFlavourNudgesTheIconSizeAndNotifies) {
    const struct {
        const char* name;
        std::string system;
        const char* windowsName;
    } flavours[] = {
        {"Win95", kWin95System, "Windows 95"},
        {"Win98", test::Win98System(), "Windows 98"},
        {"WinNT", test::WinNtSystem(), "Windows NT"},
        {"WinNT with IE 4", WithIe(test::WinNtSystem(), "4.72.3110.0"), "Windows NT"},
    };
    for (const auto& f : flavours) {
        SCOPED_TRACE(f.name);
        Rebuild r(f.system);
        r.m_prompt.Answer({PromptAnswer::Press(1)});
        EXPECT_EQ(r.Run(), RebuildOutcome::Rebuilt);
        EXPECT_EQ(r.m_log.Lines(), Lever("33", "32"));
        EXPECT_EQ(r.IconSize(), "32");
        ASSERT_EQ(r.Texts().size(), 1U);
        EXPECT_TRUE(r.Texts()[0].starts_with(kShellNotifiedStart + f.windowsName + " of your changes."));
        EXPECT_FALSE(r.m_state.rebuildPending);
        EXPECT_EQ(r.refreshedBeforeNotice, std::vector<std::size_t>{0});

        Rebuild big(f.system, WithIconSize("48"));
        big.m_prompt.Answer({PromptAnswer::Press(1)});
        big.Run();
        EXPECT_EQ(big.m_log.Lines(), Lever("49", "48"));
        EXPECT_EQ(big.IconSize(), "48");
    }
}

TEST(RebuildIconCache, NewShellIsAskedOnlyOnNt) {
    Rebuild win98(test::Win98System());
    win98.m_prompt.Answer({PromptAnswer::Press(1)});
    win98.Run(true);
    EXPECT_EQ(win98.shellAsked, 0);
    EXPECT_EQ(win98.m_log.Lines(), Lever("33", "32"));

    Rebuild nt(test::WinNtSystem());
    nt.m_prompt.Answer({PromptAnswer::Press(1)});
    nt.Run(false);
    EXPECT_EQ(nt.shellAsked, 1);
}

// With the desktop-update shell, with Internet Explorer 4 or none at all.
TEST(RebuildIconCache, Nt4WithIe4DesktopShellWarnsAndChangesNothing) {
    for (const std::string& system : {WithIe(test::WinNtSystem(), "4.72.3110.0"), test::WinNtSystem()}) {
        Rebuild r(system, WithIconSize("48"));
        r.m_prompt.Answer({PromptAnswer::Press(0)});
        EXPECT_EQ(r.Run(true), RebuildOutcome::RefusedOnNt4Ie4);
        EXPECT_TRUE(r.m_log.Lines().empty());
        EXPECT_TRUE(r.m_system.Calls().empty());
        ASSERT_EQ(r.Texts().size(), 1U);
        EXPECT_TRUE(r.Texts()[0].starts_with(kNt4Ie4Start));
        EXPECT_EQ(r.m_prompt.Shown()[0].buttons, (std::array<std::string, 3>{"OK", "", ""}));
        EXPECT_TRUE(r.m_state.rebuildPending);
        EXPECT_TRUE(r.refreshedBeforeNotice.empty());
    }
}

TEST(RebuildIconCache, Nt4WithIe5NotesActiveDesktopThenRebuilds) {
    for (bool newShell : {false, true}) {
        Rebuild r(WithIe(test::WinNtSystem(), "5.00.2314.1003"));
        r.m_prompt.Answer({PromptAnswer::Press(0), PromptAnswer::Press(1)});
        EXPECT_EQ(r.Run(newShell), RebuildOutcome::Rebuilt);
        ASSERT_EQ(r.Texts().size(), 2U);
        EXPECT_TRUE(r.Texts()[0].starts_with(kActiveDesktopStart));
        EXPECT_TRUE(r.Texts()[1].starts_with(kShellNotifiedStart + "Windows NT"));
        EXPECT_EQ(r.m_log.Lines(), Lever("33", "32"));
        EXPECT_EQ(r.refreshedBeforeNotice, std::vector<std::size_t>{1});
    }
}

TEST(RebuildIconCache, SilencedNoticeLeavesRebuildPendingSet) {
    Rebuild r(
        test::Win98System(),
        "\n[Software\\\\Veltrane\\\\Glyphmoor\\\\Settings] 1700000000\n\"Dialog Rebuild\"=dword:00000001\n");
    EXPECT_EQ(r.Run(), RebuildOutcome::Rebuilt);
    EXPECT_TRUE(r.Texts().empty());
    EXPECT_TRUE(r.m_state.rebuildPending);
    EXPECT_EQ(r.m_log.Lines(), Lever("33", "32"));
}

TEST(RebuildIconCache, UnreadableSizesCountAs32) {
    const struct {
        const char* text;
        int size;
    } cases[] = {
        {"", 32},   {"Error", 32}, {"48", 48},   {" 16 ", 16},  {"+24", 24},
        {"-5", -5}, {"abc", 32},   {"48px", 32}, {"70000", 32}, {"32767", 32767},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(ShellIconSizeOf(row.text), row.size) << row.text;
    }
}

// What the restart question does is MsgRestartNow's; a declined restart
// reminds once at close, and nothing else does.
TEST(PromptRestart, OnlyADeclinedRestartRemindsAtClose) {
    Rebuild r(test::Win98System());
    auto c = r.Context();
    ShowNextStartNotice(c);
    EXPECT_TRUE(r.Texts().empty());
    r.m_state.restartNeeded = true;
    r.m_prompt.Answer({PromptAnswer::Press(0), PromptAnswer::Press(0)});
    PromptRestart(c);
    ShowNextStartNotice(c);
    ASSERT_EQ(r.Texts().size(), 2U);
    EXPECT_EQ(
        r.Texts()[1],
        "One or more of these changes you have made will only take effect the next time you start Windows.");
    EXPECT_EQ(r.m_prompt.Shown()[1].iconId, static_cast<std::int16_t>(PromptIcon::Information));
}

}  // namespace
}  // namespace glyphmoor
