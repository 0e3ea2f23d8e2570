// MachineKind: whose defaults a machine has.
//
// The program was made for Windows 95, 98 and NT as they come from setup; its
// tables of defaults describe those systems, and the default machine is one of
// them. A Wine prefix and a real Windows are the user's own machines with
// defaults of their own: there the program changes only what the user changed,
// takes each default from the machine itself, and restoring puts the machine's
// own value back (see docs/DECISIONS.md, "Machines the program did not make").
#pragma once

#include "foundation/RegistryStore.h"

#include <filesystem>

namespace glyphmoor {

enum class MachineKind {
    // A machine folder of the Windows the program's tables describe (the
    // default machine and folders made like it).
    Described,
    // A Wine prefix: its registry and files are what Wine set up.
    WinePrefix,
    // The real Windows the program runs on.
    RealWindows,
};

// Decides once, from Wine's own marks, whether a machine folder is a Wine
// prefix: the `.update-timestamp` file wineboot leaves in the prefix, or the
// key HKEY_LOCAL_MACHINE\Software\Wine that Wine's setup writes. A folder that
// only carries HKEY_CURRENT_USER\Software\Wine "Version" (to choose the
// Windows version it reports) is not a prefix.
MachineKind FolderKind(const std::filesystem::path& dir, RegistryStore& registry);

// On a machine with defaults of its own, a write changes only what the user
// changed, and restoring returns the machine's own value.
[[nodiscard]] constexpr bool KeepsOwnDefaults(MachineKind kind) {
    return kind != MachineKind::Described;
}

}  // namespace glyphmoor
