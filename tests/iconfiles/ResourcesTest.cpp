// Resource directories of PE32, PE32+ and NE files; cResources' lists;
// icon groups read from executables; the icon count and icon i of a file.
#include "IconFixtures.h"

#include "iconfiles/IconLibraryWriter.h"
#include "iconfiles/cFileIcon.h"
#include "iconfiles/cResources.h"
#include "iconfiles/modResource.h"

#include <gtest/gtest.h>

namespace glyphmoor {
namespace {

using test::Bytes;

ResourceId N(std::uint16_t n) {
    return ResourceId::Number(n);
}
ResourceId S(const char* s) {
    return ResourceId::Name(s);
}

// Two icons: group 1 with images 1 and 2, group "SMILE" with image 3; plus a
// string table entry and a named type.
std::vector<RawResource> SampleResources() {
    const cFileIcon big = test::MakeIcon({{32, 4}, {16, 4}});
    const cFileIcon small = test::MakeIcon({{16, 8}});
    return {
        {N(kRtIcon), N(1), test::DataOf(big, 0)},
        {N(kRtIcon), N(2), test::DataOf(big, 1)},
        {N(kRtIcon), N(3), test::DataOf(small, 0)},
        {N(kRtGroupIcon), N(7), test::GroupOf(big, 1)},
        {N(kRtGroupIcon), S("Smile"), test::GroupOf(small, 3)},
        {N(6), N(1), Bytes(10, std::byte{'s'})},
        {S("WAVE"), N(5), Bytes(3, std::byte{'w'})},
    };
}

Bytes SamplePe(bool pe32Plus = false) {
    return BuildResourceOnlyPe(SampleResources(), {pe32Plus, true});
}

std::vector<test::NeResource> SampleNeResources() {
    const cFileIcon big = test::MakeIcon({{32, 4}, {16, 4}});
    return {
        {0x8000 | kRtIcon, "", 0x8000 | 1, "", test::DataOf(big, 0)},
        {0x8000 | kRtIcon, "", 0x8000 | 2, "", test::DataOf(big, 1)},
        {0x8000 | kRtGroupIcon, "", 0, "MAIN", test::GroupOf(big, 1)},
        {0x8000 | kRtGroupIcon, "", 0x8000 | 9, "", test::GroupOf(big, 1)},
        {0, "TUNE", 0x8000 | 4, "", Bytes(5, std::byte{1})},
    };
}

std::string Listing(const ResourceDirectory& dir) {
    std::string out;
    for (const auto& t : dir.types) {
        out += t.type.ToString() + ":";
        for (const auto& r : t.resources) {
            out += " " + r.name.ToString();
        }
        out += "\n";
    }
    return out;
}

TEST(ResourceDirectory, Pe32AndPe32PlusListInDirectoryOrder) {
    for (bool plus : {false, true}) {
        auto dir = ReadResourceDirectory(SamplePe(plus));
        ASSERT_TRUE(dir.ok()) << dir.reason();
        EXPECT_EQ(dir->kind, plus ? ExecutableKind::Pe32Plus : ExecutableKind::Pe32);
        EXPECT_EQ(Listing(*dir), "WAVE: 5\n3: 1 2 3\n6: 1\n14: Smile 7\n");
    }
}

TEST(ResourceDirectory, NeListsInTableOrderWithNames) {
    auto dir = ReadResourceDirectory(test::MakeNe(SampleNeResources(), 5));
    ASSERT_TRUE(dir.ok()) << dir.reason();
    EXPECT_EQ(dir->kind, ExecutableKind::Ne);
    EXPECT_EQ(Listing(*dir), "3: 1 2\n14: MAIN 9\nTUNE: 4\n");
}

constexpr auto Put16 = test::PutAt16;
constexpr auto Put32 = test::PutAt32;

// Where the writer puts things in a PE32 file.
constexpr std::size_t kOptional = 0x98;
constexpr std::size_t kResourceEntry = kOptional + 96 + 16;
constexpr std::size_t kSection = kOptional + 224;
constexpr std::size_t kRsrc = 0x200;

// A resource section whose root names one subdirectory from 300 types, which
// names one language directory from 300 names: 90,000 resources from 5 KB.
Bytes SharedDirectoryBomb() {
    Bytes b = BuildResourceOnlyPe({{N(10), N(1), Bytes(8192)}}, {});
    const std::uint32_t names = 16 + 300 * 8, language = names + 16 + 300 * 8, data = language + 24;
    std::fill(b.begin() + kRsrc, b.end(), std::byte{0});
    Put16(b, kRsrc + 14, 300);
    Put16(b, kRsrc + names + 14, 300);
    for (std::uint32_t i = 0; i < 300; ++i) {
        Put32(b, kRsrc + 16 + i * 8, i + 1);
        Put32(b, kRsrc + 16 + i * 8 + 4, 0x80000000u | names);
        Put32(b, kRsrc + names + 16 + i * 8, i + 1);
        Put32(b, kRsrc + names + 16 + i * 8 + 4, 0x80000000u | language);
    }
    Put16(b, kRsrc + language + 14, 1);
    Put32(b, kRsrc + language + 16, 0x409);
    Put32(b, kRsrc + language + 20, data);
    Put32(b, kRsrc + data, 0x1000);
    Put32(b, kRsrc + data + 4, 4);
    return b;
}

constexpr std::size_t kNe = 0x40;
constexpr std::size_t kNeTable = 0x80;

TEST(ResourceDirectory, BrokenExecutablesAreRefusedWithAReason) {
    using test::With16;
    using test::With32;
    const Bytes pe = SamplePe();
    const Bytes ne = test::MakeNe(SampleNeResources(), 4);
    const std::pair<const char*, Bytes> cases[] = {
        {"text file", Bytes(100, std::byte{'a'})},
        {"DOS program only", With32(pe, 0x3c, 0x40)},
        {"PE offset past the end", With32(pe, 0x3c, 0xffffff00u)},
        {"unknown optional header magic", With16(pe, kOptional, 0x999)},
        {"no resource directory", With32(With32(pe, kResourceEntry, 0), kResourceEntry + 4, 0)},
        {"resource address outside the sections", With32(pe, kResourceEntry, 0x9000)},
        {"section data past the end", With32(pe, kSection + 20, 0x100000)},
        {"section table cut short", With16(pe, 0x86, 0x2000)},
        {"type count past the section", With16(pe, kRsrc + 14, 0xffff)},
        {"type points at data", With32(pe, kRsrc + 16 + 4, 0x40)},
        // The first type's name directory starts right after the root's 4 entries.
        {"name directory loops to the root", With32(pe, kRsrc + 16 + 4 * 8 + 16 + 4, 0x80000000u)},
        {"type name outside the section", With32(pe, kRsrc + 16, 0x80fffff0u)},
        {"shared directories list 90,000 resources", SharedDirectoryBomb()},
        {"NE without resource table", With16(With16(ne, kNe + 0x24, 0x40), kNe + 0x26, 0x40)},
        {"NE resource table past the end", With16(ne, kNe + 0x24, 0xfff0)},
        {"NE alignment shift 40", With16(ne, kNeTable, 40)},
        {"NE type count past the end", With16(ne, kNeTable + 4, 0xffff)},
        {"NE name offset past the end", With16(ne, kNeTable + 2 + 8 + 6, 0x7ff0)},
        {"NE table without end marker", test::Cut(ne, kNeTable + 2 + 8 + 24)},
    };
    const std::string file = test::TestFolder() + "/x.dll";
    for (const auto& [name, bytes] : cases) {
        SCOPED_TRACE(name);
        auto dir = ReadResourceDirectory(bytes);
        ASSERT_FALSE(dir.ok());
        EXPECT_FALSE(dir.reason().empty());
        // cResources says no and lists nothing.
        test::WriteAll(file, bytes);
        cResources resources;
        EXPECT_FALSE(resources.GetResourceTypes(file));
        EXPECT_EQ(resources.ResourceTypeCount(), 0);
        EXPECT_EQ(IconCountOfFile(file), 0);
    }
}

// The irregular rows of the table: the gaps, the two VXD ids, the ends.
TEST(ResourceTypeName, FollowsTheTable) {
    const std::vector<std::pair<std::uint16_t, const char*>> rows = {
        {1, "Cursor"},    {13, "Other (13)"},      {14, "Group Icon"}, {19, "VXD"},
        {20, "VXD"},      {22, "Animated Icon"},   {23, "HTML"},       {24, "Other (24)"},
        {0, "Other (0)"}, {65535, "Other (65535)"}};
    for (auto [id, name] : rows) {
        EXPECT_EQ(ResourceTypeNameOfId(id), name) << id;
    }
}

TEST(cResources, ListsTypesAndNamesFromOne) {
    const std::string file = test::TestFolder() + "/lib.dll";
    test::WriteAll(file, SamplePe());
    cResources resources;
    ASSERT_TRUE(resources.GetResourceTypes(file)) << resources.Reason();
    EXPECT_TRUE(resources.hModule());
    ASSERT_EQ(resources.ResourceTypeCount(), 4);
    EXPECT_EQ(resources.ResourceTypeName(1), "WAVE");
    EXPECT_EQ(resources.ResourceTypeName(2), "Icon");
    EXPECT_EQ(resources.ResourceTypeName(4), "Group Icon");
    EXPECT_EQ(resources.IndexOfResourceType(N(14)), 4);
    EXPECT_EQ(resources.IndexOfResourceType(S("wave")), 1);
    EXPECT_EQ(resources.IndexOfResourceType(N(2)), 0);
    ASSERT_TRUE(resources.GetResourceNames(N(kRtGroupIcon)));
    ASSERT_EQ(resources.ResourceNameCount(), 2);
    EXPECT_EQ(resources.ResourceName(1), S("Smile"));  // a named group stays text
    EXPECT_EQ(resources.ResourceName(2), N(7));        // a numbered one a number
    EXPECT_FALSE(resources.GetResourceNames(N(2)));
    EXPECT_EQ(resources.ResourceNameCount(), 0);
    resources.UnloadModule();
    EXPECT_FALSE(resources.hModule());
    EXPECT_FALSE(resources.GetResourceNames(N(kRtGroupIcon)));
}

TEST(cResources, FileWithoutResourcesListsNothing) {
    const std::string file = test::TestFolder() + "/empty.dll";
    test::WriteAll(file, BuildResourceOnlyPe({}, {}));
    cResources resources;
    EXPECT_FALSE(resources.GetResourceTypes(file));
    EXPECT_EQ(resources.ResourceTypeCount(), 0);
}

TEST(LoadIconFromEXE, GathersTheGroupIntoIconFileLayout) {
    const std::string dir = test::TestFolder();
    const cFileIcon expected = test::MakeIcon({{32, 4}, {16, 4}});
    for (bool ne : {false, true}) {
        const std::string file = dir + (ne ? "/old.icl" : "/lib.dll");
        test::WriteAll(file, ne ? test::MakeNe(SampleNeResources(), 9) : SamplePe());
        cFileIcon icon;
        ASSERT_TRUE(icon.LoadIconFromEXE(file, ne ? S("main") : N(7))) << icon.Reason();
        EXPECT_EQ(icon.ToBytes(), expected.ToBytes());
        EXPECT_EQ(icon.Entry(0).imageOffset, 6u + 16 * 2);
        EXPECT_EQ(icon.Filename(), file);
        ASSERT_TRUE(icon.SaveIcon(dir + "/saved.ico"));
        cFileIcon again;
        ASSERT_TRUE(again.LoadIcon(dir + "/saved.ico")) << again.Reason();
        EXPECT_EQ(again.ToBytes(), expected.ToBytes());
    }
}

TEST(LoadIconFromEXE, FindsNamesWithoutRegardToCaseAndHashNumbers) {
    auto module = ExecutableModule::FromBytes(SamplePe());
    ASSERT_TRUE(module.ok());
    cFileIcon icon;
    EXPECT_TRUE(icon.LoadIconFromEXE(*module, ResourceId::Parse("SMILE")));
    EXPECT_EQ(icon.ImageCount(), 1);
    EXPECT_TRUE(icon.LoadIconFromEXE(*module, ResourceId::Parse("#7")));
    EXPECT_EQ(icon.ImageCount(), 2);
    EXPECT_FALSE(icon.LoadIconFromEXE(*module, ResourceId::Parse("#8")));
    EXPECT_EQ(icon.ImageCount(), 0);
}

TEST(LoadIconFromEXE, ABrokenGroupLoadsAsFalseAndEmpty) {
    using Change = std::function<void(std::vector<RawResource>&)>;
    const std::pair<const char*, Change> cases[] = {
        {"member image missing", [](auto& r) { r.erase(r.begin() + 1); }},
        {"member image one byte short", [](auto& r) { r[1].data.pop_back(); }},
        {"member image one byte long", [](auto& r) { r[1].data.push_back(std::byte{0}); }},
        {"group cut short", [](auto& r) { r[3].data.resize(6 + 14 + 3); }},
        {"group of no images", [](auto& r) { r[3].data = test::With16(test::Cut(r[3].data, 6), 4, 0); }},
        {"no such group", [](auto& r) { r[3].name = N(8); }},
    };
    for (const auto& [name, change] : cases) {
        SCOPED_TRACE(name);
        auto resources = SampleResources();
        change(resources);
        auto module = ExecutableModule::FromBytes(BuildResourceOnlyPe(resources, {}));
        ASSERT_TRUE(module.ok()) << module.reason();
        cFileIcon icon = test::MakeIcon({{16, 1}});
        EXPECT_FALSE(icon.LoadIconFromEXE(*module, N(7)));
        EXPECT_EQ(icon.ImageCount(), 0);
        EXPECT_FALSE(icon.Reason().empty());
    }
}

TEST(IconOfFile, CountsAndIndicesAsExtractIconDoes) {
    const std::string dir = test::TestFolder();
    test::WriteAll(dir + "/lib.dll", SamplePe(true));
    test::WriteAll(dir + "/one.ico", test::MakeIcon({{32, 4}}).ToBytes());
    test::WriteAll(dir + "/notes.txt", Bytes(40, std::byte{'x'}));
    test::WriteAll(dir + "/count0.ico", test::MakeIconFile({}));
    test::WriteAll(dir + "/plain.dll", BuildResourceOnlyPe({{N(6), N(1), Bytes(4)}}, {}));
    EXPECT_EQ(IconCountOfFile(dir + "/lib.dll"), 2);
    EXPECT_EQ(IconCountOfFile(dir + "/one.ico"), 1);
    EXPECT_EQ(IconCountOfFile(dir + "/notes.txt"), 0);
    EXPECT_EQ(IconCountOfFile(dir + "/plain.dll"), 0);
    EXPECT_EQ(IconCountOfFile(dir + "/absent.dll"), 0);

    struct Row {
        const char* file;
        int index;
        int images;  // -1: fails
    };
    const std::vector<Row> rows = {
        {"/lib.dll", 0, 1},    // named groups come first: "Smile"
        {"/lib.dll", 1, 2},    // then numbered ones: 7
        {"/lib.dll", 2, -1},   // past the last
        {"/lib.dll", -7, 2},   // resource id 7
        {"/lib.dll", -3, -1},  // no group 3
        {"/lib.dll", -1, -1},  // no group 1
        {"/lib.dll", -70000, -1}, {"/one.ico", 0, 1},     {"/one.ico", 1, -1},
        {"/notes.txt", 0, -1},    {"/count0.ico", 0, -1},
    };
    for (const Row& row : rows) {
        cFileIcon icon = test::MakeIcon({{48, 8}});
        const Status status = LoadIconOfFile(dir + row.file, row.index, icon);
        EXPECT_EQ(status.ok(), row.images >= 0) << row.file << " " << row.index;
        EXPECT_EQ(icon.ImageCount(), std::max(row.images, 0)) << row.file << " " << row.index;
        if (!status.ok()) {
            EXPECT_FALSE(status.reason().empty());
        }
        if (std::string(row.file) == "/count0.ico") {
            EXPECT_EQ(status.reason(), kReasonNoImages);  // a broken icon file says why
        }
    }
}

}  // namespace
}  // namespace glyphmoor
