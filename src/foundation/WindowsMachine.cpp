#include "foundation/WindowsMachine.h"

#include "foundation/DefaultMachine.h"
#include "foundation/HostFiles.h"
#include "foundation/ProgramFolder.h"
#include "foundation/TextEncoding.h"
#include "foundation/WindowsRegistry.h"

#include <windows.h>

#include <shellapi.h>

// The system seam's methods share names with two of windows.h's macros.
#undef SystemParametersInfo
#undef ExitWindows
#undef WinHelp

namespace glyphmoor {

namespace {

std::string Narrow(const wchar_t* text, std::size_t length) {
    return Utf16ToUtf8(std::u16string_view(reinterpret_cast<const char16_t*>(text), length));
}

std::wstring Wide(std::string_view text) {
    const std::u16string units = Utf8ToUtf16(text);
    return std::wstring(units.begin(), units.end());
}

class SystemMachine final : public Machine {
public:
    BaselineRegistry& Registry() override { return m_baseline; }
    const Environment& Env() const override { return m_environment; }
    System& Sys() override { return m_system; }
    // The real registry keeps every change as it is made.
    Status Save() override { return {}; }
    Status MakeFolder(const std::string& windowsPath) override {
        std::error_code error;
        if (std::filesystem::create_directory(m_environment.HostPath(windowsPath), error)) {
            m_baseline.RecordCreatedFile(windowsPath);
        }
        return {};
    }
    Status WriteDriveFile(const std::string& windowsPath, std::string bytes,
                          std::optional<std::uint32_t> attributes) override {
        const std::filesystem::path host = m_environment.HostPath(windowsPath);
        m_baseline.RecordFileBefore(windowsPath, host);
        std::error_code error;
        if (attributes && std::filesystem::exists(host, error)) {
            TRY(WriteHostAttributes(host, kAttrNormal));  // a read-only file cannot be replaced
        }
        TRY(SaveFileTransactionally(host, bytes));
        return attributes ? WriteHostAttributes(host, *attributes) : Status{};
    }
    Status RemoveFolder(const std::string& windowsPath) override {
        std::error_code error;
        std::filesystem::remove(m_environment.HostPath(windowsPath), error);
        return {};
    }
    Status MakeProgramFolder() override { return EnsureProgramFolder(m_environment, m_baseline, SeedDirs()); }
    std::string Description() const override { return "this Windows"; }

private:
    WindowsRegistry m_registry;
    BaselineRegistry m_baseline{m_registry};
    WindowsEnvironment m_environment;
    WindowsSystem m_system;
};

}  // namespace

OsVersion WindowsEnvironment::Version() const {
    OSVERSIONINFOW info{};
    info.dwOSVersionInfoSize = sizeof info;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    if (!::GetVersionExW(&info)) {
        return {};
    }
#pragma GCC diagnostic pop
    return {info.dwPlatformId, info.dwMajorVersion, info.dwMinorVersion, info.dwBuildNumber & 0xFFFF};
}

std::string WindowsEnvironment::WindowsDirectory() const {
    wchar_t buffer[MAX_PATH];
    const UINT length = ::GetWindowsDirectoryW(buffer, MAX_PATH);
    return length > 0 && length < MAX_PATH ? Narrow(buffer, length) : std::string();
}

std::string WindowsEnvironment::SystemDirectory() const {
    wchar_t buffer[MAX_PATH];
    const UINT length = ::GetSystemDirectoryW(buffer, MAX_PATH);
    return length > 0 && length < MAX_PATH ? Narrow(buffer, length) : std::string();
}

std::string WindowsEnvironment::ProgramDirectory() const {
    std::wstring buffer(32768, L'\0');
    const DWORD length = ::GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    const std::string file = Narrow(buffer.data(), length);
    const auto slash = file.rfind('\\');
    return slash == std::string::npos ? file : file.substr(0, slash);
}

std::filesystem::path WindowsEnvironment::HostPath(std::string_view windowsPath) const {
    return std::filesystem::path(Wide(windowsPath));
}

std::string WindowsEnvironment::WindowsPath(const std::filesystem::path& hostPath) const {
    const std::wstring wide = std::filesystem::absolute(hostPath).wstring();
    return Narrow(wide.data(), wide.size());
}

std::vector<std::string> WindowsEnvironment::Drives() const {
    std::vector<std::string> drives;
    const DWORD present = ::GetLogicalDrives();
    for (int bit = 0; bit < 26; ++bit) {
        const std::string drive{static_cast<char>('A' + bit), ':'};
        if ((present & (1U << bit)) == 0) {
            if (bit == 2) {
                drives.push_back(drive);
            }
            continue;
        }
        const UINT type = ::GetDriveTypeA((drive + "\\").c_str());
        if (type == DRIVE_FIXED || type == DRIVE_REMOVABLE || bit == 2) {
            drives.push_back(drive);
        }
    }
    return drives;
}

void WindowsSystem::BroadcastSettingChange(std::uint32_t wParam, std::optional<std::string> section) {
    if (section) {
        ::SendMessageA(HWND_BROADCAST, WM_SETTINGCHANGE, wParam, reinterpret_cast<LPARAM>(section->c_str()));
    } else {
        ::SendMessageA(HWND_BROADCAST, WM_SETTINGCHANGE, wParam, 0);
    }
}

bool WindowsSystem::SystemParametersInfo(std::uint32_t action, std::uint32_t uiParam, const SpiParam& pvParam,
                                         std::uint32_t winIni) {
    if (const auto* number = std::get_if<std::uint32_t>(&pvParam)) {
        // Actions that take a number in pvParam take it by value.
        return ::SystemParametersInfoA(action, uiParam,
                                       reinterpret_cast<void*>(static_cast<std::uintptr_t>(*number)),
                                       winIni) != FALSE;
    }
    if (const auto* text = std::get_if<std::string>(&pvParam)) {
        std::string copy = *text;
        return ::SystemParametersInfoA(action, uiParam, copy.data(), winIni) != FALSE;
    }
    if (const auto* animation = std::get_if<AnimationInfo>(&pvParam)) {
        ANIMATIONINFO record{};
        record.cbSize = sizeof record;
        record.iMinAnimate = animation->minAnimate;
        return ::SystemParametersInfoA(action, record.cbSize, &record, winIni) != FALSE;
    }
    return ::SystemParametersInfoA(action, uiParam, nullptr, winIni) != FALSE;
}

void WindowsSystem::EnableShutdownPrivilege() {
    HANDLE token = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token)) {
        return;
    }
    TOKEN_PRIVILEGES privileges{};
    if (::LookupPrivilegeValueA(nullptr, "SeShutdownPrivilege", &privileges.Privileges[0].Luid)) {
        privileges.PrivilegeCount = 1;
        privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
        TOKEN_PRIVILEGES previous{};
        DWORD previousLength = sizeof previous;
        ::AdjustTokenPrivileges(token, FALSE, &privileges, sizeof previous, &previous, &previousLength);
    }
    ::CloseHandle(token);
}

void WindowsSystem::ExitWindows(std::uint32_t flags, std::uint32_t reserved) {
    ::ExitWindowsEx(flags, reserved);
}

void WindowsSystem::RunProgram(std::string_view commandLine, int showCommand) {
    const std::string line(commandLine);
    ::WinExec(line.c_str(), static_cast<UINT>(showCommand));
}

void WindowsSystem::ShellExecuteVerb(std::string_view verb, std::string_view file,
                                     std::string_view parameters, int showCommand) {
    const std::string v(verb);
    const std::string f(file);
    const std::string p(parameters);
    ::ShellExecuteA(nullptr, v.c_str(), f.c_str(), p.c_str(), nullptr, showCommand);
}

void WindowsSystem::OpenHelp(std::string_view helpFile, std::uint32_t command, std::string_view data) {
    const std::string file(helpFile);
    const std::string keyword(data);
    // HELP_PARTIALKEY and its kin take the keyword's address as their data.
    ::WinHelpA(nullptr, file.c_str(), command, reinterpret_cast<ULONG_PTR>(keyword.c_str()));
}

bool WindowsSystem::OpenDocument(std::string_view pathOrAddress) {
    return OpenWithDesktop(pathOrAddress);
}

int WindowsSystem::ColourDepth() const {
    HDC screen = ::GetDC(nullptr);
    const int bits = ::GetDeviceCaps(screen, BITSPIXEL) * ::GetDeviceCaps(screen, PLANES);
    ::ReleaseDC(nullptr, screen);
    return bits;
}

ScreenSize WindowsSystem::Screen() const {
    HDC screen = ::GetDC(nullptr);
    const ScreenSize size{::GetDeviceCaps(screen, HORZRES), ::GetDeviceCaps(screen, VERTRES)};
    ::ReleaseDC(nullptr, screen);
    return size;
}

std::unique_ptr<Machine> OpenSystemMachine() {
    return std::make_unique<SystemMachine>();
}

Result<std::unique_ptr<Machine>> OpenHomeMachine() {
    return OpenSystemMachine();
}

}  // namespace glyphmoor
