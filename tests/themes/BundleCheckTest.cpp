// Hostile bundles are refused whole: every entry is checked before anything is
// written, and a refused bundle leaves the library as it was.
#include "ThemeMachine.h"
#include "ZipBytes.h"
#include "themes/BundleCheck.h"
#include "themes/ThemeBundle.h"

#include <gmock/gmock.h>

#include <fstream>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

constexpr std::string_view kLibrary = "C:\\Program Files\\Glyphmoor\\Themes";
constexpr std::uint32_t kUnixLink = 0120777U << 16U;
constexpr std::uint32_t kUnixFifo = 0010644U << 16U;
constexpr std::uint16_t kUnix = (3U << 8U) | 20U;

ZipEntry Theme() {
    return {.name = "Ocean.gmtheme",
            .data = "[Desktop Icons]\r\nMy Computer=%ThemeDir%Ocean My Computer.ico\r\n"};
}
ZipEntry Icon(std::string name, std::string data = "icon bytes") {
    return {.name = std::move(name), .data = std::move(data)};
}

std::span<const std::byte> Bytes(const std::string& s) {
    return {reinterpret_cast<const std::byte*>(s.data()), s.size()};
}

// A stored entry whose bytes hold the local header of a second entry, so the
// two share bytes.
std::string OverlappingArchive() {
    const std::string inner = ZipArchive({Icon("b.ico")});
    const std::string innerLocal = inner.substr(0, 30 + 5 + 10);
    const auto innerAt = static_cast<std::uint32_t>(30 + 5);
    ZipEntry b = Icon("b.ico");
    b.centralOnly = true;
    b.offset = innerAt;
    return ZipArchive({Icon("a.ico", innerLocal), b, Theme()});
}

struct Hostile {
    std::string label;
    std::string archive;
    std::string why;  // a part of the reason given
};

std::vector<Hostile> HostileBundles() {
    const std::string good = ZipArchive({Icon("a.ico"), Theme()});
    const std::string zeros(20U << 20U, '\0');
    std::vector<Hostile> cases = {
        {"parent folder", ZipArchive({Icon("../evil.ico"), Theme()}), "\"..\""},
        {"parent folder, backslashes", ZipArchive({Icon("..\\..\\evil.ico"), Theme()}), "\"..\""},
        {"parent folder in the middle", ZipArchive({Icon("x/../../evil.ico"), Theme()}), "\"..\""},
        {"absolute path", ZipArchive({Icon("/etc/evil.ico"), Theme()}), "absolute path"},
        {"drive letter", ZipArchive({Icon("C:evil.ico"), Theme()}), "names a drive"},
        {"backslash", ZipArchive({Icon("sub\\evil.ico"), Theme()}), "backslash"},
        {"colon", ZipArchive({Icon("evil.ico:stream"), Theme()}), "colon"},
        {"NUL", ZipArchive({Icon(std::string("evil\0.ico", 9)), Theme()}), "NUL"},
        {"empty name", ZipArchive({Icon(""), Theme()}), "empty name"},
        {"folder entry", ZipArchive({Icon("sub/"), Theme()}), "folder"},
        {"file in a folder", ZipArchive({Icon("sub/a.ico"), Theme()}), "folder"},
        {"DOS folder", ZipArchive({{.name = "sub", .externalAttributes = 0x10}, Theme()}), "folder"},
        {"link",
         ZipArchive(
             {{.name = "a.ico", .data = "/etc/passwd", .madeBy = kUnix, .externalAttributes = kUnixLink},
              Theme()}),
         "link"},
        {"pipe", ZipArchive({{.name = "a.ico", .madeBy = kUnix, .externalAttributes = kUnixFifo}, Theme()}),
         "not a plain file"},
        {"device name", ZipArchive({Icon("CON.ico"), Theme()}), "device"},
        {"trailing dot", ZipArchive({Icon("a.ico."), Theme()}), "ends in a dot"},
        {"old code page name", ZipArchive({Icon("caf\x82.ico"), Theme()}), "ASCII"},
        {"bad UTF-8", ZipArchive({{.name = "caf\xc3.ico", .flags = 1U << 11U}, Theme()}), "UTF-8"},
        {"repeated name", ZipArchive({Icon("a.ico"), Icon("a.ico"), Theme()}), "repeats"},
        {"repeated name in other case", ZipArchive({Icon("a.ico"), Icon("A.ICO"), Theme()}), "repeats"},
        {"encrypted", ZipArchive({{.name = "a.ico", .flags = 1}, Theme()}), "encrypted"},
        {"unknown method", ZipArchive({{.name = "a.ico", .method = 12}, Theme()}), "method 12"},
        {"local name differs", ZipArchive({{.name = "a.ico", .localName = "b.ico"}, Theme()}),
         "local header"},
        {"local size differs", ZipArchive({{.name = "a.ico", .data = "abc", .localSize = 2}, Theme()}),
         "local header"},
        {"stored size lies", ZipArchive({{.name = "a.ico", .data = "abc", .size = 2}, Theme()}),
         "sizes differ"},
        {"CRC fails", ZipArchive({{.name = "a.ico", .data = "abc", .deflate = true, .crc = 1}, Theme()}),
         "CRC"},
        {"inflates to more",
         ZipArchive(
             {{.name = "a.ico", .data = std::string(5000, 'x'), .deflate = true, .size = 100}, Theme()}),
         "more than its declared size"},
        {"inflates to less",
         ZipArchive({{.name = "a.ico", .data = "abc", .deflate = true, .size = 300}, Theme()}), "less than"},
        {"deflate bomb within its declared size",
         ZipArchive({{.name = "a.ico", .data = zeros, .deflate = true, .size = 1000}, Theme()}), "more than"},
        {"a file past 16 MiB", ZipArchive({{.name = "a.ico", .data = zeros, .deflate = true}, Theme()}),
         "16 MiB"},
        {"no theme file", ZipArchive({Icon("a.ico")}), "no theme file"},
        {"cut short", good.substr(0, good.size() - 5), "no end record"},
        {"cut in half", good.substr(0, good.size() / 2), "no end record"},
        {"count that lies", ZipArchive({Icon("a.ico"), Theme()}, {.entryCount = 3}), "runs past"},
        {"count too low", ZipArchive({Icon("a.ico"), Theme()}, {.entryCount = 1}),
         "more than its end record"},
        {"offset that lies", ZipArchive({Icon("a.ico"), Theme()}, {.centralOffset = 7}), "not where it says"},
        {"empty archive", ZipArchive({}), "holds no files"},
        {"not a zip", "just some text that is no archive at all", "no end record"},
    };
    std::vector<ZipEntry> many(101, Icon(""));
    for (std::size_t i = 0; i < many.size(); ++i) {
        many[i].name = "icon" + std::to_string(i) + ".ico";
    }
    cases.push_back({"101 entries", ZipArchive(many), "at most 100"});
    std::vector<ZipEntry> large;
    for (int i = 0; i < 5; ++i) {
        large.push_back({.name = "big" + std::to_string(i) + ".ico",
                         .data = std::string(15U << 20U, '\0'),
                         .deflate = true});
    }
    large.push_back(Theme());
    cases.push_back({"past 64 MiB in all", ZipArchive(large), "64 MiB in all"});
    cases.push_back({"entries sharing bytes", OverlappingArchive(), "shares its bytes"});
    return cases;
}

class BundleCheck : public ThemeMachine {};

TEST_F(BundleCheck, RefusesAHostileBundleWholeAndWritesNothing) {
    // An older theme of the same name, which a refused bundle must leave alone.
    WriteFile(std::string(kLibrary) + "\\Ocean\\Ocean.gmtheme", "[Desktop Icons]\r\n");
    WriteFile(std::string(kLibrary) + "\\Ocean\\a.ico", "old icon");
    const fs::path library = Host(kLibrary);
    const fs::path outside = m_home.Path() / "outside";
    fs::create_directories(outside);
    const auto before = Tree(library);
    const auto machineBefore = Tree(m_home.Path() / "machine" / "drive_c" / "windows");

    for (const Hostile& c : HostileBundles()) {
        SCOPED_TRACE(c.label);
        const fs::path zip = outside / "Ocean.zip";
        std::ofstream(zip, std::ios::binary | std::ios::trunc) << c.archive;
        int asked = 0;
        const auto unpacked = UnpackBundle(*m_machine, zip, [&](std::string_view) {
            ++asked;
            return OverwriteAnswer::Overwrite;
        });
        ASSERT_FALSE(unpacked.ok());
        EXPECT_THAT(unpacked.reason(), HasSubstr(c.why));
        EXPECT_THAT(unpacked.reason(), HasSubstr("nothing was written"));
        EXPECT_EQ(asked, 0);
        EXPECT_EQ(Tree(library), before);
        EXPECT_EQ(Tree(outside), (std::map<std::string, std::string>{{"Ocean.zip", c.archive}}));
    }
    EXPECT_EQ(Tree(m_home.Path() / "machine" / "drive_c" / "windows"), machineBefore);
}

TEST(BundleEntryNames, AcceptsPlainFileNames) {
    for (const std::string_view name : {"Ocean My Computer.ico", "Read Me.txt", "a", "x.y.z", "CONSOLE.ico",
                                        "com10.ico", "Caf\xc3\xa9.ico"}) {
        EXPECT_TRUE(CheckBundleEntryName(name).ok()) << name;
    }
}

TEST(BundleCheckBytes, GivesEntriesInCentralDirectoryOrderWithTheirDataOffsets) {
    const std::string archive = ZipArchive({Icon("b.ico", "bee"), Theme()});
    const auto entries = CheckBundle(Bytes(archive));
    ASSERT_TRUE(entries.ok()) << entries.reason();
    ASSERT_EQ(entries->size(), 2U);
    EXPECT_EQ((*entries)[0].name, "b.ico");
    EXPECT_EQ(archive.substr((*entries)[0].dataOffset, 3), "bee");
    EXPECT_EQ((*entries)[1].name, "Ocean.gmtheme");
}

}  // namespace
}  // namespace glyphmoor::test
