// The resource directory of PE32 and PE32+ files (Microsoft PE/COFF format:
// IMAGE_RESOURCE_DIRECTORY, IMAGE_RESOURCE_DIRECTORY_ENTRY,
// IMAGE_RESOURCE_DATA_ENTRY). Offsets inside the tree count from the start of
// the resource directory; data entries give addresses relative to the image,
// which the section table maps to file offsets.
#include "foundation/TextEncoding.h"
#include "iconfiles/modResource.h"

#include <string>

namespace glyphmoor {

namespace {

constexpr std::uint16_t kMagicPe32 = 0x10b;
constexpr std::uint16_t kMagicPe32Plus = 0x20b;
constexpr std::size_t kCoffHeaderSize = 20;
constexpr std::size_t kSectionHeaderSize = 40;
constexpr std::size_t kDirectoryHeaderSize = 16;
constexpr std::size_t kDirectoryEntrySize = 8;
constexpr std::uint32_t kHighBit = 0x80000000u;
constexpr std::uint32_t kResourceDataDirectory = 2;

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
            const auto vsize = m_file.U32(s + 8), va = m_file.U32(s + 12), raw = m_file.U32(s + 16),
                       ptr = m_file.U32(s + 20);
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
    const auto named = tree.U16(std::size_t{offset} + 12), ids = tree.U16(std::size_t{offset} + 14);
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

// US English, else the neutral language, else the first of a resource's languages.
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

}  // namespace

Result<ResourceDirectory> ReadPeResources(const ByteReader& file, std::size_t peOffset) {
    const std::size_t coff = peOffset + 4;
    const auto sectionCount = file.U16(coff + 2);
    const auto optionalSize = file.U16(coff + 16);
    const std::size_t optional = coff + kCoffHeaderSize;
    const auto magic = file.U16(optional);
    if (!sectionCount || !optionalSize || !magic) {
        return Fail("the PE header is cut short");
    }
    ResourceDirectory dir;
    std::size_t countAt = 0;
    if (*magic == kMagicPe32) {
        dir.kind = ExecutableKind::Pe32;
        countAt = 92;
    } else if (*magic == kMagicPe32Plus) {
        dir.kind = ExecutableKind::Pe32Plus;
        countAt = 108;
    } else {
        return Fail("the PE optional header has an unknown magic number");
    }
    const auto dirCount = file.U32(optional + countAt);
    const std::size_t entryAt = countAt + 4 + std::size_t{kResourceDataDirectory} * 8;
    if (!dirCount || *dirCount <= kResourceDataDirectory || entryAt + 8 > *optionalSize) {
        return Fail("the file has no resource section");
    }
    const auto rva = file.U32(optional + entryAt), size = file.U32(optional + entryAt + 4);
    if (!rva || !size) {
        return Fail("the PE header is cut short");
    }
    if (*rva == 0 || *size == 0) {
        return Fail("the file has no resource section");
    }
    PeImage image(file);
    if (Status s = image.ReadSections(optional + *optionalSize, *sectionCount); !s) {
        return Fail(s.reason());
    }
    const auto tree = image.At(*rva);
    if (!tree) {
        return Fail("the resource directory lies outside the file's sections");
    }

    // The tree has three levels as Windows reads it: type, name, language.
    // Only those three are walked, so a tree whose offsets loop back cannot
    // make the reader recurse; of the languages US English is taken, else
    // the neutral language, else the first (as an English Windows finds them).
    auto types = ReadNode(*tree, 0);
    if (!types) {
        return Fail(types.reason());
    }
    std::size_t total = 0;
    for (const TreeEntry& t : *types) {
        auto typeId = ReadName(*tree, t.name);
        if (!typeId) {
            return Fail(typeId.reason());
        }
        if ((t.target & kHighBit) == 0) {
            return Fail("a resource type points at data instead of a directory");
        }
        auto names = ReadNode(*tree, t.target & ~kHighBit);
        if (!names) {
            return Fail(names.reason());
        }
        ResourceTypeEntry type{std::move(*typeId), {}};
        for (const TreeEntry& n : *names) {
            if (++total > kMaxResources) {
                return Fail("the file lists more resources than any real file has");
            }
            auto nameId = ReadName(*tree, n.name);
            if (!nameId) {
                return Fail(nameId.reason());
            }
            std::uint32_t dataEntry = n.target;
            if ((dataEntry & kHighBit) != 0) {
                auto languages = ReadNode(*tree, dataEntry & ~kHighBit);
                if (!languages) {
                    return Fail(languages.reason());
                }
                if (languages->empty()) {
                    continue;  // a name without any language has no data to find
                }
                dataEntry = PreferredLanguage(*languages).target;
                if ((dataEntry & kHighBit) != 0) {
                    return Fail("the resource tree is deeper than three levels");
                }
            }
            const auto dataRva = tree->U32(dataEntry), dataSize = tree->U32(std::size_t{dataEntry} + 4);
            if (!dataRva || !dataSize) {
                return Fail("a resource data entry lies outside the resource section");
            }
            // Data outside the file is listed all the same, as Windows lists
            // it, and reads as empty.
            const auto offset = image.FileOffset(*dataRva, *dataSize);
            type.resources.push_back(
                {std::move(*nameId), offset.value_or(file.size()), offset ? *dataSize : 0});
        }
        dir.types.push_back(std::move(type));
    }
    return dir;
}

}  // namespace glyphmoor
