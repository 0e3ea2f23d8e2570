// RecentThemes: the current theme, the window caption that names it and the
// four most recent themes of the File menu.
//
// The recent themes are the values "1" to "4" under
// HKEY_CURRENT_USER\Software\Veltrane\Glyphmoor\Themes, "1" the newest.
#pragma once

#include "foundation/AppState.h"
#include "foundation/RegistryStore.h"

#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

inline constexpr std::string_view kProgramCaption = "Glyphmoor";
inline constexpr int kRecentThemeCount = 4;

// "Glyphmoor" for no theme, else "Glyphmoor - " and the path up to its first
// "." (FileTitleOf): "C:\My.Themes\x.gmtheme" gives "Glyphmoor - C:\My".
std::string CaptionFor(std::string_view themePath);

// SetCurrentTheme with the word "load" (start-up): "Current Theme" under
// ...\Settings becomes the current theme when its second character is ":" (a
// full path), and is then added to the recent themes like any other; a
// relative or missing one clears it.
// With "": the caption is plain "Glyphmoor" and there is no current theme.
// With a path: the caption names it, it becomes the current theme and it is
// added to the recent themes (AddRecentTheme).
void SetCurrentTheme(RegistryStore& registry, AppState& state, std::string_view pathOrLoad);

// "Current Theme" as stored, and storing it (after a save, and by Apply).
std::string ReadCurrentTheme(RegistryStore& registry);
void StoreCurrentTheme(RegistryStore& registry, std::string_view path);

// Adds a theme path to the recent themes.
//
// A path already in the list (compared without regard to case) keeps its
// place: nothing changes, not even its spelling, and it is not moved to the
// top. The program has always done this, and a menu whose entries stay where
// they are is easier to use from memory; the list only ever grows at the top.
//
// Otherwise "3" is copied to "4", "2" to "3" and "1" to "2", each only when the
// value copied is a full path (":" as its second character), so an entry that
// is not one is left where it is to be overwritten; the old "4" drops out and
// the path is stored as "1".
void AddRecentTheme(RegistryStore& registry, std::string_view path);

// Forgets a theme that is gone (deleted): when it is the current theme,
// "Current Theme" is removed and the caption is plain again; every recent
// entry naming it (compared without regard to case) is taken out and the
// entries after it move up one place, so the menu never offers a theme that
// is not there.
void ForgetTheme(RegistryStore& registry, AppState& state, std::string_view path);

// The recent themes in order, up to the first that cannot be read.
std::vector<std::string> RecentThemes(RegistryStore& registry);

struct RecentMenuItem {
    std::string key;      // "RecentTheme 1" to "RecentTheme 4"
    std::string caption;  // "&1 " to "&4 " and the file name part of the path
    std::string path;     // opened with OpenTheme when chosen

    friend bool operator==(const RecentMenuItem&, const RecentMenuItem&) = default;
};
// The File menu's recent-theme items (RefreshRecentMenu). When there are any,
// the menu shows the separator kRecentSeparatorKey before them.
inline constexpr std::string_view kRecentSeparatorKey = "Dev1";
std::vector<RecentMenuItem> RecentMenuItems(RegistryStore& registry);

}  // namespace glyphmoor
