#include "iconfiles/IconLibraryWriter.h"

#include "foundation/ByteReader.h"
#include "foundation/TextEncoding.h"
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace glyphmoor {

namespace {

constexpr std::uint32_t kFileAlignment = 0x200;
constexpr std::uint32_t kSectionAlignment = 0x1000;
constexpr std::uint32_t kRsrcRva = 0x1000;
constexpr std::uint32_t kPeOffset = 0x80;

std::uint32_t AlignUp(std::uint32_t v, std::uint32_t a) {
    return (v + a - 1) / a * a;
}

void PutAt16(std::vector<std::byte>& b, std::size_t at, std::uint16_t v) {
    b[at] = static_cast<std::byte>(v & 0xff);
    b[at + 1] = static_cast<std::byte>(v >> 8);
}

void PutAt32(std::vector<std::byte>& b, std::size_t at, std::uint32_t v) {
    for (int i = 0; i < 4; ++i) {
        b[at + static_cast<std::size_t>(i)] = static_cast<std::byte>((v >> (8 * i)) & 0xff);
    }
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

// The MS-DOS stub: prints a line and ends, should anyone start the file under MS-DOS.
std::vector<std::byte> DosStub() {
    const std::uint8_t code[] = {0x0e, 0x1f, 0xba, 0x0e, 0x00, 0xb4, 0x09,
                                 0xcd, 0x21, 0xb8, 0x01, 0x4c, 0xcd, 0x21};
    const std::string_view text = "This file holds icons for Windows.\r\n$";
    std::vector<std::byte> stub;
    for (std::uint8_t c : code) {
        stub.push_back(std::byte{c});
    }
    for (char c : text) {
        stub.push_back(static_cast<std::byte>(c));
    }
    return stub;
}

}  // namespace

std::vector<std::byte> BuildResourceOnlyPe(const std::vector<RawResource>& resources,
                                           const PeLayout& layout) {
    // Group resources by type, both levels in directory order.
    std::vector<std::vector<const RawResource*>> types;
    {
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
        for (const RawResource* r : sorted) {
            if (types.empty() || !types.back().front()->type.Matches(r->type)) {
                types.emplace_back();
            }
            types.back().push_back(r);
        }
    }

    // Lay out the section: directories, data entries, name strings, data.
    std::uint32_t pos = 16 + 8 * static_cast<std::uint32_t>(types.size());
    std::vector<std::uint32_t> nameDirAt;
    for (const auto& t : types) {
        nameDirAt.push_back(pos);
        pos += 16 + 8 * static_cast<std::uint32_t>(t.size());
    }
    std::vector<std::uint32_t> langDirAt;
    for (const auto& t : types) {
        for (std::size_t i = 0; i < t.size(); ++i) {
            langDirAt.push_back(pos);
            pos += 16 + 8;
        }
    }
    std::vector<std::uint32_t> dataEntryAt;
    for (std::size_t i = 0; i < resources.size(); ++i) {
        dataEntryAt.push_back(pos);
        pos += 16;
    }
    std::map<std::string, std::uint32_t> stringAt;
    std::vector<std::byte> strings;
    auto internName = [&](const ResourceId& id) {
        if (!id.isName || stringAt.contains(id.name)) {
            return;
        }
        stringAt[id.name] = pos + static_cast<std::uint32_t>(strings.size());
        const std::u16string text = Utf8ToUtf16(id.name);
        PutU16(strings, static_cast<std::uint16_t>(text.size()));
        for (char16_t c : text) {
            PutU16(strings, static_cast<std::uint16_t>(c));
        }
    };
    for (const auto& t : types) {
        internName(t.front()->type);
        for (const RawResource* r : t) {
            internName(r->name);
        }
    }
    pos = AlignUp(pos + static_cast<std::uint32_t>(strings.size()), 8);
    std::vector<std::uint32_t> dataAt;
    for (const auto& t : types) {
        for (const RawResource* r : t) {
            dataAt.push_back(pos);
            pos = AlignUp(pos + static_cast<std::uint32_t>(r->data.size()), 8);
        }
    }
    const std::uint32_t rsrcSize = pos;

    std::vector<std::byte> rsrc(rsrcSize);
    auto nameField = [&](const ResourceId& id) {
        return id.isName ? (0x80000000u | stringAt[id.name]) : id.number;
    };
    auto directory = [&](std::uint32_t at, const std::vector<ResourceId>& ids) {
        const auto named =
            std::count_if(ids.begin(), ids.end(), [](const ResourceId& id) { return id.isName; });
        PutAt16(rsrc, at + 12, static_cast<std::uint16_t>(named));
        PutAt16(rsrc, at + 14, static_cast<std::uint16_t>(ids.size() - static_cast<std::size_t>(named)));
        for (std::size_t i = 0; i < ids.size(); ++i) {
            PutAt32(rsrc, at + 16 + 8 * i, nameField(ids[i]));
        }
    };
    std::vector<ResourceId> typeIds;
    typeIds.reserve(types.size());
    for (const auto& t : types) {
        typeIds.push_back(t.front()->type);
    }
    directory(0, typeIds);
    std::size_t flat = 0;
    for (std::size_t ti = 0; ti < types.size(); ++ti) {
        PutAt32(rsrc, 16 + 8 * ti + 4, 0x80000000u | nameDirAt[ti]);
        std::vector<ResourceId> names;
        for (const RawResource* r : types[ti]) {
            names.push_back(r->name);
        }
        directory(nameDirAt[ti], names);
        for (std::size_t ni = 0; ni < types[ti].size(); ++ni, ++flat) {
            const RawResource* r = types[ti][ni];
            PutAt32(rsrc, nameDirAt[ti] + 16 + 8 * ni + 4, 0x80000000u | langDirAt[flat]);
            directory(langDirAt[flat], {ResourceId::Number(r->language)});
            PutAt32(rsrc, langDirAt[flat] + 16 + 4, dataEntryAt[flat]);
            PutAt32(rsrc, dataEntryAt[flat], kRsrcRva + dataAt[flat]);
            PutAt32(rsrc, dataEntryAt[flat] + 4, static_cast<std::uint32_t>(r->data.size()));
            std::copy(r->data.begin(), r->data.end(), rsrc.begin() + dataAt[flat]);
        }
    }
    if (!strings.empty()) {
        std::copy(strings.begin(), strings.end(),
                  rsrc.begin() + static_cast<std::ptrdiff_t>(dataEntryAt.empty() ? 16 + 8 * types.size()
                                                                                 : dataEntryAt.back() + 16));
    }

    // Headers: MS-DOS header and stub, PE signature, COFF header, optional
    // header with 16 data directories, one section header.
    const std::uint32_t optionalSize = layout.pe32Plus ? 240 : 224;
    const std::uint32_t headersEnd = kPeOffset + 4 + 20 + optionalSize + 40;
    const std::uint32_t headersSize = AlignUp(headersEnd, kFileAlignment);
    const std::uint32_t rawSize = AlignUp(rsrcSize, kFileAlignment);
    std::vector<std::byte> file(headersSize + rawSize);
    PutAt16(file, 0, 0x5a4d);   // "MZ"
    PutAt16(file, 2, 0x90);     // bytes on the last page
    PutAt16(file, 4, 3);        // pages
    PutAt16(file, 8, 4);        // header paragraphs
    PutAt16(file, 12, 0xffff);  // most extra paragraphs
    PutAt16(file, 16, 0xb8);    // initial SP
    PutAt16(file, 24, 0x40);    // relocation table
    PutAt32(file, 0x3c, kPeOffset);
    const auto stub = DosStub();
    std::copy(stub.begin(), stub.end(), file.begin() + 0x40);

    std::size_t at = kPeOffset;
    PutAt32(file, at, 0x00004550);  // "PE\0\0"
    at += 4;
    PutAt16(file, at, layout.pe32Plus ? 0x8664 : 0x014c);  // machine: x86-64 or i386
    PutAt16(file, at + 2, 1);                              // one section
    PutAt16(file, at + 16, static_cast<std::uint16_t>(optionalSize));
    std::uint16_t characteristics = 0x0002;                // executable image
    characteristics |= layout.pe32Plus ? 0x0020 : 0x0100;  // large addresses / 32-bit machine
    if (layout.dll) {
        characteristics |= 0x2000;
    } else {
        characteristics |= 0x0001;  // relocations stripped
    }
    PutAt16(file, at + 18, characteristics);
    at += 20;

    const std::size_t opt = at;
    PutAt16(file, opt, layout.pe32Plus ? 0x20b : 0x10b);
    file[opt + 2] = std::byte{6};       // linker version 6.0
    PutAt32(file, opt + 8, rawSize);    // size of initialised data
    PutAt32(file, opt + 20, kRsrcRva);  // base of code
    std::size_t w = opt + 24;
    if (layout.pe32Plus) {
        PutAt32(file, w, layout.dll ? 0x80000000u : 0x40000000u);  // image base, low half
        PutAt32(file, w + 4, 0x1);                                 // image base, high half
        w += 8;
    } else {
        PutAt32(file, w, kRsrcRva);  // base of data
        PutAt32(file, w + 4, layout.dll ? 0x10000000u : 0x00400000u);
        w += 8;
    }
    PutAt32(file, w, kSectionAlignment);
    PutAt32(file, w + 4, kFileAlignment);
    PutAt16(file, w + 8, 4);   // operating system version 4.0
    PutAt16(file, w + 16, 4);  // subsystem version 4.0
    PutAt32(file, w + 24, kRsrcRva + AlignUp(std::max<std::uint32_t>(rsrcSize, 1), kSectionAlignment));
    PutAt32(file, w + 28, headersSize);
    PutAt16(file, w + 36, 2);  // Windows GUI subsystem
    w += 40;
    // Stack and heap reserve and commit: 4 or 8 bytes each.
    const std::size_t word = layout.pe32Plus ? 8 : 4;
    PutAt32(file, w, 0x100000);
    PutAt32(file, w + word, 0x1000);
    PutAt32(file, w + 2 * word, 0x100000);
    PutAt32(file, w + 3 * word, 0x1000);
    w += 4 * word;
    w += 4;                // loader flags
    PutAt32(file, w, 16);  // number of data directories
    w += 4;
    PutAt32(file, w + std::size_t{2} * 8, kRsrcRva);  // the resource directory
    PutAt32(file, w + std::size_t{2} * 8 + 4, rsrcSize);
    w += std::size_t{16} * 8;

    const char name[8] = {'.', 'r', 's', 'r', 'c', 0, 0, 0};
    for (std::size_t i = 0; i < 8; ++i) {
        file[w + i] = static_cast<std::byte>(name[i]);
    }
    PutAt32(file, w + 8, rsrcSize);
    PutAt32(file, w + 12, kRsrcRva);
    PutAt32(file, w + 16, rawSize);
    PutAt32(file, w + 20, headersSize);
    PutAt32(file, w + 36, 0x40000040u);  // initialised data, readable
    std::copy(rsrc.begin(), rsrc.end(), file.begin() + headersSize);
    return file;
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
