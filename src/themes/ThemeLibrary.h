// ThemeLibrary: the library folder (the program's folder and "\Themes"), in
// which every installed theme owns one subfolder holding its theme file, its
// icons and its "Read Me.txt".
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/Result.h"
#include "icons/IconLocation.h"

#include <optional>

#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// The library folder as a Windows path, without a trailing backslash.
std::string ThemeLibraryFolder(const AppEnvironment& app);

// One installed theme: its file (a Windows path) and the caption the list
// shows for it, the file's name without its extension.
struct LibraryTheme {
    std::string path;
    std::string caption;
    friend bool operator==(const LibraryTheme&, const LibraryTheme&) = default;
};

// The ".gmtheme" files one level below the library folder, each subfolder in
// name order and its files in name order. Files lying directly in the library
// folder are not listed.
std::vector<LibraryTheme> ListThemeLibrary(const AppEnvironment& app);

// The picture the list shows for a theme: the icon it gives "My Computer" in
// its "Desktop Icons" section, macros expanded. Nothing when the theme names
// none or the value is no icon location (the theme is listed all the same).
std::optional<IconLocation> ThemeListPicture(const AppEnvironment& app, std::string_view path);

// The folder deleting the theme at `path` removes (a Windows path, without a
// trailing backslash): the theme's own folder, which must lie directly in the
// library folder. A theme file lying in the library folder itself, or
// anywhere outside it, or a file that is no theme file, is refused with the
// reason; the library folder itself is never given.
Result<std::string> ThemeFolderToDelete(const AppEnvironment& app, std::string_view path);

// Removes that folder with everything in it.
Status DeleteTheme(const AppEnvironment& app, std::string_view path);

}  // namespace glyphmoor
