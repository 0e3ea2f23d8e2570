// cFileIcon: loading icon files (well-formed and broken), saving byte for
// byte, editing the image list, and the picker.
#include "IconFixtures.h"

#include "iconfiles/cFileIcon.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace glyphmoor {
namespace {

using test::Bytes;

Bytes TwoImageFile() {
    return test::MakeIconFile({{test::EntryFor(32, 4, 0), test::SolidDib(32, 4)},
                               {test::EntryFor(16, 8, 0), test::SolidDib(16, 8)}});
}

void PutAt32(Bytes& b, std::size_t at, std::uint32_t v) {
    for (std::size_t i = 0; i < 4; ++i) {
        b[at + i] = static_cast<std::byte>((v >> (8 * i)) & 0xff);
    }
}

struct BrokenFile {
    const char* name;
    std::function<Bytes()> make;
    const char* reason;
};

// Test names show the fixture's name, not its bytes.
void PrintTo(const BrokenFile& c, std::ostream* os) {
    *os << c.name;
}

class BrokenIconFile : public ::testing::TestWithParam<BrokenFile> {};

TEST_P(BrokenIconFile, LoadsAsFalseWithNoImagesAndItsReason) {
    cFileIcon icon = test::MakeIcon({{16, 4}});  // loading must empty it
    ASSERT_FALSE(icon.LoadIconFromMemory(GetParam().make(), GetParam().name));
    EXPECT_EQ(icon.ImageCount(), 0);
    EXPECT_EQ(icon.Header().count, 0);
    EXPECT_EQ(icon.Reason(), GetParam().reason);
}

INSTANTIATE_TEST_SUITE_P(
    Fixtures, BrokenIconFile,
    ::testing::Values(
        BrokenFile{"empty_file", [] { return Bytes{}; }, kReasonType},
        BrokenFile{"reserved_not_zero",
                   [] {
                       Bytes b = TwoImageFile();
                       b[0] = std::byte{1};
                       return b;
                   },
                   kReasonReserved},
        BrokenFile{"cursor_type_2",
                   [] {
                       return test::MakeIconFile({{test::EntryFor(32, 1, 0), test::SolidDib(32, 1)}}, 2);
                   },
                   kReasonType},
        BrokenFile{"count_zero", [] { return test::MakeIconFile({}); }, kReasonNoImages},
        BrokenFile{"header_cut_after_type",
                   [] {
                       return Bytes{std::byte{0}, std::byte{0}, std::byte{1}};
                   },
                   kReasonNoImages},
        BrokenFile{"directory_ends_early",
                   [] {
                       Bytes b = TwoImageFile();
                       b.resize(6 + 16 + 10);
                       return b;
                   },
                   kReasonDirectory},
        BrokenFile{"count_larger_than_directory",
                   [] {
                       Bytes b = TwoImageFile();
                       b[4] = std::byte{200};
                       return b;
                   },
                   kReasonDirectory},
        BrokenFile{"last_image_cut_short",
                   [] {
                       Bytes b = TwoImageFile();
                       b.pop_back();
                       return b;
                   },
                   kReasonImages},
        BrokenFile{"offset_past_end",
                   [] {
                       Bytes b = TwoImageFile();
                       PutAt32(b, 6 + 12, static_cast<std::uint32_t>(b.size()));
                       return b;
                   },
                   kReasonImages},
        BrokenFile{"offset_plus_size_wraps",
                   [] {
                       Bytes b = TwoImageFile();
                       PutAt32(b, 6 + 8, 0x20);
                       PutAt32(b, 6 + 12, 0xfffffff0u);
                       return b;
                   },
                   kReasonImages},
        BrokenFile{"one_image_named_by_every_entry",
                   [] {
                       // 65535 entries naming the same 1.2 KB: 75 MB once copied.
                       const Bytes dib = test::SolidDib(32, 8);
                       Bytes b;
                       PutU16(b, 0);
                       PutU16(b, 1);
                       PutU16(b, 0xffff);
                       const auto offset = static_cast<std::uint32_t>(6 + 16 * 0xffff);
                       for (int i = 0; i < 0xffff; ++i) {
                           Bytes e(16);
                           PutAt32(e, 8, static_cast<std::uint32_t>(dib.size()));
                           PutAt32(e, 12, offset);
                           b.insert(b.end(), e.begin(), e.end());
                       }
                       b.insert(b.end(), dib.begin(), dib.end());
                       return b;
                   },
                   kReasonImages}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(IconFile, LoadThenSaveGivesTheSameBytes) {
    const Bytes original = TwoImageFile();
    const std::string dir = test::TempDir();
    test::WriteAll(dir + "/a.ico", original);
    cFileIcon icon;
    ASSERT_TRUE(icon.LoadIcon(dir + "/a.ico")) << icon.Reason();
    EXPECT_EQ(icon.Filename(), dir + "/a.ico");
    ASSERT_TRUE(icon.SaveIcon(dir + "/b.ico"));
    EXPECT_EQ(test::ReadAll(dir + "/b.ico"), original);
    EXPECT_EQ(icon.ToBytes(), original);
}

TEST(IconFile, SaveKeepsOffsetsAsTheyStand) {
    // Images stored in the file in the opposite order of their entries: the
    // directory is written back unchanged, the data in index order.
    const Bytes a = test::SolidDib(16, 1), b = test::SolidDib(16, 4);
    Bytes file = test::MakeIconFile({{test::EntryFor(16, 1, 0), a}, {test::EntryFor(16, 4, 0), b}});
    const auto first = static_cast<std::uint32_t>(6 + 32);
    PutAt32(file, 6 + 12, first + static_cast<std::uint32_t>(b.size()));
    PutAt32(file, 6 + 16 + 12, first);
    std::copy(b.begin(), b.end(), file.begin() + first);
    std::copy(a.begin(), a.end(), file.begin() + first + static_cast<std::ptrdiff_t>(b.size()));
    cFileIcon icon;
    ASSERT_TRUE(icon.LoadIconFromMemory(file));
    EXPECT_EQ(test::DataOf(icon, 0), a);
    const Bytes saved = icon.ToBytes();
    EXPECT_TRUE(std::equal(file.begin(), file.begin() + first, saved.begin()));
    EXPECT_TRUE(std::equal(a.begin(), a.end(), saved.begin() + first));
}

TEST(IconFile, SaveStopsAtAShortWrite) {
    const cFileIcon icon = test::MakeIcon({{32, 4}});
    std::ostringstream sink;
    sink.setstate(std::ios::badbit);
    EXPECT_FALSE(icon.SaveStart(sink));
    EXPECT_FALSE(icon.SaveIcon(std::filesystem::path(test::TempDir()) / "no-such-folder" / "x.ico"));
}

TEST(IconFile, MissingFileLoadsAsFalse) {
    cFileIcon icon;
    EXPECT_FALSE(icon.LoadIcon(test::TempDir() + "/absent.ico"));
    EXPECT_EQ(icon.ImageCount(), 0);
    EXPECT_FALSE(icon.Reason().empty());
}

TEST(IconFile, AddAndRemoveLayTheOffsetsOutAgain) {
    cFileIcon icon = test::MakeIcon({{48, 8}, {32, 4}, {16, 1}});
    ASSERT_EQ(icon.ImageCount(), 3);
    EXPECT_EQ(icon.Header().type, 1);
    EXPECT_EQ(icon.Entry(0).imageOffset, 6u + 3 * 16);
    ASSERT_TRUE(icon.RemoveImage(0));
    EXPECT_FALSE(icon.RemoveImage(2));
    EXPECT_FALSE(icon.RemoveImage(-1));
    ASSERT_EQ(icon.ImageCount(), 2);
    EXPECT_EQ(icon.Header().count, 2);
    EXPECT_EQ(icon.ImageWidth(0), 32);
    EXPECT_EQ(icon.Entry(0).imageOffset, 6u + 2 * 16);
    EXPECT_EQ(icon.Entry(1).imageOffset, 6u + 2 * 16 + icon.ImageSize(0));
    // What the edited icon saves loads back the same.
    cFileIcon again;
    ASSERT_TRUE(again.LoadIconFromMemory(icon.ToBytes())) << again.Reason();
    EXPECT_EQ(again.ToBytes(), icon.ToBytes());
}

TEST(IconFile, SizesAndColourCountsComeFromTheEntries) {
    cFileIcon icon = test::MakeIcon({{32, 4}, {16, 1}});
    IconDirEntry big = test::EntryFor(0, 32, 0);
    icon.AddImage(big, Bytes{std::byte{0x89}, std::byte{'P'}, std::byte{'N'}, std::byte{'G'}, std::byte{0x0d},
                             std::byte{0x0a}, std::byte{0x1a}, std::byte{0x0a}});
    EXPECT_EQ(icon.ImageWidth(0), 32);
    EXPECT_EQ(icon.ImageColourCount(0), 16);
    EXPECT_EQ(icon.ImageColourCount(1), 2);
    EXPECT_EQ(icon.ImageWidth(2), 256);  // a width of 0 stands for 256
    EXPECT_EQ(icon.ImageHeight(2), 256);
    EXPECT_EQ(icon.ImageSize(2), 8u);
    EXPECT_EQ(icon.ImageWidth(3), 0);
}

TEST(IconFile, BitCountFallsBackToTheImageHeaderThenTheColourCount) {
    cFileIcon icon;
    IconDirEntry e = test::EntryFor(32, 8, 0);
    e.bitCount = 0;
    icon.AddImage(e, test::SolidDib(32, 8));
    e.colourCount = 16;
    icon.AddImage(e, Bytes(8));  // no readable header
    EXPECT_EQ(icon.ImageBitCount(0), 8);
    EXPECT_EQ(icon.ImageBitCount(1), 4);
}

TEST(IconFile, CloneCopiesEverything) {
    cFileIcon icon = test::MakeIcon({{32, 4}, {16, 8}});
    cFileIcon copy = test::MakeIcon({{48, 1}});
    icon.CloneTo(copy);
    EXPECT_EQ(copy.ToBytes(), icon.ToBytes());
    icon.RemoveImage(0);
    EXPECT_EQ(copy.ImageCount(), 2);  // a copy, not a view
}

struct PickCase {
    const char* name;
    std::vector<ImageChoice> images;
    int size;
    int depth;
    int expected;
};

// Test names show the fixture's name, not its bytes.
void PrintTo(const PickCase& c, std::ostream* os) {
    *os << c.name;
}

class Picker : public ::testing::TestWithParam<PickCase> {};

TEST_P(Picker, ChoosesAsTheShellDoes) {
    EXPECT_EQ(PickBestImage(GetParam().images, GetParam().size, GetParam().depth), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, Picker,
    ::testing::Values(
        PickCase{"exact_size_wins_over_better_depth", {{48, 48, 32}, {32, 32, 4}}, 32, 32, 1},
        PickCase{"closest_depth_among_same_size", {{32, 32, 4}, {32, 32, 8}, {32, 32, 32}}, 32, 8, 1},
        PickCase{"depth_above_display_is_farther", {{32, 32, 4}, {32, 32, 32}}, 32, 8, 0},
        PickCase{"nearest_size_when_none_fits", {{16, 16, 8}, {48, 48, 8}}, 40, 8, 1},
        PickCase{"size_tie_keeps_the_first", {{24, 24, 8}, {40, 40, 8}}, 32, 8, 0},
        PickCase{"depth_tie_keeps_the_first", {{32, 32, 4}, {32, 32, 16}}, 32, 10, 0},
        PickCase{"needs_the_same_width_and_height_difference", {{31, 35, 4}, {35, 31, 8}}, 32, 8, 0},
        PickCase{"256_for_large_request", {{32, 32, 32}, {256, 256, 32}}, 200, 32, 1},
        PickCase{"empty_icon", {}, 32, 8, -1}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(IconFile, PickImageReadsSizesAndDepthsOfTheIcon) {
    const cFileIcon icon = test::MakeIcon({{16, 4}, {32, 4}, {32, 8}, {48, 8}});
    EXPECT_EQ(icon.PickImage(32, 8), 2);
    EXPECT_EQ(icon.PickImage(32, 4), 1);
    EXPECT_EQ(icon.PickImage(16, 32), 0);
    EXPECT_EQ(cFileIcon().PickImage(32, 8), -1);
}

}  // namespace
}  // namespace glyphmoor
