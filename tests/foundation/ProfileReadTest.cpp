// What GetPrivateProfileStringA gives, as a conformance table: the same
// battery over a CRLF, an LF and a CR-only file, each read into a buffer
// pre-filled with a sentinel so that a byte written too many shows.
//
// Rows marked "Windows" are results that Wine's tests record for Windows;
// the others follow from the same rules (see ProfileFile.h). The whole
// battery, and a few more lines (nameless entries, "[  ]"), was run against
// Wine 8.0's own GetPrivateProfileStringA on the same three files: every
// result and every byte written agreed, except that where a list is cut Wine
// ends it with one NUL and this code, like Windows, with two.
#include "ProfileFixtures.h"
#include "foundation/modProfile.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace glyphmoor {
namespace {

using namespace std::string_literals;

constexpr char kSentinel = 0x0C;

// Written with "\n"; each run replaces it by the line end under test.
const std::string kTrickyFile =
    "; leading comment\n"
    "[section1]\n"
    "name1=val1\n"
    "name2=\"val2\"\n"
    "name3\n"
    "name4=a\n"
    "\t NaMe5  =   spaced value \t \n"
    "name1=second occurrence\n"
    ";comment=hidden\n"
    "quoted1='single'\n"
    "quoted2=\"mismatch'\n"
    "quoted3=\"\n"
    "quoted4=\"\"\n"
    "empty=\n"
    "long=" +
    std::string(200, 'x') +
    "\n"
    "\n"
    "\n"
    "[section2]\n"
    "  [ Spaced Section ]  trailing text\n"
    "k=v\n"
    "[section1]\n"
    "dup=from the second section1\n"
    "[broken\n";

struct ReadCase {
    const char* what;
    std::optional<std::string> section;
    std::optional<std::string> key;
    std::optional<std::string> fallback;
    std::uint32_t size;
    std::uint32_t result;
    std::string written;  // every byte written, NULs included
};

const std::vector<ReadCase>& ReadCases() {
    static const std::vector<ReadCase> cases = {
        {"section names", std::nullopt, "name1", "default", 260, 42,
         "section1\0section2\0Spaced Section\0section1\0\0"s},
        {"section names cut (Windows)", std::nullopt, "name1", "default", 16, 14, "section1\0secti\0\0"s},
        {"section names, no room for the final NUL (Windows)",
         std::nullopt,
         {},
         {},
         43,
         41,
         "section1\0section2\0Spaced Section\0section1\0\0"s},
        {"key names: no comments, no lines without =", "section1", std::nullopt, "default", 260, 73,
         "name1\0name2\0name4\0NaMe5\0name1\0quoted1\0quoted2\0quoted3\0quoted4\0empty\0long\0\0"s},
        {"key names cut (Windows)", "section1", std::nullopt, "default", 16, 14, "name1\0name2\0na\0\0"s},
        {"key names into a buffer of 3", "section1", std::nullopt, {}, 3, 1, "n\0\0"s},
        {"key names into a buffer of 2 give the default", "section1", std::nullopt, "dflt", 2, 1, "d\0"s},
        {"key names of an empty section give the default", "section2", std::nullopt, "default", 260, 7,
         "default\0"s},
        {"key names of a missing section give the default", "nosuch", std::nullopt, "default", 260, 7,
         "default\0"s},
        {"key names of a spaced section header", "Spaced Section", std::nullopt, "", 260, 2, "k\0\0"s},
        {"value, the first of two (Windows)", "section1", "name1", "default", 260, 4, "val1\0"s},
        {"names without regard to case (Windows)", "SECTION1", "NaMe1", "default", 260, 4, "val1\0"s},
        {"names trimmed for a value", " \tsection1 ", "  name1\t", "default", 260, 4, "val1\0"s},
        {"double quotes stripped (Windows)", "section1", "name2", "default", 260, 4, "val2\0"s},
        {"entry without = reads as missing", "section1", "name3", "default", 260, 7, "default\0"s},
        {"exact size (Windows)", "section1", "name1", "default", 4, 3, "val\0"s},
        {"room for the NUL (Windows)", "section1", "name1", "default", 5, 4, "val1\0"s},
        {"one character (Windows)", "section1", "name4", "default", 260, 1, "a\0"s},
        {"buffer of 1 (Windows)", "section1", "name4", "default", 1, 0, "\0"s},
        {"buffer of 0 (Windows)", "section1", "name4", "default", 0, 0, ""},
        {"blanks around name and value", "section1", "name5", "", 260, 12, "spaced value\0"s},
        {"single quotes stripped", "section1", "quoted1", "", 260, 6, "single\0"s},
        {"unmatched quotes kept", "section1", "quoted2", "", 260, 10, "\"mismatch'\0"s},
        {"a lone quote kept", "section1", "quoted3", "", 260, 1, "\"\0"s},
        {"empty quotes", "section1", "quoted4", "", 260, 0, "\0"s},
        {"quoted, cut before the closing quote", "section1", "quoted1", "", 4, 3, "sin\0"s},
        {"quoted, cut at the closing quote drops one more", "section1", "quoted1", "", 7, 5, "singl\0"s},
        {"quoted, just fits", "section1", "quoted1", "", 8, 6, "single\0"s},
        {"empty value is not the default", "section1", "empty", "default", 260, 0, "\0"s},
        {"missing key (Windows)", "section1", "notakey", "default", 260, 7, "default\0"s},
        {"missing section (Windows)", "notasection", "name1", "default", 260, 7, "default\0"s},
        {"empty section name (Windows)", "", "name1", "default", 260, 7, "default\0"s},
        {"empty key name (Windows)", "section1", "", "default", 260, 7, "default\0"s},
        {"null default (Windows)", "section1", "notakey", std::nullopt, 260, 0, "\0"s},
        {"trailing blanks of the default (Windows)", "section1", "notakey", "one two  ", 260, 7,
         "one two\0"s},
        {"a default of blanks keeps one", "section1", "notakey", "   ", 260, 1, " \0"s},
        {"quoted default", "section1", "notakey", "'q'", 260, 1, "q\0"s},
        {"default cut to the buffer", "section1", "notakey", "default", 4, 3, "def\0"s},
        {"only the first section of a name is searched", "section1", "dup", "none", 260, 4, "none\0"s},
        {"a long value read at 127", "section1", "long", "", 127, 126, std::string(126, 'x') + "\0"s},
        {"a comment is not a key of the leading part", "", "; leading comment", "none", 260, 4, "none\0"s},
    };
    return cases;
}

using ProfileRead = test::LineEnds;

TEST_P(ProfileRead, Battery) {
    test::TempDir dir;
    dir.Write("tricky.ini", test::WithLineEnds(kTrickyFile, GetParam()));
    const auto path = dir.Path() / "tricky.ini";
    for (const auto& c : ReadCases()) {
        std::vector<char> buffer(300, kSentinel);
        const std::uint32_t result =
            ProfileGetString(path, test::Optional(c.section), test::Optional(c.key),
                             test::Optional(c.fallback), std::span<char>(buffer.data(), c.size));
        EXPECT_EQ(result, c.result) << c.what;
        EXPECT_EQ(std::string(buffer.data(), c.written.size()), c.written) << c.what;
        for (std::size_t i = c.written.size(); i < buffer.size(); ++i) {
            ASSERT_EQ(buffer[i], kSentinel) << c.what << ": byte " << i << " written";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(LineEnds, ProfileRead, test::AllLineEnds(), test::LineEndName);

TEST(ProfileRead, MissingFileReadsAsEmpty) {
    test::TempDir dir;
    std::vector<char> buffer(20, kSentinel);
    // Windows: no section names, and only the first byte is written.
    EXPECT_EQ(ProfileGetString(dir.Path() / "not_here.ini", std::nullopt, {}, {},
                               std::span<char>(buffer.data(), 10)),
              0U);
    EXPECT_EQ(buffer[0], '\0');
    EXPECT_EQ(buffer[1], kSentinel);
    EXPECT_EQ(ReadProfileValue(dir.Path() / "not_here.ini", "s", "k", "fallback"), "fallback");
}

TEST(ProfileRead, LinesThatAreNotPlainText) {
    struct Case {
        const char* what;
        std::string file;
        std::string section, key, expected;
    };
    const Case cases[] = {
        {"a NUL ends a value", "[s]\nk=ab\0cd\n"s, "s", "k", "ab"},
        {"a NUL ends a name", "[s]\nk\0junk=v\n"s, "s", "k", "v"},
        {"a byte-order mark is skipped", "\xEF\xBB\xBF[s]\nk=v\n", "s", "k", "v"},
        {"^Z is a blank", "[s]\nk=v\x1A\n", "s", "k", "v"},
        {"mixed line ends", "[s]\r\na=1\nk=v\rz=2", "s", "k", "v"},
        {"the first = splits", "[s]\nk = a=b\n", "s", "k", "a=b"},
        {"a header closes at its last ]", "[a]b]\nk=v\n", "a]b", "k", "v"},
        {"text after ] is ignored", "[s] ; note\nk=v\n", "s", "k", "v"},
        {"the leading part answers to the empty name", "k=v\n[s]\n", "", "k", "v"},
        {"[ without ] is no header", "[s]\n[broken\nk=v\n", "s", "k", "v"},
        {"the leading part hides a [] section", "[]\nk=v\n", "", "k", "(missing)"},
        {"Windows-1252 letters compare without case", "[\xC9t\xE9]\n\x9A=v\n", "\xE9T\xC9", "\x8A", "v"},
    };
    for (const auto& c : cases) {
        const ProfileFile file = ProfileFile::Parse(c.file);
        std::vector<char> buffer(128, kSentinel);
        const auto n =
            ProfileGetString(file, c.section, c.key, "(missing)", std::span<char>(buffer.data(), 127));
        EXPECT_EQ(std::string(buffer.data(), n), c.expected) << c.what;
    }
}

TEST(ProfileRead, TextLevelConvertsAtTheBoundary) {
    test::TempDir dir;
    const auto path = dir.Path() / "latin.ini";
    std::ofstream(path, std::ios::binary)
        << "[Caf\xE9]\r\nN\xE4me=\x80 5\r\nb=" << std::string(300, 'b') << "\r\n";
    EXPECT_EQ(ReadProfileValue(path, "caf\xC3\xA9", "n\xC3\xA4me"), "\xE2\x82\xAC 5");
    std::uint32_t count = 0;
    EXPECT_EQ(ReadProfileValue(path, "Caf\xC3\xA9", "b", "", kProfileValueSize, &count),
              std::string(126, 'b'));
    EXPECT_EQ(count, 126U);
    EXPECT_EQ(ReadProfileKeys(path, "CAF\xC3\x89"), (std::vector<std::string>{"N\xC3\xA4me", "b"}));
}

TEST(ProfileRead, LongKeyListIsCutAt299) {
    test::TempDir dir;
    const auto path = dir.Path() / "many.ini";
    std::string text = "[many]\r\n";
    std::vector<std::string> all;
    for (int i = 0; i < 60; ++i) {
        all.push_back("key" + std::to_string(i));
        text += all.back() + "=" + std::to_string(i) + "\r\n";
    }
    std::ofstream(path, std::ios::binary) << text;
    const auto keys = ReadProfileKeys(path, "many");
    // 297 characters: whole names while they fit, then the cut last one.
    std::string joined;
    for (const auto& k : keys) {
        joined += k + '\0';
    }
    ASSERT_EQ(joined.size(), 298U);
    ASSERT_GT(keys.size(), 2U);
    for (std::size_t i = 0; i + 1 < keys.size(); ++i) {
        EXPECT_EQ(keys[i], all[i]);
    }
    EXPECT_TRUE(all[keys.size() - 1].starts_with(keys.back()));
    EXPECT_NE(all[keys.size() - 1], keys.back());
}

}  // namespace
}  // namespace glyphmoor
