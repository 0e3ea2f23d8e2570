// Decoding icon images of every bit depth to RGBA. Each fixture is 5 by 3
// pixels, so every depth below 32 has row padding, filled with colour A
// except the top-right pixel, which has colour B; the bottom-left pixel has
// its mask bit set. Rows are stored bottom first, so a flipped or mis-padded
// decode moves B or the hole.
#include "IconFixtures.h"

#include "iconfiles/IconImage.h"
#include "iconfiles/cFileIcon.h"

#include <gtest/gtest.h>

#include <array>

namespace glyphmoor {
namespace {

using Rgba = std::array<std::uint8_t, 4>;

struct DepthCase {
    const char* name;
    int bits;
    std::uint32_t compression;
    std::vector<std::uint32_t> masks;
    std::vector<std::uint32_t> palette;
    std::uint32_t coloursUsed;
    std::uint32_t a;
    std::uint32_t b;
    Rgba expectA;
    Rgba expectB;
    bool maskApplies;
};

// Test names show the fixture's name, not its bytes.
void PrintTo(const DepthCase& c, std::ostream* os) {
    *os << c.name;
}

std::vector<std::uint32_t> Palette(std::size_t n, std::size_t at, std::uint32_t colour) {
    std::vector<std::uint32_t> p(n, 0);
    p[at] = colour;
    return p;
}

class Depth : public ::testing::TestWithParam<DepthCase> {};

TEST_P(Depth, DecodesColoursRowsAndMask) {
    const DepthCase& c = GetParam();
    test::DibSpec s;
    s.width = 5;
    s.height = 3;
    s.bits = c.bits;
    s.compression = c.compression;
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
        return Rgba{p[0], p[1], p[2], p[3]};
    };
    EXPECT_EQ(at(4, 0), c.expectB);
    EXPECT_EQ(at(3, 0), c.expectA);
    EXPECT_EQ(at(4, 2), c.expectA);
    EXPECT_EQ(at(0, 2)[3], c.maskApplies ? 0 : c.expectA[3]);
    EXPECT_EQ(at(1, 2)[3], c.expectA[3]);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, Depth,
    ::testing::Values(
        DepthCase{
            "bits1", 1, 0, {}, {0x000000, 0xffffff}, 0, 0, 1, {0, 0, 0, 255}, {255, 255, 255, 255}, true},
        DepthCase{"bits4",
                  4,
                  0,
                  {},
                  Palette(16, 9, 0x123456),
                  0,
                  0,
                  9,
                  {0, 0, 0, 255},
                  {0x12, 0x34, 0x56, 255},
                  true},
        DepthCase{"bits8_short_table",
                  8,
                  0,
                  {},
                  Palette(12, 11, 0xabcdef),
                  12,
                  0,
                  11,
                  {0, 0, 0, 255},
                  {0xab, 0xcd, 0xef, 255},
                  true},
        DepthCase{"bits8_index_past_table_is_black",
                  8,
                  0,
                  {},
                  Palette(4, 1, 0xffffff),
                  4,
                  1,
                  200,
                  {255, 255, 255, 255},
                  {0, 0, 0, 255},
                  true},
        DepthCase{"bits16_555", 16, 0, {}, {}, 0, 0x001f, 0x7c00, {0, 0, 255, 255}, {255, 0, 0, 255}, true},
        DepthCase{"bits16_565_masks",
                  16,
                  3,
                  {0xf800, 0x07e0, 0x001f},
                  {},
                  0,
                  0x07e0,
                  0xf800,
                  {0, 255, 0, 255},
                  {255, 0, 0, 255},
                  true},
        DepthCase{
            "bits24", 24, 0, {}, {}, 0, 0x000000, 0x123456, {0, 0, 0, 255}, {0x12, 0x34, 0x56, 255}, true},
        DepthCase{"bits32_no_alpha_uses_mask",
                  32,
                  0,
                  {},
                  {},
                  0,
                  0x00102030,
                  0x00abcdef,
                  {0x10, 0x20, 0x30, 255},
                  {0xab, 0xcd, 0xef, 255},
                  true},
        DepthCase{"bits32_alpha_overrides_mask",
                  32,
                  0,
                  {},
                  {},
                  0,
                  0xff102030,
                  0x80abcdef,
                  {0x10, 0x20, 0x30, 255},
                  {0xab, 0xcd, 0xef, 0x80},
                  false}),
    [](const auto& p) { return std::string(p.param.name); });

struct BadImage {
    const char* name;
    std::function<test::Bytes()> make;
};

// Test names show the fixture's name, not its bytes.
void PrintTo(const BadImage& c, std::ostream* os) {
    *os << c.name;
}

class BrokenImage : public ::testing::TestWithParam<BadImage> {};

TEST_P(BrokenImage, FailsWithAReason) {
    auto image = DecodeIconImage(GetParam().make());
    ASSERT_FALSE(image.ok());
    EXPECT_FALSE(image.reason().empty());
}

test::Bytes Patched(int size, int bits, std::size_t at, std::uint32_t value) {
    test::Bytes b = test::SolidDib(size, bits);
    for (std::size_t i = 0; i < 4; ++i) {
        b[at + i] = static_cast<std::byte>((value >> (8 * i)) & 0xff);
    }
    return b;
}

INSTANTIATE_TEST_SUITE_P(
    Fixtures, BrokenImage,
    ::testing::Values(BadImage{"empty", [] { return test::Bytes{}; }},
                      BadImage{"header_size_too_small", [] { return Patched(16, 8, 0, 12); }},
                      BadImage{"header_size_past_data", [] { return Patched(16, 8, 0, 0x7fffffff); }},
                      BadImage{"zero_width", [] { return Patched(16, 8, 4, 0); }},
                      BadImage{"negative_height", [] { return Patched(16, 8, 8, 0xffffffe0u); }},
                      BadImage{"huge_width", [] { return Patched(16, 8, 4, 100000); }},
                      BadImage{"bits_2", [] { return Patched(16, 8, 12, 0x00020001); }},
                      BadImage{"rle8_compression", [] { return Patched(16, 8, 16, 1); }},
                      BadImage{"palette_cut_short",
                               [] {
                                   test::Bytes b = test::SolidDib(16, 8);
                                   b.resize(40 + 100);
                                   return b;
                               }},
                      BadImage{"colour_rows_cut_short",
                               [] {
                                   test::Bytes b = test::SolidDib(16, 24);
                                   b.resize(40 + 15 * 48);
                                   return b;
                               }},
                      BadImage{"png_signature_then_garbage",
                               [] {
                                   test::Bytes b(64, std::byte{7});
                                   const std::uint8_t sig[] = {0x89, 'P', 'N', 'G', 0x0d, 0x0a, 0x1a, 0x0a};
                                   for (std::size_t i = 0; i < 8; ++i) {
                                       b[i] = std::byte{sig[i]};
                                   }
                                   return b;
                               }}),
    [](const auto& p) { return std::string(p.param.name); });

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
