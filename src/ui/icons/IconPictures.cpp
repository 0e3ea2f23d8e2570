#include "ui/icons/IconPictures.h"

#include "foundation/DefaultMachine.h"
#include "foundation/TextEncoding.h"
#include "iconfiles/IconImage.h"
#include "iconfiles/cFileIcon.h"

#include <cstring>
#include <system_error>

namespace glyphmoor {

namespace {

constexpr std::size_t kFileLimit = 64u << 20;
// A pointer file is an icon file whose type word is 2 and whose planes and
// bit count fields hold the hot spot; the images are the same bitmaps.
constexpr std::size_t kTypeOffset = 2;
// RT_CURSOR data starts with the hot spot (two 16-bit numbers).
constexpr std::size_t kCursorHotSpotSize = 4;
// A GRPCURSORDIRENTRY: width, height, planes, bit count (16 bits each), size
// (32 bits), then the RT_CURSOR id (16 bits).
constexpr std::size_t kCursorGroupEntrySize = 14;
constexpr std::size_t kCursorGroupEntryIdOffset = 12;

QImage FromRgba(const RgbaImage& rgba) {
    QImage image(rgba.width, rgba.height, QImage::Format_RGBA8888);
    for (int y = 0; y < rgba.height; ++y) {
        std::memcpy(image.scanLine(y), rgba.At(0, y), static_cast<std::size_t>(rgba.width) * 4);
    }
    return image;
}

QImage Scaled(QImage image, int size) {
    if (image.isNull() || (image.width() == size && image.height() == size)) {
        return image;
    }
    return image.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

bool IsIconFile(std::span<const std::byte> bytes) {
    return bytes.size() >= 6 && bytes[0] == std::byte{0} && bytes[1] == std::byte{0} &&
           (bytes[2] == std::byte{1} || bytes[2] == std::byte{2}) && bytes[3] == std::byte{0};
}

// Windows paths name the same file in any case.
std::string CacheKey(std::string_view path) {
    return LowerAscii(path);
}

}  // namespace

QImage ImageOf(const cFileIcon& icon, int size) {
    const int best = icon.PickImage(size, 32);
    if (best < 0) {
        return {};
    }
    auto rgba = icon.DecodeImage(best);
    return rgba.ok() ? Scaled(FromRgba(*rgba), size) : QImage();
}

IconSource::IconSource(const std::filesystem::path& file) {
    std::error_code ec;
    m_exists = std::filesystem::is_regular_file(file, ec);
    if (!m_exists) {
        return;
    }
    auto bytes = ReadFileBytes(file, kFileLimit);
    if (!bytes.ok()) {
        return;
    }
    if (IsIconFile(*bytes)) {
        m_iconFile = std::move(*bytes);
        m_iconFile[kTypeOffset] = std::byte{1};
        m_count = 1;
        return;
    }
    auto module = ExecutableModule::FromBytes(std::move(*bytes));
    if (module.ok()) {
        m_module.emplace(std::move(*module));
        m_count = static_cast<int>(m_module->IconGroups().size());
    }
}

QImage IconSource::Icon(int index, int size) {
    // A negative index names an icon group of a program by its resource id.
    if (index >= m_count || (index < 0 && !m_module)) {
        return {};
    }
    const auto key = std::make_pair(index, size);
    if (auto found = m_cache.find(key); found != m_cache.end()) {
        return found->second;
    }
    cFileIcon icon;
    bool loaded = false;
    if (m_module) {
        loaded = LoadIconOfModule(*m_module, index, icon).ok();
    } else {
        loaded = icon.LoadIconFromMemory(m_iconFile);
    }
    QImage image = loaded ? ImageOf(icon, size) : QImage();
    m_cache.emplace(key, image);
    return image;
}

QImage IconSource::CursorResource(int id, int size) {
    if (!m_module || id < 1 || id > 0xFFFF) {
        return {};
    }
    const ResourceDirectory& dir = m_module->Directory();
    const ResourceData* group =
        dir.Find(ResourceId::Number(kRtGroupCursor), ResourceId::Number(static_cast<std::uint16_t>(id)));
    if (group == nullptr) {
        return {};
    }
    const auto groupBytes = m_module->Data(*group);
    if (groupBytes.size() < 6 + kCursorGroupEntrySize) {
        return {};
    }
    const auto idBytes = groupBytes.subspan(6 + kCursorGroupEntryIdOffset, 2);
    const auto cursorId = static_cast<std::uint16_t>(std::to_integer<unsigned>(idBytes[0]) |
                                                     (std::to_integer<unsigned>(idBytes[1]) << 8));
    const ResourceData* cursor = dir.Find(ResourceId::Number(kRtCursor), ResourceId::Number(cursorId));
    if (cursor == nullptr) {
        return {};
    }
    const auto data = m_module->Data(*cursor);
    if (data.size() <= kCursorHotSpotSize) {
        return {};
    }
    auto rgba = DecodeIconImage(data.subspan(kCursorHotSpotSize));
    return rgba.ok() ? Scaled(FromRgba(*rgba), size) : QImage();
}

// The program's own file draws from the build's copy until the machine has
// one of its own (it is copied there with the first change).
std::filesystem::path IconPictureCache::HostFile(std::string_view windowsFile) const {
    std::filesystem::path host = m_machine.HostPath(windowsFile);
    std::error_code ec;
    if (!std::filesystem::exists(host, ec) &&
        EqualsNoCase(windowsFile, m_machine.ProgramDirectory() + "\\Glyphmoor.exe")) {
        for (const std::filesystem::path& seed : SeedDirs()) {
            const auto copy = seed / "drive_c/Program Files/Glyphmoor/Glyphmoor.exe";
            if (std::filesystem::exists(copy, ec)) {
                return copy;
            }
        }
    }
    return host;
}

QImage IconPictureCache::Picture(std::string_view windowsFile, int index, bool cursor, int size) {
    const std::string key = CacheKey(windowsFile);
    auto found = m_sources.find(key);
    if (found == m_sources.end()) {
        found = m_sources.emplace(key, std::make_unique<IconSource>(HostFile(windowsFile))).first;
    }
    IconSource& source = *found->second;
    if (cursor) {
        // A pointer is a pointer file, or a pointer resource of a program.
        return source.IsModule() ? source.CursorResource(index, size) : source.Icon(0, size);
    }
    return source.Icon(index, size);
}

}  // namespace glyphmoor
