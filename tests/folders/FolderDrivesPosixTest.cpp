// The drives of a machine folder: what its dosdevices folder maps (symbolic
// links, as Wine makes them).
#include "support/TempMachine.h"

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

}  // namespace
}  // namespace glyphmoor::test
