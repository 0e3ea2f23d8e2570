#include "IconFixtures.h"
#include "iconfiles/StringResource.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

// A string-table block: sixteen counted UTF-16 strings, the given ones at
// their places, the others empty.
Bytes Block(const std::vector<std::pair<unsigned, std::u16string>>& strings) {
    Bytes out;
    for (unsigned i = 0; i < 16; ++i) {
        std::u16string text;
        for (const auto& [at, s] : strings) {
            if (at == i) {
                text = s;
            }
        }
        out.push_back(std::byte(text.size() & 0xFF));
        out.push_back(std::byte(text.size() >> 8));
        for (char16_t c : text) {
            out.push_back(std::byte(c & 0xFF));
            out.push_back(std::byte(c >> 8));
        }
    }
    return out;
}

TEST(StringResource, BlocksAreReadWithinTheirBytes) {
    const Bytes block = Block({{0, u"My Computer"}, {4, u"Recycle Bin"}, {15, u"caf\u00e9"}});
    struct Case {
        Bytes bytes;
        unsigned index;
        std::optional<std::string> text;
    };
    Bytes cut = block;
    cut.resize(10);  // the first string claims more than is left
    const Case cases[] = {
        {block, 0, "My Computer"},  {block, 4, "Recycle Bin"},
        {block, 15, "caf\xc3\xa9"}, {block, 1, ""},
        {block, 16, std::nullopt},  {cut, 0, std::nullopt},
        {Bytes{}, 0, std::nullopt}, {Bytes{std::byte{0xFF}, std::byte{0xFF}}, 0, std::nullopt},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(StringOfBlock(c.bytes, c.index), c.text) << c.index << " of " << c.bytes.size() << " bytes";
    }
}

// String n lives in block n / 16 + 1 at n % 16; an empty string is none.
TEST(StringResource, AnIdNamesItsBlockAndPlace) {
    const std::vector<NeResource> resources = {
        {0x8000 | kRtString, "", 0x8000 | 2, "", Block({{5, u"twenty-one"}})},
        {0x8000 | kRtString, "", 0x8000 | 561, "", Block({{4, u"Recycle Bin"}})},
    };
    auto module = ExecutableModule::FromBytes(MakeNe(resources));
    ASSERT_TRUE(module.ok()) << module.reason();
    EXPECT_EQ(LoadStringResource(*module, 21), "twenty-one");
    EXPECT_EQ(LoadStringResource(*module, 8964), "Recycle Bin");
    EXPECT_EQ(LoadStringResource(*module, 20), std::nullopt);
    EXPECT_EQ(LoadStringResource(*module, 37), std::nullopt);
    EXPECT_EQ(LoadStringResource(*module, 0x10000), std::nullopt);
}

}  // namespace
}  // namespace glyphmoor::test
