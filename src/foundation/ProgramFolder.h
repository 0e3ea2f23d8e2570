// The program's folder on a machine folder: C:\Program Files\Glyphmoor with
// Glyphmoor.exe (the program's icons and its standard pointers), blank.ico,
// and the Themes and Favorites folders.
#pragma once

#include "foundation/Baseline.h"
#include "foundation/Environment.h"
#include "foundation/Result.h"

#include <filesystem>
#include <vector>

namespace glyphmoor {

// Makes whatever of the program's folder the machine lacks, copying the two
// files from the first seed folder that holds them, and records each file and
// folder it makes in the machine's baseline. Nothing that exists is replaced.
// Called at the first save after the program wrote to the machine: reading a
// machine makes nothing.
Status EnsureProgramFolder(const Environment& env, BaselineRegistry& baseline,
                           const std::vector<std::filesystem::path>& seeds);

}  // namespace glyphmoor
