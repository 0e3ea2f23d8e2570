// AppEnvironment: what the program fixes about its machine once, at start,
// and what every part then reads: the catalogue's group names, the program's
// own file and help file, the Windows flavour, the Windows and system folders.
//
// There are no globals: the window or the command line makes one with
// InitEnvironment and passes it down.
#pragma once

#include "foundation/Environment.h"

#include <array>
#include <string>
#include <string_view>

namespace glyphmoor {

// The seven icon groups of the catalogue, in order, then "Include".
inline constexpr std::array<std::string_view, 8> kGroupNames = {
    "Desktop Icons", "Start Icons", "Folder Icons", "Drive Icons",
    "Other Icons",   "File Icons",  "Cursors",      "Include"};

struct AppEnvironment {
    explicit AppEnvironment(const Environment& env) : machine(env) {}

    // Maps the machine's Windows paths to host files (on the real system, a
    // Windows path is the host's).
    const Environment& machine;
    std::array<std::string, 8> groupNames;
    // The program's folder, a backslash, "Glyphmoor.exe": the default file of
    // the pointer entries.
    std::string programFile;
    // The program's folder, a backslash, "Glyphmoor.hlp".
    std::string helpFile;
    // "Win95", "Win98" or "WinNT", and "Windows 95", "Windows 98" or "Windows
    // NT"; both empty on a platform that is neither.
    std::string windowsFlavour;
    std::string windowsName;
    // As GetWindowsDirectoryA and GetSystemDirectoryA give them: no trailing backslash.
    std::string winDir;
    std::string sysDir;
    // Whose defaults the machine has (see MachineKind).
    MachineKind kind = MachineKind::Described;
    // The current directory that relative theme paths are taken from: the
    // program's folder, where the program starts.
    std::string currentDirectory;
};

// WindowsFlavour and WindowsName of a version: platform 1 with a minor
// version below 10 is Windows 95, with 10 or more Windows 98; platform 2 is
// Windows NT; anything else leaves both empty.
struct WindowsFlavour {
    std::string_view flavour;
    std::string_view name;
};
WindowsFlavour FlavourOf(const OsVersion& version);

AppEnvironment InitEnvironment(const Environment& env);

}  // namespace glyphmoor
