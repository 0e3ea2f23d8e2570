// The default machine's icon libraries, as the build draws them: every
// default of its own icon catalogue, with and without the desktop-update
// shell, finds a picture at 16, 32 and 48 pixels; pictures of different
// things differ and none is the filler of unused indices; the program's file
// carries pointers 1 to 15.
#include "foundation/AppEnvironment.h"
#include "foundation/DefaultMachine.h"
#include "foundation/modRegistry.h"
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"
#include "icons/IconCatalogue.h"
#include "icons/ShellIconState.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>

namespace glyphmoor {
namespace {

const std::filesystem::path kSeed = GLYPHMOOR_GENERATED_SEED_DIR;

struct Default {
    std::string item;  // items that are one thing share a picture
    std::filesystem::path file;
    int index;
};

// The defaults of icon groups 1 to 6 on the machine made from the seed, for
// which its pictures are laid out: the desktop-update shell without Internet
// Explorer 4.71; then once more without that shell.
std::vector<Default> CatalogueDefaults(const test::TempDir& home) {
    const auto dir = home.Path() / "machine";
    EXPECT_TRUE(EnsureSeededMachine(dir, SeedDirs()).ok());
    auto machine = OpenMachineFolder(dir);
    EXPECT_TRUE(machine.ok()) << machine.reason();
    std::vector<Default> defaults;
    if (!machine.ok()) {
        return defaults;
    }
    const AppEnvironment app = InitEnvironment((*machine)->Env());
    for (const bool newShell : {true, false}) {
        if (!newShell) {
            const auto cut = kStartMenuOrderPath.rfind('\\');
            DeleteRegKey((*machine)->Registry(), kStartMenuOrderPath.substr(0, cut),
                         kStartMenuOrderPath.substr(cut + 1));
        }
        EXPECT_EQ(DetectShellState((*machine)->Registry(), app).newShell, newShell);
        IconCatalogue catalogue((*machine)->Registry(), app);
        catalogue.DetectShellIcons();
        for (int group = 1; group <= 6; ++group) {
            for (const SystemIconEntry& e : catalogue.Group(group).Entries()) {
                // The Start menu's entry for a folder is that folder; both picture types are one.
                std::string item(e.Key());
                if (item.starts_with("Settings - ")) {
                    item.erase(0, 11);
                }
                if (item == "GIF Image" || item == "JPEG Image") {
                    item = "GIF and JPEG Image";
                }
                defaults.push_back({item, (*machine)->Env().HostPath(e.defaultFile), e.defaultIndex});
            }
        }
    }
    return defaults;
}

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
    const test::TempDir home;
    const std::vector<Default> defaults = CatalogueDefaults(home);
    EXPECT_GT(defaults.size(), 120U);
    for (const Default& d : defaults) {
        for (int size : {16, 48}) {
            EXPECT_FALSE(Pixels(d.file, d.index, size).empty()) << d.item;
        }
        const auto pixels = Pixels(d.file, d.index, 32);
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
