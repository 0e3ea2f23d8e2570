// cFileIcon: one icon held as the icon file format stores it.
//
// A directory of images and, for each, its raw image data, kept byte for byte
// so that loading and saving an icon file gives back the same bytes. Loads from
// an icon file or from an icon-group resource of an executable or library,
// saves as an icon file, and decodes any image to RGBA pixels in place of
// drawing it on a device context.
//
// Failures follow the program's rule for this class: the loaders return false
// and leave an empty icon; Reason() keeps the class's diagnostic text.
#pragma once

#include "iconfiles/IconImage.h"
#include "iconfiles/ResourceId.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iosfwd>
#include <span>
#include <string>
#include <vector>

namespace glyphmoor {

class ExecutableModule;

// The 6-byte header of an icon file and of an icon-group resource (ICONDIR).
struct IconHeader {
    std::uint16_t reserved = 0;
    std::uint16_t type = 0;  // 1 for an icon, 2 for a cursor
    std::uint16_t count = 0;
};

// A 16-byte directory entry of an icon file (ICONDIRENTRY). In an icon-group
// resource the first 12 bytes are the same and a 16-bit resource id replaces
// the offset (GRPICONDIRENTRY, 14 bytes).
struct IconDirEntry {
    std::uint8_t width = 0;  // 0 stands for 256
    std::uint8_t height = 0;
    std::uint8_t colourCount = 0;  // 0 for 256 colours or more
    std::uint8_t reserved = 0;
    std::uint16_t planes = 0;
    std::uint16_t bitCount = 0;
    std::uint32_t bytesInRes = 0;
    std::uint32_t imageOffset = 0;
};
static_assert(sizeof(IconDirEntry) == 16, "ICONDIRENTRY is 16 bytes in an icon file");

inline constexpr std::size_t kIconHeaderSize = 6;
inline constexpr std::size_t kIconDirEntrySize = 16;
inline constexpr std::size_t kGroupDirEntrySize = 14;
static_assert(sizeof(IconHeader) == kIconHeaderSize, "ICONDIR's header is 6 bytes");
static_assert(sizeof(IconDirEntry) == kIconDirEntrySize);
// All image data of one icon together may not exceed this; a hostile directory
// could otherwise name the same large image thousands of times.
inline constexpr std::size_t kMaxIconBytes = 64u << 20;

// The five diagnostics of LoadIcon, as the class has always worded them. The
// first is given when the reserved field is not 0, whatever its text says.
inline constexpr const char* kReasonReserved = "File is not icon type (reserved member is 0)";
inline constexpr const char* kReasonType = "File is not icon type (idType <> IMAGE_ICON)";
inline constexpr const char* kReasonNoImages = "Icon contains no images.";
inline constexpr const char* kReasonDirectory = "Icon Directory Array is Corrupt.";
inline constexpr const char* kReasonImages = "Icon Images Array is Corrupt.";

// The class name is the program's own, as the rest of the program knows it.
class cFileIcon {  // NOLINT(readability-identifier-naming)
public:
    // Reads an icon file. False (and an empty icon) when the file cannot be
    // read or is not a well-formed icon file; Reason() says which.
    bool LoadIcon(const std::filesystem::path& file);
    // The same for icon-file bytes already in memory; `name` becomes Filename().
    bool LoadIconFromMemory(std::span<const std::byte> bytes, const std::string& name = {});

    // Reads the icon group `id` (type 14) of an executable or library, with
    // its images (type 3) gathered into the layout of an icon file.
    bool LoadIconFromEXE(const std::filesystem::path& file, const ResourceId& id);
    bool LoadIconFromEXE(const ExecutableModule& module, const ResourceId& id);

    // Writes the icon as an icon file, replacing any file there atomically
    // (WriteFileAtomically): true only when the whole new file is in place;
    // otherwise the old file, if any, is left as it was.
    bool SaveIcon(const std::filesystem::path& file) const;
    // The icon file's bytes into an open stream; false after a short write.
    bool SaveStart(std::ostream& out) const;
    // The icon file's bytes: header, directory and images, as SaveIcon writes them.
    [[nodiscard]] std::vector<std::byte> ToBytes() const;

    // Adds an image at the end. The entry's size is taken from the data and
    // the offsets of every image are laid out again for saving.
    void AddImage(const IconDirEntry& entry, std::vector<std::byte> data);
    // Removes image `index` (0-based); false when there is none.
    bool RemoveImage(int index);
    void Clear();

    [[nodiscard]] int ImageCount() const { return static_cast<int>(m_entries.size()); }
    // Width and height from the image's entry, 0 read as 256; 0 for a bad index.
    [[nodiscard]] int ImageWidth(int index) const;
    [[nodiscard]] int ImageHeight(int index) const;
    // The entry's colour count (0 means 256 colours or more).
    [[nodiscard]] int ImageColourCount(int index) const;
    [[nodiscard]] std::uint32_t ImageSize(int index) const;
    // Bits per pixel: the entry's when it gives one, else the image header's,
    // else derived from the colour count.
    [[nodiscard]] int ImageBitCount(int index) const;

    [[nodiscard]] const IconHeader& Header() const { return m_header; }
    [[nodiscard]] const IconDirEntry& Entry(int index) const {
        return m_entries.at(static_cast<std::size_t>(index));
    }
    [[nodiscard]] std::span<const std::byte> ImageData(int index) const {
        return m_images.at(static_cast<std::size_t>(index));
    }

    // Decodes image `index` to RGBA (drawing, on a platform without device contexts).
    [[nodiscard]] Result<RgbaImage> DecodeImage(int index) const;
    // The image the shell would draw for a square of `size` pixels on a
    // display of `bitDepth` bits per pixel; -1 for an empty icon.
    [[nodiscard]] int PickImage(int size, int bitDepth) const;

    // Copies header, directory and image bytes (and the origin) into another icon.
    void CloneTo(cFileIcon& other) const;

    [[nodiscard]] const std::string& Filename() const { return m_filename; }
    void SetFilename(std::string name) { m_filename = std::move(name); }
    [[nodiscard]] const ResourceId& ResourceID() const { return m_resourceId; }
    // Why the last load failed; empty after a successful one.
    [[nodiscard]] const std::string& Reason() const { return m_reason; }

private:
    bool Fail(std::string reason);
    void LayOutOffsets();

    IconHeader m_header;
    std::vector<IconDirEntry> m_entries;
    std::vector<std::vector<std::byte>> m_images;
    std::string m_filename;
    ResourceId m_resourceId;
    std::string m_reason;
};

// Picks among (width, height, bits) triples as the shell does: first the
// smallest sum of width and height differences from the wanted size, then
// among those the bit count closest to the display's; the first wins a tie.
struct ImageChoice {
    int width;
    int height;
    int bitCount;
};
int PickBestImage(std::span<const ImageChoice> images, int size, int bitDepth);

}  // namespace glyphmoor
