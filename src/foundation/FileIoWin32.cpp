#include "foundation/FileIo.h"

#include <windows.h>

namespace glyphmoor {

FileStamp StampOf(const std::filesystem::path& file) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(file.c_str(), GetFileExInfoStandard, &data)) {
        return {};
    }
    FileStamp stamp;
    stamp.exists = true;
    stamp.size = (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    const std::uint64_t ticks = (static_cast<std::uint64_t>(data.ftLastWriteTime.dwHighDateTime) << 32) |
                                data.ftLastWriteTime.dwLowDateTime;
    stamp.modifiedNs = static_cast<std::int64_t>(ticks) * 100;
    // Windows has no inode number to offer through this call; a replaced file
    // shows by its time and size.
    return stamp;
}

std::filesystem::path ProfileLockFile() {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(error);
    return (error ? std::filesystem::path(".") : folder) / "glyphmoor-profiles.lock";
}

Result<std::unique_ptr<FileLock>> FileLock::Acquire(const std::filesystem::path& lockPath) {
    std::error_code ec;
    const std::filesystem::path lockFile =
        std::filesystem::is_directory(lockPath, ec) ? lockPath / ".glyphmoor.lock" : lockPath;
    HANDLE handle =
        ::CreateFileW(lockFile.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                      nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return Fail("cannot open the lock file " + lockFile.string());
    }
    OVERLAPPED whole{};
    if (!::LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK, 0, MAXDWORD, MAXDWORD, &whole)) {
        ::CloseHandle(handle);
        return Fail("cannot lock " + lockFile.string());
    }
    return std::unique_ptr<FileLock>(new FileLock(reinterpret_cast<std::intptr_t>(handle)));
}

FileLock::~FileLock() {
    HANDLE handle = reinterpret_cast<HANDLE>(m_fd);
    OVERLAPPED whole{};
    ::UnlockFileEx(handle, 0, MAXDWORD, MAXDWORD, &whole);
    ::CloseHandle(handle);
}

}  // namespace glyphmoor
