#include "foundation/TextEncoding.h"

#include <gtest/gtest.h>

namespace glyphmoor {
namespace {

TEST(TextEncoding, Utf8AndUtf16RoundTrip) {
    const std::string samples[] = {"", "plain", "caf\xC3\xA9", "\xE6\x97\xA5\xE6\x9C\xAC",
                                   "\xF0\x9F\x98\x80 x"};
    for (const auto& s : samples) {
        EXPECT_EQ(Utf16ToUtf8(Utf8ToUtf16(s)), s) << s;
    }
    EXPECT_EQ(Utf8ToUtf16("\xF0\x9F\x98\x80"), std::u16string({0xD83D, 0xDE00}));
}

TEST(TextEncoding, BrokenInputBecomesReplacementCharacters) {
    struct Case {
        std::string input;
        std::u16string expected;
    };
    const Case cases[] = {
        {"\xC3", u"\uFFFD"},                      // truncated sequence at the end
        {"\xE6\x97", u"\uFFFD\uFFFD"},            // truncated three-byte sequence
        {"\xC0\xAF", u"\uFFFD\uFFFD"},            // overlong encoding
        {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},  // encoded surrogate
        {"a\xFF"
         "b",
         u"a\uFFFD"
         "b"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Utf8ToUtf16(c.input), c.expected);
    }
    EXPECT_EQ(Utf16ToUtf8(std::u16string(1, char16_t(0xD800))), "\xEF\xBF\xBD");
}

TEST(TextEncoding, AnsiCodePage) {
    EXPECT_EQ(AnsiToCodePoint(0x41), U'A');
    EXPECT_EQ(AnsiToCodePoint(0x80), U'\u20AC');
    EXPECT_EQ(AnsiToCodePoint(0x81), char32_t(0x81));
    EXPECT_EQ(AnsiToCodePoint(0xE9), char32_t(0xE9));
    for (int b = 0; b < 256; ++b) {
        EXPECT_EQ(CodePointToAnsi(AnsiToCodePoint(static_cast<std::uint8_t>(b))), b);
    }
    EXPECT_EQ(CodePointToAnsi(U'\u65E5'), '?');
}

TEST(TextEncoding, NamesCompareWithoutCase) {
    EXPECT_EQ(CompareNoCase("Software", "SOFTWARE"), 0);
    EXPECT_LT(CompareNoCase("abc", "ABD"), 0);
    EXPECT_LT(CompareNoCase("ab", "ABC"), 0);
    EXPECT_TRUE(EqualsNoCase("caf\xC3\xA9", "CAF\xC3\x89"));
    // Names fold to lower case, so '_' sorts before every letter, as in Wine's hives.
    EXPECT_LT(CompareNoCase("a_", "aZ"), 0);
    EXPECT_LT(CompareNoCase("GB2312", "GB_2312-80"), 0);
    EXPECT_LT(CompareNoCase("GB_2312-80", "GBK"), 0);
    // Lower-casing touches ASCII letters only, so UTF-8 stays valid.
    EXPECT_EQ(LowerAscii("C:\\Th\xC3\x89MES\\Sea.GMTHEME"), "c:\\th\xC3\x89mes\\sea.gmtheme");
    EXPECT_TRUE(EndsWithNoCase("Sea.GmTheme", ".gmtheme"));
    EXPECT_FALSE(EndsWithNoCase(".gmtheme", ".gmtheme"));  // a name, not just the extension
    EXPECT_FALSE(EndsWithNoCase("Sea.zip", ".gmtheme"));
}

}  // namespace
}  // namespace glyphmoor
