// ShellIconState: what the catalogue needs to know about the machine's shell
// before it can list the icons: whether the desktop-update shell and
// Internet Explorer 4.71 are installed, which shell32.dll indices that shell
// uses, where the desktop objects keep their names and icons, and the files
// this Windows flavour takes its defaults from.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/RegistryStore.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace glyphmoor {

// The locations the catalogue speaks of.
inline constexpr std::string_view kShellIconsPath =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\explorer\\Shell Icons";
inline constexpr std::string_view kCursorsPath = "HKEY_CURRENT_USER\\Control Panel\\Cursors";
// Present only with the desktop-update shell.
inline constexpr std::string_view kStartMenuOrderPath =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\MenuOrder\\Start Menu";
inline constexpr std::string_view kInternetExplorerPath =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Internet Explorer";
inline constexpr std::string_view kOutlookCommandPath =
    "HKEY_CLASSES_ROOT\\CLSID\\{00020D75-0000-0000-C000-000000000046}\\Shell\\Open\\Command";

// The desktop objects whose class key depends on the shell and the flavour.
enum class DesktopObject : std::size_t {
    MyComputer,
    MyDocuments,
    NetworkNeighborhood,
    TheInternet,
    RecycleBin,
    InBox,
    DialUpNetworking,
};
inline constexpr std::size_t kDesktopObjectCount = 7;

struct ShellIconState {
    // The desktop-update shell is installed (its Start menu order key exists).
    bool newShell = false;
    // Internet Explorer 4.71; only looked at with the desktop-update shell.
    bool ie471 = false;

    // Indices into shell32.dll that moved between shell versions.
    std::int32_t textIdx = 0;
    std::int32_t batIdx = 0;
    std::int32_t iniIdx = 0;
    std::int32_t ctlPanelIdx = 0;
    std::int32_t printersIdx = 0;
    std::int32_t usersGroupIdx = 0;
    // The Url History folder's default: the system folder and the file the
    // shell version names, and its index.
    std::string historyFile;
    std::int32_t historyIdx = 0;

    // The desktop objects' class keys (RegistryPaths), by DesktopObject; empty
    // when the object has none on this machine.
    std::array<std::string, kDesktopObjectCount> classKeys;

    // Default files of this Windows flavour.
    std::string inBoxFile;
    std::int32_t inBoxIdx = 0;
    std::string paintFile;
    std::string wordpadFile;
    std::string playerFile;
    std::string soundFile;
    std::string dialUpFile;
    std::int32_t dialUpIdx = 0;

    [[nodiscard]] const std::string& ClassKey(DesktopObject object) const {
        return classKeys[static_cast<std::size_t>(object)];
    }
};

// Reads the machine's state in the program's order: the desktop-update shell,
// Internet Explorer 4.71, the shell32 indices, the class keys, then the
// default files (the In Box default first from an Outlook command, which every
// flavour then replaces).
ShellIconState DetectShellState(RegistryStore& registry, const AppEnvironment& app);

}  // namespace glyphmoor
