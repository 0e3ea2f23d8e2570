// Environment: the seam to what the machine's Windows reports about itself.
//
// On Windows this is the real system; on a machine folder it is derived from
// the folder's registry and layout (MachineEnvironment).
#pragma once

#include "foundation/MachineKind.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// What GetVersionEx reports: platform 1 is the Windows 95 family, 2 is NT.
struct OsVersion {
    std::uint32_t platformId = 0;
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t build = 0;

    friend bool operator==(const OsVersion&, const OsVersion&) = default;
};

inline constexpr std::uint32_t kPlatformWindows = 1;
inline constexpr std::uint32_t kPlatformNt = 2;

// A full Windows path: a drive letter and a colon ("C:\\Msdos.sys").
inline bool IsDriveLetterPath(std::string_view path) {
    return path.size() >= 2 && path[1] == ':' &&
           ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
}

class Environment {
public:
    virtual ~Environment() = default;
    Environment() = default;
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    [[nodiscard]] virtual OsVersion Version() const = 0;
    // Whose defaults the machine has: the described Windows', Wine's or its own.
    [[nodiscard]] virtual MachineKind Kind() const = 0;
    // GetWindowsDirectory and GetSystemDirectory: Windows paths without a
    // trailing backslash ("C:\WINDOWS").
    [[nodiscard]] virtual std::string WindowsDirectory() const = 0;
    [[nodiscard]] virtual std::string SystemDirectory() const = 0;
    // The program's own folder as a Windows path ("C:\Program Files\Glyphmoor").
    [[nodiscard]] virtual std::string ProgramDirectory() const = 0;
    // The host file a Windows path names. Windows resolves paths without regard
    // to case; so does this. Parts that do not exist yet are kept as given, so
    // the result can be used to create the file. A path that is not a full
    // Windows path (drive letter, colon) is taken as a host path.
    [[nodiscard]] virtual std::filesystem::path HostPath(std::string_view windowsPath) const = 0;
    // The Windows path of a host file, or "" when no drive of the machine holds it.
    [[nodiscard]] virtual std::string WindowsPath(const std::filesystem::path& hostPath) const = 0;
    // The drives a user keeps folders on, in letter order, each as its letter
    // and a colon ("C:"): on Windows the fixed and removable drives, on a
    // machine folder the drives its dosdevices folder maps. C: is always
    // among them.
    [[nodiscard]] virtual std::vector<std::string> Drives() const { return {"C:"}; }
};

}  // namespace glyphmoor
