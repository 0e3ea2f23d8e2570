// Decoding the image data of one icon image into 32-bit RGBA pixels.
//
// An icon image is either a device-independent bitmap (a BITMAPINFOHEADER
// whose height counts the colour bitmap and the AND mask together, the colour
// table, the colour rows and the mask rows, each row padded to 4 bytes, bottom
// row first) or, in newer icon files, a whole PNG file.
#pragma once

#include "foundation/Result.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace glyphmoor {

// Pixels top row first, four bytes a pixel in the order red, green, blue, alpha.
struct RgbaImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;

    [[nodiscard]] const std::uint8_t* At(int x, int y) const {
        return pixels.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + x) * 4;
    }
};

// Larger images are refused; the largest icon image Windows knows is 256.
inline constexpr int kMaxDecodedSide = 1024;

// True when the data is a PNG file (starts with the PNG signature).
bool IsPngImage(std::span<const std::byte> data);

// Bits per pixel the image's own header declares: 32 for PNG; 0 when unreadable.
int ImageDataBitCount(std::span<const std::byte> data);

// Decodes bitmap images of 1, 4, 8, 16, 24 and 32 bits per pixel. A pixel whose
// mask bit is set is transparent; a 32-bit image with any non-zero alpha uses
// its alpha channel instead of the mask, as Windows XP and later draw it.
Result<RgbaImage> DecodeIconImage(std::span<const std::byte> data);

// Encodes pixels as an icon image (bitmap header with doubled height, colour
// table, colour rows, AND mask): 32 bits keeping alpha; 4 bits in the 16
// colours of the standard VGA palette; 1 bit in black and white. Each colour
// goes to the nearest palette entry; pixels with alpha below 128 are masked.
Result<std::vector<std::byte>> EncodeIconImage(const RgbaImage& image, int bits);

// PNG through libpng; each fails with "... not in this build" when the build has
// no libpng (PngSupported() tells which).
bool PngSupported();
Result<RgbaImage> DecodePng(std::span<const std::byte> data);
Result<std::vector<std::byte>> EncodePng(const RgbaImage& image);

}  // namespace glyphmoor
