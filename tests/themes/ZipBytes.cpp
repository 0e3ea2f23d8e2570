#include "ZipBytes.h"

#include <zlib.h>

#include <stdexcept>

namespace glyphmoor::test {

namespace {

void U16(std::string& out, std::uint32_t v) {
    out += static_cast<char>(v & 0xffU);
    out += static_cast<char>((v >> 8U) & 0xffU);
}

void U32(std::string& out, std::uint32_t v) {
    U16(out, v & 0xffffU);
    U16(out, v >> 16U);
}

}  // namespace

std::uint32_t Crc32(const std::string& data) {
    return static_cast<std::uint32_t>(
        crc32(0L, reinterpret_cast<const Bytef*>(data.data()), static_cast<uInt>(data.size())));
}

std::string Deflated(const std::string& data) {
    z_stream z{};
    if (deflateInit2(&z, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("deflateInit2");
    }
    std::string out(deflateBound(&z, static_cast<uLong>(data.size())), '\0');
    z.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
    z.avail_in = static_cast<uInt>(data.size());
    z.next_out = reinterpret_cast<Bytef*>(out.data());
    z.avail_out = static_cast<uInt>(out.size());
    deflate(&z, Z_FINISH);
    out.resize(z.total_out);
    deflateEnd(&z);
    return out;
}

std::string ZipArchive(const std::vector<ZipEntry>& entries, const ZipLies& lies) {
    std::string archive;
    std::string central;
    for (const ZipEntry& e : entries) {
        const std::string stored = e.deflate ? Deflated(e.data) : e.data;
        const std::uint16_t method = e.method.value_or(e.deflate ? 8 : 0);
        const std::uint32_t crc = e.crc.value_or(Crc32(e.data));
        const std::uint32_t size = e.size.value_or(static_cast<std::uint32_t>(e.data.size()));
        const auto offset = e.centralOnly ? e.offset : static_cast<std::uint32_t>(archive.size());
        const std::string& localName = e.localName.value_or(e.name);

        std::string local;
        U32(local, 0x04034b50);
        U16(local, 20);
        U16(local, e.flags);
        U16(local, method);
        U32(local, 0);  // time and date
        U32(local, crc);
        U32(local, static_cast<std::uint32_t>(stored.size()));
        U32(local, e.localSize.value_or(size));
        U16(local, static_cast<std::uint32_t>(localName.size()));
        U16(local, 0);
        local += localName;
        local += stored;
        if (!e.centralOnly) {
            archive += local;
        }

        U32(central, 0x02014b50);
        U16(central, e.madeBy);
        U16(central, 20);
        U16(central, e.flags);
        U16(central, method);
        U32(central, 0);
        U32(central, crc);
        U32(central, static_cast<std::uint32_t>(stored.size()));
        U32(central, size);
        U16(central, static_cast<std::uint32_t>(e.name.size()));
        U32(central, 0);  // extra field and comment lengths
        U32(central, 0);  // disk and internal attributes
        U32(central, e.externalAttributes);
        U32(central, offset);
        central += e.name;
    }
    const auto centralOffset = static_cast<std::uint32_t>(archive.size());
    archive += central;
    U32(archive, 0x06054b50);
    U32(archive, 0);
    const auto count = lies.entryCount.value_or(static_cast<std::uint16_t>(entries.size()));
    U16(archive, count);
    U16(archive, count);
    U32(archive, static_cast<std::uint32_t>(central.size()));
    U32(archive, lies.centralOffset.value_or(centralOffset));
    U16(archive, 0);
    return archive;
}

}  // namespace glyphmoor::test
