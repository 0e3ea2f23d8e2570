// Shell links written and read back field by field, and bytes that are no
// link (or lie about their sizes) refused without reading past them.
#include "themes/ShellLink.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

TEST(ShellLinks, ComeBackFieldByField) {
    const ShellLink cases[] = {
        {"C:\\Program Files\\Glyphmoor\\Themes\\Sea\\Sea.gmtheme", "C:\\Program Files\\Glyphmoor\\Favorites",
         "", "C:\\Program Files\\Glyphmoor\\Glyphmoor.exe", 0},
        {"C:\\x.gmtheme", "", "/t \"C:\\x.gmtheme\"", "", -154},
        {"C:\\Th\xc3\xa8mes\\Caf\xc3\xa9.gmtheme", "C:\\Th\xc3\xa8mes", "", "C:\\a.ico", 7},
        {"C:\\" + std::string(300, 'x') + ".gmtheme", "", "", "", 0},
        {"", "", "", "", 0},
    };
    for (const ShellLink& link : cases) {
        SCOPED_TRACE(link.target);
        const auto bytes = ShellLinkBytes(link);
        const auto read = ReadShellLink(bytes);
        ASSERT_TRUE(read.ok()) << read.reason();
        EXPECT_EQ(*read, link);
    }
}

// The header and link information as another shell writes them: ANSI only,
// an item ID list before them, a common path suffix.
TEST(ShellLinks, ReadsAnAnsiPathWithItsSuffixAfterAnItemIdList) {
    auto bytes = ShellLinkBytes({"C:\\Themes\\Sea.gmtheme", "", "", "", 0});
    // Set the item-ID-list flag and put an empty list (a size of 2 and a terminator) after the header.
    bytes[20] = static_cast<std::byte>(static_cast<unsigned>(bytes[20]) | 1U);
    const std::byte list[] = {std::byte{2}, std::byte{0}, std::byte{0}, std::byte{0}};
    bytes.insert(bytes.begin() + 0x4c, std::begin(list), std::end(list));
    // Drop the UTF-16 offsets: a link information header of 0x1c bytes reads the ANSI path.
    bytes[0x4c + 4 + 4] = std::byte{0x1c};
    const auto read = ReadShellLink(bytes);
    ASSERT_TRUE(read.ok()) << read.reason();
    EXPECT_EQ(read->target, "C:\\Themes\\Sea.gmtheme");
}

TEST(ShellLinks, ReadAStringUpToItsFirstNulAsWineCountsTheNulIn) {
    auto bytes = ShellLinkBytes({"", "C:\\w", "", "", 0});
    // The working folder's count (3 characters) becomes 4, the terminal block's first two bytes the NUL.
    const std::size_t count = 0x4c;
    ASSERT_EQ(static_cast<unsigned>(bytes[count]), 4U);
    bytes[count] = std::byte{5};
    bytes.insert(bytes.end(), 2, std::byte{0});
    const auto read = ReadShellLink(bytes);
    ASSERT_TRUE(read.ok()) << read.reason();
    EXPECT_EQ(read->workingDir, "C:\\w");
}

TEST(ShellLinks, RefuseBytesThatAreNoLinkOrRunPastTheirEnd) {
    const auto good = ShellLinkBytes({"C:\\a.gmtheme", "C:\\", "", "C:\\g.exe", 0});
    // Every prefix of a good link up to its extra data (four bytes of terminal block, not needed):
    // refused, never read past.
    for (std::size_t n = 0; n + 4 < good.size(); ++n) {
        const std::vector<std::byte> cut(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(n));
        EXPECT_FALSE(ReadShellLink(cut).ok()) << n;
    }
    auto wrongClass = good;
    wrongClass[4] = std::byte{0x02};
    EXPECT_FALSE(ReadShellLink(wrongClass).ok());
    auto lyingInfo = good;
    lyingInfo[0x4c] = std::byte{0xff};
    lyingInfo[0x4c + 1] = std::byte{0xff};
    EXPECT_FALSE(ReadShellLink(lyingInfo).ok());
    auto lyingPathOffset = good;
    lyingPathOffset[0x4c + 28] = std::byte{0xf0};
    EXPECT_FALSE(ReadShellLink(lyingPathOffset).ok());
}

}  // namespace
}  // namespace glyphmoor::test
