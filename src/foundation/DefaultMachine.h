// The built-in default machine: a machine folder in the user's data folder,
// made on first use from the seed that ships with the program (a Windows 98
// registry and drive C:).
#pragma once

#include "foundation/Machine.h"
#include "foundation/Result.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace glyphmoor {

// $XDG_DATA_HOME/glyphmoor/machine, or ~/.local/share/glyphmoor/machine.
std::filesystem::path DefaultMachineDir();

// The folders the seed is copied from, in order: the project's seed and what
// the build generated for it. GLYPHMOOR_SEED_DIR in the environment replaces the first.
// An installed program has one: `seed` in its installed data folder (InstallPaths.h).
std::vector<std::filesystem::path> SeedDirs();

// Makes the machine at dir from the seed when it has no registry yet; adds seed
// files it lacks otherwise (a newer seed's files), never replacing one.
Status EnsureSeededMachine(const std::filesystem::path& dir, const std::vector<std::filesystem::path>& seeds);

Result<std::unique_ptr<Machine>> OpenDefaultMachine();

}  // namespace glyphmoor
