// The program's folder on a machine folder: C:\Program Files\Glyphmoor with
// Glyphmoor.exe (the program's icons and its standard pointers), blank.ico,
// and the Themes and Favorites folders.
#pragma once

#include "foundation/Baseline.h"
#include "foundation/Environment.h"
#include "foundation/Result.h"

#include <filesystem>
#include <string>
#include <vector>

namespace glyphmoor {

// What of the program's folder a machine lacks: folders (host paths, each
// after the one that holds it) and files with the bytes they are to hold.
struct ProgramFolderPlan {
    std::vector<std::filesystem::path> folders;
    struct File {
        std::filesystem::path file;
        std::string bytes;
    };
    std::vector<File> files;

    [[nodiscard]] bool empty() const { return folders.empty() && files.empty(); }
};

// Finds what of the program's folder the machine lacks, taking the two files
// from the first seed folder that holds them, and records each file and folder
// in the machine's baseline, so that the record is saved with (or before) them.
// Nothing that exists is planned.
Result<ProgramFolderPlan> PlanProgramFolder(const Environment& env, BaselineRegistry& baseline,
                                            const std::vector<std::filesystem::path>& seeds);

// Makes what the plan holds at once, parents first.
Status MakeProgramFolder(const ProgramFolderPlan& plan);

// Both: for machines whose registry keeps every change as it is made.
Status EnsureProgramFolder(const Environment& env, BaselineRegistry& baseline,
                           const std::vector<std::filesystem::path>& seeds);

}  // namespace glyphmoor
