// ThemeBundle: a theme packed into one zip archive for exchange, and such an
// archive unpacked into a folder of its own in the theme library.
//
// Packing takes every file the theme's sections name (the icon groups,
// "Cursors" and "Include", macros expanded) and the theme file itself, stored
// side by side without their folders. Unpacking trusts nothing in the
// archive: it is checked whole (CheckBundle) and inflated whole into memory
// before anything is written, then written into a temporary folder inside the
// library that is renamed into place; a refused bundle leaves everything as
// it was, an older theme of the same name included.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/Machine.h"
#include "foundation/Result.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

inline constexpr std::string_view kBundleExtension = ".zip";
// The question asked for each file of a bundle that is there already.
inline constexpr std::string_view kBundleOverwriteTitle = "VBUnZip32 - File Already Exists!";
std::string BundleOverwriteQuestion(std::string_view windowsPath);

// True when the path names a bundle (".zip", compared without regard to case).
bool IsBundlePath(std::string_view path);

// The files a bundle of the theme at `themePath` holds, as Windows paths of
// the machine (or host paths where the theme names them so): each non-empty
// value of the theme's sections in file order, then the theme file. More than
// 99 files named by the sections is refused.
Result<std::vector<std::string>> BundleFileList(const AppEnvironment& app, std::string_view themePath);

struct PackReport {
    std::vector<std::string> packed;    // the entries' names, in archive order
    std::vector<std::string> missing;   // files the theme names that are not there
    std::vector<std::string> replaced;  // files left out because a later file has the same name
};

// Packs the theme at `themePath` into a new archive at `zip` (a host path).
// Files that are not there are left out and named in the report; of two files
// with the same name (without regard to case) the later one is packed, as it
// is the one an unpacked bundle would keep.
Result<PackReport> PackTheme(const AppEnvironment& app, std::string_view themePath,
                             const std::filesystem::path& zip);

// The library folder a bundle unpacks into: its file name up to the first dot.
Result<std::string> BundleFolderName(const std::filesystem::path& zip);

// Of a bundle's file names, the theme file to load: the one named like the
// bundle's folder, else the first theme file in name order; "" when none.
std::string ChooseBundleTheme(const std::vector<std::string>& names, std::string_view folderName);

// What to do with a file of the bundle that is in the theme's folder already.
enum class OverwriteAnswer { Overwrite, Keep, Stop };
using OverwriteQuestion = std::function<OverwriteAnswer(std::string_view windowsPath)>;

struct UnpackReport {
    std::string folder;     // the theme's folder in the library (a Windows path)
    std::string themePath;  // the theme file to load (a Windows path)
    std::vector<std::string> written;
    std::vector<std::string> kept;  // there already, and not overwritten
};

// Unpacks the bundle `zip` (a host path) into its folder of the machine's
// theme library, asking about each file that is there already. Stop (or any
// failure) leaves the library as it was. Sets up the program's folder first.
Result<UnpackReport> UnpackBundle(Machine& machine, const std::filesystem::path& zip,
                                  const OverwriteQuestion& question);

}  // namespace glyphmoor
