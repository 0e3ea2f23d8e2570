#include "foundation/PhysicalMemory.h"

#include <gtest/gtest.h>

namespace glyphmoor {
namespace {

TEST(PhysicalMemory, KilobytesAreWholeAndGroupedByThousands) {
    struct Case {
        std::uint64_t bytes;
        const char* text;
    };
    const Case cases[] = {
        {0, "0 Kb"},
        {1023, "0 Kb"},  // less than a kilobyte
        {1024, "1 Kb"},
        {2047, "1 Kb"},  // the rest is dropped, never rounded up
        {999 * 1024, "999 Kb"},
        {1000 * 1024, "1,000 Kb"},
        {1048576ULL * 1024, "1,048,576 Kb"},
        {UINT64_MAX, "18,014,398,509,481,983 Kb"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(FormatKilobytes(c.bytes), c.text) << c.bytes;
    }
}

TEST(PhysicalMemory, VersionNumbersAreJoinedByPointZero) {
    EXPECT_EQ(AboutVersionText(1, 2, 3), "Version 1.02.03");
    EXPECT_EQ(AboutVersionText(0, 1, 0), "Version 0.01.00");
    // The joining text is fixed: two-digit numbers keep the 0 in front.
    EXPECT_EQ(AboutVersionText(2, 12, 40), "Version 2.012.040");
}

TEST(PhysicalMemory, MemInfoGivesTotalAndAvailable) {
    const auto memory = ParseMemInfo(
        "MemTotal:       16303412 kB\nMemFree:          512000 kB\nMemAvailable:    8151706 kB\n"
        "Buffers:          123 kB\n");
    ASSERT_TRUE(memory);
    EXPECT_EQ(memory->totalBytes, 16303412ULL * 1024);
    EXPECT_EQ(memory->availableBytes, 8151706ULL * 1024);

    // A kernel without MemAvailable: the free memory stands in.
    const auto old = ParseMemInfo("MemTotal: 2048 kB\nMemFree: 1024 kB");
    ASSERT_TRUE(old);
    EXPECT_EQ(old->availableBytes, 1024ULL * 1024);
}

TEST(PhysicalMemory, MemInfoWithoutItsFiguresGivesNothing) {
    const char* texts[] = {
        "",
        "MemFree: 1024 kB\n",                                  // no total
        "MemTotal: 2048 kB\n",                                 // nothing available
        "MemTotal: lots kB\nMemAvailable: 1 kB\n",             // not a number
        "MemTotal: 2048 MB\nMemAvailable: 1 kB\n",             // another unit
        "MemTotalX: 2048 kB\nMemAvailable: 1 kB\n",            // another name
        "MemTotal: 99999999999999999999 kB\nMemFree: 1 kB\n",  // too large
    };
    for (const char* text : texts) {
        EXPECT_FALSE(ParseMemInfo(text)) << text;
    }
}

TEST(PhysicalMemory, TheHostGivesItsFigures) {
    const auto memory = ReadPhysicalMemory();
    ASSERT_TRUE(memory);
    EXPECT_GT(memory->totalBytes, 0U);
    EXPECT_LE(memory->availableBytes, memory->totalBytes);
}

}  // namespace
}  // namespace glyphmoor
