#include "foundation/FileIo.h"
#include "foundation/TextEncoding.h"
#include "foundation/WineRegistryEscapes.h"
#include "foundation/WineRegistryText.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <random>

namespace glyphmoor::test {
namespace {

Hive Parse(std::string text) {
    auto hive = ParseWineRegistry(std::make_shared<const std::string>(std::move(text)), "test.reg");
    EXPECT_TRUE(hive.ok()) << (hive.ok() ? "" : hive.reason());
    return hive.ok() ? std::move(*hive) : Hive{};
}

// Makes every key and value write itself anew, as Wine does when it saves.
void MarkAllChanged(HiveKey& key) {
    key.changed = true;
    for (auto& value : key.Values()) {
        value.raw = {};
    }
    for (auto& sub : key.subkeys) {
        MarkAllChanged(*sub);
    }
}

RegValue Utf16Value(std::uint32_t type, std::u16string_view text) {
    RegValue value{type, {}};
    for (char16_t u : text) {
        value.data.push_back(static_cast<std::uint8_t>(u & 0xFF));
        value.data.push_back(static_cast<std::uint8_t>(u >> 8));
    }
    return value;
}

TEST(WineRegistryText, AFileWineWroteComesBackByteForByte) {
    const auto text = ReadWholeFile(TestData("registry/wine-sample.reg"));
    ASSERT_TRUE(text.ok()) << text.reason();
    Hive hive = Parse(*text);
    EXPECT_EQ(SerializeWineRegistry(hive), *text);
    // Written anew from what was understood, every key and value is what Wine wrote.
    MarkAllChanged(*hive.root);
    EXPECT_EQ(SerializeWineRegistry(hive), *text);
}

TEST(WineRegistryText, EveryValueFormIsUnderstood) {
    const auto text = ReadWholeFile(TestData("registry/wine-sample.reg"));
    ASSERT_TRUE(text.ok());
    Hive hive = Parse(*text);
    const HiveKey* key = hive.Find("Software\\GlyphmoorSample");
    ASSERT_NE(key, nullptr);
    struct Case {
        std::string name;
        RegValue expected;
    };
    const Case cases[] = {
        {"", Utf16Value(kRegSz, std::u16string(u"default text\0", 13))},
        {"dword", RegValue{kRegDword, {0x0a, 0, 0, 0}}},
        {"bigendian", RegValue{kRegDwordBigEndian, {0, 0, 0, 1}}},
        {"qword", RegValue{kRegQword, {1, 0, 0, 0, 0, 0, 0, 0}}},
        {"none", RegValue{kRegNone, {1, 2}}},
        {"emptybinary", RegValue{kRegBinary, {}}},
        {"expand", Utf16Value(kRegExpandSz, std::u16string(u"%\0S\0y\0s\0t\0e\0m\0R\0o\0o\0t\0%\0\0\0", 26))},
        {"multi", Utf16Value(kRegMultiSz, std::u16string(u"o\0n\0e\0\0\0t\0w\0o\0\0\0\0\0", 18))},
        {"kanji", Utf16Value(kRegSz, std::u16string(u"\u00e5e,g\0", 6))},
        {"emoji", Utf16Value(kRegSz, std::u16string(u"=\xd8\0\xde\0\0", 6))},
        {"quote \"and\" backslash",
         Utf16Value(kRegSz, std::u16string(u"C:\\WINDOWS\\SYSTEM\\shell32.dll,3\0", 32))},
    };
    for (const auto& c : cases) {
        const HiveValue* value = key->FindValue(c.name);
        ASSERT_NE(value, nullptr) << c.name;
        EXPECT_EQ(value->value, c.expected) << c.name;
    }
    std::vector<std::uint8_t> counting(0x31);
    for (std::size_t i = 0; i < counting.size(); ++i) {
        counting[i] = static_cast<std::uint8_t>(i);
    }
    EXPECT_EQ(key->FindValue("binary")->value, (RegValue{kRegBinary, counting}));
    EXPECT_NE(hive.Find("Software\\GlyphmoorSample\\[brackets] and \\\"quotes\\\""), nullptr);
}

TEST(WineRegistryText, StringsAreEscapedAsWineEscapesThem) {
    struct Case {
        std::u16string text;
        std::string escaped;
    };
    const Case cases[] = {
        {u"plain", "plain"},
        {u"say \"hi\" \\ bye", "say \\\"hi\\\" \\\\ bye"},
        {u"caf\u00e9", "caf\\xe9"},
        {u"\u00e9abc", "\\x00e9abc"},  // a hex digit follows: four digits
        {u"\u00e9xyz", "\\xe9xyz"},
        {u"\u65e5\u672c", "\\x65e5\\x672c"},
        {u"\U0001F600", "\\xd83d\\xde00"},  // surrogates stay two units
        {std::u16string(u"a\0b", 3), "a\\0b"},
        {std::u16string(u"\0"
                        u"1",
                        2),
         "\\0001"},  // an octal digit follows: three digits
        {u"\t\n\r\b\v\f\x1b\a", "\\t\\n\\r\\b\\v\\f\\e\\a"},
        {u"\x01\x1f", "\\1\\37"},
        {u"\x7f", "\x7f"},  // DEL stays as it is
    };
    for (const auto& c : cases) {
        EXPECT_EQ(EscapeRegistryString(c.text, "\"\""), c.escaped);
        std::size_t consumed = 0;
        auto back = UnescapeRegistryString(c.escaped + "\"", '"', consumed);
        ASSERT_TRUE(back.ok()) << c.escaped;
        EXPECT_EQ(*back, c.text) << c.escaped;
        EXPECT_EQ(consumed, c.escaped.size() + 1);
    }
    EXPECT_EQ(EscapeRegistryString(u"[x] \"y\"", "[]"), "\\[x\\] \"y\"");
}

// The reader's shortcuts for plain text and simple escapes must read exactly
// what decoding unit by unit reads, whatever the text holds.
TEST(WineRegistryText, ShortcutsReadWhatFullDecodingReads) {
    static constexpr std::string_view kPieces[] = {
        "a", "Z", "\\",       "\"",           "]",    "x",    "0", "7", "9",
        "n", "e", "\xc3\xa9", "\xe6\x97\xa5", "\xff", "\x80", " "};
    std::mt19937 random(20261124);
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        const auto length = random() % 12;
        for (std::uint32_t i = 0; i < length; ++i) {
            text += kPieces[random() % std::size(kPieces)];
        }
        for (const char delimiter : {'"', ']'}) {
            std::size_t expectedConsumed = 0;
            const auto units = UnescapeRegistryString(text, delimiter, expectedConsumed);
            std::size_t consumed = 0;
            const auto utf8 = ReadEscapedUtf8(text, delimiter, consumed);
            ASSERT_EQ(utf8.ok(), units.ok()) << text;
            EXPECT_EQ(EndsWithinText(text, delimiter), units.ok()) << text;
            if (units.ok()) {
                EXPECT_EQ(*utf8, Utf16ToUtf8(*units)) << text;
                EXPECT_EQ(consumed, expectedConsumed) << text;
            }
        }
    }
}

TEST(WineRegistryText, ValuesAreWrittenAsWineWritesThem) {
    std::vector<std::uint8_t> sixty(60, 0xab);
    struct Case {
        std::string name;
        RegValue value;
        std::string line;
    };
    const Case cases[] = {
        {"", Utf16Value(kRegSz, std::u16string(u"x\0", 2)), "@=\"x\"\n"},
        {"n", RegValue{kRegDword, {0x78, 0x56, 0x34, 0x12}}, "\"n\"=dword:12345678\n"},
        {"n", RegValue{kRegDword, {1, 2}}, "\"n\"=hex(4):01,02\n"},  // a dword of odd size
        {"e", Utf16Value(kRegExpandSz, std::u16string(u"%a%\0", 4)), "\"e\"=str(2):\"%a%\"\n"},
        {"m", Utf16Value(kRegMultiSz, std::u16string(u"a\0b\0\0", 5)), "\"m\"=str(7):\"a\\0b\\0\"\n"},
        {"u", Utf16Value(kRegSz, u"ab"), "\"u\"=hex(1):61,00,62,00\n"},  // not terminated
        {"o", RegValue{kRegSz, {0x61}}, "\"o\"=hex(1):61\n"},
        {"b", RegValue{kRegBinary, {}}, "\"b\"=hex:\n"},
        {"q", RegValue{kRegQword, {1, 0, 0, 0, 0, 0, 0, 0}}, "\"q\"=hex(b):01,00,00,00,00,00,00,00\n"},
        {"long", RegValue{kRegBinary, sixty},
         "\"long\"=hex:ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,\\\n"
         "  ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,\\\n"
         "  ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab,ab\n"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FormatRegistryValue(c.name, c.value), c.line);
        // And read back to the same value.
        const std::string file = "WINE REGISTRY Version 2\n\n[k] 0\n" + c.line;
        Hive hive = Parse(file);
        const HiveKey* key = hive.Find("k");
        ASSERT_NE(key, nullptr);
        ASSERT_NE(key->FindValue(c.name), nullptr) << c.line;
        EXPECT_EQ(key->FindValue(c.name)->value, c.value) << c.line;
    }
}

TEST(WineRegistryText, MalformedFilesAreRefusedWithFileAndLine) {
    struct Case {
        std::string fixture;
        std::string text;
        std::string reason;
    };
    const std::string header = "WINE REGISTRY Version 2\n\n";
    const Case cases[] = {
        {"empty", "", "test.reg: empty file"},
        {"wrong-header", "REGEDIT4\n\n[k]\n", "test.reg:1: not a Wine registry file"},
        {"old-version", "WINE REGISTRY Version 1\n", "test.reg:1:"},
        {"bad-dword", header + "[k] 0\n\"v\"=dword:xyz\n", "test.reg:4: value \"v\": bad dword value"},
        {"long-dword", header + "[k] 0\n\"v\"=dword:123456789\n", "test.reg:4:"},
        {"unterminated-string", header + "[k] 0\n\"v\"=\"abc\n",
         "test.reg:4: value \"v\": missing closing \""},
        {"unterminated-name", header + "[k] 0\n\"v=\"abc\"\n", "test.reg:4:"},
        {"bad-hex", header + "[k] 0\n\"v\"=hex:0g\n", "test.reg:4: value \"v\": bad hex data"},
        {"bad-hex-type", header + "[k] 0\n\"v\"=hex(zz):00\n", "test.reg:4:"},
        {"unknown-form", header + "[k] 0\n\"v\"=word:1\n", "test.reg:4: value \"v\": unknown value form"},
        {"no-equals", header + "[k] 0\n\"v\" \"x\"\n", "test.reg:4: expected '='"},
        {"value-before-key", header + "\"v\"=\"x\"\n", "test.reg:3: a value outside of any key"},
        {"unterminated-key", header + "[k 0\n", "test.reg:3: key name: missing closing ]"},
        {"bad-continuation", header + "[k] 0\n\"v\"=hex:00,\\\n  zz\n", "test.reg:5:"},
        {"continued-into-nothing", header + "[k] 0\n\"v\"=hex:00,\\\n\n[j] 0\n",
         "test.reg:5: a continued value"},
        {"continued-past-the-end", header + "[k] 0\n\"v\"=hex:00,\\\n", "test.reg:4: the file ends inside"},
        {"bad-after-plain-values", header + "[k] 0\n\"a\"=\"1\"\n\"b\"=hex:01,\\\n  02\n\"c\"=dword:xyz\n",
         "test.reg:7: value \"c\": bad dword value"},
    };
    for (const auto& c : cases) {
        auto hive = ParseWineRegistry(std::make_shared<const std::string>(c.text), "test.reg");
        ASSERT_FALSE(hive.ok()) << c.fixture;
        EXPECT_EQ(hive.reason().rfind(c.reason, 0), 0U) << c.fixture << ": " << hive.reason();
    }
}

TEST(WineRegistryText, ChangesRewriteOnlyTheKeysTheyTouch) {
    const std::string original =
        "WINE REGISTRY Version 2\n"
        ";; All keys relative to \\\\Machine\n"
        "\n"
        "#arch=win32\n"
        "\n"
        "[A] 1700000000\n"
        "#time=1da1747c66d0000\n"
        "\"x\"=\"1\"\n"
        "; a comment about C\n"
        "\n"
        "[C] 1700000000\n"
        "#time=1da1747c66d0000\n"
        "#class=\"kept\"\n"
        "\"z\"=dword:00000003\n"
        "\"y\"=\"2\"\n"
        "something Wine would not write\n"
        "\n"
        "[E] 1700000000\n"
        "\"w\"=\"4\"\n";
    Hive hive = Parse(original);
    EXPECT_EQ(SerializeWineRegistry(hive), original);

    const std::uint64_t when = 0x1da1747c66d0000ULL + 10000000ULL;  // one second later
    HiveKey& c = *hive.Find("C");
    c.SetValue("y", RegValue{kRegDword, {5, 0, 0, 0}});
    c.changed = true;
    c.modified = when;
    hive.Create("B\\Sub", when).SetValue("v", RegValue{kRegBinary, {1}});
    hive.root->DeleteSubkey("E");

    EXPECT_EQ(SerializeWineRegistry(hive),
              "WINE REGISTRY Version 2\n"
              ";; All keys relative to \\\\Machine\n"
              "\n"
              "#arch=win32\n"
              "\n"
              "[A] 1700000000\n"
              "#time=1da1747c66d0000\n"
              "\"x\"=\"1\"\n"
              "\n"
              "[B\\\\Sub] 1700000001\n"
              "#time=1da1747c7059680\n"
              "\"v\"=hex:01\n"
              "; a comment about C\n"
              "\n"
              "[C] 1700000001\n"
              "#time=1da1747c7059680\n"
              "#class=\"kept\"\n"
              "\"y\"=dword:00000005\n"
              "\"z\"=dword:00000003\n"
              "something Wine would not write\n");
}

// Values are read when first asked for; what is read then, and what is
// written back, is what reading them at once gives.
TEST(WineRegistryText, ValuesReadLaterAreTheValuesOfTheFile) {
    const std::string header = "WINE REGISTRY Version 2\n\n";
    const struct {
        const char* what;
        std::string body;
        std::vector<std::pair<std::string, RegValue>> values;
        bool changed;  // the key is written anew
    } cases[] = {
        {"plain values in order",
         "[k] 0\n#time=1\n@=\"d\"\n\"a\"=dword:00000002\n\"b\"=hex:01,\\\n  02\n\"c\"=hex(2):41,00\n",
         {{"", RegValue{kRegSz, {'d', 0, 0, 0}}},
          {"a", RegValue{kRegDword, {2, 0, 0, 0}}},
          {"b", RegValue{kRegBinary, {1, 2}}},
          {"c", RegValue{2, {0x41, 0}}}},
         false},
        {"out of order",
         "[k] 0\n\"b\"=\"2\"\n\"a\"=\"1\"\n",
         {{"a", RegValue{kRegSz, {'1', 0, 0, 0}}}, {"b", RegValue{kRegSz, {'2', 0, 0, 0}}}},
         false},
        {"a name twice",
         "[k] 0\n\"a\"=\"1\"\n\"a\"=\"2\"\n",
         {{"a", RegValue{kRegSz, {'2', 0, 0, 0}}}},
         true},
        {"escaped and plain",
         "[k] 0\n\"a\"=\"1\"\n\"b\\\\c\"=\"x\\ty\"\n\"d\"=\"4\"\n",
         {{"a", RegValue{kRegSz, {'1', 0, 0, 0}}},
          {"b\\c", RegValue{kRegSz, {'x', 0, '\t', 0, 'y', 0, 0, 0}}},
          {"d", RegValue{kRegSz, {'4', 0, 0, 0}}}},
         false},
        {"two sections",
         "[k] 0\n\"b\"=\"2\"\n\n[k] 0\n\"a\"=\"1\"\n",
         {{"a", RegValue{kRegSz, {'1', 0, 0, 0}}}, {"b", RegValue{kRegSz, {'2', 0, 0, 0}}}},
         true},
        {"a comment between values",
         "[k] 0\n\"a\"=\"1\"\n; note\n\"b\"=\"2\"\n",
         {{"a", RegValue{kRegSz, {'1', 0, 0, 0}}}, {"b", RegValue{kRegSz, {'2', 0, 0, 0}}}},
         false},
    };
    for (const auto& c : cases) {
        const std::string text = header + c.body;
        Hive hive = Parse(text);
        const HiveKey* key = hive.Find("k");
        ASSERT_NE(key, nullptr) << c.what;
        EXPECT_EQ(key->changed, c.changed) << c.what;
        std::vector<std::pair<std::string, RegValue>> read;
        for (const auto& value : key->Values()) {
            read.emplace_back(value.name, value.value);
        }
        EXPECT_EQ(read, c.values) << c.what;
        EXPECT_TRUE(key->unreadValues.empty()) << c.what;
        if (!c.changed) {
            EXPECT_EQ(SerializeWineRegistry(hive), text) << c.what;
        }
    }
}

TEST(WineRegistryText, NamesOrderAsWineOrdersThem) {
    Hive hive = Parse("WINE REGISTRY Version 2\n");
    bool created = false;
    for (const char* name : {"GBK", "gb2312", "GB_2312-80", "_autodetect", "ab", "A"}) {
        hive.root->AddSubkey(name, created);
    }
    std::vector<std::string> order;
    for (const auto& sub : hive.root->subkeys) {
        order.push_back(sub->name);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"_autodetect", "A", "ab", "gb2312", "GB_2312-80", "GBK"}));
    EXPECT_NE(hive.Find("gbk"), nullptr);
    EXPECT_EQ(hive.Find("gbk\\missing"), nullptr);
}

}  // namespace
}  // namespace glyphmoor::test
