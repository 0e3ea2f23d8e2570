// The Windows build under Wine: the shell's own link object loads the links
// the program writes, and the program reads the links the shell writes.
#include "support/TempMachine.h"
#include "themes/ShellLink.h"
#include "themes/ShellLinkFile.h"

#include <gtest/gtest.h>

#include <fstream>

namespace glyphmoor::test {
namespace {

const ShellLink kLink{"C:\\windows\\Sea.gmtheme", "C:\\windows", "", "C:\\windows\\notepad.exe", 3};

TEST(SystemShellLinks, LoadTheLinksTheProgramWrites) {
    const TempDir dir;
    const auto file = dir.Path() / "Sea.lnk";
    const auto bytes = ShellLinkBytes(kLink);
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    const auto loaded = LoadSystemShellLink(file);
    ASSERT_TRUE(loaded.ok()) << loaded.reason();
    EXPECT_EQ(*loaded, kLink);
}

TEST(SystemShellLinks, WriteLinksTheProgramReads) {
    const TempDir dir;
    const auto file = dir.Path() / "Sea.lnk";
    ASSERT_TRUE(SaveSystemShellLink(file, kLink).ok());
    std::ifstream in(file, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), {});
    const auto read = ReadShellLink({reinterpret_cast<const std::byte*>(text.data()), text.size()});
    ASSERT_TRUE(read.ok()) << read.reason();
    EXPECT_EQ(read->target, kLink.target);
    EXPECT_EQ(read->workingDir, kLink.workingDir);
    EXPECT_EQ(read->iconFile, kLink.iconFile);
    EXPECT_EQ(read->iconIndex, kLink.iconIndex);
}

}  // namespace
}  // namespace glyphmoor::test
