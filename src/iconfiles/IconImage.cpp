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

std::size_t RowStride(std::size_t width, std::size_t bits) {
    return ((width * bits + 31) / 32) * 4;
}

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
            const std::size_t at = pos + std::size_t{i} * 4;  // RGBQUAD: blue, green, red, reserved
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
                rgba[0] = *colourRows->U8(at + 2), rgba[1] = *colourRows->U8(at + 1),
                rgba[2] = *colourRows->U8(at);
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

Result<std::vector<std::byte>> EncodeIconImage(const RgbaImage& image, int bits) {
    static constexpr std::array<std::uint32_t, 16> kVga = {
        0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xc0c0c0,
        0x808080, 0xff0000, 0x00ff00, 0xffff00, 0x0000ff, 0xff00ff, 0x00ffff, 0xffffff};
    static constexpr std::array<std::uint32_t, 2> kMono = {0x000000, 0xffffff};
    if (bits != 1 && bits != 4 && bits != 32) {
        return Fail("icon images are written with 1, 4 or 32 bits per pixel, not " + std::to_string(bits));
    }
    if (image.width <= 0 || image.height <= 0 || image.width > 256 || image.height > 256 ||
        image.pixels.size() !=
            static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height) * 4) {
        return Fail("an icon image is 1 to 256 pixels a side");
    }
    std::span<const std::uint32_t> palette;
    if (bits == 4) {
        palette = kVga;
    } else if (bits == 1) {
        palette = kMono;
    }
    const auto w = static_cast<std::size_t>(image.width);
    const auto h = static_cast<std::size_t>(image.height);
    std::vector<std::byte> out;
    PutU32(out, kInfoHeaderSize);
    PutU32(out, static_cast<std::uint32_t>(w));
    PutU32(out, static_cast<std::uint32_t>(h * 2));
    PutU16(out, 1);
    PutU16(out, static_cast<std::uint16_t>(bits));
    PutU32(out, kBiRgb);
    const std::size_t stride = RowStride(w, static_cast<std::size_t>(bits));
    const std::size_t maskStride = RowStride(w, 1);
    PutU32(out, static_cast<std::uint32_t>((stride + maskStride) * h));
    for (int i = 0; i < 2; ++i) {
        PutU32(out, 0);
    }
    PutU32(out, static_cast<std::uint32_t>(palette.size()));
    PutU32(out, 0);
    for (std::uint32_t colour : palette) {
        PutU32(out, colour);  // blue, green, red, 0 in memory
    }
    auto nearest = [&](const std::uint8_t* p) {
        std::size_t best = 0;
        long bestDistance = -1;
        for (std::size_t i = 0; i < palette.size(); ++i) {
            const long dr = static_cast<long>(p[0]) - static_cast<long>((palette[i] >> 16) & 0xff);
            const long dg = static_cast<long>(p[1]) - static_cast<long>((palette[i] >> 8) & 0xff);
            const long db = static_cast<long>(p[2]) - static_cast<long>(palette[i] & 0xff);
            const long distance = dr * dr + dg * dg + db * db;
            if (bestDistance < 0 || distance < bestDistance) {
                best = i;
                bestDistance = distance;
            }
        }
        return static_cast<unsigned>(best);
    };
    for (std::size_t row = 0; row < h; ++row) {
        const std::size_t y = h - 1 - row;  // bottom row first
        std::vector<std::byte> line(stride);
        for (std::size_t x = 0; x < w; ++x) {
            const std::uint8_t* p = image.At(static_cast<int>(x), static_cast<int>(y));
            if (bits == 32) {
                line[x * 4] = std::byte{p[2]};
                line[x * 4 + 1] = std::byte{p[1]};
                line[x * 4 + 2] = std::byte{p[0]};
                line[x * 4 + 3] = std::byte{p[3]};
            } else {
                const unsigned index = p[3] < 128 ? 0 : nearest(p);
                const std::size_t bit = x * static_cast<std::size_t>(bits);
                line[bit / 8] |= static_cast<std::byte>(index << (8 - bits - static_cast<int>(bit % 8)));
            }
        }
        out.insert(out.end(), line.begin(), line.end());
    }
    for (std::size_t row = 0; row < h; ++row) {
        const std::size_t y = h - 1 - row;
        std::vector<std::byte> line(maskStride);
        for (std::size_t x = 0; x < w; ++x) {
            if (image.At(static_cast<int>(x), static_cast<int>(y))[3] < 128) {
                line[x / 8] |= static_cast<std::byte>(0x80u >> (x % 8));
            }
        }
        out.insert(out.end(), line.begin(), line.end());
    }
    return out;
}

}  // namespace glyphmoor
