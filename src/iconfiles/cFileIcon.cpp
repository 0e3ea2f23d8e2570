#include "iconfiles/cFileIcon.h"

#include "foundation/ByteReader.h"
#include "foundation/ByteWriter.h"
#include "foundation/FileIo.h"
#include "iconfiles/modResource.h"

#include <cstdlib>
#include <fstream>
#include <limits>
#include <ostream>

namespace glyphmoor {

namespace {

// Icon files larger than this are not icon files.
constexpr std::size_t kMaxIconFileBytes = 256u << 20;

IconDirEntry ReadEntryStart(const ByteReader& r, std::size_t at) {
    IconDirEntry e;
    e.width = *r.U8(at);
    e.height = *r.U8(at + 1);
    e.colourCount = *r.U8(at + 2);
    e.reserved = *r.U8(at + 3);
    e.planes = *r.U16(at + 4);
    e.bitCount = *r.U16(at + 6);
    e.bytesInRes = *r.U32(at + 8);
    return e;
}

}  // namespace

void cFileIcon::Clear() {
    m_header = IconHeader{};
    m_entries.clear();
    m_images.clear();
}

bool cFileIcon::Fail(std::string reason) {
    Clear();
    m_reason = std::move(reason);
    return false;
}

bool cFileIcon::LoadIcon(const std::filesystem::path& file) {
    auto bytes = ReadFileBytes(file, kMaxIconFileBytes);
    if (!bytes) {
        Clear();
        m_filename = file.string();
        m_resourceId = {};
        return Fail(bytes.reason());
    }
    return LoadIconFromMemory(*bytes, file.string());
}

bool cFileIcon::LoadIconFromMemory(std::span<const std::byte> bytes, const std::string& name) {
    Clear();
    m_filename = name;
    m_resourceId = {};
    m_reason.clear();
    const ByteReader r(bytes);
    // The header is read as one record: bytes missing at the end of a short
    // file read as zero, so a short file fails on whichever field is wrong.
    std::uint8_t header[kIconHeaderSize] = {};
    for (std::size_t i = 0; i < kIconHeaderSize && i < r.size(); ++i) {
        header[i] = *r.U8(i);
    }
    const auto reserved = static_cast<std::uint16_t>(header[0] | header[1] << 8);
    const auto type = static_cast<std::uint16_t>(header[2] | header[3] << 8);
    const auto count = static_cast<std::uint16_t>(header[4] | header[5] << 8);
    if (reserved != 0) {
        return Fail(kReasonReserved);
    }
    if (type != 1) {
        return Fail(kReasonType);
    }
    if (count < 1) {
        return Fail(kReasonNoImages);
    }
    if (!r.Has(kIconHeaderSize, std::size_t{count} * kIconDirEntrySize)) {
        return Fail(kReasonDirectory);
    }
    std::vector<IconDirEntry> entries(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = kIconHeaderSize + i * kIconDirEntrySize;
        entries[i] = ReadEntryStart(r, at);
        entries[i].imageOffset = *r.U32(at + 12);
    }
    std::vector<std::vector<std::byte>> images(count);
    std::size_t total = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto data = r.Bytes(entries[i].imageOffset, entries[i].bytesInRes);
        total += entries[i].bytesInRes;
        if (!data || total > kMaxIconBytes) {
            return Fail(kReasonImages);
        }
        images[i].assign(data->begin(), data->end());
    }
    m_header = IconHeader{reserved, type, count};
    m_entries = std::move(entries);
    m_images = std::move(images);
    return true;
}

bool cFileIcon::LoadIconFromEXE(const std::filesystem::path& file, const ResourceId& id) {
    auto module = ExecutableModule::Open(file);
    if (!module) {
        Clear();
        m_filename = file.string();
        m_resourceId = id;
        return Fail(module.reason());
    }
    const bool ok = LoadIconFromEXE(*module, id);
    m_filename = file.string();
    return ok;
}

bool cFileIcon::LoadIconFromEXE(const ExecutableModule& module, const ResourceId& id) {
    Clear();
    m_resourceId = id;
    m_reason.clear();
    const ResourceDirectory& dir = module.Directory();
    const ResourceData* group = dir.Find(ResourceId::Number(kRtGroupIcon), id);
    if (group == nullptr) {
        return Fail("The file has no icon group " + id.ToString() + ".");
    }
    const ByteReader g(module.Data(*group));
    const auto reserved = g.U16(0), type = g.U16(2), count = g.U16(4);
    if (!reserved || !type || !count || !g.Has(kIconHeaderSize, std::size_t{*count} * kGroupDirEntrySize)) {
        return Fail("Icon group " + id.ToString() + " is cut short.");
    }
    if (*count < 1) {
        return Fail(kReasonNoImages);
    }
    const bool ne = dir.kind == ExecutableKind::Ne;
    std::vector<IconDirEntry> entries(*count);
    std::vector<std::vector<std::byte>> images(*count);
    std::size_t offset = kIconHeaderSize + std::size_t{*count} * kIconDirEntrySize;
    for (std::size_t i = 0; i < *count; ++i) {
        const std::size_t at = kIconHeaderSize + i * kGroupDirEntrySize;
        entries[i] = ReadEntryStart(g, at);
        const std::uint16_t imageId = *g.U16(at + 12);
        const ResourceData* image = dir.Find(ResourceId::Number(kRtIcon), ResourceId::Number(imageId));
        if (image == nullptr) {
            return Fail("Icon image " + std::to_string(imageId) + " of group " + id.ToString() +
                        " is missing.");
        }
        const auto data = module.Data(*image);
        const std::size_t want = entries[i].bytesInRes;
        // An NE file's table gives lengths rounded up to its alignment unit,
        // so there the resource only has to hold the image.
        const bool fits = ne ? data.size() >= want : data.size() == want;
        if (!fits) {
            return Fail("Icon image " + std::to_string(imageId) + " has " + std::to_string(data.size()) +
                        " bytes where its group says " + std::to_string(want) + ".");
        }
        if (offset + want > kMaxIconBytes) {
            return Fail("Icon group " + id.ToString() + " is larger than an icon can be.");
        }
        entries[i].imageOffset = static_cast<std::uint32_t>(offset);
        offset += want;
        images[i].assign(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(want));
    }
    m_header = IconHeader{*reserved, *type, *count};
    m_entries = std::move(entries);
    m_images = std::move(images);
    return true;
}

bool cFileIcon::SaveStart(std::ostream& out) const {
    const std::vector<std::byte> bytes = ToBytes();
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out.flush());
}

bool cFileIcon::SaveIcon(const std::filesystem::path& file) const {
    const std::vector<std::byte> bytes = ToBytes();
    return WriteFileAtomically(file,
                               std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()))
        .ok();
}

std::vector<std::byte> cFileIcon::ToBytes() const {
    ByteWriter out(kIconHeaderSize + m_entries.size() * kIconDirEntrySize);
    out.U16(m_header.reserved);
    out.U16(m_header.type);
    out.U16(m_header.count);
    for (const IconDirEntry& e : m_entries) {
        out.U8(e.width);
        out.U8(e.height);
        out.U8(e.colourCount);
        out.U8(e.reserved);
        out.U16(e.planes);
        out.U16(e.bitCount);
        out.U32(e.bytesInRes);
        out.U32(e.imageOffset);
    }
    for (const auto& image : m_images) {
        out.Bytes(image);
    }
    return std::move(out).Take();
}

void cFileIcon::LayOutOffsets() {
    std::size_t offset = kIconHeaderSize + m_entries.size() * kIconDirEntrySize;
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        m_entries[i].imageOffset = static_cast<std::uint32_t>(offset);
        offset += m_images[i].size();
    }
}

void cFileIcon::AddImage(const IconDirEntry& entry, std::vector<std::byte> data) {
    if (m_entries.size() >= std::numeric_limits<std::uint16_t>::max()) {
        return;
    }
    if (m_entries.empty()) {
        m_header = IconHeader{0, 1, 0};
    }
    IconDirEntry e = entry;
    e.bytesInRes = static_cast<std::uint32_t>(data.size());
    m_entries.push_back(e);
    m_images.push_back(std::move(data));
    m_header.count = static_cast<std::uint16_t>(m_entries.size());
    LayOutOffsets();
}

bool cFileIcon::RemoveImage(int index) {
    if (index < 0 || index >= ImageCount()) {
        return false;
    }
    m_entries.erase(m_entries.begin() + index);
    m_images.erase(m_images.begin() + index);
    m_header.count = static_cast<std::uint16_t>(m_entries.size());
    if (m_entries.empty()) {
        m_header = IconHeader{};
    }
    LayOutOffsets();
    return true;
}

int cFileIcon::ImageWidth(int index) const {
    if (index < 0 || index >= ImageCount()) {
        return 0;
    }
    const int w = Entry(index).width;
    return w == 0 ? 256 : w;
}

int cFileIcon::ImageHeight(int index) const {
    if (index < 0 || index >= ImageCount()) {
        return 0;
    }
    const int h = Entry(index).height;
    return h == 0 ? 256 : h;
}

int cFileIcon::ImageColourCount(int index) const {
    return index < 0 || index >= ImageCount() ? 0 : Entry(index).colourCount;
}

std::uint32_t cFileIcon::ImageSize(int index) const {
    return index < 0 || index >= ImageCount() ? 0 : Entry(index).bytesInRes;
}

int cFileIcon::ImageBitCount(int index) const {
    if (index < 0 || index >= ImageCount()) {
        return 0;
    }
    const IconDirEntry& e = Entry(index);
    if (e.bitCount != 0) {
        return e.bitCount;
    }
    if (const int bits = ImageDataBitCount(ImageData(index)); bits != 0) {
        return bits;
    }
    switch (e.colourCount) {
        case 2:
            return 1;
        case 16:
            return 4;
        default:
            return 8;
    }
}

Result<RgbaImage> cFileIcon::DecodeImage(int index) const {
    if (index < 0 || index >= ImageCount()) {
        return glyphmoor::Fail("the icon has no image " + std::to_string(index));
    }
    return DecodeIconImage(ImageData(index));
}

int PickBestImage(std::span<const ImageChoice> images, int size, int bitDepth) {
    // The width and height differences of the first image with the smallest
    // sum of the two; then the closest bit count among images with exactly
    // those differences.
    int bestX = 0, bestY = 0;
    int bestTotal = std::numeric_limits<int>::max();
    for (const ImageChoice& c : images) {
        const int dx = std::abs(size - c.width), dy = std::abs(size - c.height);
        if (dx + dy < bestTotal) {
            bestX = dx, bestY = dy, bestTotal = dx + dy;
        }
    }
    int best = -1;
    int bestDepthDiff = std::numeric_limits<int>::max();
    for (std::size_t i = 0; i < images.size(); ++i) {
        const ImageChoice& c = images[i];
        if (std::abs(size - c.width) != bestX || std::abs(size - c.height) != bestY) {
            continue;
        }
        const int depthDiff = std::abs(bitDepth - c.bitCount);
        if (depthDiff < bestDepthDiff) {
            best = static_cast<int>(i);
            bestDepthDiff = depthDiff;
        }
    }
    return best;
}

int cFileIcon::PickImage(int size, int bitDepth) const {
    std::vector<ImageChoice> choices;
    choices.reserve(m_entries.size());
    for (int i = 0; i < ImageCount(); ++i) {
        choices.push_back({ImageWidth(i), ImageHeight(i), ImageBitCount(i)});
    }
    return PickBestImage(choices, size, bitDepth);
}

void cFileIcon::CloneTo(cFileIcon& other) const {
    if (&other == this) {
        return;
    }
    other.m_header = m_header;
    other.m_entries = m_entries;
    other.m_images = m_images;
    other.m_filename = m_filename;
    other.m_resourceId = m_resourceId;
    other.m_reason.clear();
}

}  // namespace glyphmoor
