// HostFiles: the few file operations whose details differ between Windows
// and the machine folder of a Wine-like prefix, with one source file per
// platform (HostFilesPosix.cpp, HostFilesWin32.cpp).
#pragma once

#include "foundation/Result.h"
#include "foundation/TextPieces.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace glyphmoor {

// File attribute bits as Windows numbers them.
enum : std::uint32_t {
    kAttrReadOnly = 0x1,
    kAttrHidden = 0x2,
    kAttrSystem = 0x4,
    kAttrDirectory = 0x10,
    kAttrArchive = 0x20,
    kAttrNormal = 0x80,
};

// The attributes Windows reports for a file, or none when it does not exist.
// On a machine folder they are what Wine reports: hidden and system from the
// extended attribute user.DOSATTRIB (and hidden for names that start with a
// dot), read-only from a missing write permission, directory for folders and
// archive for every other file.
std::optional<std::uint32_t> ReadHostAttributes(const std::filesystem::path& path);

// SetFileAttributesA. On a machine folder the attributes are kept as Wine
// keeps them: hidden and system as the text of user.DOSATTRIB ("0x2", "0x6"),
// the attribute removed when neither is set; read-only as the missing write
// permission (clearing it gives the owner write permission back); archive and
// directory are not stored. Fails when the file does not exist or its
// attributes cannot be set.
Status WriteHostAttributes(const std::filesystem::path& path, std::uint32_t attributes);

// Writes `bytes` to `path` as one transaction: into a new file beside it,
// flushed to the disk, then renamed over the old one. Unlike
// WriteFileAtomically (FileIo.h), which serves the registry hives, it carries
// the old file's DOS attributes over as well as its permissions: the files
// that go through it (desktop.ini, Msdos.sys) are often hidden and system
// files, and must stay so for Wine. On any failure the old file is left as it
// was, the new one is removed and the reason is given. A path that is a
// symbolic link is written through: the file it points at is replaced and the
// link stays a link. New files left beside it by earlier saves that were
// killed part way are removed first; so callers hold a lock over every save
// of the same file (the machine's lock, or the profile lock).
Status SaveFileTransactionally(const std::filesystem::path& path, std::string_view bytes);

// The same, with the function that writes each chunk of the file given, so
// that tests can make the writing fail part way. It returns how many bytes of
// the chunk it wrote.
using ChunkWriter = std::function<std::size_t(std::FILE*, std::string_view)>;
// The most a chunk holds: large, so that a hive of many megabytes goes out in
// a few calls.
inline constexpr std::size_t kWriteChunk = std::size_t{1} << 20;
Status SaveFileTransactionally(const std::filesystem::path& path, std::string_view bytes,
                               const ChunkWriter& write);

// The first half of SaveFileTransactionally, for files that are replaced
// together (FileJournal.h): `bytes` written into a new file beside the file
// `path` stands for, flushed to the disk, with the old file's permissions and
// attributes, but not yet renamed over it.
struct StagedFile {
    std::filesystem::path staged;  // the new file
    std::filesystem::path target;  // the file it replaces, links followed
};
// With Flush::Later the new file is not flushed to the disk yet: the caller
// flushes many at once with FlushStaged before it renames any.
enum class Flush { Now, Later };
// With a staging folder on the same file system as the file, the new file is
// written there instead (a machine's files are staged beside its journal, so
// that a save killed early leaves nothing on its drives); elsewhere it is
// written beside the file.
Result<StagedFile> StageFile(const std::filesystem::path& path, const TextPieces& bytes,
                             const ChunkWriter& write, Flush flush = Flush::Now,
                             const std::filesystem::path& stagingFolder = {});
// Flushes staged files to the disk together: on Linux one flush of each file
// system they are on, on Windows nothing (each was flushed when staged).
Status FlushStaged(const std::vector<StagedFile>& files);
// The second half: renames the staged file over its target.
Status PutStagedInPlace(const StagedFile& file);
// Makes the renames in a folder durable (nothing on Windows, whose renames
// are written through).
void SyncFolder(const std::filesystem::path& folder);

// The folder a new version of file is staged in when no other is given: the
// file's own folder, or, while that folder is still to be made by the same
// change, the nearest folder above it that exists (a rename from there into
// the new folder stays on one file system).
std::filesystem::path StagingFolderBeside(const std::filesystem::path& file);

// Asks the system to back a large buffer about to be filled (a whole hive
// read in) with large pages, which a 20 MB read faults in several times
// faster; a hint only, nothing happens where it is not supported.
void AdviseLargeBuffer(void* data, std::size_t size);

}  // namespace glyphmoor
