// The default machine's icon libraries, as the build draws them: every
// default of the Windows 98 catalogue finds a picture at 16, 32 and 48
// pixels; pictures of different things differ and none is the filler of
// unused indices; the program's file carries pointers 1 to 15.
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>

namespace glyphmoor {
namespace {

const std::filesystem::path kSeed = GLYPHMOOR_GENERATED_SEED_DIR;

struct Default {
    const char* item;  // what the picture stands for; items that are one thing share it
    const char* file;  // under drive_c
    int index;
};

// Windows 98 with the desktop-update shell, WinDir C:\WINDOWS, SysDir C:\WINDOWS\SYSTEM;
// then the indices that differ without that shell.
const Default kDefaults[] = {
    {"My Computer", "WINDOWS/explorer.exe", 0},
    {"My Documents", "WINDOWS/SYSTEM/mydocs.dll", 0},
    {"Network Neighborhood", "WINDOWS/SYSTEM/shell32.dll", 17},
    {"The Internet", "WINDOWS/SYSTEM/mshtml.dll", 0},
    {"In Box", "WINDOWS/SYSTEM/cool.dll", 30},
    {"My Briefcase", "WINDOWS/SYSTEM/syncui.dll", 0},
    {"Recycle Bin (empty)", "WINDOWS/SYSTEM/shell32.dll", 31},
    {"Recycle Bin (full)", "WINDOWS/SYSTEM/shell32.dll", 32},
    {"Programs", "WINDOWS/SYSTEM/shell32.dll", 19},
    {"Favorites", "WINDOWS/SYSTEM/shell32.dll", 43},
    {"Documents", "WINDOWS/SYSTEM/shell32.dll", 20},
    {"Settings", "WINDOWS/SYSTEM/shell32.dll", 21},
    {"Find", "WINDOWS/SYSTEM/shell32.dll", 22},
    {"Help", "WINDOWS/SYSTEM/shell32.dll", 23},
    {"Run", "WINDOWS/SYSTEM/shell32.dll", 24},
    {"Log Off", "WINDOWS/SYSTEM/shell32.dll", 44},
    {"Suspend", "WINDOWS/SYSTEM/shell32.dll", 25},
    {"Shut Down", "WINDOWS/SYSTEM/shell32.dll", 27},
    {"Control Panel", "WINDOWS/SYSTEM/shell32.dll", 35},
    {"Printers", "WINDOWS/SYSTEM/shell32.dll", 37},
    {"Closed Folder", "WINDOWS/SYSTEM/shell32.dll", 3},
    {"Open Folder", "WINDOWS/SYSTEM/shell32.dll", 4},
    {"Program Group", "WINDOWS/SYSTEM/shell32.dll", 36},
    {"Control Panel", "WINDOWS/SYSTEM/shell32.dll", 51},
    {"Dial-Up Networking", "WINDOWS/SYSTEM/shell32.dll", 33},
    {"Printers", "WINDOWS/SYSTEM/shell32.dll", 52},
    {"Favorites", "WINDOWS/SYSTEM/shell32.dll", 79},
    {"Url History", "WINDOWS/SYSTEM/shdocvw.dll", 36},
    {"ActiveX Cache", "WINDOWS/SYSTEM/occache.dll", 0},
    {"Subscriptions", "WINDOWS/SYSTEM/webcheck.dll", 0},
    {"Scheduled Tasks", "WINDOWS/SYSTEM/mstask.dll", 0},
    {"Floppy Drive 5¼", "WINDOWS/SYSTEM/shell32.dll", 5},
    {"Floppy Drive 3½", "WINDOWS/SYSTEM/shell32.dll", 6},
    {"Hard Drive", "WINDOWS/SYSTEM/shell32.dll", 8},
    {"Network Drive (connected)", "WINDOWS/SYSTEM/shell32.dll", 9},
    {"Network Drive (offline)", "WINDOWS/SYSTEM/shell32.dll", 10},
    {"CD-ROM Drive", "WINDOWS/SYSTEM/shell32.dll", 11},
    {"Removable Drive", "WINDOWS/SYSTEM/shell32.dll", 7},
    {"RAM Drive", "WINDOWS/SYSTEM/shell32.dll", 12},
    {"Shortcut Overlay", "WINDOWS/SYSTEM/shell32.dll", 29},
    {"Sharing Overlay", "WINDOWS/SYSTEM/shell32.dll", 28},
    {"Desktop", "WINDOWS/SYSTEM/shell32.dll", 34},
    {"Entire Network", "WINDOWS/SYSTEM/shell32.dll", 13},
    {"Workgroup", "WINDOWS/SYSTEM/shell32.dll", 18},
    {"Computer", "WINDOWS/SYSTEM/shell32.dll", 15},
    {"Audio CD", "WINDOWS/SYSTEM/shell32.dll", 40},
    {"Bitmap Image", "Program Files/Accessories/Mspaint.exe", 1},
    {"Configuration Settings", "WINDOWS/SYSTEM/shell32.dll", 63},
    {"Default Icon", "WINDOWS/SYSTEM/shell32.dll", 0},
    {"Default Document", "WINDOWS/SYSTEM/shell32.dll", 1},
    {"GIF and JPEG Image", "WINDOWS/SYSTEM/mshtml.dll", 8},
    {"Internet Document", "WINDOWS/SYSTEM/mshtml.dll", 1},
    {"Media Clip", "WINDOWS/mplayer.exe", 0},
    {"Movie Clip", "WINDOWS/SYSTEM/quartz.dll", 3},
    {"MS-DOS Application", "WINDOWS/SYSTEM/shell32.dll", 2},
    {"MS-DOS Batch File", "WINDOWS/SYSTEM/shell32.dll", 65},
    {"MIDI Sequence", "WINDOWS/SYSTEM/quartz.dll", 8},
    {"Rich Text Format", "Program Files/Accessories/Wordpad.exe", 1},
    {"Text Document", "WINDOWS/SYSTEM/shell32.dll", 64},
    {"Video Clip", "WINDOWS/SYSTEM/quartz.dll", 0},
    {"Wave Sound", "WINDOWS/SYSTEM/quartz.dll", 4},
    {"Write Document", "Program Files/Accessories/Wordpad.exe", 2},
    // The same items where the registry shows no desktop-update shell.
    {"Control Panel", "WINDOWS/SYSTEM/shell32.dll", 46},
    {"Printers", "WINDOWS/SYSTEM/shell32.dll", 47},
    {"Configuration Settings", "WINDOWS/SYSTEM/shell32.dll", 58},
    {"Text Document", "WINDOWS/SYSTEM/shell32.dll", 59},
    {"MS-DOS Batch File", "WINDOWS/SYSTEM/shell32.dll", 60},
};

std::vector<std::uint8_t> Pixels(const std::filesystem::path& file, int index, int size) {
    cFileIcon icon;
    const Status s = LoadIconOfFile(file, index, icon);
    EXPECT_TRUE(s.ok()) << file << "," << index << ": " << (s ? "" : s.reason());
    if (!s) {
        return {};
    }
    const int best = icon.PickImage(size, 32);
    EXPECT_EQ(icon.ImageWidth(best), size) << file << "," << index;
    auto image = icon.DecodeImage(best);
    EXPECT_TRUE(image.ok()) << file << "," << index;
    return image ? image->pixels : std::vector<std::uint8_t>{};
}

TEST(SeedIcons, EveryCatalogueDefaultHasItsOwnPicture) {
    ASSERT_TRUE(std::filesystem::is_directory(kSeed / "drive_c")) << "the build makes " << kSeed;
    const auto filler = Pixels(kSeed / "drive_c/WINDOWS/SYSTEM/shell32.dll", 14, 32);
    std::map<std::vector<std::uint8_t>, std::string> seen;
    for (const Default& d : kDefaults) {
        const auto file = kSeed / "drive_c" / d.file;
        for (int size : {16, 48}) {
            EXPECT_FALSE(Pixels(file, d.index, size).empty()) << d.item;
        }
        const auto pixels = Pixels(file, d.index, 32);
        EXPECT_NE(pixels, filler) << d.item << " shows the picture of unused indices";
        auto [it, fresh] = seen.emplace(pixels, d.item);
        EXPECT_TRUE(fresh || it->second == d.item) << d.item << " looks the same as " << it->second;
        // Something is drawn, and not over the whole square.
        std::size_t opaque = 0;
        for (std::size_t i = 3; i < pixels.size(); i += 4) {
            opaque += pixels[i] >= 128 ? 1 : 0;
        }
        EXPECT_GT(opaque, 20u) << d.item;
        EXPECT_LT(opaque, 32u * 32u) << d.item;
    }
}

TEST(SeedIcons, ProgramFileCarriesPointersOneToFifteen) {
    auto module = ExecutableModule::Open(kSeed / "drive_c/Program Files/Glyphmoor/Glyphmoor.exe");
    ASSERT_TRUE(module.ok()) << module.reason();
    EXPECT_EQ(module->IconGroups().size(), 1u);
    const ResourceTypeEntry* groups = module->Directory().FindType(ResourceId::Number(kRtGroupCursor));
    ASSERT_NE(groups, nullptr);
    ASSERT_EQ(groups->resources.size(), 15u);
    std::set<std::vector<std::byte>> pictures;
    for (std::uint16_t id = 1; id <= 15; ++id) {
        EXPECT_EQ(groups->resources[id - 1u].name, ResourceId::Number(id));
        const ByteReader group(module->Data(groups->resources[id - 1u]));
        const auto imageId = group.U16(6 + 12);
        ASSERT_TRUE(imageId);
        const ResourceData* image =
            module->Directory().Find(ResourceId::Number(kRtCursor), ResourceId::Number(*imageId));
        ASSERT_NE(image, nullptr);
        const auto bytes = module->Data(*image);
        ASSERT_GT(bytes.size(), 4u);
        auto pixels = DecodeIconImage(bytes.subspan(4));  // after the hot spot
        ASSERT_TRUE(pixels.ok()) << pixels.reason();
        EXPECT_EQ(pixels->width, 32);
        pictures.emplace(bytes.begin() + 4, bytes.end());
    }
    EXPECT_EQ(pictures.size(), 15u);
}

}  // namespace
}  // namespace glyphmoor
