// An Environment for tests: drive C: is a host folder, Windows paths resolve
// in it without regard to case, and the version and folders are what the test
// says.
#pragma once

#include "foundation/Environment.h"
#include "foundation/TextEncoding.h"

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace glyphmoor {

class FakeEnvironment : public Environment {
public:
    explicit FakeEnvironment(std::filesystem::path driveC,
                             OsVersion version = {kPlatformWindows, 4, 10, 1998},
                             std::string winDir = "C:\\WINDOWS", std::string sysDir = "C:\\WINDOWS\\SYSTEM")
        : m_driveC(std::move(driveC)),
          m_version(version),
          m_winDir(std::move(winDir)),
          m_sysDir(std::move(sysDir)) {}

    OsVersion Version() const override { return m_version; }
    MachineKind Kind() const override { return kind; }
    std::string WindowsDirectory() const override { return m_winDir; }
    std::string SystemDirectory() const override { return m_sysDir; }
    std::string ProgramDirectory() const override { return "C:\\Program Files\\Glyphmoor"; }

    // What the test says the machine is; the described Windows unless set.
    MachineKind kind = MachineKind::Described;

    std::filesystem::path HostPath(std::string_view windowsPath) const override {
        if (windowsPath.size() < 2 || windowsPath[1] != ':' || (windowsPath[0] | 0x20) != 'c') {
            return std::filesystem::path(windowsPath);
        }
        std::filesystem::path host = m_driveC;
        std::string_view rest = windowsPath.substr(2);
        while (!rest.empty()) {
            const auto slash = rest.find('\\');
            const std::string part(rest.substr(0, slash));
            rest.remove_prefix(slash == std::string_view::npos ? rest.size() : slash + 1);
            if (part.empty()) {
                continue;
            }
            host /= Resolve(host, part);
        }
        return host;
    }

    std::string WindowsPath(const std::filesystem::path& hostPath) const override {
        const auto relative = hostPath.lexically_relative(m_driveC);
        if (relative.empty() || relative.begin()->string() == "..") {
            return {};
        }
        std::string path = "C:";
        for (const auto& part : relative) {
            path += "\\" + part.string();
        }
        return path;
    }

private:
    static std::string Resolve(const std::filesystem::path& folder, const std::string& name) {
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
            const std::string candidate = entry.path().filename().string();
            if (EqualsNoCase(candidate, name)) {
                return candidate;
            }
        }
        return name;
    }

    std::filesystem::path m_driveC;
    OsVersion m_version;
    std::string m_winDir;
    std::string m_sysDir;
};

}  // namespace glyphmoor
