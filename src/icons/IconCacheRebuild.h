// IconCacheRebuild: making the shell reload its icons, and the messages that
// follow (the shell-notified notice, the Windows NT 4.0 desktop warnings, the
// restart question and the next-start reminder).
//
// The shell keeps its icons in a cache and does not see a changed registry
// entry until it reloads them. The rebuild makes it: it changes the shell's
// icon size by one pixel, tells every top-level window that the icon metrics
// changed, puts the size back and tells them again.
#pragma once

#include "prompts/modMsgbox.h"

#include <functional>
#include <string_view>

namespace glyphmoor {

// The lever: a decimal text of pixels; absent or unreadable means 32.
inline constexpr std::string_view kWindowMetricsPath =
    "HKEY_CURRENT_USER\\Control Panel\\desktop\\WindowMetrics";
inline constexpr std::string_view kShellIconSizeName = "Shell Icon Size";
inline constexpr int kDefaultShellIconSize = 32;

enum class RebuildOutcome {
    Rebuilt,
    // Windows NT 4.0 with the Internet Explorer 4 desktop-update shell: the
    // warning was shown and nothing was written or sent.
    RefusedOnNt4Ie4,
};

struct RebuildHooks {
    // Whether the desktop-update shell is installed (NewShell of the icon
    // catalogue's machine state). Asked only on Windows NT; the catalogue
    // computes its machine state here when it has not been built yet.
    std::function<bool()> desktopUpdateShell;
    // Refreshes the Icons page's lists after the rebuild (the window's part).
    std::function<void()> refreshIconLists;
};

// The size the lever's text stands for: "" and "Error" are 32, and so is a
// text that is not a whole number of 16 bits (blanks around it allowed).
int ShellIconSizeOf(std::string_view text);

// Rebuilds the icon cache; ends with ShowRebuildNotice. On Windows NT with
// Internet Explorer 5 (its "Version" begins with "5") the Active Desktop note
// comes first; otherwise, with the desktop-update shell, the NT4 + IE4
// warning is shown and nothing else happens. The size is always written back
// as text, so a machine that had no "Shell Icon Size" has "32" afterwards.
// Registry failures are silent; both broadcasts are sent regardless.
RebuildOutcome RebuildIconCache(MsgContext& c, const RebuildHooks& hooks = {});

// The shell-notified notice (MsgShellNotified): clears rebuildPending unless
// silenced by "Dialog Rebuild".
void ShowRebuildNotice(MsgContext& c);

// Asks to restart (MsgRestartNow), which acts on the answer itself.
void PromptRestart(MsgContext& c);

// Enables the shutdown privilege of the program's own process (Windows NT).
void EnableShutdownPrivilege(MsgContext& c);

// When the main window unloads with restartPending set: the reminder that
// some changes take effect at the next start of Windows.
void ShowNextStartNotice(MsgContext& c);

}  // namespace glyphmoor
