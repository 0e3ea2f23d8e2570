// OpenWithDesktop through xdg-open: a handler found, none found, or none at all.
#include "foundation/System.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace glyphmoor {
namespace {

class DesktopOpen : public ::testing::Test {
protected:
    void SetUp() override {
        const char* path = std::getenv("PATH");
        m_path = path != nullptr ? path : "";
        ::setenv("PATH", m_dir.Path().c_str(), 1);
    }
    void TearDown() override { ::setenv("PATH", m_path.c_str(), 1); }

    // An xdg-open that runs `body` in /bin/sh.
    void FakeXdgOpen(const std::string& body) {
        const auto file = m_dir.Path() / "xdg-open";
        std::ofstream(file) << "#!/bin/sh\n" << body << "\n";
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }

    test::TempDir m_dir;
    std::string m_path;
};

TEST_F(DesktopOpen, AHandlerFoundIsSuccess) {
    FakeXdgOpen("[ \"$1\" = \"http://example.org/\" ] || exit 9\nexit 0");
    EXPECT_TRUE(OpenWithDesktop("http://example.org/"));
}

TEST_F(DesktopOpen, NoProgramForTheAddressIsFailure) {
    FakeXdgOpen("exit 3");  // xdg-open: no method available
    EXPECT_FALSE(OpenWithDesktop("mailto:someone@example.org"));
}

TEST_F(DesktopOpen, AHandlerStillRunningIsSuccess) {
    FakeXdgOpen("exec /bin/sleep 10 </dev/null >/dev/null 2>&1");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(OpenWithDesktop("http://example.org/"));
    // The program does not wait for the handler to end.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

TEST_F(DesktopOpen, WithoutXdgOpenItFails) {
    EXPECT_FALSE(OpenWithDesktop("http://example.org/"));
}

}  // namespace
}  // namespace glyphmoor
