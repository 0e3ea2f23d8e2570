// IconPictures: the pictures of icon locations, decoded by the program's own
// icon reader and handed to Qt as images.
//
// An IconSource reads one file once (an icon file, a pointer file, or an
// executable or library with its resource directory) and decodes each icon
// only when it is first asked for, so that a library of several hundred
// icons opens at once and each picture costs something only when drawn.
#pragma once

#include "foundation/Environment.h"
#include "iconfiles/modResource.h"

#include <QImage>

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

class cFileIcon;

class IconSource {
public:
    // Reads the file; a file that cannot be read gives a source of no icons.
    explicit IconSource(const std::filesystem::path& file);

    [[nodiscard]] bool Exists() const { return m_exists; }
    // Icons in the file: an icon or pointer file has one; an executable as
    // many as its icon groups.
    [[nodiscard]] int Count() const { return m_count; }
    // The file is an executable or library (not an icon or pointer file).
    [[nodiscard]] bool IsModule() const { return m_module.has_value(); }
    // Icon `index` at about `size` pixels; a null image when there is none.
    QImage Icon(int index, int size = 32);
    // How many pictures have been decoded so far.
    [[nodiscard]] std::size_t Decoded() const { return m_cache.size(); }
    // The pointer resource with the number `id` of an executable (the
    // program's own standard pointers); a null image when there is none.
    QImage CursorResource(int id, int size = 32);

private:
    bool m_exists = false;
    int m_count = 0;
    std::optional<ExecutableModule> m_module;
    std::vector<std::byte> m_iconFile;  // an icon or pointer file's bytes
    std::map<std::pair<int, int>, QImage> m_cache;
};

// Pictures of catalogue entries: each file is read once and kept.
class IconPictureCache {
public:
    explicit IconPictureCache(const Environment& machine) : m_machine(machine) {}

    // The icon at a location; a pointer entry (`cursor`) at the program's own
    // file takes the pointer resource of that number.
    QImage Picture(std::string_view windowsFile, int index, bool cursor, int size = 32);
    void Clear() { m_sources.clear(); }

private:
    [[nodiscard]] std::filesystem::path HostFile(std::string_view windowsFile) const;

    const Environment& m_machine;
    std::map<std::string, std::unique_ptr<IconSource>> m_sources;
};

// The best image of an icon for `size` pixels, as a Qt image; null when none decodes.
QImage ImageOf(const cFileIcon& icon, int size);

}  // namespace glyphmoor
