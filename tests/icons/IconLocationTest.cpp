#include "icons/IconLocation.h"

#include <gtest/gtest.h>

namespace glyphmoor {
namespace {

TEST(SplitIconLocation, SplitsAtTheLastComma) {
    const struct {
        const char* text;
        std::optional<IconLocation> location;
    } cases[] = {
        {"C:\\WINDOWS\\SYSTEM\\shell32.dll,3", IconLocation{"C:\\WINDOWS\\SYSTEM\\shell32.dll", 3}},
        {"C:\\x,y.dll,5", IconLocation{"C:\\x,y.dll", 5}},
        {"C:\\Themes\\Ocean My Computer.ico", IconLocation{"C:\\Themes\\Ocean My Computer.ico", 0}},
        {"", IconLocation{"", 0}},
        {"C:\\a.dll,-154", IconLocation{"C:\\a.dll", -154}},
        {"C:\\a.dll, 7 ", IconLocation{"C:\\a.dll", 7}},
        {"C:\\a.dll,+2", IconLocation{"C:\\a.dll", 2}},
        {",1", IconLocation{"", 1}},
        {"C:\\a.dll,2147483647", IconLocation{"C:\\a.dll", 2147483647}},
        {"C:\\a.dll,-2147483648", IconLocation{"C:\\a.dll", -2147483647 - 1}},
        // What the 32-bit conversion cannot take.
        {"C:\\a.dll,2147483648", std::nullopt},
        {"C:\\x,y.dll", std::nullopt},
        {"C:\\a.dll,", std::nullopt},
        {"C:\\a.dll,3x", std::nullopt},
        {"C:\\a.dll,1 2", std::nullopt},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(SplitIconLocation(c.text), c.location) << c.text;
    }
}

}  // namespace
}  // namespace glyphmoor
