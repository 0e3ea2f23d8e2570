#include "iconfiles/IconImage.h"

#include "foundation/ByteReader.h"
#include "foundation/ByteWriter.h"

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

// BITMAPINFOHEADER (wingdi.h; Microsoft's "BITMAPINFOHEADER structure"): the
// header of an icon image that is not PNG. Its height counts the AND mask too.
struct BitmapInfoHeader {
    std::uint32_t size = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::uint16_t planes = 0;
    std::uint16_t bitCount = 0;
    std::uint32_t compression = 0;
    std::uint32_t sizeImage = 0;
    std::int32_t xPelsPerMeter = 0;
    std::int32_t yPelsPerMeter = 0;
    std::uint32_t coloursUsed = 0;
    std::uint32_t coloursImportant = 0;
};
static_assert(sizeof(BitmapInfoHeader) == kInfoHeaderSize);

// The header's fields, checked: a usable size, a bit count and compression icons use.
Result<BitmapInfoHeader> ReadInfoHeader(const ByteReader& r) {
    BitmapInfoHeader h;
    h.size = r.U32(0).value_or(0);
    if (h.size < kInfoHeaderSize || !r.Has(0, h.size)) {
        return Fail("the image has no bitmap header");
    }
    h.width = *r.I32(4);
    h.height = *r.I32(8);
    h.planes = *r.U16(12);
    h.bitCount = *r.U16(14);
    h.compression = *r.U32(16);
    h.sizeImage = *r.U32(20);
    h.xPelsPerMeter = *r.I32(24);
    h.yPelsPerMeter = *r.I32(28);
    h.coloursUsed = *r.U32(32);
    h.coloursImportant = *r.U32(36);
    const std::int32_t height = h.height / 2;
    if (h.width <= 0 || height <= 0 || h.width > kMaxDecodedSide || height > kMaxDecodedSide) {
        return Fail("the image is " + std::to_string(h.width) + " by " + std::to_string(h.height) +
                    " pixels (height counting the mask), which is not a usable icon size");
    }
    const std::uint16_t bits = h.bitCount;
    if (bits != 1 && bits != 4 && bits != 8 && bits != 16 && bits != 24 && bits != 32) {
        return Fail("the image has " + std::to_string(bits) + " bits per pixel");
    }
    if (h.compression != kBiRgb && !(h.compression == kBiBitfields && (bits == 16 || bits == 32))) {
        return Fail("the image uses compression " + std::to_string(h.compression) +
                    ", which icons do not use");
    }
    return h;
}

// Red, green, blue and alpha masks of 16- and 32-bit pixels.
using ChannelMasks = std::array<std::uint32_t, 4>;

// The default masks, or with BI_BITFIELDS the three stored after a 40-byte
// header (pos moves past them) or inside a larger one.
Result<ChannelMasks> ReadChannelMasks(const ByteReader& r, const BitmapInfoHeader& header, std::size_t& pos) {
    if (header.compression != kBiBitfields) {
        return header.bitCount == 16 ? ChannelMasks{0x7c00, 0x03e0, 0x001f, 0}
                                     : ChannelMasks{0x00ff0000, 0x0000ff00, 0x000000ff, 0xff000000};
    }
    const std::size_t at = header.size == kInfoHeaderSize ? pos : kInfoHeaderSize;
    const auto red = r.U32(at);
    const auto green = r.U32(at + 4);
    const auto blue = r.U32(at + 8);
    if (!red || !green || !blue) {
        return Fail("the image's colour masks are cut short");
    }
    if (header.size == kInfoHeaderSize) {
        pos += 12;
    }
    return ChannelMasks{*red, *green, *blue, 0};
}

using Palette = std::vector<std::array<std::uint8_t, 3>>;

// The colour table of an image of 8 bits or fewer (RGBQUAD: blue, green, red,
// reserved); pos moves past it. Empty for deeper images.
Result<Palette> ReadPalette(const ByteReader& r, const BitmapInfoHeader& header, std::size_t& pos) {
    Palette palette;
    if (header.bitCount > 8) {
        return palette;
    }
    const std::uint32_t max = 1u << header.bitCount;
    const std::uint32_t n = (header.coloursUsed == 0 || header.coloursUsed > max) ? max : header.coloursUsed;
    if (!r.Has(pos, static_cast<std::size_t>(n) * 4)) {
        return Fail("the image's colour table is cut short");
    }
    palette.resize(n);
    for (std::uint32_t i = 0; i < n; ++i) {
        const std::size_t at = pos + std::size_t{i} * 4;
        palette[i] = {*r.U8(at + 2), *r.U8(at + 1), *r.U8(at)};
    }
    pos += static_cast<std::size_t>(n) * 4;
    return palette;
}

// The colour of pixel x of a row that starts at `row`.
std::array<std::uint8_t, 4> PixelAt(const ByteReader& rows, std::size_t row, std::size_t x,
                                    std::uint16_t bits, const Palette& palette,
                                    const std::array<Channel, 4>& channels) {
    std::array<std::uint8_t, 4> rgba = {0, 0, 0, 255};
    if (bits <= 8) {
        const std::size_t bit = x * bits;
        const unsigned byte = *rows.U8(row + bit / 8);
        const unsigned index = (byte >> (8 - bits - bit % 8)) & ((1u << bits) - 1);
        if (index < palette.size()) {
            rgba = {palette[index][0], palette[index][1], palette[index][2], 255};
        }
    } else if (bits == 24) {
        const std::size_t at = row + x * 3;
        rgba = {*rows.U8(at + 2), *rows.U8(at + 1), *rows.U8(at), 255};
    } else {
        const std::uint32_t pixel = bits == 16 ? *rows.U16(row + x * 2) : *rows.U32(row + x * 4);
        rgba = {channels[0].Get(pixel), channels[1].Get(pixel), channels[2].Get(pixel),
                bits == 32 ? channels[3].Get(pixel) : std::uint8_t{255}};
    }
    return rgba;
}

// Fills the image from the colour rows (bottom row first); true when a
// 32-bit image has any alpha at all.
bool DecodeColours(RgbaImage& image, const ByteReader& rows, std::uint16_t bits, const Palette& palette,
                   const ChannelMasks& masks) {
    const auto w = static_cast<std::size_t>(image.width);
    const auto h = static_cast<std::size_t>(image.height);
    const std::size_t stride = RowStride(w, bits);
    const std::array<Channel, 4> channels = {Channel(masks[0]), Channel(masks[1]), Channel(masks[2]),
                                             Channel(masks[3])};
    bool anyAlpha = false;
    for (std::size_t y = 0; y < h; ++y) {
        std::uint8_t* out = image.pixels.data() + y * w * 4;
        for (std::size_t x = 0; x < w; ++x, out += 4) {
            const auto rgba = PixelAt(rows, (h - 1 - y) * stride, x, bits, palette, channels);
            anyAlpha = anyAlpha || (bits == 32 && rgba[3] != 0);
            std::copy(rgba.begin(), rgba.end(), out);
        }
    }
    return anyAlpha;
}

// Alpha from the AND mask: a set bit is transparent. Without a mask, opaque.
void ApplyMask(RgbaImage& image, const std::optional<ByteReader>& maskRows) {
    const auto w = static_cast<std::size_t>(image.width);
    const auto h = static_cast<std::size_t>(image.height);
    const std::size_t maskStride = RowStride(w, 1);
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
}

void WriteInfoHeader(ByteWriter& out, const BitmapInfoHeader& h) {
    out.U32(h.size);
    out.U32(static_cast<std::uint32_t>(h.width));
    out.U32(static_cast<std::uint32_t>(h.height));
    out.U16(h.planes);
    out.U16(h.bitCount);
    out.U32(h.compression);
    out.U32(h.sizeImage);
    out.U32(static_cast<std::uint32_t>(h.xPelsPerMeter));
    out.U32(static_cast<std::uint32_t>(h.yPelsPerMeter));
    out.U32(h.coloursUsed);
    out.U32(h.coloursImportant);
}

// The palette entry nearest to an RGBA pixel's colour.
unsigned NearestColour(std::span<const std::uint32_t> palette, const std::uint8_t* p) {
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
}

// Row y of the image as the XOR bitmap stores it: BGRA at 32 bits, else
// palette indices (a pixel less than half opaque is index 0).
std::vector<std::byte> ColourRow(const RgbaImage& image, std::size_t y, int bits,
                                 std::span<const std::uint32_t> palette) {
    const auto w = static_cast<std::size_t>(image.width);
    std::vector<std::byte> line(RowStride(w, static_cast<std::size_t>(bits)));
    for (std::size_t x = 0; x < w; ++x) {
        const std::uint8_t* p = image.At(static_cast<int>(x), static_cast<int>(y));
        if (bits == 32) {
            line[x * 4] = std::byte{p[2]};
            line[x * 4 + 1] = std::byte{p[1]};
            line[x * 4 + 2] = std::byte{p[0]};
            line[x * 4 + 3] = std::byte{p[3]};
        } else {
            const unsigned index = p[3] < 128 ? 0 : NearestColour(palette, p);
            const std::size_t bit = x * static_cast<std::size_t>(bits);
            line[bit / 8] |= static_cast<std::byte>(index << (8 - bits - static_cast<int>(bit % 8)));
        }
    }
    return line;
}

// Row y of the AND mask: a set bit for a pixel less than half opaque.
std::vector<std::byte> MaskRow(const RgbaImage& image, std::size_t y) {
    const auto w = static_cast<std::size_t>(image.width);
    std::vector<std::byte> line(RowStride(w, 1));
    for (std::size_t x = 0; x < w; ++x) {
        if (image.At(static_cast<int>(x), static_cast<int>(y))[3] < 128) {
            line[x / 8] |= static_cast<std::byte>(0x80u >> (x % 8));
        }
    }
    return line;
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
    const BitmapInfoHeader header = TRY(ReadInfoHeader(r));
    std::size_t pos = header.size;
    const ChannelMasks masks = TRY(ReadChannelMasks(r, header, pos));
    const Palette palette = TRY(ReadPalette(r, header, pos));

    const auto w = static_cast<std::size_t>(header.width);
    const auto h = static_cast<std::size_t>(header.height / 2);
    const std::size_t stride = RowStride(w, header.bitCount);
    const auto colourRows = r.Sub(pos, stride * h);
    if (!colourRows) {
        return Fail("the image's colour bitmap is cut short");
    }
    // A missing or short mask leaves the image opaque rather than refusing it.
    const auto maskRows = r.Sub(pos + stride * h, RowStride(w, 1) * h);

    RgbaImage image;
    image.width = header.width;
    image.height = header.height / 2;
    image.pixels.assign(w * h * 4, 0);
    const bool anyAlpha = DecodeColours(image, *colourRows, header.bitCount, palette, masks);
    if (header.bitCount != 32 || !anyAlpha) {
        ApplyMask(image, maskRows);
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
    const std::size_t stride = RowStride(w, static_cast<std::size_t>(bits));
    const std::size_t maskStride = RowStride(w, 1);
    BitmapInfoHeader header;
    header.size = kInfoHeaderSize;
    header.width = image.width;
    header.height = image.height * 2;
    header.planes = 1;
    header.bitCount = static_cast<std::uint16_t>(bits);
    header.compression = kBiRgb;
    header.sizeImage = static_cast<std::uint32_t>((stride + maskStride) * h);
    header.coloursUsed = static_cast<std::uint32_t>(palette.size());
    ByteWriter out;
    WriteInfoHeader(out, header);
    for (std::uint32_t colour : palette) {
        out.U32(colour);  // blue, green, red, 0 in memory
    }
    for (std::size_t row = 0; row < h; ++row) {
        out.Bytes(ColourRow(image, h - 1 - row, bits, palette));  // bottom row first
    }
    for (std::size_t row = 0; row < h; ++row) {
        out.Bytes(MaskRow(image, h - 1 - row));
    }
    return std::move(out).Take();
}

}  // namespace glyphmoor
