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
    return SaveFileTransactionally(file, contents);
}

}  // namespace glyphmoor
