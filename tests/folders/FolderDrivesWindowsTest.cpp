// The drives of the Windows the program runs on (under Wine, the prefix's):
// the fixed and removable ones, in letter order, C: among them.
#include "foundation/WindowsMachine.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>

namespace glyphmoor::test {
namespace {

TEST(WindowsDrives, FixedAndRemovableInLetterOrder) {
    const std::vector<std::string> drives = WindowsEnvironment().Drives();
    EXPECT_NE(std::find(drives.begin(), drives.end(), "C:"), drives.end());
    EXPECT_TRUE(std::is_sorted(drives.begin(), drives.end()));
    for (const std::string& drive : drives) {
        ASSERT_EQ(drive.size(), 2U);
        const UINT type = ::GetDriveTypeA((drive + "\\").c_str());
        EXPECT_TRUE(type == DRIVE_FIXED || type == DRIVE_REMOVABLE || drive == "C:") << drive << " " << type;
    }
}

}  // namespace
}  // namespace glyphmoor::test
