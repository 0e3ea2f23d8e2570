// Whole-file reads (the program's only ones), atomic replacement and an advisory lock.
#pragma once

#include "foundation/Result.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// The whole file; refused without reading it when it holds more than limit
// bytes. Only a regular file (or a link to one) is read: a folder, pipe,
// device or socket is refused with the reason before it is opened.
Result<std::string> ReadWholeFile(const std::filesystem::path& file,
                                  std::uint64_t limit = std::numeric_limits<std::uint64_t>::max());
Result<std::vector<std::byte>> ReadFileBytes(const std::filesystem::path& file, std::uint64_t limit);
// The first n bytes of the file, fewer when it is shorter.
Result<std::vector<std::byte>> ReadFileHead(const std::filesystem::path& file, std::size_t n);
// Succeeds when file is a regular file (or a link to one); else says what it is.
Status CheckRegularFile(const std::filesystem::path& file);

// Replaces file by contents atomically: a new file beside it is written,
// flushed to disk and renamed over the old one, so readers see either the old
// or the new contents, never a mix. The old file's permissions and DOS
// attributes are kept (SaveFileTransactionally).
Status WriteFileAtomically(const std::filesystem::path& file, std::string_view contents);

// The same for many files, with one flush to the disk for all of them rather
// than one each. Nothing is renamed until every new file is written and
// flushed; when one cannot be, no file is changed. A failure part way through
// the renames removes the files it had put in place.
struct FileContents {
    std::filesystem::path file;
    std::string_view contents;
};
Status WriteFilesAtomically(const std::vector<FileContents>& files);

// What tells one version of a file from another without reading it.
struct FileStamp {
    bool exists = false;
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0;
    std::uint64_t inode = 0;

    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};
FileStamp StampOf(const std::filesystem::path& file);

// The lock file that every write of a profile file takes, one for each user
// of the host: in the folder for temporary files.
std::filesystem::path ProfileLockFile();

// An exclusive advisory lock held for the object's lifetime. Given a folder,
// the lock is taken on the folder itself where the system allows it (so no
// file is left behind in a machine the program only changed), else on the
// file ".glyphmoor.lock" inside it.
class FileLock {
public:
    static Result<std::unique_ptr<FileLock>> Acquire(const std::filesystem::path& lockFile);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    // A file descriptor, or a Windows file handle.
    explicit FileLock(std::intptr_t fd) : m_fd(fd) {}
    std::intptr_t m_fd;
};

}  // namespace glyphmoor
