// MachineEnvironment: what a machine folder's Windows would report.
#pragma once

#include "foundation/Environment.h"
#include "foundation/MachineFolder.h"
#include "foundation/RegistryStore.h"

namespace glyphmoor {

// The program's own folder on every machine folder.
inline constexpr std::string_view kMachineProgramDirectory = "C:\\Program Files\\Glyphmoor";

// The version the machine's Windows reports, decided as Wine decides it: the
// value "Version" under HKEY_CURRENT_USER\Software\Wine when present ("win95",
// "win98", "winme", "nt40", "win7", ...), else the Windows NT CurrentVersion key
// (an NT version), else the Windows CurrentVersion "VersionNumber" (4.00 is
// Windows 95, 4.10 and above Windows 98).
OsVersion MachineVersion(RegistryStore& registry);

class MachineEnvironment final : public Environment {
public:
    MachineEnvironment(MachineFolder folder, RegistryStore& registry);

    [[nodiscard]] OsVersion Version() const override { return m_version; }
    [[nodiscard]] MachineKind Kind() const override { return m_kind; }
    [[nodiscard]] std::string WindowsDirectory() const override { return m_windowsDirectory; }
    [[nodiscard]] std::string SystemDirectory() const override { return m_systemDirectory; }
    [[nodiscard]] std::string ProgramDirectory() const override {
        return std::string(kMachineProgramDirectory);
    }
    [[nodiscard]] std::filesystem::path HostPath(std::string_view windowsPath) const override {
        return m_folder.HostPath(windowsPath);
    }
    [[nodiscard]] std::string WindowsPath(const std::filesystem::path& hostPath) const override {
        return m_folder.WindowsPath(hostPath);
    }
    [[nodiscard]] std::vector<std::string> Drives() const override { return m_folder.Drives(); }

private:
    MachineFolder m_folder;
    OsVersion m_version;
    MachineKind m_kind;
    std::string m_windowsDirectory;
    std::string m_systemDirectory;
};

}  // namespace glyphmoor
