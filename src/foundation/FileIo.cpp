#include "foundation/FileIo.h"

#include "foundation/HostFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <vector>

namespace glyphmoor {

namespace {

std::string ErrnoText() {
    return std::strerror(errno);
}

// The whole file into a string or a byte vector.
template <typename Buffer>
Result<Buffer> ReadInto(const std::filesystem::path& file, std::uint64_t limit) {
    // A folder would read as a huge size, and a pipe or device would block
    // the open itself: only regular files are read.
    TRY(CheckRegularFile(file));
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        return Fail("cannot read " + file.string() + ": " + ErrnoText());
    }
    in.seekg(0, std::ios::end);
    const std::streamoff size = in.tellg();
    if (size < 0) {
        return Fail("cannot read " + file.string());
    }
    if (static_cast<std::uint64_t>(size) > limit) {
        return Fail(file.string() + " is too large (" + std::to_string(size) + " bytes)");
    }
    Buffer contents;
    contents.reserve(static_cast<std::size_t>(size));
    AdviseLargeBuffer(contents.data(), static_cast<std::size_t>(size));
    contents.resize(static_cast<std::size_t>(size));
    if (size > 0) {
        in.seekg(0, std::ios::beg);
        if (!in.read(reinterpret_cast<char*>(contents.data()), size)) {
            return Fail("cannot read " + file.string());
        }
    }
    return contents;
}

}  // namespace

Status CheckRegularFile(const std::filesystem::path& file) {
    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (status.type() == std::filesystem::file_type::not_found) {
        return Fail("cannot read " + file.string() + ": it does not exist");
    }
    if (error) {
        return Fail("cannot read " + file.string() + ": " + error.message());
    }
    if (status.type() == std::filesystem::file_type::directory) {
        return Fail("cannot read " + file.string() + ": it is a folder, not a file");
    }
    if (status.type() != std::filesystem::file_type::regular) {
        return Fail("cannot read " + file.string() + ": it is not a regular file");
    }
    return {};
}

std::filesystem::path StagingFolderBeside(const std::filesystem::path& file) {
    std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
    std::error_code error;
    while (!std::filesystem::is_directory(folder, error) && folder.has_relative_path()) {
        folder = folder.parent_path();
    }
    return folder.empty() ? std::filesystem::path(".") : folder;
}

Result<std::string> ReadWholeFile(const std::filesystem::path& file, std::uint64_t limit) {
    return ReadInto<std::string>(file, limit);
}

Result<std::vector<std::byte>> ReadFileBytes(const std::filesystem::path& file, std::uint64_t limit) {
    return ReadInto<std::vector<std::byte>>(file, limit);
}

Result<std::vector<std::byte>> ReadFileHead(const std::filesystem::path& file, std::size_t n) {
    TRY(CheckRegularFile(file));
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        return Fail("cannot read " + file.string() + ": " + ErrnoText());
    }
    std::vector<std::byte> head(n);
    in.read(reinterpret_cast<char*>(head.data()), static_cast<std::streamsize>(n));
    head.resize(static_cast<std::size_t>(in.gcount()));
    return head;
}

Status WriteFileAtomically(const std::filesystem::path& file, std::string_view contents) {
    return SaveFileTransactionally(file, contents);
}

Status WriteFilesAtomically(const std::vector<FileContents>& files) {
    const ChunkWriter write = [](std::FILE* out, std::string_view chunk) {
        return std::fwrite(chunk.data(), 1, chunk.size(), out);
    };
    std::vector<StagedFile> staged;
    auto removeStaged = [&](std::size_t from) {
        std::error_code error;
        for (std::size_t i = from; i < staged.size(); ++i) {
            std::filesystem::remove(staged[i].staged, error);
        }
    };
    for (const FileContents& file : files) {
        auto one = StageFile(file.file, TextPieces::Borrowing(file.contents), write, Flush::Later);
        if (!one) {
            removeStaged(0);
            return Fail(one.reason());
        }
        staged.push_back(*one);
    }
    if (Status flushed = FlushStaged(staged); !flushed) {
        removeStaged(0);
        return flushed;
    }
    for (std::size_t i = 0; i < staged.size(); ++i) {
        if (Status put = PutStagedInPlace(staged[i]); !put) {
            std::error_code error;
            for (std::size_t done = 0; done < i; ++done) {
                std::filesystem::remove(staged[done].target, error);
            }
            removeStaged(i);
            return put;
        }
    }
    std::vector<std::filesystem::path> folders;
    for (const StagedFile& file : staged) {
        const auto folder = file.target.parent_path();
        if (std::find(folders.begin(), folders.end(), folder) == folders.end()) {
            folders.push_back(folder);
            SyncFolder(folder.empty() ? std::filesystem::path(".") : folder);
        }
    }
    return {};
}

}  // namespace glyphmoor
