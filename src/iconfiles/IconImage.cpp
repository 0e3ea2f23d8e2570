#include "iconfiles/IconImage.h"

#include "foundation/ByteReader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string>

namespace glyphmoor {

namespace {

constexpr std::array<std::uint8_t, 8> kPngSignature = {0x89, 'P', 'N', 'G', 0x0d, 0x0a, 0x1a, 0x0a};
constexpr std::uint32_t kBiRgb = 0;
constexpr std::uint32_t kBiBitfields = 3;
constexpr std::size_t kInfoHeaderSize = 40;  // BITMAPINFOHEADER

// One colour channel described by a bit mask, scaled to 8 bits.
struct Channel {
    std::uint32_t mask = 0;
    int shift = 0;
    int bits = 0;

    explicit Channel(std::uint32_t m) : mask(m) {
        if (m != 0) {
            shift = std::countr_zero(m);
            bits = std::popcount(m >> shift);
        }
    }

    [[nodiscard]] std::uint8_t Get(std::uint32_t pixel) const {
        if (bits == 0) {
            return 0;
        }
        const std::uint32_t v = (pixel & mask) >> shift;
        if (bits >= 8) {
            return static_cast<std::uint8_t>(v >> (bits - 8));
        }
        const std::uint32_t max = (1u << bits) - 1;
        return static_cast<std::uint8_t>((v * 255 + max / 2) / max);
    }
};

std::size_t RowStride(std::size_t width, std::size_t bits) { return ((width * bits + 31) / 32) * 4; }

}  // namespace

bool IsPngImage(std::span<const std::byte> data) {
    if (data.size() < kPngSignature.size()) {
        return false;
    }
    for (std::size_t i = 0; i < kPngSignature.size(); ++i) {
        if (static_cast<std::uint8_t>(data[i]) != kPngSignature[i]) {
            return false;
        }
    }
    return true;
}

int ImageDataBitCount(std::span<const std::byte> data) {
    if (IsPngImage(data)) {
        return 32;
    }
    const ByteReader r(data);
    const auto size = r.U32(0);
    const auto bits = r.U16(14);
    if (!size || *size < kInfoHeaderSize || !bits) {
        return 0;
    }
    return *bits;
}

Result<RgbaImage> DecodeIconImage(std::span<const std::byte> data) {
    if (IsPngImage(data)) {
        return DecodePng(data);
    }
    const ByteReader r(data);
    const auto headerSize = r.U32(0);
    if (!headerSize || *headerSize < kInfoHeaderSize || !r.Has(0, *headerSize)) {
        return Fail("the image has no bitmap header");
    }
    const std::int32_t width = *r.I32(4);
    const std::int32_t doubledHeight = *r.I32(8);
    const std::uint16_t bits = *r.U16(14);
    const std::uint32_t compression = *r.U32(16);
    const std::uint32_t coloursUsed = *r.U32(32);
    const std::int32_t height = doubledHeight / 2;
    if (width <= 0 || height <= 0 || width > kMaxDecodedSide || height > kMaxDecodedSide) {
        return Fail("the image is " + std::to_string(width) + " by " + std::to_string(doubledHeight) +
                    " pixels (height counting the mask), which is not a usable icon size");
    }
    if (bits != 1 && bits != 4 && bits != 8 && bits != 16 && bits != 24 && bits != 32) {
        return Fail("the image has " + std::to_string(bits) + " bits per pixel");
    }
    if (compression != kBiRgb && !(compression == kBiBitfields && (bits == 16 || bits == 32))) {
        return Fail("the image uses compression " + std::to_string(compression) + ", which icons do not use");
    }

    std::size_t pos = *headerSize;
    // Channel masks: BI_BITFIELDS stores three after a 40-byte header; larger
    // headers hold them inside.
    std::uint32_t masks[4] = {0, 0, 0, 0};
    if (bits == 16) {
        masks[0] = 0x7c00, masks[1] = 0x03e0, masks[2] = 0x001f;
    } else {
        masks[0] = 0x00ff0000, masks[1] = 0x0000ff00, masks[2] = 0x000000ff, masks[3] = 0xff000000;
    }
    if (compression == kBiBitfields) {
        const std::size_t at = *headerSize == kInfoHeaderSize ? pos : kInfoHeaderSize;
        const auto red = r.U32(at), green = r.U32(at + 4), blue = r.U32(at + 8);
        if (!red || !green || !blue) {
            return Fail("the image's colour masks are cut short");
        }
        masks[0] = *red, masks[1] = *green, masks[2] = *blue, masks[3] = 0;
        if (*headerSize == kInfoHeaderSize) {
            pos += 12;
        }
    }

    std::vector<std::array<std::uint8_t, 3>> palette;
    if (bits <= 8) {
        const std::uint32_t max = 1u << bits;
        const std::uint32_t n = (coloursUsed == 0 || coloursUsed > max) ? max : coloursUsed;
        if (!r.Has(pos, static_cast<std::size_t>(n) * 4)) {
            return Fail("the image's colour table is cut short");
        }
        palette.resize(n);
        for (std::uint32_t i = 0; i < n; ++i) {
            const std::size_t at = pos + i * 4;  // RGBQUAD: blue, green, red, reserved
            palette[i] = {*r.U8(at + 2), *r.U8(at + 1), *r.U8(at)};
        }
        pos += static_cast<std::size_t>(n) * 4;
    }

    const auto w = static_cast<std::size_t>(width);
    const auto h = static_cast<std::size_t>(height);
    const std::size_t stride = RowStride(w, bits);
    const auto colourRows = r.Sub(pos, stride * h);
    if (!colourRows) {
        return Fail("the image's colour bitmap is cut short");
    }
    const std::size_t maskStride = RowStride(w, 1);
    // A missing or short mask leaves the image opaque rather than refusing it.
    const auto maskRows = r.Sub(pos + stride * h, maskStride * h);

    RgbaImage image;
    image.width = width;
    image.height = height;
    image.pixels.assign(w * h * 4, 0);
    const Channel red(masks[0]), green(masks[1]), blue(masks[2]), alpha(masks[3]);
    bool anyAlpha = false;
    for (std::size_t y = 0; y < h; ++y) {
        const std::size_t row = (h - 1 - y) * stride;  // bottom row first
        std::uint8_t* out = image.pixels.data() + y * w * 4;
        for (std::size_t x = 0; x < w; ++x, out += 4) {
            std::uint8_t rgba[4] = {0, 0, 0, 255};
            if (bits <= 8) {
                const std::size_t bit = x * bits;
                const unsigned byte = *colourRows->U8(row + bit / 8);
                const unsigned index = (byte >> (8 - bits - bit % 8)) & ((1u << bits) - 1);
                if (index < palette.size()) {
                    rgba[0] = palette[index][0], rgba[1] = palette[index][1], rgba[2] = palette[index][2];
                }
            } else if (bits == 24) {
                const std::size_t at = row + x * 3;
                rgba[0] = *colourRows->U8(at + 2), rgba[1] = *colourRows->U8(at + 1), rgba[2] = *colourRows->U8(at);
            } else {
                const std::uint32_t pixel =
                    bits == 16 ? *colourRows->U16(row + x * 2) : *colourRows->U32(row + x * 4);
                rgba[0] = red.Get(pixel), rgba[1] = green.Get(pixel), rgba[2] = blue.Get(pixel);
                if (bits == 32) {
                    rgba[3] = alpha.Get(pixel);
                    anyAlpha = anyAlpha || rgba[3] != 0;
                }
            }
            std::copy(rgba, rgba + 4, out);
        }
    }
    if (bits == 32 && anyAlpha) {
        return image;
    }
    for (std::size_t y = 0; y < h; ++y) {
        std::uint8_t* out = image.pixels.data() + y * w * 4;
        for (std::size_t x = 0; x < w; ++x, out += 4) {
            bool transparent = false;
            if (maskRows) {
                const unsigned byte = *maskRows->U8((h - 1 - y) * maskStride + x / 8);
                transparent = ((byte >> (7 - x % 8)) & 1u) != 0;
            }
            out[3] = transparent ? 0 : 255;
        }
    }
    return image;
}

}  // namespace glyphmoor
