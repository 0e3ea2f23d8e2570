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

// 65535 entries naming the same 1.2 KB: 75 MB once copied.
Bytes OneImageNamedByEveryEntry() {
    const Bytes dib = test::SolidDib(32, 8);
    Bytes b;
    PutU16(b, 0);
    PutU16(b, 1);
    PutU16(b, 0xffff);
    for (int i = 0; i < 0xffff; ++i) {
        test::PutEntryHead(b, IconDirEntry{}, static_cast<std::uint32_t>(dib.size()));
        PutU32(b, 6 + 16 * 0xffff);
    }
    b.insert(b.end(), dib.begin(), dib.end());
    return b;
}

TEST(IconFile, BrokenFilesLoadAsFalseWithNoImagesAndTheirReason) {
    using test::Patched;
    const Bytes two = TwoImageFile();
    const struct {
        const char* name;
        Bytes bytes;
        const char* reason;
    } cases[] = {
        {"empty file", {}, kReasonType},
        {"reserved not zero", Patched(two, [](Bytes& b) { b[0] = std::byte{1}; }), kReasonReserved},
        {"cursor type 2", Patched(two, [](Bytes& b) { b[2] = std::byte{2}; }), kReasonType},
        {"count zero", test::MakeIconFile({}), kReasonNoImages},
        {"header cut after type", test::Cut(two, 3), kReasonNoImages},
        {"directory ends early", test::Cut(two, 6 + 16 + 10), kReasonDirectory},
        {"count larger than directory", Patched(two, [](Bytes& b) { b[4] = std::byte{200}; }),
         kReasonDirectory},
        {"last image cut short", test::Cut(two, two.size() - 1), kReasonImages},
        {"offset past end", test::With32(two, 6 + 12, two.size()), kReasonImages},
        {"offset plus size wraps", test::With32(test::With32(two, 6 + 8, 0x20), 6 + 12, 0xfffffff0u),
         kReasonImages},
        {"one image named by every entry", OneImageNamedByEveryEntry(), kReasonImages},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        cFileIcon icon = test::MakeIcon({{16, 4}});  // loading must empty it
        ASSERT_FALSE(icon.LoadIconFromMemory(c.bytes, c.name));
        EXPECT_EQ(icon.ImageCount(), 0);
        EXPECT_EQ(icon.Header().count, 0);
        EXPECT_EQ(icon.Reason(), c.reason);
    }
}

TEST(IconFile, LoadThenSaveGivesTheSameBytes) {
    const Bytes original = TwoImageFile();
    const std::string dir = test::TestFolder();
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
    test::PutAt32(file, 6 + 12, first + static_cast<std::uint32_t>(b.size()));
    test::PutAt32(file, 6 + 16 + 12, first);
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
    EXPECT_FALSE(icon.SaveIcon(std::filesystem::path(test::TestFolder()) / "no-such-folder" / "x.ico"));
}

TEST(IconFile, MissingFileLoadsAsFalse) {
    cFileIcon icon;
    EXPECT_FALSE(icon.LoadIcon(test::TestFolder() + "/absent.ico"));
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
    icon.AddImage(big, test::PngSignature());
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

TEST(IconFile, PickBestImageChoosesAsTheShellDoes) {
    const struct {
        const char* name;
        std::vector<ImageChoice> images;
        int size;
        int depth;
        int expected;
    } cases[] = {
        {"exact size wins over better depth", {{48, 48, 32}, {32, 32, 4}}, 32, 32, 1},
        {"closest depth among the same size", {{32, 32, 4}, {32, 32, 8}, {32, 32, 32}}, 32, 8, 1},
        {"depth above the display is farther", {{32, 32, 4}, {32, 32, 32}}, 32, 8, 0},
        {"nearest size when none fits", {{16, 16, 8}, {48, 48, 8}}, 40, 8, 1},
        {"a size tie keeps the first", {{24, 24, 8}, {40, 40, 8}}, 32, 8, 0},
        {"a depth tie keeps the first", {{32, 32, 4}, {32, 32, 16}}, 32, 10, 0},
        {"width and height differences count alike", {{31, 35, 4}, {35, 31, 8}}, 32, 8, 0},
        {"256 for a large request", {{32, 32, 32}, {256, 256, 32}}, 200, 32, 1},
        {"empty icon", {}, 32, 8, -1},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(PickBestImage(c.images, c.size, c.depth), c.expected) << c.name;
    }
}

TEST(IconFile, PickImageReadsSizesAndDepthsOfTheIcon) {
    const cFileIcon icon = test::MakeIcon({{16, 4}, {32, 4}, {32, 8}, {48, 8}});
    EXPECT_EQ(icon.PickImage(32, 8), 2);
    EXPECT_EQ(icon.PickImage(32, 4), 1);
    EXPECT_EQ(icon.PickImage(16, 32), 0);
    EXPECT_EQ(cFileIcon().PickImage(32, 8), -1);
}

}  // namespace
}  // namespace glyphmoor
