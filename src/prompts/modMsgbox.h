// modMsgbox: every message of the program, one function each.
//
// A message function composes the text, chooses the icon, the buttons (the
// safe answer always in Command(0), the rightmost), the text width and the
// silencing check box, shows it through the prompt and gives back
// PromptResult where its callers need the answer. Two messages can be
// silenced for good: a DWORD 1 under SettingsKey\Settings ("Dialog
// Overwrite", "Dialog Rebuild") keeps them from showing; only 1 silences, and
// the program never writes anything else there.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/RegistryStore.h"
#include "foundation/System.h"
#include "prompts/Prompt.h"

#include <cstdint>
#include <string_view>

namespace glyphmoor {

inline constexpr std::string_view kDialogOverwrite = "Dialog Overwrite";
inline constexpr std::string_view kDialogRebuild = "Dialog Rebuild";

// What the messages reach: the prompt, the registry for the silencing values,
// the system for a restart, the environment for WindowsName and the flavour,
// and the program-wide flags that some answers set.
struct MsgContext {
    Prompt& prompt;
    RegistryStore& registry;
    System& system;
    const AppEnvironment& app;
    AppState& state;
};

// Notices. They give nothing back.
void MsgEffectNextStart(MsgContext& c);
void MsgInvalidThemeFile(MsgContext& c, std::string_view file);
void MsgNameRequired(MsgContext& c);
void MsgSelectCustomisedItem(MsgContext& c);
void MsgSelectThemeForFavorites(MsgContext& c);
void MsgNt4Ie4Limited(MsgContext& c);
void MsgNt4ActiveDesktopNote(MsgContext& c);

// The low-colour warning, shown only when bitsPerPixel (the screen's depth as
// read once at start-up) is exactly 8: at 4 bits it shows nothing either,
// although its text speaks of "256 colours or less". 0 when not shown.
std::int16_t MsgLowColourDisplay(MsgContext& c, int bitsPerPixel);

// Questions: PromptResult, the index of the pressed button (4 after Escape).
std::int16_t MsgConfirmNotepadAllFiles(MsgContext& c);
std::int16_t MsgConfirmHideNetwork(MsgContext& c);
std::int16_t MsgConfirmDisableDesktop(MsgContext& c);
std::int16_t MsgConfirmRestorePointers(MsgContext& c);
std::int16_t MsgConfirmRestoreIcons(MsgContext& c);
std::int16_t MsgConfirmRestoreSettings(MsgContext& c);
// 2 save, 1 discard, 0 stay open.
std::int16_t MsgSaveBeforeClosing(MsgContext& c);
std::int16_t MsgConfirmRemoveDesktopIni(MsgContext& c);
std::int16_t MsgConfirmRemoveAutorun(MsgContext& c);
std::int16_t MsgConfirmDeleteTheme(MsgContext& c, std::string_view theme);
std::int16_t MsgConfirmPermanentDelete(MsgContext& c, std::string_view item);

// The overwrite question: 2 ("Yes") at once when "Dialog Overwrite" is 1.
// Otherwise, after the dialog, a set PromptDontShowAgain writes 1 there,
// whatever the answer; after Escape that is the box of the last button press,
// of an earlier message if need be.
std::int16_t MsgConfirmOverwriteTheme(MsgContext& c, std::string_view theme);

// The restart question, acting on its own answer: "No" (0) sets
// restartPending and clears restartNeeded; anything else, Escape included,
// restarts: on Windows NT the shutdown privilege first, then ExitWindowsEx
// with EWX_REBOOT and reserved -1.
void MsgRestartNow(MsgContext& c);

// The notice that the shell was told of the changes. Nothing at all when
// "Dialog Rebuild" is 1 (rebuildPending stays as it was). Otherwise, after
// the dialog, rebuildPending is cleared, and a set PromptDontShowAgain writes
// 1 to "Dialog Rebuild".
void MsgShellNotified(MsgContext& c);

}  // namespace glyphmoor
