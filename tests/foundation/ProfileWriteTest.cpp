// WritePrivateProfileStringA, checked byte for byte against the whole file
// after every step; saves are transactional.
#include "ProfileFixtures.h"
#include "foundation/HostFiles.h"
#include "foundation/TextEncoding.h"
#include "foundation/modProfile.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace glyphmoor {
namespace {

using namespace std::string_literals;

std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

struct Step {
    const char* what;
    std::optional<std::string> section, key, value;
    std::string after;  // the whole file afterwards, written with "\n"
};

const char* const kStart =
    "; top comment\n"
    "\n"
    "[App1]\n"
    "  key1 = old  \n"
    "; note\n"
    "\n"
    "[App2]\n"
    "key2=two";  // the last line has no line end

const std::vector<Step>& Steps() {
    static const std::vector<Step> steps = {
        {"replace in place", "App1", "key1", "new",
         "; top comment\n\n[App1]\nkey1=new\n; note\n\n[App2]\nkey2=two"},
        {"the same value changes nothing", "app1", "KEY1", "new",
         "; top comment\n\n[App1]\nkey1=new\n; note\n\n[App2]\nkey2=two"},
        {"a new key goes after the section's last line, before its blank lines", "app1", "Key3", "three",
         "; top comment\n\n[App1]\nkey1=new\n; note\nKey3=three\n\n[App2]\nkey2=two"},
        {"appending after a last line without line end gives it one", "App2", "key4", "four",
         "; top comment\n\n[App1]\nkey1=new\n; note\nKey3=three\n\n[App2]\nkey2=two\nkey4=four\n"},
        {"a missing section goes at the end", " App3", "key5", "  five ",
         "; top comment\n\n[App1]\nkey1=new\n; note\nKey3=three\n\n[App2]\nkey2=two\nkey4=four\n"
         "[App3]\nkey5=five \n"},
        {"a null value removes the key", "App1", "key3", std::nullopt,
         "; top comment\n\n[App1]\nkey1=new\n; note\n\n[App2]\nkey2=two\nkey4=four\n[App3]\nkey5=five \n"},
        {"removing a missing key changes nothing", "App1", "key3", std::nullopt,
         "; top comment\n\n[App1]\nkey1=new\n; note\n\n[App2]\nkey2=two\nkey4=four\n[App3]\nkey5=five \n"},
        {"a null key removes the section", "APP2", std::nullopt, "ignored",
         "; top comment\n\n[App1]\nkey1=new\n; note\n\n[App3]\nkey5=five \n"},
        {"a key's trailing blanks are kept when it is added", "App3", "key6  ", "six",
         "; top comment\n\n[App1]\nkey1=new\n; note\n\n[App3]\nkey5=five \nkey6  =six\n"},
        {"... and it is found by its trimmed name", "App3", " key6", "6",
         "; top comment\n\n[App1]\nkey1=new\n; note\n\n[App3]\nkey5=five \nkey6=6\n"},
        {"an entry without = gets its value", "App1", "; note", "x",
         "; top comment\n\n[App1]\nkey1=new\n; note=x\n\n[App3]\nkey5=five \nkey6=6\n"},
    };
    return steps;
}

using ProfileWrite = test::LineEnds;

TEST_P(ProfileWrite, EachStepChangesOnlyItsLines) {
    test::TempDir dir;
    const auto path = dir.Path() / "app.ini";
    dir.Write("app.ini", test::WithLineEnds(kStart, GetParam()));
    for (const auto& step : Steps()) {
        const Status status = ProfileSetString(path, test::Optional(step.section), test::Optional(step.key),
                                               test::Optional(step.value));
        ASSERT_TRUE(status.ok()) << step.what << ": " << status.reason();
        ASSERT_EQ(dir.Read("app.ini"), test::WithLineEnds(step.after, GetParam())) << step.what;
    }
}

INSTANTIATE_TEST_SUITE_P(LineEnds, ProfileWrite, test::AllLineEnds(), test::LineEndName);

// The sequence of Wine's test_WritePrivateProfileString, whose files are
// what Windows writes.
TEST(ProfileWrite, BuildingAFileFromNothing) {
    test::TempDir dir;
    const auto path = dir.Path() / "built.ini";

    EXPECT_FALSE(ProfileSetString(path, std::nullopt, "key", "string").ok());
    EXPECT_FALSE(std::filesystem::exists(path)) << "a null section creates nothing";

    ASSERT_TRUE(ProfileSetString(path, "App", std::nullopt, "string").ok());
    EXPECT_EQ(ReadAll(path), "") << "removing from a missing file leaves an empty one";
    std::filesystem::remove(path);
    ASSERT_TRUE(ProfileSetString(path, "App", "key", std::nullopt).ok());
    EXPECT_EQ(ReadAll(path), "");
    std::filesystem::remove(path);

    ASSERT_TRUE(ProfileSetString(path, "App", "key", "").ok());
    EXPECT_EQ(ReadAll(path), "[App]\r\nkey=\r\n");
    std::filesystem::remove(path);

    for (const auto& [section, key, value] :
         std::vector<std::array<const char*, 3>>{{"App1", "key1", "string1"},
                                                 {"App1", "key2", "string2"},
                                                 {"App1", "key3", "string3"},
                                                 {"App2", "key4", "string4"},
                                                 {"App3", "key5", "string5"}}) {
        ASSERT_TRUE(ProfileSetString(path, section, key, value).ok());
    }
    EXPECT_EQ(ReadAll(path),
              "[App1]\r\nkey1=string1\r\nkey2=string2\r\nkey3=string3\r\n"
              "[App2]\r\nkey4=string4\r\n[App3]\r\nkey5=string5\r\n");
    ASSERT_TRUE(ProfileSetString(path, "App1", "key2", std::nullopt).ok());
    ASSERT_TRUE(ProfileSetString(path, "App1", std::nullopt, "string1").ok());
    ASSERT_TRUE(ProfileSetString(path, "App2", std::nullopt, std::nullopt).ok());
    EXPECT_EQ(ReadAll(path), "[App3]\r\nkey5=string5\r\n");
    ASSERT_TRUE(ProfileSetString(path, "App3", "key5", std::nullopt).ok());
    EXPECT_EQ(ReadAll(path), "[App3]\r\n");
}

TEST(ProfileWrite, BytesBeforeTheFirstSectionAreKept) {
    test::TempDir dir;
    const auto path = dir.Path() / "nuls.ini";  // not "nul": Windows keeps that name for its null device
    const std::string data = "Data \0 before \0 first \0 section"s;
    dir.Write(path, data);
    const Status written = ProfileSetString(path, "section1", "key1", "string1");
    ASSERT_TRUE(written.ok()) << written.reason();
    // Windows keeps the NULs; the file grows by exactly the new lines.
    EXPECT_EQ(ReadAll(path), data + "\r\n[section1]\r\nkey1=string1\r\n");
}

TEST(ProfileWrite, ReadOnlyFileIsRefusedAndKept) {
    test::TempDir dir;
    const auto path = dir.Path() / "Msdos.sys";
    dir.Write(path, "[Options]\r\nBootGUI=1\r\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_read |
                                           std::filesystem::perms::group_read |
                                           std::filesystem::perms::others_read);
    const Status status = ProfileSetString(path, "Options", "BootGUI", "0");
    EXPECT_FALSE(status.ok());
    EXPECT_EQ(ReadAll(path), "[Options]\r\nBootGUI=1\r\n");
}

TEST(ProfileWrite, DosAttributesSurviveTheSave) {
    test::TempDir dir;
    const auto path = dir.Path() / "desktop.ini";
    dir.Write(path, "[.ShellClassInfo]\r\n");
    if (!WriteHostAttributes(path, kAttrHidden | kAttrSystem).ok()) {
        GTEST_SKIP() << "the temporary folder takes no extended attributes";
    }
    ASSERT_TRUE(ProfileSetString(path, ".ShellClassInfo", "IconIndex", "3").ok());
    EXPECT_EQ(ReadAll(path), "[.ShellClassInfo]\r\nIconIndex=3\r\n");
    const auto attributes = ReadHostAttributes(path);
    ASSERT_TRUE(attributes.has_value());
    EXPECT_EQ(*attributes & (kAttrHidden | kAttrSystem), kAttrHidden | kAttrSystem);
}

TEST(ProfileWrite, AFailedSaveLeavesTheOldFile) {
    test::TempDir dir;
    const auto path = dir.Path() / "theme.gmtheme";
    const std::string old = "[Desktop Icons]\r\nMy Computer=%ThemeDir%pc.ico,0\r\n";
    dir.Write(path, old);
    const std::string replacement(10000, 'x');
    for (const std::size_t failAt : {std::size_t{0}, std::size_t{4096}, std::size_t{9000}}) {
        std::size_t written = 0;
        const Status status =
            SaveFileTransactionally(path, replacement, [&](std::FILE* file, std::string_view chunk) {
                const std::size_t n = std::min(chunk.size(), failAt > written ? failAt - written : 0);
                written += std::fwrite(chunk.data(), 1, n, file);
                return n;
            });
        EXPECT_FALSE(status.ok()) << failAt;
        EXPECT_EQ(ReadAll(path), old) << failAt;
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 1)
            << "no temporary file is left behind";
    }
    ASSERT_TRUE(SaveFileTransactionally(path, replacement).ok());
    EXPECT_EQ(ReadAll(path), replacement);
}

TEST(ProfileWrite, FolderInsteadOfAFileFails) {
    test::TempDir dir;
    EXPECT_FALSE(ProfileSetString(dir.Path(), "s", "k", "v").ok());
    EXPECT_FALSE(ProfileSetString({}, "s", "k", "v").ok());
}

TEST(ProfileWrite, TextLevelWritesTheCodePage) {
    test::TempDir dir;
    const auto path = dir.Path() / "latin.ini";
    ASSERT_TRUE(WriteProfileValue(path, "Caf\xC3\xA9", "\xE2\x82\xAC", "na\xC3\xAFve \xE6\x97\xA5").ok());
    EXPECT_EQ(ReadAll(path), "[Caf\xE9]\r\n\x80=na\xEFve ?\r\n");
    EXPECT_EQ(ReadProfileValue(path, "CAF\xC3\x89", "\xE2\x82\xAC"), "na\xC3\xAFve ?");
}

TEST(ProfileWrite, AUnicodeFileIsReadAndWrittenInItsOwnEncoding) {
    struct Case {
        const char* what;
        std::string mark;
        bool little;
    };
    const Case cases[] = {{"UTF-16LE", "\xFF\xFE", true}, {"UTF-16BE", "\xFE\xFF", false}};
    auto encode = [](const Case& c, std::string_view utf8) {
        std::string bytes = c.mark;
        for (const char16_t unit : Utf8ToUtf16(utf8)) {
            const auto low = static_cast<char>(unit & 0xFF);
            const auto high = static_cast<char>(unit >> 8);
            bytes += c.little ? std::string{low, high} : std::string{high, low};
        }
        return bytes;
    };
    // A line the code page cannot hold must survive a write to another line.
    const std::string before = "[Theme]\r\nName=\xE6\x97\xA5\xE6\x9C\xAC\r\nWallpaper=old.bmp\r\n";
    for (const auto& c : cases) {
        test::TempDir dir;
        const auto path = dir.Path() / "theme.ini";
        dir.Write("theme.ini", encode(c, before));
        EXPECT_EQ(ReadProfileValue(path, "Theme", "Wallpaper"), "old.bmp") << c.what;
        EXPECT_EQ(ReadProfileValue(path, "Theme", "Name"), "??") << c.what;
        ASSERT_TRUE(WriteProfileValue(path, "theme", "Wallpaper", "caf\xC3\xA9.bmp").ok());
        ASSERT_TRUE(WriteProfileValue(path, "Sounds", "Start", "ding.wav").ok());
        EXPECT_EQ(ReadAll(path),
                  encode(c,
                         "[Theme]\r\nName=\xE6\x97\xA5\xE6\x9C\xAC\r\nWallpaper=caf\xC3\xA9.bmp\r\n"
                         "[Sounds]\r\nStart=ding.wav\r\n"))
            << c.what;
        EXPECT_EQ(ReadProfileValue(path, "Theme", "Wallpaper"), "caf\xC3\xA9.bmp") << c.what;
    }
}

TEST(ProfileWrite, TwoWritersAtOnceLoseNoUpdate) {
    test::TempDir dir;
    const auto path = dir.Path() / "shared.ini";
    constexpr int kEach = 40;
    auto writer = [&](const std::string& prefix) {
        for (int i = 0; i < kEach; ++i) {
            EXPECT_TRUE(WriteProfileValue(path, "Keys", prefix + std::to_string(i), "1").ok());
        }
    };
    std::thread first(writer, "a");
    std::thread second(writer, "b");
    first.join();
    second.join();
    EXPECT_EQ(ReadProfileKeys(path, "Keys", 4096).size(), 2U * kEach);
}

}  // namespace
}  // namespace glyphmoor
