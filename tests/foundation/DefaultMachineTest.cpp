#include "foundation/DefaultMachine.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;

// Each start tops an existing default machine up with what the seed holds and
// it lacks, but what the user deleted of the starter themes and favourites
// stays deleted.
TEST(DefaultMachine, AStartPutsBackSystemFilesButNotTheUsersThemes) {
    TempDir dir;
    dir.Write("seed/system.reg", "WINE REGISTRY Version 2\n");
    dir.Write("seed/user.reg", "WINE REGISTRY Version 2\n");
    dir.Write("seed/drive_c/WINDOWS/SYSTEM/shell32.dll", "library");
    dir.Write("seed/drive_c/Program Files/Glyphmoor/Themes/Autumn/Autumn.gmtheme", "theme");
    dir.Write("seed/drive_c/Program Files/Glyphmoor/Favorites/Autumn.lnk", "link");
    const fs::path machine = dir.Path() / "machine";
    const std::vector<fs::path> seeds = {dir.Path() / "seed"};
    ASSERT_TRUE(EnsureSeededMachine(machine, seeds).ok());
    const char* files[] = {"drive_c/WINDOWS/SYSTEM/shell32.dll",
                           "drive_c/Program Files/Glyphmoor/Themes/Autumn/Autumn.gmtheme",
                           "drive_c/Program Files/Glyphmoor/Favorites/Autumn.lnk"};
    for (const char* file : files) {
        EXPECT_TRUE(fs::exists(machine / file)) << file << " is in a new machine";
        fs::remove(machine / file);
    }
    fs::remove(machine / "drive_c/Program Files/Glyphmoor/Themes/Autumn");

    ASSERT_TRUE(EnsureSeededMachine(machine, seeds).ok());
    EXPECT_TRUE(fs::exists(machine / files[0]));
    EXPECT_FALSE(fs::exists(machine / "drive_c/Program Files/Glyphmoor/Themes/Autumn"));
    EXPECT_FALSE(fs::exists(machine / files[2]));
}

}  // namespace
}  // namespace glyphmoor::test
