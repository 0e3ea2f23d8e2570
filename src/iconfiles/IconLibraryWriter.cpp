#include "iconfiles/IconLibraryWriter.h"

#include "foundation/ByteReader.h"
#include "foundation/ByteWriter.h"
#include "foundation/TextEncoding.h"
#include "iconfiles/PeRecords.h"
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

namespace glyphmoor {

namespace {

constexpr std::uint32_t kFileAlignment = 0x200;
constexpr std::uint32_t kSectionAlignment = 0x1000;
constexpr std::uint32_t kRsrcRva = 0x1000;
constexpr std::uint32_t kPeOffset = 0x80;
// Resource data and the name strings before it start on 8-byte boundaries.
constexpr std::uint32_t kResourceAlignment = 8;

std::uint32_t AlignUp(std::uint32_t v, std::uint32_t a) {
    return (v + a - 1) / a * a;
}

std::uint32_t U32(std::size_t v) {
    return static_cast<std::uint32_t>(v);
}

// Directory order: named entries first, compared as Windows compares them
// (upper-case), then numbers ascending.
bool EntryLess(const ResourceId& a, const ResourceId& b) {
    if (a.isName != b.isName) {
        return a.isName;
    }
    if (a.isName) {
        return CompareNoCase(a.name, b.name) < 0;
    }
    return a.number < b.number;
}

// The resources of one type, in directory order.
using TypeGroup = std::vector<const RawResource*>;

// The resources grouped by type, both levels in directory order.
std::vector<TypeGroup> GroupByType(const std::vector<RawResource>& resources) {
    std::vector<const RawResource*> sorted;
    sorted.reserve(resources.size());
    for (const RawResource& r : resources) {
        sorted.push_back(&r);
    }
    std::stable_sort(sorted.begin(), sorted.end(), [](const RawResource* a, const RawResource* b) {
        if (EntryLess(a->type, b->type)) {
            return true;
        }
        if (EntryLess(b->type, a->type)) {
            return false;
        }
        return EntryLess(a->name, b->name);
    });
    std::vector<TypeGroup> types;
    for (const RawResource* r : sorted) {
        if (types.empty() || !types.back().front()->type.Matches(r->type)) {
            types.emplace_back();
        }
        types.back().push_back(r);
    }
    return types;
}

// Where everything of the .rsrc section goes, in the order it is written: the
// type directory, a name directory per type, a language directory per
// resource, a data entry per resource, the name strings, then the data.
struct SectionLayout {
    std::vector<std::uint32_t> nameDirAt;
    std::vector<std::uint32_t> langDirAt;
    std::vector<std::uint32_t> dataEntryAt;
    std::map<std::string, std::uint32_t> stringAt;
    std::vector<std::byte> strings;
    std::vector<std::uint32_t> dataAt;
    std::uint32_t size = 0;
};

std::uint32_t DirectorySize(std::size_t entries) {
    return U32(sizeof(pe::ResourceDirectory) + entries * sizeof(pe::ResourceDirectoryEntry));
}

// A name goes into the strings once, as a counted UTF-16 string.
void InternName(SectionLayout& layout, std::uint32_t stringsStart, const ResourceId& id) {
    if (!id.isName || layout.stringAt.contains(id.name)) {
        return;
    }
    layout.stringAt[id.name] = stringsStart + U32(layout.strings.size());
    const std::u16string text = Utf8ToUtf16(id.name);
    PutU16(layout.strings, static_cast<std::uint16_t>(text.size()));
    for (char16_t c : text) {
        PutU16(layout.strings, static_cast<std::uint16_t>(c));
    }
}

SectionLayout LayOutSection(const std::vector<TypeGroup>& types) {
    SectionLayout layout;
    std::uint32_t pos = DirectorySize(types.size());
    for (const TypeGroup& t : types) {
        layout.nameDirAt.push_back(pos);
        pos += DirectorySize(t.size());
    }
    for (const TypeGroup& t : types) {
        for (std::size_t i = 0; i < t.size(); ++i) {
            layout.langDirAt.push_back(pos);
            pos += DirectorySize(1);
        }
    }
    for (std::size_t i = 0; i < layout.langDirAt.size(); ++i) {
        layout.dataEntryAt.push_back(pos);
        pos += U32(sizeof(pe::ResourceDataEntry));
    }
    for (const TypeGroup& t : types) {
        InternName(layout, pos, t.front()->type);
        for (const RawResource* r : t) {
            InternName(layout, pos, r->name);
        }
    }
    pos = AlignUp(pos + U32(layout.strings.size()), kResourceAlignment);
    for (const TypeGroup& t : types) {
        for (const RawResource* r : t) {
            layout.dataAt.push_back(pos);
            pos = AlignUp(pos + U32(r->data.size()), kResourceAlignment);
        }
    }
    layout.size = pos;
    return layout;
}

void Write(ByteWriter& out, const pe::ResourceDirectoryEntry& entry) {
    out.U32(entry.name);
    out.U32(entry.target);
}

// A directory and its entries, each pointing at targets[i].
void WriteDirectory(ByteWriter& out, const SectionLayout& layout, const std::vector<ResourceId>& ids,
                    const std::vector<std::uint32_t>& targets) {
    pe::ResourceDirectory directory;
    for (const ResourceId& id : ids) {
        ++(id.isName ? directory.namedEntries : directory.idEntries);
    }
    out.U32(directory.characteristics);
    out.U32(directory.timeDateStamp);
    out.U16(directory.majorVersion);
    out.U16(directory.minorVersion);
    out.U16(directory.namedEntries);
    out.U16(directory.idEntries);
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const std::uint32_t name =
            ids[i].isName ? (pe::kResourceHighBit | layout.stringAt.at(ids[i].name)) : ids[i].number;
        Write(out, pe::ResourceDirectoryEntry{name, targets[i]});
    }
}

std::vector<std::byte> WriteSection(const std::vector<TypeGroup>& types, const SectionLayout& layout) {
    ByteWriter out(layout.size);
    std::vector<ResourceId> typeIds;
    std::vector<std::uint32_t> nameDirs;
    for (std::size_t t = 0; t < types.size(); ++t) {
        typeIds.push_back(types[t].front()->type);
        nameDirs.push_back(pe::kResourceHighBit | layout.nameDirAt[t]);
    }
    WriteDirectory(out, layout, typeIds, nameDirs);
    std::size_t flat = 0;
    for (const TypeGroup& t : types) {
        std::vector<ResourceId> names;
        std::vector<std::uint32_t> langDirs;
        for (const RawResource* r : t) {
            names.push_back(r->name);
            langDirs.push_back(pe::kResourceHighBit | layout.langDirAt[flat++]);
        }
        WriteDirectory(out, layout, names, langDirs);
    }
    flat = 0;
    for (const TypeGroup& t : types) {
        for (const RawResource* r : t) {
            WriteDirectory(out, layout, {ResourceId::Number(r->language)}, {layout.dataEntryAt[flat++]});
        }
    }
    flat = 0;
    for (const TypeGroup& t : types) {
        for (const RawResource* r : t) {
            const pe::ResourceDataEntry entry{kRsrcRva + layout.dataAt[flat++], U32(r->data.size())};
            out.U32(entry.dataRva);
            out.U32(entry.size);
            out.U32(entry.codePage);
            out.U32(entry.reserved);
        }
    }
    out.Bytes(layout.strings);
    for (const TypeGroup& t : types) {
        for (const RawResource* r : t) {
            out.Align(kResourceAlignment);
            out.Bytes(r->data);
        }
    }
    out.PadTo(layout.size);
    return std::move(out).Take();
}

// The MS-DOS header and stub: the stub prints a line and ends, should anyone
// start the file under MS-DOS.
void WriteDosPart(ByteWriter& out) {
    pe::DosHeader dos;
    dos.lastPageBytes = 0x90;
    dos.pages = 3;
    dos.headerParagraphs = 4;
    dos.maxExtraParagraphs = 0xffff;
    dos.initialSp = 0xb8;
    dos.relocationTable = 0x40;
    dos.peOffset = kPeOffset;
    for (std::uint16_t field :
         {dos.magic, dos.lastPageBytes, dos.pages, dos.relocations, dos.headerParagraphs,
          dos.minExtraParagraphs, dos.maxExtraParagraphs, dos.initialSs, dos.initialSp, dos.checksum,
          dos.initialIp, dos.initialCs, dos.relocationTable, dos.overlay}) {
        out.U16(field);
    }
    for (std::uint16_t field : dos.reserved) {
        out.U16(field);
    }
    out.U16(dos.oemId);
    out.U16(dos.oemInfo);
    for (std::uint16_t field : dos.reserved2) {
        out.U16(field);
    }
    out.U32(dos.peOffset);
    static constexpr std::array<std::uint8_t, 14> kStubCode = {0x0e, 0x1f, 0xba, 0x0e, 0x00, 0xb4, 0x09,
                                                               0xcd, 0x21, 0xb8, 0x01, 0x4c, 0xcd, 0x21};
    for (std::uint8_t code : kStubCode) {
        out.U8(code);
    }
    out.Ascii("This file holds icons for Windows.\r\n$");
    out.PadTo(kPeOffset);
}

void WriteFileHeader(ByteWriter& out, const PeLayout& layout) {
    pe::FileHeader file;
    file.machine = layout.pe32Plus ? pe::kMachineAmd64 : pe::kMachineI386;
    file.sections = 1;
    file.optionalHeaderSize =
        static_cast<std::uint16_t>(layout.pe32Plus ? sizeof(pe::OptionalHeader<std::uint64_t>)
                                                   : sizeof(pe::OptionalHeader<std::uint32_t>));
    file.characteristics = pe::kFileExecutableImage;
    file.characteristics |= layout.pe32Plus ? pe::kFileLargeAddressAware : pe::kFile32BitMachine;
    file.characteristics |= layout.dll ? pe::kFileDll : pe::kFileRelocsStripped;
    out.U32(pe::kPeSignature);
    out.U16(file.machine);
    out.U16(file.sections);
    out.U32(file.timeDateStamp);
    out.U32(file.symbolTable);
    out.U32(file.symbols);
    out.U16(file.optionalHeaderSize);
    out.U16(file.characteristics);
}

template <typename Word>
void PutWord(ByteWriter& out, Word v) {
    if constexpr (sizeof(Word) == 4) {
        out.U32(v);
    } else {
        out.U64(v);
    }
}

template <typename Word>
void Write(ByteWriter& out, const pe::OptionalHeader<Word>& h) {
    out.U16(h.magic);
    out.U8(h.majorLinkerVersion);
    out.U8(h.minorLinkerVersion);
    for (std::uint32_t field : {h.sizeOfCode, h.sizeOfInitializedData, h.sizeOfUninitializedData,
                                h.addressOfEntryPoint, h.baseOfCode}) {
        out.U32(field);
    }
    if constexpr (pe::OptionalHeader<Word>::kPe32) {
        out.U32(h.baseOfData);
    }
    PutWord(out, h.imageBase);
    out.U32(h.sectionAlignment);
    out.U32(h.fileAlignment);
    for (std::uint16_t field :
         {h.majorOperatingSystemVersion, h.minorOperatingSystemVersion, h.majorImageVersion,
          h.minorImageVersion, h.majorSubsystemVersion, h.minorSubsystemVersion}) {
        out.U16(field);
    }
    for (std::uint32_t field : {h.win32VersionValue, h.sizeOfImage, h.sizeOfHeaders, h.checkSum}) {
        out.U32(field);
    }
    out.U16(h.subsystem);
    out.U16(h.dllCharacteristics);
    for (Word field : {h.sizeOfStackReserve, h.sizeOfStackCommit, h.sizeOfHeapReserve, h.sizeOfHeapCommit}) {
        PutWord(out, field);
    }
    out.U32(h.loaderFlags);
    out.U32(h.numberOfRvaAndSizes);
    for (const pe::DataDirectory& directory : h.dataDirectories) {
        out.U32(directory.rva);
        out.U32(directory.size);
    }
}

// The file's sizes, as the headers give them.
struct FileSizes {
    std::uint32_t headers = 0;  // every header, to the file alignment
    std::uint32_t section = 0;  // the .rsrc section's bytes
    std::uint32_t raw = 0;      // the same to the file alignment
};

template <typename Word>
void WriteOptionalHeader(ByteWriter& out, const PeLayout& layout, const FileSizes& sizes) {
    pe::OptionalHeader<Word> h;
    h.majorLinkerVersion = 6;
    h.sizeOfInitializedData = sizes.raw;
    h.baseOfCode = kRsrcRva;
    if constexpr (pe::OptionalHeader<Word>::kPe32) {
        h.baseOfData = kRsrcRva;
        h.imageBase = layout.dll ? 0x10000000u : 0x00400000u;
    } else {
        h.imageBase = layout.dll ? 0x180000000ULL : 0x140000000ULL;
    }
    h.sectionAlignment = kSectionAlignment;
    h.fileAlignment = kFileAlignment;
    h.majorOperatingSystemVersion = 4;
    h.majorSubsystemVersion = 4;
    h.sizeOfImage = kRsrcRva + AlignUp(std::max<std::uint32_t>(sizes.section, 1), kSectionAlignment);
    h.sizeOfHeaders = sizes.headers;
    h.subsystem = pe::kSubsystemWindowsGui;
    h.sizeOfStackReserve = 0x100000;
    h.sizeOfStackCommit = 0x1000;
    h.sizeOfHeapReserve = 0x100000;
    h.sizeOfHeapCommit = 0x1000;
    h.dataDirectories[pe::kResourceDirectoryIndex] = {kRsrcRva, sizes.section};
    Write(out, h);
}

void WriteSectionHeader(ByteWriter& out, const FileSizes& sizes) {
    pe::SectionHeader section;
    section.name = {'.', 'r', 's', 'r', 'c', 0, 0, 0};
    section.virtualSize = sizes.section;
    section.virtualAddress = kRsrcRva;
    section.sizeOfRawData = sizes.raw;
    section.pointerToRawData = sizes.headers;
    section.characteristics = pe::kSectionInitializedData | pe::kSectionMemRead;
    for (char c : section.name) {
        out.U8(static_cast<std::uint8_t>(c));
    }
    for (std::uint32_t field :
         {section.virtualSize, section.virtualAddress, section.sizeOfRawData, section.pointerToRawData,
          section.pointerToRelocations, section.pointerToLinenumbers}) {
        out.U32(field);
    }
    out.U16(section.numberOfRelocations);
    out.U16(section.numberOfLinenumbers);
    out.U32(section.characteristics);
}

}  // namespace

std::vector<std::byte> BuildResourceOnlyPe(const std::vector<RawResource>& resources,
                                           const PeLayout& layout) {
    const std::vector<TypeGroup> types = GroupByType(resources);
    const SectionLayout section = LayOutSection(types);
    const std::size_t optionalSize = layout.pe32Plus ? sizeof(pe::OptionalHeader<std::uint64_t>)
                                                     : sizeof(pe::OptionalHeader<std::uint32_t>);
    const std::size_t headersEnd =
        kPeOffset + 4 + sizeof(pe::FileHeader) + optionalSize + sizeof(pe::SectionHeader);
    const FileSizes sizes{AlignUp(U32(headersEnd), kFileAlignment), section.size,
                          AlignUp(section.size, kFileAlignment)};

    ByteWriter out(std::size_t{sizes.headers} + sizes.raw);
    WriteDosPart(out);
    WriteFileHeader(out, layout);
    if (layout.pe32Plus) {
        WriteOptionalHeader<std::uint64_t>(out, layout, sizes);
    } else {
        WriteOptionalHeader<std::uint32_t>(out, layout, sizes);
    }
    WriteSectionHeader(out, sizes);
    out.PadTo(sizes.headers);
    out.Bytes(WriteSection(types, section));
    out.PadTo(std::size_t{sizes.headers} + sizes.raw);
    return std::move(out).Take();
}

std::vector<RawResource> IconLibraryResources(const std::vector<cFileIcon>& icons,
                                              const std::vector<LibraryCursor>& cursors) {
    std::vector<RawResource> out;
    std::uint16_t nextImage = 1;
    // Groups that show the same image share one icon resource.
    std::map<std::vector<std::byte>, std::uint16_t> imageIds;
    for (std::size_t g = 0; g < icons.size(); ++g) {
        const cFileIcon& icon = icons[g];
        std::vector<std::byte> group;
        PutU16(group, 0);
        PutU16(group, 1);
        PutU16(group, static_cast<std::uint16_t>(icon.ImageCount()));
        for (int i = 0; i < icon.ImageCount(); ++i) {
            const IconDirEntry& e = icon.Entry(i);
            group.push_back(std::byte{e.width});
            group.push_back(std::byte{e.height});
            group.push_back(std::byte{e.colourCount});
            group.push_back(std::byte{e.reserved});
            PutU16(group, e.planes);
            PutU16(group, e.bitCount);
            PutU32(group, e.bytesInRes);
            const auto data = icon.ImageData(i);
            std::vector<std::byte> bytes(data.begin(), data.end());
            auto [it, fresh] = imageIds.emplace(bytes, nextImage);
            PutU16(group, it->second);
            if (fresh) {
                out.push_back({ResourceId::Number(kRtIcon), ResourceId::Number(nextImage), std::move(bytes)});
                ++nextImage;
            }
        }
        out.push_back({ResourceId::Number(kRtGroupIcon),
                       ResourceId::Number(static_cast<std::uint16_t>(g + 1)), std::move(group)});
    }
    std::uint16_t nextCursor = 1;
    for (const LibraryCursor& cursor : cursors) {
        std::vector<std::byte> group;
        PutU16(group, 0);
        PutU16(group, 2);
        PutU16(group, static_cast<std::uint16_t>(cursor.images.size()));
        for (const CursorImage& image : cursor.images) {
            std::vector<std::byte> data;
            PutU16(data, image.hotspotX);
            PutU16(data, image.hotspotY);
            data.insert(data.end(), image.dib.begin(), image.dib.end());
            PutU16(group, image.width);
            PutU16(group, static_cast<std::uint16_t>(image.height * 2));
            PutU16(group, 1);
            PutU16(group, image.bitCount);
            PutU32(group, static_cast<std::uint32_t>(data.size()));
            PutU16(group, nextCursor);
            out.push_back({ResourceId::Number(kRtCursor), ResourceId::Number(nextCursor), std::move(data)});
            ++nextCursor;
        }
        out.push_back({ResourceId::Number(kRtGroupCursor), ResourceId::Number(cursor.id), std::move(group)});
    }
    return out;
}

std::vector<std::byte> BuildCursorFile(const std::vector<CursorImage>& images) {
    std::vector<std::byte> out;
    PutU16(out, 0);
    PutU16(out, 2);
    PutU16(out, static_cast<std::uint16_t>(images.size()));
    std::uint32_t offset = static_cast<std::uint32_t>(kIconHeaderSize + images.size() * kIconDirEntrySize);
    for (const CursorImage& image : images) {
        out.push_back(static_cast<std::byte>(image.width & 0xff));
        out.push_back(static_cast<std::byte>(image.height & 0xff));
        out.push_back(std::byte{0});
        out.push_back(std::byte{0});
        PutU16(out, image.hotspotX);
        PutU16(out, image.hotspotY);
        PutU32(out, static_cast<std::uint32_t>(image.dib.size()));
        PutU32(out, offset);
        offset += static_cast<std::uint32_t>(image.dib.size());
    }
    for (const CursorImage& image : images) {
        out.insert(out.end(), image.dib.begin(), image.dib.end());
    }
    return out;
}

}  // namespace glyphmoor
