// MachineFolder: a folder laid out like a Wine prefix, taken as a machine.
//
//   system.reg    HKEY_LOCAL_MACHINE          drive_c/      drive C:
//   user.reg      HKEY_CURRENT_USER           dosdevices/   other drive letters, as Wine maps them
//   userdef.reg   HKEY_USERS\.Default
#pragma once

#include "foundation/Result.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

enum class HiveId { Machine, User, DefaultUser };

class MachineFolder {
public:
    // Fails when dir is not a folder or holds neither system.reg nor drive_c.
    static Result<MachineFolder> Open(const std::filesystem::path& dir);

    [[nodiscard]] const std::filesystem::path& Dir() const { return m_dir; }
    [[nodiscard]] std::filesystem::path HiveFile(HiveId hive) const;
    // What saves lock: the folder itself (see FileLock).
    [[nodiscard]] std::filesystem::path LockFile() const;
    // The journal that lets the hives of one save change together
    // (FileJournal.h); it is there only while a save is under way or after
    // one was killed. Wine does not read it.
    [[nodiscard]] std::filesystem::path JournalFile() const;

    // The root folder of a drive letter: dosdevices/x: when Wine maps it, and
    // drive_c for C: otherwise.
    [[nodiscard]] std::filesystem::path DriveRoot(char letter) const;
    [[nodiscard]] std::filesystem::path HostPath(std::string_view windowsPath) const;
    [[nodiscard]] std::string WindowsPath(const std::filesystem::path& hostPath) const;
    // The drive letters Wine maps (the entries "x:" of dosdevices/ whose
    // folder exists), as "C:", "Z:", in letter order; C: always.
    [[nodiscard]] std::vector<std::string> Drives() const;

    // When a wineserver runs for this folder, the sentence that says so and how
    // to stop it; nothing otherwise. Such a server holds the registry in memory
    // and writes it back over any change made to the files meanwhile.
    [[nodiscard]] std::optional<std::string> RunningWineServer() const;

private:
    explicit MachineFolder(std::filesystem::path dir) : m_dir(std::move(dir)) {}
    std::filesystem::path m_dir;
};

// The folders where a wineserver for the prefix would keep its lock file.
std::vector<std::filesystem::path> WineServerDirs(const std::filesystem::path& prefix);

// Resolves the components of a relative Windows path under base without regard
// to case; components that do not exist are kept as given.
std::filesystem::path ResolveNoCase(const std::filesystem::path& base, std::string_view relativeWindowsPath);

}  // namespace glyphmoor
