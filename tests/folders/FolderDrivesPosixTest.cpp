// What only a POSIX host shows: the drives of a machine folder (what its
// dosdevices folder maps, symbolic links as Wine makes them), and a folder
// the user may not read.
#include "folders/FolderListing.h"
#include "support/TempMachine.h"

#include <unistd.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;

TEST(MachineDrives, DosdevicesMappingsWithCAlways) {
    TempMachine machine;
    const fs::path dos = machine.Dir() / "dosdevices";
    {
        const auto opened = machine.Open();
        ASSERT_TRUE(opened);
        EXPECT_EQ(opened->Env().Drives(), std::vector<std::string>{"C:"});
    }
    fs::create_directories(dos);
    fs::create_directories(machine.Dir() / "cdrom");
    fs::create_directory_symlink("../drive_c", dos / "c:");
    fs::create_directory_symlink("../cdrom", dos / "e:");
    fs::create_directory_symlink("../gone", dos / "f:");
    fs::create_directory_symlink("/", dos / "z:");
    const auto opened = machine.Open();
    ASSERT_TRUE(opened);
    EXPECT_EQ(opened->Env().Drives(), (std::vector<std::string>{"C:", "E:", "Z:"}));
}

TEST(FolderListing, AFolderThatMayNotBeReadIsListedAndFailsWithTheReason) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "the superuser reads every folder";
    }
    TempDir dir;
    const fs::path locked = dir.Path() / "locked";
    fs::create_directories(locked / "inside");
    fs::permissions(locked, fs::perms::none);
    const auto parent = ListSubfolders(dir.Path());
    const auto names = ListSubfolders(locked);
    fs::permissions(locked, fs::perms::owner_all);
    ASSERT_TRUE(parent.ok());
    EXPECT_EQ(*parent, std::vector<std::string>{"locked"});
    ASSERT_FALSE(names.ok());
    EXPECT_NE(names.reason().find("ermission denied"), std::string::npos) << names.reason();
}

}  // namespace
}  // namespace glyphmoor::test
