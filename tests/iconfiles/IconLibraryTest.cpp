// The icon-library writer: what it writes reads back through the program's
// own reader, icon i at index i, pointers at their ids.
#include "IconFixtures.h"

#include "iconfiles/IconLibraryWriter.h"
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace glyphmoor {
namespace {

std::vector<cFileIcon> ThreeIcons() {
    std::vector<cFileIcon> icons;
    icons.push_back(test::MakeIcon({{16, 4}}));
    icons.push_back(test::MakeIcon({{48, 32}, {32, 32}, {16, 32}}));
    icons.push_back(test::MakeIcon({{32, 1}}));
    return icons;
}

CursorImage Pointer(std::uint16_t hotX, std::uint16_t hotY) {
    CursorImage c;
    c.hotspotX = hotX;
    c.hotspotY = hotY;
    c.width = c.height = 32;
    c.bitCount = 1;
    c.dib = test::SolidDib(32, 1);
    return c;
}

TEST(IconLibrary, EachIconAtItsIndex) {
    const auto icons = ThreeIcons();
    for (bool plus : {false, true}) {
        const auto bytes = BuildResourceOnlyPe(IconLibraryResources(icons, {}), {plus, true});
        EXPECT_EQ(bytes, BuildResourceOnlyPe(IconLibraryResources(icons, {}), {plus, true}));
        auto module = ExecutableModule::FromBytes(bytes);
        ASSERT_TRUE(module.ok()) << module.reason();
        ASSERT_EQ(module->IconGroups().size(), icons.size());
        for (std::size_t i = 0; i < icons.size(); ++i) {
            cFileIcon icon;
            ASSERT_TRUE(LoadIconOfModule(*module, static_cast<int>(i), icon).ok());
            EXPECT_EQ(icon.ToBytes(), icons[i].ToBytes()) << i;
        }
    }
}

TEST(IconLibrary, GroupsShowingTheSameImageShareIt) {
    std::vector<cFileIcon> icons = ThreeIcons();
    icons.push_back(test::MakeIcon({{16, 4}}));  // the same as icons[0]
    const auto resources = IconLibraryResources(icons, {});
    const auto images = std::count_if(resources.begin(), resources.end(), [](const RawResource& r) {
        return r.type == ResourceId::Number(kRtIcon);
    });
    EXPECT_EQ(images, 5);
    auto module = ExecutableModule::FromBytes(BuildResourceOnlyPe(resources, {}));
    ASSERT_TRUE(module.ok()) << module.reason();
    cFileIcon last;
    ASSERT_TRUE(LoadIconOfModule(*module, 3, last).ok());
    EXPECT_EQ(last.ToBytes(), icons[3].ToBytes());
}

TEST(IconLibrary, PointersKeepTheirIdsAndHotSpots) {
    const auto bytes = BuildResourceOnlyPe(
        IconLibraryResources(ThreeIcons(), {{1, {Pointer(0, 0)}}, {15, {Pointer(10, 4)}}}), {false, false});
    auto module = ExecutableModule::FromBytes(bytes);
    ASSERT_TRUE(module.ok()) << module.reason();
    const ResourceDirectory& dir = module->Directory();
    const ResourceData* group = dir.Find(ResourceId::Number(kRtGroupCursor), ResourceId::Number(15));
    ASSERT_NE(group, nullptr);
    const ByteReader g(module->Data(*group));
    EXPECT_EQ(g.U16(2), 2);  // a pointer group
    EXPECT_EQ(g.U16(4), 1);
    EXPECT_EQ(g.U16(8), 64);  // height counts the mask
    const auto imageId = g.U16(6 + 12);
    ASSERT_TRUE(imageId);
    const ResourceData* image = dir.Find(ResourceId::Number(kRtCursor), ResourceId::Number(*imageId));
    ASSERT_NE(image, nullptr);
    const ByteReader c(module->Data(*image));
    EXPECT_EQ(c.U16(0), 10);
    EXPECT_EQ(c.U16(2), 4);
    EXPECT_EQ(c.U32(4), 40u);  // then the bitmap header
    EXPECT_EQ(g.U32(6 + 8), static_cast<std::uint32_t>(module->Data(*image).size()));
}

TEST(IconLibrary, PointerFileIsACursorNotAnIcon) {
    const auto bytes = BuildCursorFile({Pointer(3, 7)});
    const ByteReader r(bytes);
    EXPECT_EQ(r.U16(2), 2);
    EXPECT_EQ(r.U16(6 + 4), 3);
    EXPECT_EQ(r.U16(6 + 6), 7);
    EXPECT_EQ(r.U32(6 + 12), 22u);
    EXPECT_EQ(bytes.size(), 22 + test::SolidDib(32, 1).size());
    cFileIcon icon;
    EXPECT_FALSE(icon.LoadIconFromMemory(bytes));
    EXPECT_EQ(icon.Reason(), kReasonType);
}

}  // namespace
}  // namespace glyphmoor
