// Windows paths of a machine folder, drive letters mapped through dosdevices/
// as Wine maps them (names like "d:" exist only on a POSIX host).
#include "foundation/MachineFolder.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;

TEST(MachineFolder, WindowsPathsResolveWithoutRegardToCase) {
    TempMachine machine;
    machine.Folder().Write("drive_c/WINDOWS/SYSTEM/shell32.dll", "x");
    machine.Folder().Write("elsewhere/Data/File.txt", "y");
    fs::create_directories(machine.Dir() / "dosdevices");
    fs::create_symlink(machine.Dir() / "elsewhere", machine.Dir() / "dosdevices" / "d:");
    auto folder = MachineFolder::Open(machine.Dir());
    ASSERT_TRUE(folder.ok());
    const fs::path c = machine.Dir() / "drive_c";
    struct Case {
        std::string windows;
        fs::path host;
    };
    const Case cases[] = {
        {"C:\\WINDOWS\\SYSTEM\\shell32.dll", c / "WINDOWS/SYSTEM/shell32.dll"},
        {"c:\\windows\\system\\SHELL32.DLL", c / "WINDOWS/SYSTEM/shell32.dll"},
        {"C:/Windows/System", c / "WINDOWS/SYSTEM"},
        {"C:\\WINDOWS\\New Folder\\a.ico",
         c / "WINDOWS/New Folder/a.ico"},  // what does not exist stays as given
        {"C:\\", c},
        {"D:\\data\\file.TXT", machine.Dir() / "dosdevices/d:/Data/File.txt"},
        {"relative\\name.ico", fs::path("relative\\name.ico")},
    };
    for (const auto& k : cases) {
        EXPECT_EQ(folder->HostPath(k.windows), k.host) << k.windows;
    }
    EXPECT_EQ(folder->WindowsPath(c / "WINDOWS/SYSTEM/shell32.dll"), "C:\\WINDOWS\\SYSTEM\\shell32.dll");
    EXPECT_EQ(folder->WindowsPath(c), "C:\\");
    EXPECT_EQ(folder->WindowsPath(machine.Dir() / "elsewhere/Data"), "D:\\Data");
    EXPECT_EQ(folder->WindowsPath("/nowhere/at/all"), "");
}

}  // namespace
}  // namespace glyphmoor::test
