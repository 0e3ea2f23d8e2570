// TweakEditing: what the Tweak Shell page does to the tree before Apply.
// It toggles check items (asking the item's question first), edits value
// items through the editor's scroll bar and text box, and restores the
// defaults. Each change marks its top-level group changed, enables Apply and
// sets RebuildPending or RestartNeeded where the item needs it; nothing
// reaches the machine before Apply (TweakApply).
#pragma once

#include "foundation/AppState.h"
#include "foundation/modFunctions.h"
#include "prompts/modMsgbox.h"
#include "tweaks/TweakTree.h"

#include <optional>
#include <string>
#include <string_view>

namespace glyphmoor {

// The value editor's scroll bar runs from 0 to this; the item's own limit is
// enforced on every change.
inline constexpr int kTweakScrollMax = 32767;

enum class ToggleOutcome {
    NotToggled,  // no such node, or not a check box (image 3 or 4)
    Refused,     // the question was not answered with OK: nothing changed
    TurnedOn,
    TurnedOff,
};

// Asks the item's question before turning it on: true when it may go ahead
// (the colour notice only informs; an item without a question always may).
bool ConfirmTurnOn(MsgContext& messages, const TweakNode& node, const DisplayCaps& caps);

// An icon click on the node with this key: turns an unchecked box on (after
// its question) or a checked box off (never asked), then marks the group,
// enables Apply and sets the item's flags. On Windows NT every restriction
// also needs a restart.
ToggleOutcome ToggleTweak(TweakTree& tree, MsgContext& messages, std::string_view key);

// Marks the node's top-level group changed and enables Apply.
void MarkTweakChanged(TweakTree& tree, AppState& state, std::string_view key);

// What a scroll-bar change did.
struct ValueEdit {
    // Where the scroll bar stands afterwards and the text the box shows.
    int scrollValue = 0;
    std::string text;
    // The value passed the item's limit: the program beeped and snapped back.
    bool beeped = false;
};

// The editor's scroll bar moved to `value` on the value item with this key:
// the pending value becomes it; past the item's limit the program beeps and
// the scroll bar (and so the pending value) goes back to the limit. "Menu
// Show Delay" also needs a restart. Nothing for a key that is not a value item.
std::optional<ValueEdit> ScrollTweakValue(TweakTree& tree, AppState& state, std::string_view key, int value);

// Text typed into the editor's box: an empty text leaves the pending value
// empty (Apply then writes nothing for it); otherwise the number the text
// begins with, as Val reads it (0 when none), moves the scroll bar there.
std::optional<ValueEdit> TypeTweakValue(TweakTree& tree, AppState& state, std::string_view key,
                                        std::string_view text);

// The answer MsgConfirmRestoreSettings gives when it may go ahead.
inline constexpr std::int16_t kRestoreSettingsOk = 1;

// Sets every item's default (the Display items only when the group is
// available), "Menu Show Delay"'s image to 3, the startup page's options
// when present, marks the groups of the items it reset so that Apply writes
// them, sets RebuildPending and enables Apply. Asks nothing: the caller has
// confirmed.
void RestoreTweakDefaults(TweakTree& tree, AppState& state);

}  // namespace glyphmoor
