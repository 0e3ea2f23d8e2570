#include "foundation/HostFiles.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>

namespace glyphmoor {

namespace {

// Wine keeps hidden and system in this extended attribute, as text ("0x6").
constexpr const char* kDosAttribute = "user.DOSATTRIB";

std::uint32_t ReadDosAttrib(const std::filesystem::path& path) {
    std::array<char, 64> text{};
    const ssize_t n = ::getxattr(path.c_str(), kDosAttribute, text.data(), text.size() - 1);
    if (n <= 0) {
        return 0;
    }
    text[static_cast<std::size_t>(n)] = '\0';
    return static_cast<std::uint32_t>(std::strtoul(text.data(), nullptr, 0));
}

std::string ErrnoText(int error) {
    return std::strerror(error);
}

}  // namespace

std::optional<std::uint32_t> ReadHostAttributes(const std::filesystem::path& path) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) {
        return std::nullopt;
    }
    std::uint32_t attributes = S_ISDIR(info.st_mode) ? kAttrDirectory : kAttrArchive;
    if ((info.st_mode & S_IWUSR) == 0) {
        attributes |= kAttrReadOnly;
    }
    attributes |= ReadDosAttrib(path) & (kAttrHidden | kAttrSystem);
    const std::string name = path.filename().string();
    if (name.size() > 1 && name.front() == '.' && name != "..") {
        attributes |= kAttrHidden;
    }
    return attributes;
}

Status WriteHostAttributes(const std::filesystem::path& path, std::uint32_t attributes) {
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) {
        return Fail("Cannot set the attributes of " + path.string() + ": " + ErrnoText(errno));
    }
    const std::uint32_t dos = attributes & (kAttrHidden | kAttrSystem);
    if (dos != 0) {
        std::array<char, 16> text{};
        const int n = std::snprintf(text.data(), text.size(), "0x%x", static_cast<unsigned>(dos));
        if (::setxattr(path.c_str(), kDosAttribute, text.data(), static_cast<std::size_t>(n), 0) != 0) {
            return Fail("Cannot set the attributes of " + path.string() + ": " + ErrnoText(errno));
        }
    } else if (::removexattr(path.c_str(), kDosAttribute) != 0 && errno != ENODATA) {
        return Fail("Cannot set the attributes of " + path.string() + ": " + ErrnoText(errno));
    }
    mode_t mode = info.st_mode & 07777;
    if ((attributes & kAttrReadOnly) != 0) {
        mode &= static_cast<mode_t>(~(S_IWUSR | S_IWGRP | S_IWOTH));
    } else if ((mode & S_IWUSR) == 0) {
        mode |= S_IWUSR;
    }
    if (mode != (info.st_mode & 07777) && ::chmod(path.c_str(), mode) != 0) {
        return Fail("Cannot set the attributes of " + path.string() + ": " + ErrnoText(errno));
    }
    return {};
}

Status SaveFileTransactionally(const std::filesystem::path& path, std::string_view bytes) {
    return SaveFileTransactionally(path, bytes, [](std::FILE* file, std::string_view chunk) {
        return std::fwrite(chunk.data(), 1, chunk.size(), file);
    });
}

namespace {

// A new file of a name of its own beside `path` (".NAME.NNNNNN.tmp"), opened for writing.
int CreateTempBeside(const std::filesystem::path& path, const std::filesystem::path& folder,
                     std::filesystem::path& temp) {
    std::random_device random;
    int fd = -1;
    for (int attempt = 0; attempt < 16 && fd < 0; ++attempt) {
        temp = folder / ("." + path.filename().string() + "." + std::to_string(random() % 1000000U) + ".tmp");
        fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        if (fd < 0 && errno != EEXIST) {
            break;
        }
    }
    return fd;
}

// The new file takes over the old one's permissions and DOS attributes.
void KeepPermissions(const std::filesystem::path& path, int fd) {
    struct stat old {};
    if (::stat(path.c_str(), &old) == 0) {
        ::fchmod(fd, old.st_mode & 07777);
        std::array<char, 64> attrib{};
        const ssize_t n = ::getxattr(path.c_str(), kDosAttribute, attrib.data(), attrib.size());
        if (n > 0) {
            ::fsetxattr(fd, kDosAttribute, attrib.data(), static_cast<std::size_t>(n), 0);
        }
    }
}

// The file a path stands for once its links are followed: a save replaces
// that file and leaves the links as they are. A link to a missing file stands
// for the file it names.
std::filesystem::path ThroughLinks(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_symlink(std::filesystem::symlink_status(path, error))) {
        return path;
    }
    std::filesystem::path target = std::filesystem::canonical(path, error);
    if (!error) {
        return target;
    }
    target = std::filesystem::read_symlink(path, error);
    if (error) {
        return path;
    }
    return target.is_absolute() ? target : path.parent_path() / target;
}

// The temporary name a save of `name` uses: "." name "." digits ".tmp".
bool IsLeftoverOf(const std::string& candidate, const std::string& name) {
    const std::string prefix = "." + name + ".";
    constexpr std::string_view kSuffix = ".tmp";
    if (candidate.size() <= prefix.size() + kSuffix.size() || !candidate.starts_with(prefix) ||
        !candidate.ends_with(kSuffix)) {
        return false;
    }
    const std::string_view digits =
        std::string_view(candidate).substr(prefix.size(), candidate.size() - prefix.size() - kSuffix.size());
    return std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// Removes what saves of the same file left behind when they were killed part
// way. Callers hold a lock over every save of the file, so no other save is
// writing one of these at the time.
void RemoveLeftovers(const std::filesystem::path& folder, const std::string& name) {
    std::error_code error;
    std::filesystem::directory_iterator it(folder, error);
    for (; !error && it != std::filesystem::directory_iterator(); it.increment(error)) {
        if (IsLeftoverOf(it->path().filename().string(), name) && it->is_regular_file(error)) {
            std::filesystem::remove(it->path(), error);
        }
    }
}

bool OnOneFileSystem(const std::filesystem::path& a, const std::filesystem::path& b) {
    struct stat first {};
    struct stat second {};
    return ::stat(a.c_str(), &first) == 0 && ::stat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev;
}

}  // namespace

Result<StagedFile> StageFile(const std::filesystem::path& given, const TextPieces& bytes,
                             const ChunkWriter& write, Flush flush,
                             const std::filesystem::path& stagingFolder) {
    const std::filesystem::path path = ThroughLinks(given);
    const std::filesystem::path beside = StagingFolderBeside(path);
    const std::filesystem::path folder =
        !stagingFolder.empty() && OnOneFileSystem(stagingFolder, beside) ? stagingFolder : beside;
    RemoveLeftovers(folder, path.filename().string());
    std::filesystem::path temp;
    const int fd = CreateTempBeside(path, folder, temp);
    if (fd < 0) {
        return Fail("Cannot create a file in " + folder.string() + ": " + ErrnoText(errno));
    }
    std::FILE* file = ::fdopen(fd, "wb");
    if (file == nullptr) {
        ::close(fd);
        ::unlink(temp.c_str());
        return Fail("Cannot write " + temp.string());
    }

    // The reason a write failed is the system's own when it gave one, so that
    // a full disk says so ("No space left on device").
    auto abandon = [&](const std::string& what) -> Failure {
        const int error = errno;
        std::fclose(file);
        ::unlink(temp.c_str());
        return Fail(error != 0 ? what + ": " + ErrnoText(error) : what);
    };

    const bool written = WriteInChunks(bytes, kWriteChunk, [&](std::string_view chunk) {
        errno = 0;
        return write(file, chunk) == chunk.size();
    });
    if (!written) {
        return abandon("Writing " + path.string() + " failed");
    }
    errno = 0;
    if (std::fflush(file) != 0 || (flush == Flush::Now && ::fsync(::fileno(file)) != 0)) {
        return abandon("Writing " + path.string() + " failed");
    }

    KeepPermissions(path, ::fileno(file));
    if (std::fclose(file) != 0) {
        const int error = errno;
        ::unlink(temp.c_str());
        return Fail("Writing " + path.string() + " failed: " + ErrnoText(error));
    }
    return StagedFile{temp, path};
}

Status FlushStaged(const std::vector<StagedFile>& files) {
    // One flush for each file system the files are on.
    std::vector<dev_t> flushed;
    for (const StagedFile& file : files) {
        struct stat info {};
        if (::stat(file.staged.c_str(), &info) == 0 &&
            std::find(flushed.begin(), flushed.end(), info.st_dev) != flushed.end()) {
            continue;
        }
        const int fd = ::open(file.staged.c_str(), O_RDONLY | O_CLOEXEC);
        if (fd < 0 || ::syncfs(fd) != 0) {
            const int error = errno;
            if (fd >= 0) {
                ::close(fd);
            }
            return Fail("Writing " + file.target.string() + " failed: " + ErrnoText(error));
        }
        ::close(fd);
        flushed.push_back(info.st_dev);
    }
    return {};
}

Status PutStagedInPlace(const StagedFile& file) {
    if (::rename(file.staged.c_str(), file.target.c_str()) != 0) {
        return Fail("Cannot replace " + file.target.string() + ": " + ErrnoText(errno));
    }
    return {};
}

void SyncFolder(const std::filesystem::path& folder) {
    const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
}

void AdviseLargeBuffer(void* data, std::size_t size) {
#ifdef MADV_HUGEPAGE
    // Only whole large pages inside the buffer: the advice covers full pages.
    constexpr std::uintptr_t kLargePage = std::uintptr_t{2} << 20;
    const auto begin = reinterpret_cast<std::uintptr_t>(data);
    const std::uintptr_t first = (begin + kLargePage - 1) & ~(kLargePage - 1);
    const std::uintptr_t end = (begin + size) & ~(kLargePage - 1);
    if (end > first) {
        ::madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
    }
#else
    (void)data;
    (void)size;
#endif
}

Status SaveFileTransactionally(const std::filesystem::path& given, std::string_view bytes,
                               const ChunkWriter& write) {
    const StagedFile staged = TRY(StageFile(given, TextPieces::Borrowing(bytes), write));
    if (Status put = PutStagedInPlace(staged); !put) {
        ::unlink(staged.staged.c_str());
        return put;
    }
    SyncFolder(staged.target.has_parent_path() ? staged.target.parent_path() : std::filesystem::path("."));
    return {};
}

}  // namespace glyphmoor
