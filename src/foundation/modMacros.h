// modMacros: the path macros of stored values.
//
// Theme files refer to files through macros at the very start of a value, so
// that a theme keeps working in another folder or on another machine:
//
//   "%ThemeDir%"   compared exactly (with case)   the theme file's folder and a backslash
//   "%winsysdir%"  compared lower-cased           SysDir and a backslash
//   "%windir%"     compared lower-cased           WinDir and a backslash
//
// The rest of the value follows unchanged, so the stored form has no
// backslash after the macro ("%ThemeDir%Read Me.txt"). That %themedir% in
// lower case is no macro, while the system macros take any case, is how the
// program has always read them, and is kept.
#pragma once

#include "foundation/AppEnvironment.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace glyphmoor {

// The host file of a path: a Windows path of the machine mapped through it,
// anything else as it is.
std::filesystem::path HostFileOf(const AppEnvironment& app, std::string_view path);

// A theme value is read into the program's 128-character buffer, and the
// profile function is given all of it: as it keeps one place for the NUL, a
// value keeps its first 127 characters (one of 127 loads whole, one of 128
// loses its last).
inline constexpr std::uint32_t kThemeValueBuffer = 128;

// Reads one value of an INI-layout file as GetPrivateProfileStringA gives it
// (default "", the buffer above, so at most 127 characters) and expands its
// macro. `file` is a Windows path of the machine (or a host path). The count
// read is stored in `lastReadLength` when given; nothing read gives "".
std::string ReadThemeValue(const AppEnvironment& app, std::string_view section, std::string_view key,
                           std::string_view file, std::uint32_t* lastReadLength = nullptr);

// The macro expansion alone, with the folder of the theme file given.
std::string ExpandThemeMacros(const AppEnvironment& app, std::string_view value, std::string_view themeDir);

// The folder of a file with its trailing backslash: the path up to and
// including its last backslash. A path without a backslash and without a
// colon as its second character is taken to lie in `currentDirectory`; one
// with a drive but no backslash ("C:x.gmtheme") has no folder to give ("").
std::string ThemeDirOf(std::string_view path, std::string_view currentDirectory);

}  // namespace glyphmoor
