// DOS attributes on a machine folder, kept as Wine keeps them.
#include "foundation/HostFiles.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#ifdef __linux__
#include <sys/xattr.h>
#endif

namespace glyphmoor {
namespace {

#ifdef __linux__
// The raw form Wine reads, where there is one to look at.
std::string StoredDosAttrib(const std::filesystem::path& path) {
    char text[32] = {};
    const auto n = ::getxattr(path.c_str(), "user.DOSATTRIB", text, sizeof text - 1);
    return n < 0 ? std::string("(none)") : std::string(text, static_cast<std::size_t>(n));
}
#endif

TEST(HostAttributes, WhatWineKeepsAndReports) {
    test::TempDir dir;
    dir.Write("file.ini", "x");
    std::filesystem::create_directories(dir.Path() / "folder");
    if (!WriteHostAttributes(dir.Path() / "file.ini", kAttrHidden).ok()) {
        GTEST_SKIP() << "the temporary folder takes no extended attributes";
    }
    const struct {
        const char* name;
        std::uint32_t set;
        std::uint32_t reported;
        const char* stored;
    } cases[] = {
        {"file.ini", 0x22, 0x22, "0x2"},   {"file.ini", 38, 0x26, "0x6"},
        {"file.ini", 128, 0x20, "(none)"}, {"file.ini", 0x21, 0x21, "(none)"},
        {"file.ini", 0x07, 0x27, "0x6"},   {"file.ini", 0x20, 0x20, "(none)"},
        {"folder", 4, 0x14, "0x4"},        {"folder", 0, 0x10, "(none)"},
    };
    for (const auto& c : cases) {
        const auto path = dir.Path() / c.name;
        ASSERT_TRUE(WriteHostAttributes(path, c.set).ok()) << c.name << " " << c.set;
        EXPECT_EQ(ReadHostAttributes(path), c.reported) << c.name << " " << c.set;
#ifdef __linux__
        EXPECT_EQ(StoredDosAttrib(path), c.stored) << c.name << " " << c.set;
#endif
    }
    EXPECT_FALSE(WriteHostAttributes(dir.Path() / "missing", 0x20).ok());
    EXPECT_FALSE(ReadHostAttributes(dir.Path() / "missing").has_value());
    dir.Write(".profile", "x");
    EXPECT_EQ(ReadHostAttributes(dir.Path() / ".profile"), 0x22U) << "a dot file is hidden, as Wine shows it";
}

}  // namespace
}  // namespace glyphmoor
