// ZipBytes: zip archives written byte by byte in a test, so that every field
// a hostile archive could lie in can be set on its own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace glyphmoor::test {

struct ZipEntry {
    std::string name{};
    std::string data{};    // the entry's contents before compression
    bool deflate = false;  // else stored
    std::uint16_t flags = 0;
    std::uint16_t madeBy = 20;  // (3 << 8) | 20 for an entry made on Unix
    std::uint32_t externalAttributes = 0;
    // Lies the archive tells about the entry; nothing: the truth.
    std::optional<std::uint32_t> crc{};
    std::optional<std::uint32_t> size{};
    std::optional<std::uint16_t> method{};
    std::optional<std::string> localName{};
    std::optional<std::uint32_t> localSize{};
    // Only a central record, pointing at `offset` (an entry made to share
    // another entry's bytes).
    bool centralOnly = false;
    std::uint32_t offset = 0;
};

struct ZipLies {
    std::optional<std::uint16_t> entryCount{};
    std::optional<std::uint32_t> centralOffset{};
};

// The archive: local headers with data, the central directory, the end record.
std::string ZipArchive(const std::vector<ZipEntry>& entries, const ZipLies& lies = {});

// Raw deflate of the bytes (no zlib header), as zip stores it.
std::string Deflated(const std::string& data);
std::uint32_t Crc32(const std::string& data);

}  // namespace glyphmoor::test
