// Decoding icon images of every bit depth to RGBA. Each fixture is 5 by 3
// pixels, so every depth below 32 has row padding, filled with colour A
// except the top-right pixel, which has colour B; the bottom-left pixel has
// its mask bit set. Rows are stored bottom first, so a flipped or mis-padded
// decode moves B or the hole.
#include "IconFixtures.h"

#include "iconfiles/IconImage.h"
#include "iconfiles/cFileIcon.h"

#include <gtest/gtest.h>

namespace glyphmoor {
namespace {

std::vector<std::uint32_t> Palette(std::size_t n, std::size_t at, std::uint32_t colour) {
    std::vector<std::uint32_t> p(n, 0);
    p[at] = colour;
    return p;
}

TEST(IconImage, EveryDepthDecodesColoursRowsAndMask) {
    struct Case {
        const char* name;
        int bits;
        std::vector<std::uint32_t> masks;  // red, green, blue: stored with channel masks
        std::vector<std::uint32_t> palette;
        std::uint32_t coloursUsed;
        std::uint32_t a, b;              // stored values
        std::uint32_t expectA, expectB;  // 0xRRGGBBAA
        bool maskApplies;
    };
    const Case cases[] = {
        {"bits1", 1, {}, {0x000000, 0xffffff}, 0, 0, 1, 0x000000ff, 0xffffffff, true},
        {"bits4", 4, {}, Palette(16, 9, 0x123456), 0, 0, 9, 0x000000ff, 0x123456ff, true},
        {"bits8, short table", 8, {}, Palette(12, 11, 0xabcdef), 12, 0, 11, 0x000000ff, 0xabcdefff, true},
        {"bits8, past the table", 8, {}, Palette(4, 1, 0xffffff), 4, 1, 200, 0xffffffff, 0x000000ff, true},
        {"bits16 555", 16, {}, {}, 0, 0x001f, 0x7c00, 0x0000ffff, 0xff0000ff, true},
        {"bits16, masks", 16, {0xf800, 0x07e0, 0x001f}, {}, 0, 0x07e0, 0xf800, 0x00ff00ff, 0xff0000ff, true},
        {"bits24", 24, {}, {}, 0, 0x000000, 0x123456, 0x000000ff, 0x123456ff, true},
        {"bits32, no alpha: mask", 32, {}, {}, 0, 0x00102030, 0x00abcdef, 0x102030ff, 0xabcdefff, true},
        {"bits32, alpha: no mask", 32, {}, {}, 0, 0xff102030, 0x80abcdef, 0x102030ff, 0xabcdef80, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        test::DibSpec s;
        s.width = 5;
        s.height = 3;
        s.bits = c.bits;
        s.compression = c.masks.empty() ? 0 : 3;
        s.masks = c.masks;
        s.palette = c.palette;
        s.coloursUsed = c.coloursUsed;
        s.pixel = [&](int x, int y) { return x == 4 && y == 0 ? c.b : c.a; };
        s.masked = [](int x, int y) { return x == 0 && y == 2; };
        auto image = DecodeIconImage(test::MakeDib(s));
        ASSERT_TRUE(image.ok()) << image.reason();
        ASSERT_EQ(image->width, 5);
        ASSERT_EQ(image->height, 3);
        auto at = [&](int x, int y) {
            const std::uint8_t* p = image->At(x, y);
            return std::uint32_t{p[0]} << 24 | std::uint32_t{p[1]} << 16 | std::uint32_t{p[2]} << 8 | p[3];
        };
        EXPECT_EQ(at(4, 0), c.expectB);
        EXPECT_EQ(at(3, 0), c.expectA);
        EXPECT_EQ(at(4, 2), c.expectA);
        EXPECT_EQ(at(0, 2) & 0xff, c.maskApplies ? 0 : c.expectA & 0xff);
        EXPECT_EQ(at(1, 2) & 0xff, c.expectA & 0xff);
    }
}

// A 16-pixel, 8-bit image with the number at `at` of its header changed.
test::Bytes Patched(std::size_t at, std::uint32_t value) {
    return test::With32(test::SolidDib(16, 8), at, value);
}

TEST(IconImage, BrokenImagesFailWithAReason) {
    test::Bytes png = test::PngSignature();
    png.resize(64, std::byte{7});
    const std::pair<const char*, test::Bytes> cases[] = {
        {"empty", {}},
        {"header size too small", Patched(0, 12)},
        {"header size past the data", Patched(0, 0x7fffffff)},
        {"zero width", Patched(4, 0)},
        {"negative height", Patched(8, 0xffffffe0u)},
        {"huge width", Patched(4, 100000)},
        {"2 bits", Patched(12, 0x00020001)},
        {"RLE8 compression", Patched(16, 1)},
        {"palette cut short", test::Cut(test::SolidDib(16, 8), 40 + 100)},
        {"colour rows cut short", test::Cut(test::SolidDib(16, 24), 40 + 15 * 48)},
        {"PNG signature then garbage", png},
    };
    for (const auto& [name, bytes] : cases) {
        auto image = DecodeIconImage(bytes);
        ASSERT_FALSE(image.ok()) << name;
        EXPECT_FALSE(image.reason().empty()) << name;
    }
}

TEST(IconImage, MissingMaskLeavesTheImageOpaque) {
    test::DibSpec s;
    s.width = s.height = 4;
    s.bits = 24;
    s.pixel = [](int, int) { return 0x204060u; };
    s.withMask = false;
    auto image = DecodeIconImage(test::MakeDib(s));
    ASSERT_TRUE(image.ok()) << image.reason();
    EXPECT_EQ(image->At(0, 0)[3], 255);
}

TEST(IconImage, PngImagesRoundTripWhereTheBuildHasLibpng) {
    RgbaImage image;
    image.width = 3;
    image.height = 2;
    image.pixels = {255, 0, 0, 255, 0, 255, 0, 128, 0, 0, 255, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    auto png = EncodePng(image);
    if (!PngSupported()) {
        ASSERT_FALSE(png.ok());
        EXPECT_NE(png.reason().find("not in this build"), std::string::npos);
        return;
    }
    ASSERT_TRUE(png.ok()) << png.reason();
    EXPECT_TRUE(IsPngImage(*png));
    // Inside an icon, as newer icon files hold large images.
    cFileIcon icon;
    icon.AddImage(test::EntryFor(3, 32, 0), *png);
    auto decoded = icon.DecodeImage(0);
    ASSERT_TRUE(decoded.ok()) << decoded.reason();
    EXPECT_EQ(decoded->width, 3);
    EXPECT_EQ(decoded->height, 2);
    EXPECT_EQ(decoded->pixels, image.pixels);
    EXPECT_EQ(icon.ImageBitCount(0), 32);
}

}  // namespace
}  // namespace glyphmoor
