#include "foundation/MachineEnvironment.h"

#include "foundation/TextEncoding.h"
#include "foundation/modRegistry.h"

#include <array>
#include <charconv>

namespace glyphmoor {

namespace {

constexpr std::string_view kNtCurrentVersion =
    "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows NT\\CurrentVersion";
constexpr std::string_view kCurrentVersion =
    "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion";

struct NamedVersion {
    std::string_view name;
    OsVersion version;
};

// Wine's names for the versions it can report.
constexpr std::array<NamedVersion, 16> kWineVersions = {{
    {"win95", {kPlatformWindows, 4, 0, 950}},
    {"win98", {kPlatformWindows, 4, 10, 2222}},
    {"winme", {kPlatformWindows, 4, 90, 3000}},
    {"nt351", {kPlatformNt, 3, 51, 1057}},
    {"nt40", {kPlatformNt, 4, 0, 1381}},
    {"win2k", {kPlatformNt, 5, 0, 2195}},
    {"winxp", {kPlatformNt, 5, 1, 2600}},
    {"winxp64", {kPlatformNt, 5, 2, 3790}},
    {"win2003", {kPlatformNt, 5, 2, 3790}},
    {"vista", {kPlatformNt, 6, 0, 6002}},
    {"win2008", {kPlatformNt, 6, 0, 6002}},
    {"win7", {kPlatformNt, 6, 1, 7601}},
    {"win2008r2", {kPlatformNt, 6, 1, 7601}},
    {"win8", {kPlatformNt, 6, 2, 9200}},
    {"win81", {kPlatformNt, 6, 3, 9600}},
    {"win10", {kPlatformNt, 10, 0, 19043}},
}};

// "4.10.2222" gives 4, 10 and 2222.
std::array<std::uint32_t, 3> VersionNumbers(std::string_view text) {
    std::array<std::uint32_t, 3> out{};
    for (auto& number : out) {
        auto [ptr, ec] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (ec != std::errc()) {
            break;
        }
        text.remove_prefix(static_cast<std::size_t>(ptr - text.data()));
        if (text.empty() || text.front() != '.') {
            break;
        }
        text.remove_prefix(1);
    }
    return out;
}

}  // namespace

OsVersion MachineVersion(RegistryStore& registry) {
    const std::string wine = GetRegString(registry, "HKEY_CURRENT_USER\\Software\\Wine", "Version");
    if (wine != kRegError) {
        for (const auto& named : kWineVersions) {
            if (EqualsNoCase(wine, named.name)) {
                return named.version;
            }
        }
        if (EqualsNoCase(wine, "win11")) {
            return {kPlatformNt, 10, 0, 22000};
        }
        return {};  // win31, win30, win20: no 32-bit Windows
    }
    if (RegKeyExists(registry, kNtCurrentVersion)) {
        const std::string current = GetRegString(registry, kNtCurrentVersion, "CurrentVersion");
        const auto numbers = VersionNumbers(current == kRegError ? "4.0" : current);
        const std::string build = GetRegString(registry, kNtCurrentVersion, "CurrentBuildNumber");
        return {kPlatformNt, numbers[0], numbers[1], build == kRegError ? 0 : VersionNumbers(build)[0]};
    }
    const std::string number = GetRegString(registry, kCurrentVersion, "VersionNumber");
    if (number != kRegError) {
        const auto numbers = VersionNumbers(number);
        return {kPlatformWindows, numbers[0], numbers[1], numbers[2]};
    }
    return {};
}

MachineEnvironment::MachineEnvironment(MachineFolder folder, RegistryStore& registry)
    : m_folder(std::move(folder)),
      m_version(MachineVersion(registry)),
      m_kind(FolderKind(m_folder.Dir(), registry)) {
    // Windows NT records its folder under Windows NT\CurrentVersion, and so does
    // every Wine prefix, whose system folder is system32 whatever the version;
    // Windows 95 and 98 record it under Windows\CurrentVersion, with SYSTEM.
    const std::string nt = GetRegString(registry, kNtCurrentVersion, "SystemRoot");
    const std::string nine = GetRegString(registry, kCurrentVersion, "SystemRoot");
    if (nt != kRegError && !nt.empty()) {
        m_windowsDirectory = nt;
        m_systemDirectory = nt + "\\system32";
    } else if (nine != kRegError && !nine.empty()) {
        m_windowsDirectory = nine;
        m_systemDirectory = nine + "\\SYSTEM";
    } else {
        m_windowsDirectory = "C:\\windows";
        m_systemDirectory = "C:\\windows\\system32";
    }
}

}  // namespace glyphmoor
