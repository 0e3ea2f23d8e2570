#include "support/TempMachine.h"

#include <gtest/gtest.h>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

namespace glyphmoor::test {

namespace fs = std::filesystem;

TempDir::TempDir() {
    std::random_device random;
    m_path =
        fs::temp_directory_path() / ("glyphmoor-test-" + std::to_string(random()) + std::to_string(random()));
    fs::create_directories(m_path);
}

TempDir::~TempDir() {
    std::error_code ec;
    fs::remove_all(m_path, ec);
}

void TempDir::Write(const fs::path& relative, std::string_view contents) const {
    const fs::path file = m_path / relative;
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(contents.data(), static_cast<std::streamsize>(contents.size()));
}

std::string TempDir::Read(const fs::path& relative) const {
    return FileBytes(m_path / relative).value_or("");
}

std::optional<std::string> FileBytes(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        return std::nullopt;
    }
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string HiveText(std::string_view relativeRoot, std::string_view body) {
    std::string text = "WINE REGISTRY Version 2\n;; All keys relative to ";
    text += relativeRoot;
    text += "\n\n#arch=win32\n";
    text += body;
    return text;
}

std::string Win98System() {
    return "\n[Software\\\\Classes] 1700000000\n"
           "\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion] 1700000000\n"
           "\"SystemRoot\"=\"C:\\\\WINDOWS\"\n"
           "\"VersionNumber\"=\"4.10.2222\"\n"
           "\n[System\\\\CurrentControlSet\\\\Hardware Profiles\\\\Current] 1700000000\n";
}

std::string WinNtSystem() {
    return "\n[Software\\\\Classes] 1700000000\n"
           "\n[Software\\\\Microsoft\\\\Windows NT\\\\CurrentVersion] 1700000000\n"
           "\"CurrentBuildNumber\"=\"1381\"\n"
           "\"CurrentVersion\"=\"4.0\"\n"
           "\"SystemRoot\"=\"C:\\\\WINNT\"\n"
           "\n[System\\\\CurrentControlSet\\\\Hardware Profiles\\\\Current] 1700000000\n";
}

TempMachine::TempMachine(std::string_view systemBody, std::string_view userBody,
                         std::string_view userdefBody) {
    m_dir.Write("system.reg", HiveText("\\\\Machine", systemBody));
    m_dir.Write("user.reg", HiveText("\\\\User\\\\S-1-5-21-0-0-0-1000", userBody));
    m_dir.Write("userdef.reg", HiveText("\\\\User\\\\.Default", userdefBody));
    fs::create_directories(m_dir.Path() / "drive_c");
}

std::unique_ptr<Machine> TempMachine::Open() const {
    auto machine = OpenMachineFolder(m_dir.Path());
    EXPECT_TRUE(machine.ok()) << (machine.ok() ? "" : machine.reason());
    return machine.ok() ? std::move(*machine) : nullptr;
}

namespace {

void SetVariable(const std::string& name, const std::optional<std::string>& value) {
#ifdef _WIN32
    ::_putenv_s(name.c_str(), value ? value->c_str() : "");
#else
    if (value) {
        ::setenv(name.c_str(), value->c_str(), 1);
    } else {
        ::unsetenv(name.c_str());
    }
#endif
}

}  // namespace

ScopedEnvironment::ScopedEnvironment(std::string name, const std::string& value) : m_name(std::move(name)) {
    if (const char* old = std::getenv(m_name.c_str())) {
        m_old = old;
    }
    SetVariable(m_name, value);
}

ScopedEnvironment::~ScopedEnvironment() {
    SetVariable(m_name, m_old);
}

bool HostPathsHaveDriveLetters() {
    const std::string temp = fs::temp_directory_path().string();
    return temp.size() >= 2 && temp[1] == ':';
}

fs::path TestData(const fs::path& relative) {
    const char* dir = std::getenv("GLYPHMOOR_TEST_DATA");
    return fs::path(dir != nullptr ? dir : "tests/data") / relative;
}

}  // namespace glyphmoor::test
