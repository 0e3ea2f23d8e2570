// The Windows the program runs on, as a Machine: the real registry, the
// version and folders Windows reports, the real system calls.
#pragma once

#include "foundation/Environment.h"
#include "foundation/Machine.h"
#include "foundation/System.h"

namespace glyphmoor {

class WindowsEnvironment final : public Environment {
public:
    [[nodiscard]] OsVersion Version() const override;
    [[nodiscard]] MachineKind Kind() const override { return MachineKind::RealWindows; }
    [[nodiscard]] std::string WindowsDirectory() const override;
    [[nodiscard]] std::string SystemDirectory() const override;
    // The folder the program's own file is in.
    [[nodiscard]] std::string ProgramDirectory() const override;
    // Windows paths are host paths here.
    [[nodiscard]] std::filesystem::path HostPath(std::string_view windowsPath) const override;
    [[nodiscard]] std::string WindowsPath(const std::filesystem::path& hostPath) const override;
    // The fixed and removable drives (GetLogicalDrives, GetDriveType).
    [[nodiscard]] std::vector<std::string> Drives() const override;
};

class WindowsSystem final : public System {
public:
    void BroadcastSettingChange(std::uint32_t wParam, std::optional<std::string> section) override;
    bool SystemParametersInfo(std::uint32_t action, std::uint32_t uiParam, const SpiParam& pvParam,
                              std::uint32_t winIni) override;
    void EnableShutdownPrivilege() override;
    void ExitWindows(std::uint32_t flags, std::uint32_t reserved) override;
    void RunProgram(std::string_view commandLine, int showCommand) override;
    void ShellExecuteVerb(std::string_view verb, std::string_view file, std::string_view parameters,
                          int showCommand) override;
    void OpenHelp(std::string_view helpFile, std::uint32_t command, std::string_view data) override;
    bool OpenDocument(std::string_view pathOrAddress) override;
    [[nodiscard]] int ColourDepth() const override;
    [[nodiscard]] ScreenSize Screen() const override;
};

std::unique_ptr<Machine> OpenSystemMachine();

}  // namespace glyphmoor
