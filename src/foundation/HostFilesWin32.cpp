#include "foundation/HostFiles.h"

#include <windows.h>

#include <io.h>

#include <random>
#include <string>

namespace glyphmoor {

std::optional<std::uint32_t> ReadHostAttributes(const std::filesystem::path& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(attributes);
}

Status WriteHostAttributes(const std::filesystem::path& path, std::uint32_t attributes) {
    if (!::SetFileAttributesW(path.c_str(), attributes)) {
        return Fail("Cannot set the attributes of " + path.string());
    }
    return {};
}

Status SaveFileTransactionally(const std::filesystem::path& path, std::string_view bytes) {
    return SaveFileTransactionally(path, bytes, [](std::FILE* file, std::string_view chunk) {
        return std::fwrite(chunk.data(), 1, chunk.size(), file);
    });
}

Result<StagedFile> StageFile(const std::filesystem::path& path, const TextPieces& bytes,
                             const ChunkWriter& write, Flush /*flush*/,
                             const std::filesystem::path& /*stagingFolder*/) {
    const std::filesystem::path folder = StagingFolderBeside(path);
    std::random_device random;
    std::filesystem::path temp;
    std::FILE* file = nullptr;
    for (int attempt = 0; attempt < 16 && file == nullptr; ++attempt) {
        temp = folder / (path.filename().wstring() + L"." + std::to_wstring(random() % 1000000U) + L".tmp");
        file = ::_wfopen(temp.c_str(), L"wbx");
    }
    if (file == nullptr) {
        return Fail("Cannot create a file in " + folder.string());
    }
    auto abandon = [&](const std::string& reason) -> Failure {
        std::fclose(file);
        ::DeleteFileW(temp.c_str());
        return Fail(reason);
    };
    const bool written = WriteInChunks(
        bytes, kWriteChunk, [&](std::string_view chunk) { return write(file, chunk) == chunk.size(); });
    if (!written) {
        return abandon("Writing " + path.string() + " failed");
    }
    if (std::fflush(file) != 0 || ::_commit(::_fileno(file)) != 0) {
        return abandon("Writing " + path.string() + " failed");
    }
    std::fclose(file);
    return StagedFile{temp, path};
}

Status FlushStaged(const std::vector<StagedFile>& /*files*/) {
    return {};
}

Status PutStagedInPlace(const StagedFile& file) {
    // The new file takes over the old one's attributes.
    const DWORD old = ::GetFileAttributesW(file.target.c_str());
    if (old != INVALID_FILE_ATTRIBUTES) {
        if ((old & FILE_ATTRIBUTE_READONLY) != 0) {
            ::SetFileAttributesW(file.target.c_str(), old & ~DWORD{FILE_ATTRIBUTE_READONLY});
        }
        ::SetFileAttributesW(file.staged.c_str(), old);
    }
    if (!::MoveFileExW(file.staged.c_str(), file.target.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        if (old != INVALID_FILE_ATTRIBUTES) {
            ::SetFileAttributesW(file.target.c_str(), old);
        }
        return Fail("Cannot replace " + file.target.string());
    }
    return {};
}

void SyncFolder(const std::filesystem::path& /*folder*/) {}

void AdviseLargeBuffer(void* /*data*/, std::size_t /*size*/) {}

Status SaveFileTransactionally(const std::filesystem::path& path, std::string_view bytes,
                               const ChunkWriter& write) {
    const StagedFile staged = TRY(StageFile(path, TextPieces::Borrowing(bytes), write));
    if (Status put = PutStagedInPlace(staged); !put) {
        ::DeleteFileW(staged.staged.c_str());
        return put;
    }
    return {};
}

}  // namespace glyphmoor
