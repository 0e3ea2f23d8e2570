#include "foundation/FileIo.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>
#include <string>

namespace glyphmoor {

namespace {

std::string ErrnoText() {
    return std::strerror(errno);
}

}  // namespace

FileStamp StampOf(const std::filesystem::path& file) {
    struct stat st {};
    if (::stat(file.c_str(), &st) != 0) {
        return {};
    }
    FileStamp stamp;
    stamp.exists = true;
    stamp.size = static_cast<std::uint64_t>(st.st_size);
    stamp.modifiedNs = static_cast<std::int64_t>(st.st_mtim.tv_sec) * 1000000000LL + st.st_mtim.tv_nsec;
    stamp.inode = st.st_ino;
    return stamp;
}

std::filesystem::path ProfileLockFile() {
    std::error_code error;
    std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    if (error) {
        folder = "/tmp";
    }
    return folder / ("glyphmoor-profiles-" + std::to_string(::getuid()) + ".lock");
}

Result<std::unique_ptr<FileLock>> FileLock::Acquire(const std::filesystem::path& lockFile) {
    std::error_code ec;
    const int fd = std::filesystem::is_directory(lockFile, ec)
                       ? ::open(lockFile.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)
                       : ::open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) {
        return Fail("cannot open the lock file " + lockFile.string() + ": " + ErrnoText());
    }
    while (::flock(fd, LOCK_EX) != 0) {
        if (errno != EINTR) {
            const std::string why = ErrnoText();
            ::close(fd);
            return Fail("cannot lock " + lockFile.string() + ": " + why);
        }
    }
    return std::unique_ptr<FileLock>(new FileLock(fd));
}

FileLock::~FileLock() {
    const int fd = static_cast<int>(m_fd);
    ::flock(fd, LOCK_UN);
    ::close(fd);
}

}  // namespace glyphmoor
