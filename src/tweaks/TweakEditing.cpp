#include "tweaks/TweakEditing.h"

#include <algorithm>
#include <string>

namespace glyphmoor {

namespace {

// The pressed button of the last question was "OK".
bool PressedOk(const Prompt& prompt) {
    const std::int16_t result = prompt.PromptResult();
    return result >= 0 && result <= 2 && prompt.PromptButtons().at(static_cast<std::size_t>(result)) == "OK";
}

void ApplyToggleEffects(const TweakNode& node, const std::string& group, MsgContext& messages) {
    const ToggleEffect effect = node.row != nullptr ? node.row->effect : ToggleEffect::None;
    if (effect == ToggleEffect::Rebuild) {
        messages.state.rebuildPending = true;
    } else if (effect == ToggleEffect::Restart) {
        messages.state.restartNeeded = true;
    }
    if (messages.app.windowsFlavour == "WinNT" && group == "Restrictions") {
        messages.state.restartNeeded = true;
    }
}

}  // namespace

bool ConfirmTurnOn(MsgContext& messages, const TweakNode& node, const DisplayCaps& caps) {
    const TweakConfirm confirm = node.row != nullptr ? node.row->confirm : TweakConfirm::None;
    switch (confirm) {
        case TweakConfirm::Notepad:
            MsgConfirmNotepadAllFiles(messages);
            return PressedOk(messages.prompt);
        case TweakConfirm::HideNetwork:
            MsgConfirmHideNetwork(messages);
            return PressedOk(messages.prompt);
        case TweakConfirm::DisableDesktop:
            MsgConfirmDisableDesktop(messages);
            return PressedOk(messages.prompt);
        case TweakConfirm::LowColour:
            MsgLowColourDisplay(messages, caps.bitsPerPixel);
            return true;
        case TweakConfirm::None:
            break;
    }
    return true;
}

void MarkTweakChanged(TweakTree& tree, AppState& state, std::string_view key) {
    if (TweakNode* node = tree.Find(key)) {
        node->toBaseline = false;
    }
    tree.SetGroupChanged(tree.TopGroupOf(key), true);
    state.applyEnabled = true;
}

ToggleOutcome ToggleTweak(TweakTree& tree, MsgContext& messages, std::string_view key) {
    TweakNode* node = tree.Find(key);
    if (node == nullptr || (node->image != kTweakImageOff && node->image != kTweakImageOn)) {
        return ToggleOutcome::NotToggled;
    }
    ToggleOutcome outcome = ToggleOutcome::TurnedOff;
    if (node->image == kTweakImageOff) {
        if (!ConfirmTurnOn(messages, *node, tree.Caps())) {
            return ToggleOutcome::Refused;
        }
        // The question may have let the page's tree change: find the node again.
        node = tree.Find(key);
        if (node == nullptr) {
            return ToggleOutcome::NotToggled;
        }
        node->image = kTweakImageOn;
        outcome = ToggleOutcome::TurnedOn;
    } else {
        node->image = kTweakImageOff;
    }
    MarkTweakChanged(tree, messages.state, key);
    ApplyToggleEffects(*node, tree.TopGroupOf(key), messages);
    return outcome;
}

std::optional<ValueEdit> ScrollTweakValue(TweakTree& tree, AppState& state, std::string_view key, int value) {
    TweakNode* node = tree.Find(key);
    if (node == nullptr || node->kind != TweakKind::Value || node->row == nullptr) {
        return std::nullopt;
    }
    ValueEdit edit;
    const int limit = ValueLimitOf(*node->row, tree.Caps());
    edit.scrollValue = std::clamp(value, 0, kTweakScrollMax);
    if (edit.scrollValue > limit) {
        edit.beeped = true;
        edit.scrollValue = limit;
    }
    node->pending = std::to_string(edit.scrollValue);
    edit.text = node->pending;
    if (key == kMenuShowDelayKey) {
        state.restartNeeded = true;
    }
    MarkTweakChanged(tree, state, key);
    return edit;
}

std::optional<ValueEdit> TypeTweakValue(TweakTree& tree, AppState& state, std::string_view key,
                                        std::string_view text) {
    TweakNode* node = tree.Find(key);
    if (node == nullptr || node->kind != TweakKind::Value) {
        return std::nullopt;
    }
    if (text.empty()) {
        node->pending.clear();
        MarkTweakChanged(tree, state, key);
        return ValueEdit{};
    }
    return ScrollTweakValue(tree, state, key, LeadingNumber(text));
}

namespace {

// On a machine with defaults of its own an item's default is what the machine
// held before the program first changed it; an item the program never changed
// is at its default already.
void RestoreOwnDefault(const TweakTree& tree, TweakNode& node) {
    if (const auto baseline = tree.BaselineState(node)) {
        node.image = baseline->image;
        node.pending = baseline->pending;
        node.toBaseline = true;
    } else {
        node.image = node.machineImage;
        node.pending = node.machinePending;
    }
}

}  // namespace

void RestoreTweakDefaults(TweakTree& tree, AppState& state) {
    const bool ownDefaults = KeepsOwnDefaults(tree.App().kind);
    for (TweakNode& node : tree.Nodes()) {
        const TweakRow* row = node.row;
        // The boot options keep what they hold.
        if (row == nullptr || row->kind == TweakKind::Group || row->store == TweakStore::Profile) {
            continue;
        }
        if (ownDefaults && (row->kind == TweakKind::Value || row->restore != TweakDefault::NotReset)) {
            RestoreOwnDefault(tree, node);
        } else if (row->kind == TweakKind::Value) {
            node.pending = std::string(row->restoreValue);
        } else if (row->restore != TweakDefault::NotReset) {
            node.image = row->restore == TweakDefault::On ? kTweakImageOn : kTweakImageOff;
        } else {
            continue;
        }
        tree.SetGroupChanged(tree.TopGroupOf(node.key), true);
    }
    // As the program always has: the value item, not "Delay Until Clicked",
    // gets the unchecked box.
    if (TweakNode* delay = tree.Find(kMenuShowDelayKey)) {
        delay->image = kTweakImageOff;
    }
    if (TweakNode* option = tree.Find(kOptionContextMenu)) {
        option->image = kTweakImageOff;
    }
    if (TweakNode* option = tree.Find(kOptionRestorePosition)) {
        option->image = kTweakImageOn;
    }
    state.rebuildPending = true;
    state.applyEnabled = true;
}

}  // namespace glyphmoor
