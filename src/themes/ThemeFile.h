// ThemeFile: the icon theme file, a profile (INI) file with the extension
// ".gmtheme", read and written one key at a time through the program's
// profile functions (modProfile).
//
// Sections: "Software Credits" (written, never read), the six icon groups and
// "Cursors" (read when a theme is loaded; the six icon groups alone are
// written), and "Include" (the files that travel with the theme). A value is
// an IconLocation, optionally starting with one of the macros "%ThemeDir%",
// "%winsysdir%" or "%windir%" (modMacros: ReadThemeValue).
//
// Saving copies every icon the theme names into the theme's folder as
// "<theme> <key>.ico", so a theme folder carries all its pictures.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/RegistryStore.h"
#include "foundation/Result.h"
#include "icons/IconCatalogue.h"
#include "icons/IconLocation.h"

#include <array>
#include <string>
#include <string_view>

namespace glyphmoor {

// The theme file's sections by group index: index i holds catalogue group i + 1.
// The loader reads 0 to 6 (pointers included), the saver writes 0 to 5, and
// 7 ("Include") lists the files a bundle packs.
inline constexpr const std::array<std::string_view, 8>& ThemeSectionNames = kGroupNames;
inline constexpr std::size_t kLoadedThemeSections = 7;
inline constexpr std::size_t kSavedThemeSections = 6;

inline constexpr std::string_view kThemeExtension = ".gmtheme";
inline constexpr std::string_view kThemeDirMacro = "%ThemeDir%";
inline constexpr std::string_view kCreditsSection = "Software Credits";
inline constexpr std::string_view kIncludeSection = "Include";
inline constexpr std::string_view kReadMeKey = "Read Me";
inline constexpr std::string_view kReadMeValue = "%ThemeDir%Read Me.txt";
inline constexpr std::string_view kThemeCompany = "Veltrane";
inline constexpr std::string_view kThemeAuthor = "Maren Oakhollow";
inline constexpr std::string_view kThemeWebsite = "http://www.veltrane.com/glyphmoor/";
inline constexpr std::string_view kThemeEmail = "glyphmoor@veltrane.com";

// Reads the icon sections of the theme at `path` (a Windows path of the
// machine, or a host path) into the catalogue's groups, keys in file order.
// Nothing is cleared first: an entry the theme does not name keeps what its
// group holds. A key the group does not hold, an empty value and a value that
// is no IconLocation change nothing. Sets the theme-loaded flag and enables
// Apply, and sets RebuildPending when an icon (not a pointer) changed; a
// missing file loads nothing.
void LoadThemeFile(IconCatalogue& catalogue, AppState& state, std::string_view path);

// The name a theme is saved under: ".gmtheme" added unless the name already
// ends in it (compared lower-cased).
std::string WithThemeExtension(std::string_view path);

// Where a theme chosen as `path` is written: saved straight into the library
// folder (`programDirectory` + "\Themes\", compared lower-cased) it moves into
// a folder of its own named after the theme ("...\Themes\Ocean\Ocean.gmtheme");
// anywhere else it stays. `path` already has its extension.
std::string ThemePlacement(std::string_view path, std::string_view programDirectory,
                           std::string_view currentDirectory);

// What WriteThemeEntry writes with: the theme file and its folder.
struct ThemeTarget {
    const AppEnvironment& app;
    std::string path;      // the theme file, a Windows path of the machine
    std::string themeDir;  // its folder, with its trailing backslash
    std::string baseName;  // its name without the extension
};
ThemeTarget ThemeTargetOf(const AppEnvironment& app, std::string_view path);

enum class EntryWritten {
    Written,  // the icon was copied beside the theme and the key written
    Skipped,  // nothing to write: no icon, NO_GRAPHIC or the program's own file
    NoCopy,   // the icon could not be copied, so the key was not written
    KeyOnly,  // the file holds no icon groups: the key is written, no icon copied
    Failed,   // the key could not be written to the theme file
};

// Copies the icon of one entry into the theme folder as "<base> <key>.ico" and
// writes the key with "%ThemeDir%<base> <key>.ico". A negative index (a
// resource id) copies the file's first icon.
EntryWritten WriteThemeEntry(const ThemeTarget& target, std::string_view section, std::string_view key,
                             const IconLocation& location);

// Saves the catalogue's six icon groups as a theme at `path` (a Windows path
// of the machine): credits, every entry with its icon copied, the "Include"
// section; keys already in the file and not written here stay as they are.
// The theme becomes the current theme. Gives the path the file was written
// to; fails when the theme file cannot be written at all.
Result<std::string> SaveThemeFile(IconCatalogue& catalogue, RegistryStore& registry, AppState& state,
                                  std::string_view path);

}  // namespace glyphmoor
