// TweakApply: the tweak part of Apply. It writes the tree back to the
// machine group by group, in the fixed order General, Display (only when
// available), Explorer, Icons, Mouse, Start Menu, Wallpaper, Restrictions,
// each group only when its changed flag is set, then clears the flag.
// Inside a group items are written in tree order, each followed by the
// SystemParametersInfo call its row names.
//
// On the default machine (and other machine folders of the described
// Windows) a changed group is written whole. On a machine with defaults of
// its own (a Wine prefix, Windows itself) only the items the user changed
// are written, and an item that writes the same value as one written before
// it in the group: every other value keeps exactly what it had.
#pragma once

#include "foundation/AppState.h"
#include "foundation/Machine.h"
#include "foundation/RegistryStore.h"
#include "foundation/System.h"
#include "icons/IconEditing.h"
#include "tweaks/TweakTree.h"

#include <functional>
#include <optional>
#include <string>

namespace glyphmoor {

// SW_SHOWNORMAL: how Taskbar.exe is started.
inline constexpr int kSwShowNormal = 1;

struct TweakApplyHooks {
    // "Remove Shortcut Overlay" was written: the icon catalogue's overlay
    // row is to be read again.
    std::function<void()> overlayChanged;
    // Makes a cascading-menu folder (its Windows path) and records it for
    // Undo all (Machine::MakeFolder). Without it the folder is made at once.
    std::function<void(const std::string&)> makeFolder;
    // Removes one, when empty, as Machine::RemoveFolder does. Without it the
    // folder is removed at once.
    std::function<void(const std::string&)> removeFolder;
};

// Writes every changed group and clears its flag. Afterwards every written
// node's state is what the machine holds.
void ApplyTweaks(TweakTree& tree, RegistryStore& registry, System& system, const TweakApplyHooks& hooks = {});

// What the icon apply writes for "Bitmap Thumbnail as Default Icon": the
// tree's state when the tree is loaded; on a machine with defaults of its
// own only when the user changed it. Nothing otherwise.
std::optional<bool> BitmapThumbnailForIcons(const TweakTree& tree);

// After the icon apply wrote it: the bitmap item's state is the machine's.
void BitmapThumbnailWritten(TweakTree& tree);

// Apply's icon and tweak steps, in order: the icon apply (given the bitmap
// item's state; when only that item changed, the catalogue is built so that
// it can be written), then, with the tree loaded, the tweak apply with the
// hooks the machine needs (the catalogue's overlay row read again, made
// folders recorded in the baseline). Neither saves.
void ApplyIconsAndTweaks(IconCatalogue& catalogue, TweakTree& tree, Machine& machine, AppState& state,
                         IconNameMarks& names);

}  // namespace glyphmoor
