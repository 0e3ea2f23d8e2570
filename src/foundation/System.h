// System: the seam to the calls that act on the running system rather than on
// its stored state: settings changed through SystemParametersInfo, the
// WM_SETTINGCHANGE broadcast, restarting Windows, opening a document or an
// address with the shell, starting a program, opening the help file, and the
// display's colour depth.
//
// On Windows they are the real calls (WindowsSystem). On a machine folder
// nothing runs to receive them: RecordingSystem keeps each call as a line of
// text, in order, for tests and for the command line to show; only opening a
// document is real, through the desktop's own handler.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace glyphmoor {

inline constexpr std::uint32_t kWmSettingChange = 0x1A;
inline constexpr std::uint32_t kSpiSetIconMetrics = 0x2E;
inline constexpr std::uint32_t kSpiSetCursors = 0x57;
inline constexpr std::uint32_t kEwxReboot = 2;
// WinHelpA's command that opens the topic found by a partial keyword.
inline constexpr std::uint32_t kHelpPartialKey = 0x105;
// ShowWindow's command for a program started minimised with the focus.
inline constexpr int kSwShowMinimized = 2;

// ANIMATIONINFO: the record SPI_SETANIMATION takes.
struct AnimationInfo {
    std::uint32_t size = 8;
    std::int32_t minAnimate = 0;
};

// What SystemParametersInfo's pvParam points to: nothing, a number, a text,
// or an animation record.
using SpiParam = std::variant<std::monostate, std::uint32_t, std::string, AnimationInfo>;

struct ScreenSize {
    int width = 0;
    int height = 0;
};

class System {
public:
    virtual ~System() = default;
    System() = default;
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    // SendMessage(HWND_BROADCAST, WM_SETTINGCHANGE, wParam, lParam): lParam is
    // the section text when one is given, else 0. Returns when every top-level
    // window has handled it.
    virtual void BroadcastSettingChange(std::uint32_t wParam, std::optional<std::string> section) = 0;
    // SystemParametersInfoA; true when the call succeeded.
    virtual bool SystemParametersInfo(std::uint32_t action, std::uint32_t uiParam, const SpiParam& pvParam,
                                      std::uint32_t winIni) = 0;
    // Enables SeShutdownPrivilege for the program's own process (Windows NT):
    // the process token opened with TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY (40),
    // "SeShutdownPrivilege" looked up on the local system, the token adjusted
    // with that one privilege, SE_PRIVILEGE_ENABLED (2), and a 16-byte buffer
    // for the previous state. Failures are ignored.
    virtual void EnableShutdownPrivilege() = 0;
    // ExitWindowsEx(flags, reserved); the caller neither waits nor checks.
    virtual void ExitWindows(std::uint32_t flags, std::uint32_t reserved) = 0;
    // Opens a document or an address with the program the desktop chooses.
    virtual bool OpenDocument(std::string_view pathOrAddress) = 0;
    // Starts a program by its command line (WinExec) with a ShowWindow
    // command; the caller does not wait.
    virtual void RunProgram(std::string_view commandLine, int showCommand) = 0;
    // ShellExecuteA(window, verb, file, parameters, no folder, showCommand):
    // starts a program through the shell; the caller does not wait. (Not
    // named ShellExecute: windows.h makes that name a macro.)
    virtual void ShellExecuteVerb(std::string_view verb, std::string_view file, std::string_view parameters,
                                  int showCommand) = 0;
    // WinHelpA(window, helpFile, command, data) with a text as data, such as
    // the keyword of kHelpPartialKey. (Not named WinHelp: windows.h makes that
    // name a macro.)
    virtual void OpenHelp(std::string_view helpFile, std::uint32_t command, std::string_view data) = 0;
    // Bits per pixel of the screen (GetDeviceCaps BITSPIXEL).
    [[nodiscard]] virtual int ColourDepth() const = 0;
    // The screen's width and height in pixels (GetDeviceCaps HORZRES, VERTRES).
    [[nodiscard]] virtual ScreenSize Screen() const = 0;
};

class RecordingSystem final : public System {
public:
    void BroadcastSettingChange(std::uint32_t wParam, std::optional<std::string> section) override;
    bool SystemParametersInfo(std::uint32_t action, std::uint32_t uiParam, const SpiParam& pvParam,
                              std::uint32_t winIni) override;
    void EnableShutdownPrivilege() override;
    void ExitWindows(std::uint32_t flags, std::uint32_t reserved) override;
    bool OpenDocument(std::string_view pathOrAddress) override;
    void RunProgram(std::string_view commandLine, int showCommand) override;
    void ShellExecuteVerb(std::string_view verb, std::string_view file, std::string_view parameters,
                          int showCommand) override;
    void OpenHelp(std::string_view helpFile, std::uint32_t command, std::string_view data) override;
    [[nodiscard]] int ColourDepth() const override { return m_colourDepth; }
    // A machine folder has no screen of its own: 1024 by 768 unless set.
    [[nodiscard]] ScreenSize Screen() const override { return m_screen; }

    // Every call so far, one line each, such as "WM_SETTINGCHANGE 0x2e 0",
    // "SystemParametersInfo 0x57 0 null 0", "ExitWindowsEx 0x2 0xffffffff",
    // "WinExec \"rundll32.exe ...\" 2", "ShellExecute \"Open\" \"C:\\...\\Taskbar.exe\" \" /h\" 1",
    // "SystemParametersInfo 0x49 8 {8, 1} 3", "WinHelp \"C:\\...\\Glyphmoor.hlp\" 0x105 \"Icon Cache\"".
    // Programs and help are recorded, never started: a machine folder has
    // neither its Windows programs nor a help viewer to run them.
    [[nodiscard]] const std::vector<std::string>& Calls() const { return m_calls; }
    void SetColourDepth(int bits) { m_colourDepth = bits; }
    void SetScreen(ScreenSize screen) { m_screen = screen; }
    // When false (tests), documents are recorded but not opened.
    void SetOpensDocuments(bool opens) { m_opensDocuments = opens; }

private:
    std::vector<std::string> m_calls;
    int m_colourDepth = 32;
    ScreenSize m_screen{1024, 768};
    bool m_opensDocuments = true;
};

// The line RecordingSystem keeps for a WM_SETTINGCHANGE broadcast, for
// anything else that reports the broadcasts it passes on.
std::string DescribeSettingChange(std::uint32_t wParam, const std::optional<std::string>& section);

// Opens a document or address with the desktop's handler (xdg-open, or the
// shell on Windows); false when it cannot be started or says that no program
// opens it.
bool OpenWithDesktop(std::string_view pathOrAddress);

}  // namespace glyphmoor
