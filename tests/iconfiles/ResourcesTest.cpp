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

void Put16(Bytes& b, std::size_t at, std::uint16_t v) {
    b[at] = static_cast<std::byte>(v & 0xff);
    b[at + 1] = static_cast<std::byte>(v >> 8);
}
void Put32(Bytes& b, std::size_t at, std::uint32_t v) {
    for (std::size_t i = 0; i < 4; ++i) {
        b[at + i] = static_cast<std::byte>((v >> (8 * i)) & 0xff);
    }
}

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

struct BrokenExe {
    const char* name;
    std::function<Bytes()> make;
};

// Test names show the fixture's name, not its bytes.
void PrintTo(const BrokenExe& c, std::ostream* os) {
    *os << c.name;
}

class BrokenExecutable : public ::testing::TestWithParam<BrokenExe> {};

TEST_P(BrokenExecutable, IsRefusedWithAReason) {
    auto dir = ReadResourceDirectory(GetParam().make());
    ASSERT_FALSE(dir.ok());
    EXPECT_FALSE(dir.reason().empty());
    // cResources says no and lists nothing.
    const std::string file = test::TempDir() + "/x.dll";
    test::WriteAll(file, GetParam().make());
    cResources resources;
    EXPECT_FALSE(resources.GetResourceTypes(file));
    EXPECT_EQ(resources.ResourceTypeCount(), 0);
    EXPECT_EQ(IconCountOfFile(file), 0);
}

auto PatchedPe(std::function<void(Bytes&)> patch) {
    return [patch] {
        Bytes b = SamplePe();
        patch(b);
        return b;
    };
}

auto PatchedNe(std::function<void(Bytes&)> patch) {
    return [patch] {
        Bytes b = test::MakeNe(SampleNeResources(), 4);
        patch(b);
        return b;
    };
}

constexpr std::size_t kNe = 0x40;
constexpr std::size_t kNeTable = 0x80;

INSTANTIATE_TEST_SUITE_P(
    Fixtures, BrokenExecutable,
    ::testing::Values(
        BrokenExe{"text_file", [] { return Bytes(100, std::byte{'a'}); }},
        BrokenExe{"dos_program_only", PatchedPe([](Bytes& b) { Put32(b, 0x3c, 0x40); })},
        BrokenExe{"pe_offset_past_end", PatchedPe([](Bytes& b) { Put32(b, 0x3c, 0xffffff00u); })},
        BrokenExe{"unknown_optional_magic", PatchedPe([](Bytes& b) { Put16(b, kOptional, 0x999); })},
        BrokenExe{"no_resource_directory", PatchedPe([](Bytes& b) {
                      Put32(b, kResourceEntry, 0);
                      Put32(b, kResourceEntry + 4, 0);
                  })},
        BrokenExe{"resource_address_outside_sections",
                  PatchedPe([](Bytes& b) { Put32(b, kResourceEntry, 0x9000); })},
        BrokenExe{"section_data_past_end", PatchedPe([](Bytes& b) { Put32(b, kSection + 20, 0x100000); })},
        BrokenExe{"section_table_cut_short", PatchedPe([](Bytes& b) { Put16(b, 0x86, 0x2000); })},
        BrokenExe{"type_count_past_section", PatchedPe([](Bytes& b) { Put16(b, kRsrc + 14, 0xffff); })},
        BrokenExe{"type_points_at_data", PatchedPe([](Bytes& b) { Put32(b, kRsrc + 16 + 4, 0x40); })},
        BrokenExe{"name_directory_loops_to_root", PatchedPe([](Bytes& b) {
                      // The first type's name directory starts right after the root's 4 entries.
                      Put32(b, kRsrc + 16 + 4 * 8 + 16 + 4, 0x80000000u);
                  })},
        BrokenExe{"type_name_outside_section",
                  PatchedPe([](Bytes& b) { Put32(b, kRsrc + 16, 0x80fffff0u); })},
        BrokenExe{"shared_directories_list_90000_resources", SharedDirectoryBomb},
        BrokenExe{"ne_no_resource_table", PatchedNe([](Bytes& b) {
                      Put16(b, kNe + 0x24, 0x40);
                      Put16(b, kNe + 0x26, 0x40);
                  })},
        BrokenExe{"ne_resource_table_past_end", PatchedNe([](Bytes& b) { Put16(b, kNe + 0x24, 0xfff0); })},
        BrokenExe{"ne_alignment_shift_40", PatchedNe([](Bytes& b) { Put16(b, kNeTable, 40); })},
        BrokenExe{"ne_type_count_past_end", PatchedNe([](Bytes& b) { Put16(b, kNeTable + 4, 0xffff); })},
        BrokenExe{"ne_name_offset_past_end",
                  PatchedNe([](Bytes& b) { Put16(b, kNeTable + 2 + 8 + 6, 0x7ff0); })},
        BrokenExe{"ne_table_without_end_marker",
                  PatchedNe([](Bytes& b) { b.resize(kNeTable + 2 + 8 + 24); })}),
    [](const auto& p) { return std::string(p.param.name); });

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
    const std::string file = test::TempDir() + "/lib.dll";
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
    const std::string file = test::TempDir() + "/empty.dll";
    test::WriteAll(file, BuildResourceOnlyPe({}, {}));
    cResources resources;
    EXPECT_FALSE(resources.GetResourceTypes(file));
    EXPECT_EQ(resources.ResourceTypeCount(), 0);
}

TEST(LoadIconFromEXE, GathersTheGroupIntoIconFileLayout) {
    const std::string dir = test::TempDir();
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

struct BrokenGroup {
    const char* name;
    std::function<std::vector<RawResource>()> make;
};

// Test names show the fixture's name, not its bytes.
void PrintTo(const BrokenGroup& c, std::ostream* os) {
    *os << c.name;
}

class BrokenIconGroup : public ::testing::TestWithParam<BrokenGroup> {};

TEST_P(BrokenIconGroup, LoadsAsFalseAndEmpty) {
    auto module = ExecutableModule::FromBytes(BuildResourceOnlyPe(GetParam().make(), {}));
    ASSERT_TRUE(module.ok()) << module.reason();
    cFileIcon icon = test::MakeIcon({{16, 1}});
    EXPECT_FALSE(icon.LoadIconFromEXE(*module, N(7)));
    EXPECT_EQ(icon.ImageCount(), 0);
    EXPECT_FALSE(icon.Reason().empty());
}

auto SampleWith(std::function<void(std::vector<RawResource>&)> change) {
    return [change] {
        auto r = SampleResources();
        change(r);
        return r;
    };
}

INSTANTIATE_TEST_SUITE_P(
    Fixtures, BrokenIconGroup,
    ::testing::Values(
        BrokenGroup{"member_image_missing", SampleWith([](auto& r) { r.erase(r.begin() + 1); })},
        BrokenGroup{"member_image_one_byte_short", SampleWith([](auto& r) { r[1].data.pop_back(); })},
        BrokenGroup{"member_image_one_byte_long",
                    SampleWith([](auto& r) { r[1].data.push_back(std::byte{0}); })},
        BrokenGroup{"group_cut_short", SampleWith([](auto& r) { r[3].data.resize(6 + 14 + 3); })},
        BrokenGroup{"group_of_no_images", SampleWith([](auto& r) {
                        r[3].data = {std::byte{0}, std::byte{0}, std::byte{1},
                                     std::byte{0}, std::byte{0}, std::byte{0}};
                    })},
        BrokenGroup{"no_such_group", SampleWith([](auto& r) { r[3].name = N(8); })}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(IconOfFile, CountsAndIndicesAsExtractIconDoes) {
    const std::string dir = test::TempDir();
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
