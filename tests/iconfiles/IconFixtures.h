// Builders for the icon, PE and NE files the tests read. Every fixture is
// made here from its parts, so a test shows what it feeds the parser.
#pragma once

#include "foundation/ByteReader.h"
#include "foundation/ByteWriter.h"
#include "iconfiles/IconLibraryWriter.h"
#include "iconfiles/cFileIcon.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor::test {

using Bytes = std::vector<std::byte>;

// Overwrites the little-endian number at `at` with v.
inline void PutAt16(Bytes& b, std::size_t at, std::uint16_t v) {
    b[at] = static_cast<std::byte>(v & 0xff);
    b[at + 1] = static_cast<std::byte>(v >> 8);
}
inline void PutAt32(Bytes& b, std::size_t at, std::uint32_t v) {
    PutAt16(b, at, static_cast<std::uint16_t>(v & 0xffff));
    PutAt16(b, at + 2, static_cast<std::uint16_t>(v >> 16));
}

// A good fixture's bytes with one thing changed, for tables of broken files.
inline Bytes Patched(Bytes b, const std::function<void(Bytes&)>& patch) {
    patch(b);
    return b;
}
inline Bytes With16(Bytes b, std::size_t at, std::uint16_t v) {
    PutAt16(b, at, v);
    return b;
}
inline Bytes With32(Bytes b, std::size_t at, std::size_t v) {
    PutAt32(b, at, static_cast<std::uint32_t>(v));
    return b;
}
inline Bytes Cut(Bytes b, std::size_t size) {
    b.resize(size);
    return b;
}

inline Bytes PngSignature() {
    Bytes b;
    for (const char c : std::string_view("\x89PNG\r\n\x1a\n")) {
        b.push_back(static_cast<std::byte>(c));
    }
    return b;
}

struct DibSpec {
    int width = 0;
    int height = 0;
    int bits = 0;
    std::uint32_t compression = 0;       // 0 plain, 3 with channel masks
    std::vector<std::uint32_t> masks;    // red, green, blue for compression 3
    std::vector<std::uint32_t> palette;  // 0xRRGGBB; written as the colour table
    std::uint32_t coloursUsed = 0;
    // The stored value of pixel (x, y), y counted from the top: a palette
    // index, a 16-bit word, 0xRRGGBB or 0xAARRGGBB.
    std::function<std::uint32_t(int, int)> pixel;
    // Whether pixel (x, y) has its mask bit set.
    std::function<bool(int, int)> masked = [](int, int) { return false; };
    bool withMask = true;
};

inline Bytes MakeDib(const DibSpec& s) {
    Bytes b;
    PutU32(b, 40);
    PutU32(b, static_cast<std::uint32_t>(s.width));
    PutU32(b, static_cast<std::uint32_t>(s.height * 2));
    PutU16(b, 1);
    PutU16(b, static_cast<std::uint16_t>(s.bits));
    PutU32(b, s.compression);
    for (int i = 0; i < 3; ++i) {
        PutU32(b, 0);  // image size, resolution
    }
    PutU32(b, s.coloursUsed);
    PutU32(b, 0);
    for (std::uint32_t m : s.masks) {
        PutU32(b, m);
    }
    for (std::uint32_t c : s.palette) {
        PutU32(b, c & 0xffffff);  // blue, green, red, 0 in memory
    }
    const auto stride = static_cast<std::size_t>(((s.width * s.bits + 31) / 32) * 4);
    for (int y = s.height - 1; y >= 0; --y) {
        Bytes row(stride);
        for (int x = 0; x < s.width; ++x) {
            const std::uint32_t v = s.pixel(x, y);
            const auto xs = static_cast<std::size_t>(x);
            if (s.bits <= 8) {
                const std::size_t bit = xs * static_cast<std::size_t>(s.bits);
                row[bit / 8] |= static_cast<std::byte>(v << (8 - s.bits - static_cast<int>(bit % 8)));
            } else {
                const std::size_t n = static_cast<std::size_t>(s.bits / 8);
                for (std::size_t i = 0; i < n; ++i) {
                    row[xs * n + i] = static_cast<std::byte>((v >> (8 * i)) & 0xff);
                }
            }
        }
        b.insert(b.end(), row.begin(), row.end());
    }
    if (s.withMask) {
        const auto maskStride = static_cast<std::size_t>(((s.width + 31) / 32) * 4);
        for (int y = s.height - 1; y >= 0; --y) {
            Bytes row(maskStride);
            for (int x = 0; x < s.width; ++x) {
                if (s.masked(x, y)) {
                    row[static_cast<std::size_t>(x / 8)] |= static_cast<std::byte>(0x80 >> (x % 8));
                }
            }
            b.insert(b.end(), row.begin(), row.end());
        }
    }
    return b;
}

// A plain square image of one palette colour, for tests that only need some image.
inline Bytes SolidDib(int size, int bits) {
    DibSpec s;
    s.width = s.height = size;
    s.bits = bits;
    if (bits <= 8) {
        s.palette.assign(std::size_t{1} << bits, 0x808080);
    }
    s.pixel = [](int, int) { return 0u; };
    return MakeDib(s);
}

inline IconDirEntry EntryFor(int size, int bits, std::size_t bytes) {
    IconDirEntry e;
    e.width = static_cast<std::uint8_t>(size & 0xff);
    e.height = static_cast<std::uint8_t>(size & 0xff);
    e.colourCount = static_cast<std::uint8_t>(bits < 8 ? 1u << bits : 0u);
    e.planes = 1;
    e.bitCount = static_cast<std::uint16_t>(bits);
    e.bytesInRes = static_cast<std::uint32_t>(bytes);
    return e;
}

// The twelve bytes an icon file's directory entry and an icon-group entry share.
inline void PutEntryHead(Bytes& b, const IconDirEntry& e, std::uint32_t bytes) {
    for (std::uint8_t v : {e.width, e.height, e.colourCount, e.reserved}) {
        b.push_back(std::byte{v});
    }
    PutU16(b, e.planes);
    PutU16(b, e.bitCount);
    PutU32(b, bytes);
}

struct FileImage {
    IconDirEntry entry;
    Bytes data;
};

// An icon file laid out as the program writes one: header, directory, images in order.
inline Bytes MakeIconFile(const std::vector<FileImage>& images, std::uint16_t type = 1) {
    Bytes b;
    PutU16(b, 0);
    PutU16(b, type);
    PutU16(b, static_cast<std::uint16_t>(images.size()));
    std::uint32_t offset = static_cast<std::uint32_t>(6 + 16 * images.size());
    for (const FileImage& image : images) {
        PutEntryHead(b, image.entry, static_cast<std::uint32_t>(image.data.size()));
        PutU32(b, offset);
        offset += static_cast<std::uint32_t>(image.data.size());
    }
    for (const FileImage& image : images) {
        b.insert(b.end(), image.data.begin(), image.data.end());
    }
    return b;
}

inline cFileIcon MakeIcon(const std::vector<std::pair<int, int>>& sizesAndBits) {
    cFileIcon icon;
    for (auto [size, bits] : sizesAndBits) {
        Bytes dib = SolidDib(size, bits);
        icon.AddImage(EntryFor(size, bits, dib.size()), std::move(dib));
    }
    return icon;
}

struct NeResource {
    std::uint16_t typeId;  // with the high bit: a number; else ignored and typeName used
    std::string typeName;
    std::uint16_t nameId;  // as typeId
    std::string name;
    Bytes data;
};

// A 16-bit NE file with a resource table using alignment shift `shift`.
// Resources of the same type must be adjacent.
inline Bytes MakeNe(const std::vector<NeResource>& resources, std::uint16_t shift = 4) {
    const std::size_t ne = 0x40;
    const std::size_t tableAt = ne + 0x40;
    // Resource table: shift, TYPEINFO + NAMEINFOs, 0, then names.
    Bytes table;
    PutU16(table, shift);
    std::vector<std::size_t> offsetFields, typeNameFields, nameFields;
    for (std::size_t i = 0; i < resources.size(); ++i) {
        const NeResource& r = resources[i];
        const bool newType =
            i == 0 || r.typeId != resources[i - 1].typeId || r.typeName != resources[i - 1].typeName;
        if (newType) {
            std::uint16_t count = 0;
            for (std::size_t j = i; j < resources.size() && resources[j].typeId == r.typeId &&
                                    resources[j].typeName == r.typeName;
                 ++j) {
                ++count;
            }
            typeNameFields.push_back(table.size());
            PutU16(table, r.typeId);
            PutU16(table, count);
            PutU32(table, 0);
        } else {
            typeNameFields.push_back(SIZE_MAX);
        }
        offsetFields.push_back(table.size());
        PutU16(table, 0);  // offset, filled below
        PutU16(table, static_cast<std::uint16_t>((r.data.size() + (1u << shift) - 1) >> shift));
        PutU16(table, 0x1c30);
        nameFields.push_back(table.size());
        PutU16(table, r.nameId);
        PutU32(table, 0);
    }
    PutU16(table, 0);
    auto putString = [&](std::size_t field, const std::string& text) {
        PutAt16(table, field, static_cast<std::uint16_t>(table.size()));
        table.push_back(static_cast<std::byte>(text.size()));
        for (char c : text) {
            table.push_back(static_cast<std::byte>(c));
        }
    };
    for (std::size_t i = 0; i < resources.size(); ++i) {
        if (typeNameFields[i] != SIZE_MAX && (resources[i].typeId & 0x8000) == 0) {
            putString(typeNameFields[i], resources[i].typeName);
        }
        if ((resources[i].nameId & 0x8000) == 0) {
            putString(nameFields[i], resources[i].name);
        }
    }
    Bytes file(tableAt);
    file[0] = std::byte{'M'};
    file[1] = std::byte{'Z'};
    file[0x3c] = static_cast<std::byte>(ne);
    file[ne] = std::byte{'N'};
    file[ne + 1] = std::byte{'E'};
    const std::size_t residentAt = (tableAt - ne) + table.size();
    file[ne + 0x24] = static_cast<std::byte>(tableAt - ne);
    PutAt16(file, ne + 0x26, static_cast<std::uint16_t>(residentAt));
    const std::size_t unit = std::size_t{1} << shift;
    std::size_t dataAt = (tableAt + table.size() + 1 + unit - 1) / unit * unit;  // after an empty name table
    Bytes data;
    for (std::size_t i = 0; i < resources.size(); ++i) {
        PutAt16(table, offsetFields[i], static_cast<std::uint16_t>((dataAt + data.size()) >> shift));
        data.insert(data.end(), resources[i].data.begin(), resources[i].data.end());
        data.resize((data.size() + unit - 1) / unit * unit);
    }
    file.insert(file.end(), table.begin(), table.end());
    file.push_back(std::byte{0});  // empty resident-name table
    file.resize(dataAt);
    file.insert(file.end(), data.begin(), data.end());
    return file;
}

// The icon-group resource of an icon whose images have ids first, first + 1, ...
inline Bytes GroupOf(const cFileIcon& icon, std::uint16_t first) {
    Bytes g;
    PutU16(g, 0);
    PutU16(g, 1);
    PutU16(g, static_cast<std::uint16_t>(icon.ImageCount()));
    for (int i = 0; i < icon.ImageCount(); ++i) {
        PutEntryHead(g, icon.Entry(i), icon.Entry(i).bytesInRes);
        PutU16(g, static_cast<std::uint16_t>(first + i));
    }
    return g;
}

inline Bytes DataOf(const cFileIcon& icon, int index) {
    const auto d = icon.ImageData(index);
    return Bytes(d.begin(), d.end());
}

Bytes ReadAll(const std::string& path);
void WriteAll(const std::string& path, const Bytes& bytes);
// A fresh empty folder for one test.
std::string TestFolder();

}  // namespace glyphmoor::test
