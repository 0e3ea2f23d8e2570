#include "foundation/FileIo.h"

#include "foundation/HostFiles.h"

#include <cerrno>
#include <cstring>
#include <fstream>

namespace glyphmoor {

namespace {

std::string ErrnoText() {
    return std::strerror(errno);
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

Result<std::string> ReadWholeFile(const std::filesystem::path& file) {
    // A folder would read as a huge size, and a pipe or device would block
    // the open itself: only regular files are read.
    if (Status regular = CheckRegularFile(file); !regular) {
        return Fail(regular.reason());
    }
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
    return SaveFileTransactionally(file, contents);
}

}  // namespace glyphmoor
