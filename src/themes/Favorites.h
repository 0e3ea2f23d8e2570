// Favorites: shortcuts (shell links) to theme files in the program's
// favourites folder and folders of the user's below it, and the Favorites
// menu made from them.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/Machine.h"
#include "foundation/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

inline constexpr std::string_view kLinkExtension = ".lnk";
// The menu's item for a folder with nothing in it.
inline constexpr std::string_view kEmptyFavoritesCaption = "(Empty)";

// The program's folder and "\Favorites", a Windows path without a trailing backslash.
std::string FavoritesFolder(const AppEnvironment& app);

// The folder `folder` names: the favourites folder when it is empty, else a
// folder below it, given as a path relative to it ("Blue\Sea", "/" taken as
// "\") or as a Windows path inside it (compared without regard to case). It
// must exist; ".." and anything outside the favourites folder are refused.
Result<std::string> FavoritesSubfolder(const AppEnvironment& app, std::string_view folder);

// What exists already is left alone unless the caller says to replace it.
enum class Replace { No, Yes };

// Makes the link "<folder>\<name>.lnk" to the theme file `theme` (a Windows
// path) as the Add Favorite dialog does: working folder the link's folder,
// no arguments, the program's own icon. `name` empty: the theme's name
// without its extension. Sets up the program's folder first. Gives the
// link's Windows path. A theme file that is not there is refused and nothing
// is made; so is a link of that name unless `replace` says to replace it.
Result<std::string> AddFavorite(Machine& machine, std::string_view theme, std::string_view folder,
                                std::string_view name, Replace replace = Replace::No);

// The Windows path the link would have: for the question before replacing.
Result<std::string> FavoriteLinkPath(const AppEnvironment& app, std::string_view theme,
                                     std::string_view folder, std::string_view name);

// Makes the folder "<parent>\<name>" below the favourites folder, as the
// Create New Folder dialog does; one that exists is refused. Gives its path.
Result<std::string> NewFavoritesFolder(Machine& machine, std::string_view parent, std::string_view name);

struct FavoriteItem {
    enum class Kind { Folder, Link, Empty };
    int depth = 0;  // 0 at the top of the menu
    Kind kind = Kind::Empty;
    std::string caption;
    std::string path;    // the folder or the link (a Windows path); empty for Empty
    std::string target;  // a link's theme file; empty when it cannot be read

    friend bool operator==(const FavoriteItem&, const FavoriteItem&) = default;
};

// The favourites below "&Add to Favorites...", in menu order: each folder's
// subfolders (each followed by its own items) before its links, each in name
// order without regard to case; a link's caption is its file name without
// ".lnk"; an empty folder (the favourites folder itself included) holds one
// "(Empty)" item. Hidden entries, links to folders and files that are no
// links are not listed.
std::vector<FavoriteItem> FavoritesMenu(const AppEnvironment& app);

}  // namespace glyphmoor
