#include "foundation/FileIo.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <random>

namespace glyphmoor {

namespace {

std::string ErrnoText() {
    return std::strerror(errno);
}

bool WriteAll(int fd, std::string_view data) {
    while (!data.empty()) {
        const ssize_t n = ::write(fd, data.data(), data.size());
        if (n < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        data.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

}  // namespace

Result<std::string> ReadWholeFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        return Fail("cannot read " + file.string() + ": " + ErrnoText());
    }
    std::string contents;
    in.seekg(0, std::ios::end);
    const auto size = in.tellg();
    if (size > 0) {
        contents.resize(static_cast<std::size_t>(size));
        in.seekg(0, std::ios::beg);
        in.read(contents.data(), size);
        if (!in) {
            return Fail("cannot read " + file.string());
        }
    }
    return contents;
}

Status WriteFileAtomically(const std::filesystem::path& file, std::string_view contents) {
    std::random_device random;
    const std::filesystem::path temp =
        file.parent_path() / ("." + file.filename().string() + "." + std::to_string(random()) + ".tmp");
    mode_t mode = 0644;
    struct stat st {};
    if (::stat(file.c_str(), &st) == 0) {
        mode = st.st_mode & 07777;
    }
    const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (fd < 0) {
        return Fail("cannot write " + file.string() + ": " + ErrnoText());
    }
    const bool written = WriteAll(fd, contents) && ::fsync(fd) == 0;
    const std::string reason = written ? std::string() : ErrnoText();
    ::close(fd);
    if (!written) {
        ::unlink(temp.c_str());
        return Fail("cannot write " + file.string() + ": " + reason);
    }
    if (::rename(temp.c_str(), file.c_str()) != 0) {
        const std::string why = ErrnoText();
        ::unlink(temp.c_str());
        return Fail("cannot replace " + file.string() + ": " + why);
    }
    // Make the rename itself durable.
    const int dir =
        ::open(file.parent_path().empty() ? "." : file.parent_path().c_str(), O_RDONLY | O_DIRECTORY);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
    return {};
}

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

Result<std::unique_ptr<FileLock>> FileLock::Acquire(const std::filesystem::path& lockFile) {
    const int fd = ::open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
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
    ::flock(m_fd, LOCK_UN);
    ::close(m_fd);
}

}  // namespace glyphmoor
