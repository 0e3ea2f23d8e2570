// The resource directory of PE32 and PE32+ files (the records in PeRecords.h). Offsets inside the tree count
// from the start of the resource directory; data entries give addresses relative to the image, which the
// section table maps to file offsets.
#include "foundation/TextEncoding.h"
#include "iconfiles/PeRecords.h"
#include "iconfiles/modResource.h"

#include <cstddef>

#include <string>

namespace glyphmoor {

namespace {

constexpr std::size_t kSectionHeaderSize = sizeof(pe::SectionHeader);
constexpr std::size_t kDirectoryHeaderSize = sizeof(pe::ResourceDirectory);
constexpr std::size_t kDirectoryEntrySize = sizeof(pe::ResourceDirectoryEntry);
constexpr std::uint32_t kHighBit = pe::kResourceHighBit;

struct Section {
    std::uint32_t virtualAddress;
    std::uint32_t virtualSize;
    std::uint32_t rawSize;
    std::uint32_t rawOffset;
};

class PeImage {
public:
    explicit PeImage(const ByteReader& file) : m_file(file) {}

    Status ReadSections(std::size_t at, std::uint16_t count) {
        for (std::uint16_t i = 0; i < count; ++i) {
            const std::size_t s = at + i * kSectionHeaderSize;
            const auto vsize = m_file.U32(s + offsetof(pe::SectionHeader, virtualSize));
            const auto va = m_file.U32(s + offsetof(pe::SectionHeader, virtualAddress));
            const auto raw = m_file.U32(s + offsetof(pe::SectionHeader, sizeOfRawData));
            const auto ptr = m_file.U32(s + offsetof(pe::SectionHeader, pointerToRawData));
            if (!vsize || !va || !raw || !ptr) {
                return Fail("the section table is cut short");
            }
            m_sections.push_back({*va, *vsize, *raw, *ptr});
        }
        return {};
    }

    // The file bytes from an image address to the end of its section's data
    // in the file, or nothing when no section holds it.
    [[nodiscard]] std::optional<ByteReader> At(std::uint32_t rva) const {
        for (const Section& s : m_sections) {
            const std::uint64_t span = std::max(s.virtualSize, s.rawSize);
            if (rva < s.virtualAddress || rva - s.virtualAddress >= span) {
                continue;
            }
            const std::uint32_t delta = rva - s.virtualAddress;
            if (delta >= s.rawSize) {
                return std::nullopt;  // in the section's zero-filled tail
            }
            const std::uint64_t start = std::uint64_t{s.rawOffset} + delta;
            if (start > m_file.size()) {
                return std::nullopt;
            }
            const std::uint64_t n = std::min<std::uint64_t>(s.rawSize - delta, m_file.size() - start);
            return m_file.Sub(static_cast<std::size_t>(start), static_cast<std::size_t>(n));
        }
        return std::nullopt;
    }

    // The file offset of an image address range, when it lies whole in a section's data.
    [[nodiscard]] std::optional<std::size_t> FileOffset(std::uint32_t rva, std::uint32_t size) const {
        const auto bytes = At(rva);
        if (!bytes || bytes->size() < size) {
            return std::nullopt;
        }
        return static_cast<std::size_t>(bytes->data().data() - m_file.data().data());
    }

private:
    const ByteReader& m_file;
    std::vector<Section> m_sections;
};

struct TreeEntry {
    std::uint32_t name;
    std::uint32_t target;
};

// The entries of one directory node: its named entries, then its id entries.
Result<std::vector<TreeEntry>> ReadNode(const ByteReader& tree, std::uint32_t offset) {
    const auto named = tree.U16(std::size_t{offset} + offsetof(pe::ResourceDirectory, namedEntries));
    const auto ids = tree.U16(std::size_t{offset} + offsetof(pe::ResourceDirectory, idEntries));
    if (!named || !ids) {
        return Fail("a resource directory lies outside the resource section");
    }
    const std::size_t count = std::size_t{*named} + *ids;
    const std::size_t first = std::size_t{offset} + kDirectoryHeaderSize;
    if (!tree.Has(first, count * kDirectoryEntrySize)) {
        return Fail("a resource directory's entries run past the resource section");
    }
    std::vector<TreeEntry> entries(count);
    for (std::size_t i = 0; i < count; ++i) {
        entries[i] = {*tree.U32(first + i * kDirectoryEntrySize),
                      *tree.U32(first + i * kDirectoryEntrySize + 4)};
    }
    return entries;
}

Result<ResourceId> ReadName(const ByteReader& tree, std::uint32_t name) {
    if ((name & kHighBit) == 0) {
        return ResourceId::Number(static_cast<std::uint16_t>(name & 0xffff));
    }
    const std::size_t at = name & ~kHighBit;
    const auto length = tree.U16(at);
    const auto chars = length ? tree.Bytes(at + 2, std::size_t{*length} * 2) : std::nullopt;
    if (!chars) {
        return Fail("a resource name lies outside the resource section");
    }
    const std::string_view raw(reinterpret_cast<const char*>(chars->data()), chars->size());
    return ResourceId::Name(Utf16ToUtf8(BytesToUtf16(raw)));
}

// What the resource reader needs of the PE headers.
struct PeHeaders {
    ExecutableKind kind = ExecutableKind::Pe32;
    std::uint16_t sectionCount = 0;
    std::size_t sectionTable = 0;  // the file offset of the section table
    std::uint32_t resourceRva = 0;
};

// The COFF header, then the optional header's magic and its resource data directory.
Result<PeHeaders> ReadPeHeaders(const ByteReader& file, std::size_t peOffset) {
    const std::size_t coff = peOffset + 4;  // after "PE\0\0"
    const auto sectionCount = file.U16(coff + offsetof(pe::FileHeader, sections));
    const auto optionalSize = file.U16(coff + offsetof(pe::FileHeader, optionalHeaderSize));
    const std::size_t optional = coff + sizeof(pe::FileHeader);
    const auto magic = file.U16(optional);
    if (!sectionCount || !optionalSize || !magic) {
        return Fail("the PE header is cut short");
    }
    PeHeaders headers;
    std::size_t countAt = 0;
    if (*magic == pe::OptionalHeader<std::uint32_t>::kMagic) {
        headers.kind = ExecutableKind::Pe32;
        countAt = offsetof(pe::OptionalHeader<std::uint32_t>, numberOfRvaAndSizes);
    } else if (*magic == pe::OptionalHeader<std::uint64_t>::kMagic) {
        headers.kind = ExecutableKind::Pe32Plus;
        countAt = offsetof(pe::OptionalHeader<std::uint64_t>, numberOfRvaAndSizes);
    } else {
        return Fail("the PE optional header has an unknown magic number");
    }
    const auto dirCount = file.U32(optional + countAt);
    const std::size_t entryAt = countAt + 4 + pe::kResourceDirectoryIndex * sizeof(pe::DataDirectory);
    if (!dirCount || *dirCount <= pe::kResourceDirectoryIndex || entryAt + 8 > *optionalSize) {
        return Fail("the file has no resource section");
    }
    const auto rva = file.U32(optional + entryAt);
    const auto size = file.U32(optional + entryAt + 4);
    if (!rva || !size) {
        return Fail("the PE header is cut short");
    }
    if (*rva == 0 || *size == 0) {
        return Fail("the file has no resource section");
    }
    headers.sectionCount = *sectionCount;
    headers.sectionTable = optional + *optionalSize;
    headers.resourceRva = *rva;
    return headers;
}

// US English, else the neutral language, else the first of a resource's
// languages, as an English Windows finds them.
const TreeEntry& PreferredLanguage(const std::vector<TreeEntry>& languages) {
    constexpr std::uint32_t kEnglishUs = 0x409;
    constexpr std::uint32_t kNeutral = 0;
    for (std::uint32_t wanted : {kEnglishUs, kNeutral}) {
        for (const TreeEntry& entry : languages) {
            if (entry.name == wanted) {
                return entry;
            }
        }
    }
    return languages.front();
}

// One name of a type: its preferred language's data, where the file holds it.
// Nothing for a name without any language.
Result<std::optional<ResourceData>> ReadNamedResource(const ByteReader& tree, const PeImage& image,
                                                      const TreeEntry& n, std::size_t fileSize) {
    auto nameId = TRY(ReadName(tree, n.name));
    std::uint32_t dataEntry = n.target;
    if ((dataEntry & kHighBit) != 0) {
        auto languages = TRY(ReadNode(tree, dataEntry & ~kHighBit));
        if (languages.empty()) {
            return std::optional<ResourceData>();
        }
        dataEntry = PreferredLanguage(languages).target;
        if ((dataEntry & kHighBit) != 0) {
            return Fail("the resource tree is deeper than three levels");
        }
    }
    const auto dataRva = tree.U32(dataEntry + offsetof(pe::ResourceDataEntry, dataRva));
    const auto dataSize = tree.U32(std::size_t{dataEntry} + offsetof(pe::ResourceDataEntry, size));
    if (!dataRva || !dataSize) {
        return Fail("a resource data entry lies outside the resource section");
    }
    // Data outside the file is listed all the same, as Windows lists it, and reads as empty.
    const auto offset = image.FileOffset(*dataRva, *dataSize);
    return std::optional<ResourceData>(
        ResourceData{std::move(nameId), offset.value_or(fileSize), offset ? *dataSize : 0});
}

}  // namespace

Result<ResourceDirectory> ReadPeResources(const ByteReader& file, std::size_t peOffset) {
    const PeHeaders headers = TRY(ReadPeHeaders(file, peOffset));
    ResourceDirectory dir;
    dir.kind = headers.kind;
    PeImage image(file);
    TRY(image.ReadSections(headers.sectionTable, headers.sectionCount));
    const auto tree = image.At(headers.resourceRva);
    if (!tree) {
        return Fail("the resource directory lies outside the file's sections");
    }

    // The tree has three levels as Windows reads it: type, name, language.
    // Only those three are walked, so a tree whose offsets loop back cannot
    // make the reader recurse; of the languages US English is taken, else the
    // neutral language, else the first.
    auto types = TRY(ReadNode(*tree, 0));
    std::size_t total = 0;
    for (const TreeEntry& t : types) {
        auto typeId = TRY(ReadName(*tree, t.name));
        if ((t.target & kHighBit) == 0) {
            return Fail("a resource type points at data instead of a directory");
        }
        auto names = TRY(ReadNode(*tree, t.target & ~kHighBit));
        ResourceTypeEntry type{std::move(typeId), {}};
        for (const TreeEntry& n : names) {
            if (++total > kMaxResources) {
                return Fail("the file lists more resources than any real file has");
            }
            if (auto resource = TRY(ReadNamedResource(*tree, image, n, file.size()))) {
                type.resources.push_back(std::move(*resource));
            }
        }
        dir.types.push_back(std::move(type));
    }
    return dir;
}

}  // namespace glyphmoor
