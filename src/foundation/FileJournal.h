// FileJournal: several files replaced as one change.
//
// ReplaceFilesTogether writes every new file beside the one it replaces and
// flushes it, then writes the journal (which staged file replaces which file)
// atomically, renames the staged files over the old ones and removes the
// journal. The journal's arrival is the moment the change happens: a process
// killed before it leaves every old file as it was (its staged files are
// removed by the next save of each file), one killed after it leaves a
// journal that FinishJournal completes. So, wherever a kill falls, once the
// journal is finished the files are all old or all new, never some of each.
//
// Callers hold one lock over every change of the files and finish a journal
// under it before they read or change them.
#pragma once

#include "foundation/HostFiles.h"
#include "foundation/Result.h"
#include "foundation/TextPieces.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace glyphmoor {

struct FileReplacement {
    std::filesystem::path file;
    TextPieces bytes;  // may borrow from a loaded file, which must outlive the call
    // The new file's DOS attributes; without them it takes the old file's.
    std::optional<std::uint32_t> attributes = std::nullopt;
};

// Replaces each file by its bytes, all of them or none. When a new file
// cannot be written (a full disk), every old file stays and the reason is the
// system's. A failure after the journal is written leaves it for
// FinishJournal.
Status ReplaceFilesTogether(const std::filesystem::path& journal, const std::vector<FileReplacement>& files,
                            const ChunkWriter& write);
// Folders made or removed as part of a change: none is, unless the files are
// replaced too. A folder that cannot be made, or is not empty, when the change
// is finished is left as it is.
struct FolderChanges {
    std::vector<std::filesystem::path> make;    // each after the one that holds it
    std::vector<std::filesystem::path> remove;  // removed when empty
};
Status ReplaceFilesTogether(const std::filesystem::path& journal, const std::vector<FileReplacement>& files,
                            const FolderChanges& folders, const ChunkWriter& write);
Status ReplaceFilesTogether(const std::filesystem::path& journal, const std::vector<FileReplacement>& files,
                            const FolderChanges& folders = {});

// Completes the change a journal left by a killed process records, and
// removes the journal; nothing when there is none. True when it finished one.
Result<bool> FinishJournal(const std::filesystem::path& journal);

}  // namespace glyphmoor
