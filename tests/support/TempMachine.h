// Temporary folders and machine folders for tests.
#pragma once

#include "foundation/Machine.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace glyphmoor::test {

// A fresh folder, removed with everything in it when the object goes.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
    void Write(const std::filesystem::path& relative, std::string_view contents) const;
    [[nodiscard]] std::string Read(const std::filesystem::path& relative) const;

private:
    std::filesystem::path m_path;
};

// The bytes of a file, or nothing when it cannot be read.
std::optional<std::string> FileBytes(const std::filesystem::path& file);

// A hive file: the header Wine writes, then body.
std::string HiveText(std::string_view relativeRoot, std::string_view body);

// The registry bodies of a small Windows 98 machine and of a Windows NT one.
std::string Win98System();
std::string WinNtSystem();

// A machine folder with the given hive bodies and an empty drive C:.
class TempMachine {
public:
    explicit TempMachine(std::string_view systemBody = Win98System(), std::string_view userBody = "",
                         std::string_view userdefBody = "");

    [[nodiscard]] const std::filesystem::path& Dir() const { return m_dir.Path(); }
    [[nodiscard]] const TempDir& Folder() const { return m_dir; }
    // Opens the machine; a test fails when it cannot be opened.
    [[nodiscard]] std::unique_ptr<Machine> Open() const;

private:
    TempDir m_dir;
};

// Sets an environment variable for its lifetime, then restores the old value.
class ScopedEnvironment {
public:
    ScopedEnvironment(std::string name, const std::string& value);
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    std::string m_name;
    std::optional<std::string> m_old;
};

// True where host paths begin with a drive letter (Windows): there a host
// path cannot be told from a Windows path of a machine folder.
bool HostPathsHaveDriveLetters();

// The folder with the test data files.
std::filesystem::path TestData(const std::filesystem::path& relative);

}  // namespace glyphmoor::test
