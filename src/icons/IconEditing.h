// IconEditing: what the Icons & Cursors page does to the catalogue. It stages
// a new icon for an entry, puts an entry's default back, renames the shell
// objects that carry a name, stages every default at once, and at Apply
// writes every staged change of the marked groups (ApplyIcons).
//
// Nothing here reaches the registry before ApplyIcons: until then the changes
// live in the catalogue's groups, the change marks in AppState and the two
// name flags below. The window, "/a" and the command line all stage and apply
// through these functions; questions are the caller's to ask, with the texts
// given here.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/RegistryStore.h"
#include "foundation/System.h"
#include "icons/IconCatalogue.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace glyphmoor {

// The marker of an entry without a picture, as a theme can leave it.
inline constexpr std::string_view kNoGraphic = "NO_GRAPHIC";
inline constexpr std::string_view kPathLabelPrefix = "File name: ";
inline constexpr std::string_view kMissingGraphicText =
    "Missing or invalid graphic configured for this icon.";
// What the path label names for a pointer that is the program's own.
inline constexpr std::string_view kDefaultCursorText = "Windows Default Cursor";
inline constexpr std::string_view kRenameEmptyNameText = "You must provide a name for your system icon.";
// The one catalogue row that has no default to put back.
inline constexpr std::string_view kZipFileName = "Zip File";

// The catalogue names of the entries whose name the user may change.
inline constexpr std::array<std::string_view, 11> kRenamableNames = {
    "My Computer",  "My Documents",        "Network Neighborhood", "The Internet",  "In Box",
    "My Briefcase", "Recycle Bin (empty)", "Recycle Bin (full)",   "Control Panel", "Dial-Up Networking",
    "Printers"};
inline constexpr std::string_view kRecycleEmptyName = "Recycle Bin (empty)";
inline constexpr std::string_view kRecycleFullName = "Recycle Bin (full)";

// The file types' bitmap rule, with the tweak "Bitmap Thumbnail as Default Icon".
inline constexpr std::string_view kBmpClassPath = "HKEY_CLASSES_ROOT\\.bmp";
inline constexpr std::string_view kBmpShellNewPath = "HKEY_CLASSES_ROOT\\.bmp\\ShellNew";
inline constexpr std::string_view kPaintPictureIconPath = "HKEY_CLASSES_ROOT\\Paint.Picture\\DefaultIcon";
inline constexpr std::string_view kPaintIconLocation = "C:\\Program Files\\Accessories\\mspaint.exe,1";

// The pointers' values under Control Panel\Cursors in the order Apply writes them.
inline constexpr std::array<std::string_view, 15> kCursorWriteOrder = {
    "Arrow",  "Help",   "AppStarting", "Wait",     "Crosshair", "IBeam",   "NWPEN", "No",
    "SizeNS", "SizeWE", "SizeNWSE",    "SizeNESW", "SizeAll",   "UpArrow", "Hand"};

// The page's two name flags: a desktop object (group 1) was renamed, or one
// of "Control Panel", "Dial-Up Networking" and "Printers" (group 3).
struct IconNameMarks {
    bool desktopNamesChanged = false;
    bool folderNamesChanged = false;
};

// The catalogue name (stable key) is one of kRenamableNames.
bool IsRenamable(const SystemIconEntry& entry);

// Which of the page's buttons a selected entry enables.
struct EntryButtons {
    bool rename = false;
    bool restoreDefault = false;

    friend bool operator==(const EntryButtons&, const EntryButtons&) = default;
};
EntryButtons ButtonsFor(const SystemIconEntry& entry);

// The whole text of the path label for an entry of a group, before fitting:
// "File name: " and the IconLocation; for a pointer, the pointer file, or
// "Windows Default Cursor" while it is the program's own; for a NO_GRAPHIC
// entry, or one whose file cannot be drawn (`drawn` false), kMissingGraphicText alone.
std::string PathLabelText(int groupNumber, const SystemIconEntry& entry, bool drawn = true);

// Where the Change Icon dialog starts: the entry's current icon, or
// shell32.dll's first icon when the entry has no picture.
IconLocation StartingLocation(const SystemIconEntry& entry, std::string_view sysDir);

// The pointer file dialog of the Cursors group.
inline constexpr std::string_view kBrowseCursorsTitle = "Browse for Cursors";

// Stages `chosen` for the entry at `position` of group `groupNumber`.
// Pointers take the file with index 0 and do not touch RebuildPending. Icons
// equal to the entry's current text change nothing (false); otherwise
// RebuildPending is set. A change marks the group and enables Apply.
bool ChangeIcon(IconCatalogue& catalogue, AppState& state, int groupNumber, std::size_t position,
                const IconLocation& chosen);

// Stages the entry's default. `pathLabel` is the path label's whole text as
// the page shows it: a pointer shown as the default cursor, or an entry whose
// default (compared without regard to case) is already what the label names,
// changes nothing (false). A change marks the group and enables Apply.
bool RestoreIcon(IconCatalogue& catalogue, AppState& state, int groupNumber, std::size_t position,
                 std::string_view pathLabel);

// The Rename dialog's starting text: the entry's display name; for either
// Recycle Bin entry, the "(empty)" entry's name less its last 8 characters.
std::string RenameStartText(const IconGroup& group, std::size_t position);

enum class RenameOutcome {
    EmptyName,  // nothing changed: the dialog says kRenameEmptyNameText and stays
    Unchanged,  // the same name: the dialog just closes
    Renamed,
};
// Renames the entry. Either Recycle Bin entry renames both, each with its own
// suffix. A rename sets the group's name flag and RebuildPending and enables
// Apply.
RenameOutcome RenameIcon(IconCatalogue& catalogue, AppState& state, IconNameMarks& names, int groupNumber,
                         std::size_t position, std::string_view newName);

// The answer to the confirmation asked before restoring all icons or all
// pointers (MsgConfirmRestoreIcons, MsgConfirmRestorePointers) that goes ahead.
inline constexpr int kRestoreAllOk = 1;

// Stages every default of groups 1 to 6 (icons) or of group 7 (pointers,
// building the group first when needed), then sets the theme-loaded flag so
// Apply writes every group, clears the current theme (plain caption), sets
// RebuildPending and enables Apply. Asks nothing: the caller has confirmed.
void RestoreAll(IconCatalogue& catalogue, RegistryStore& registry, AppState& state, bool cursors);

// Writes the marked groups, in the order Desktop Icons, desktop names, Start,
// Folder, folder names, Drive, Other, File Icons, Cursors, and last "Current
// Theme". On a machine with defaults of its own (a Wine prefix, Windows itself)
// only the entries and names the user changed are written, and an entry put
// back to its default gets the machine's own value again, or none.
// `bitmapThumbnail` is the state of the tweak "Bitmap Thumbnail as Default
// Icon"; without one (the tweak tree not loaded) it is read from the registry
// as the tweak reads it, before anything is written (on a machine with
// defaults of its own the bitmap rule is then not written at all).
void ApplyIcons(IconCatalogue& catalogue, RegistryStore& registry, System& system, const AppState& state,
                const IconNameMarks& names, std::optional<bool> bitmapThumbnail = std::nullopt);

// The icon part of the apply step: a loaded theme marks every group; with the
// catalogue built, ApplyIcons; then the marks, the name flags and the
// theme-loaded flag are cleared. RebuildPending is left for the icon-cache
// rebuild that follows.
void ApplyIconChanges(IconCatalogue& catalogue, RegistryStore& registry, System& system, AppState& state,
                      IconNameMarks& names, std::optional<bool> bitmapThumbnail = std::nullopt);

}  // namespace glyphmoor
