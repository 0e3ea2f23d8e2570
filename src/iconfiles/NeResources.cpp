// The resource table of 16-bit NE files (the segmented executable format of
// Windows 3.x programs, libraries and *.icl icon libraries): an alignment
// shift, then per type a TYPEINFO record (type id, count, reserved) followed
// by `count` NAMEINFO records of 12 bytes (offset and length in alignment
// units, flags, id, two words the loader uses), ended by a type id of 0. Ids
// with the high bit set are numbers; others are offsets, from the table's
// start, of a length-prefixed name in the ANSI code page.
#include "foundation/TextEncoding.h"
#include "iconfiles/modResource.h"

#include <string>

namespace glyphmoor {

namespace {

constexpr std::size_t kResourceTableField = 0x24;
constexpr std::size_t kResidentNamesField = 0x26;
constexpr std::size_t kTypeInfoSize = 8;
constexpr std::size_t kNameInfoSize = 12;
// Real files use shifts of 4 to 9; a larger one would push every offset past
// any file.
constexpr std::uint16_t kMaxAlignShift = 16;

Result<ResourceId> ReadNeId(const ByteReader& table, std::uint16_t id) {
    if ((id & 0x8000) != 0) {
        return ResourceId::Number(static_cast<std::uint16_t>(id & 0x7fff));
    }
    const auto length = table.U8(id);
    const auto chars = length ? table.Bytes(std::size_t{id} + 1, *length) : std::nullopt;
    if (!chars) {
        return Fail("a resource name lies outside the resource table");
    }
    std::string name;
    for (std::byte b : *chars) {
        AppendUtf8(name, AnsiToCodePoint(static_cast<std::uint8_t>(b)));
    }
    return ResourceId::Name(std::move(name));
}

}  // namespace

Result<ResourceDirectory> ReadNeResources(const ByteReader& file, std::size_t neOffset) {
    const auto tableField = file.U16(neOffset + kResourceTableField);
    const auto residentField = file.U16(neOffset + kResidentNamesField);
    if (!tableField || !residentField) {
        return Fail("the NE header is cut short");
    }
    if (*tableField == *residentField) {
        return Fail("the file has no resource table");
    }
    // The names that ids point at follow the records, so ids are read
    // against everything from the table's start to the end of the file.
    const ByteReader table = file.From(neOffset + *tableField);
    const auto shift = table.U16(0);
    if (!shift) {
        return Fail("the resource table lies outside the file");
    }
    if (*shift > kMaxAlignShift) {
        return Fail("the resource table's alignment shift " + std::to_string(*shift) + " is not plausible");
    }
    ResourceDirectory dir;
    dir.kind = ExecutableKind::Ne;
    std::size_t at = 2;
    std::size_t total = 0;
    for (;;) {
        const auto typeId = table.U16(at);
        if (!typeId) {
            return Fail("the resource table runs past the end of the file");
        }
        if (*typeId == 0) {
            break;
        }
        const auto count = table.U16(at + 2);
        if (!count || !table.Has(at + kTypeInfoSize, std::size_t{*count} * kNameInfoSize)) {
            return Fail("the resource table runs past the end of the file");
        }
        auto type = TRY(ReadNeId(table, *typeId));
        ResourceTypeEntry entry{std::move(type), {}};
        at += kTypeInfoSize;
        for (std::uint16_t i = 0; i < *count; ++i, at += kNameInfoSize) {
            if (++total > kMaxResources) {
                return Fail("the file lists more resources than any real file has");
            }
            const std::size_t offset = std::size_t{*table.U16(at)} << *shift;
            const std::size_t length = std::size_t{*table.U16(at + 2)} << *shift;
            auto name = TRY(ReadNeId(table, *table.U16(at + 6)));
            entry.resources.push_back({std::move(name), offset, length});
        }
        dir.types.push_back(std::move(entry));
    }
    return dir;
}

}  // namespace glyphmoor
