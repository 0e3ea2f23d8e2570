// Machine: the system Glyphmoor customises, with its seams.
//
// The window and the command line create one Machine and pass it down; nothing
// in the core reaches a machine any other way. Changes made through the
// registry are kept in memory until Save(), which ends a user-level operation
// (an Apply, a save, a close).
#pragma once

#include "foundation/Baseline.h"
#include "foundation/Environment.h"
#include "foundation/RegistryStore.h"
#include "foundation/Result.h"
#include "foundation/System.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace glyphmoor {

class Machine {
public:
    virtual ~Machine() = default;
    Machine() = default;
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    // The machine's registry. Every change made through it outside the
    // program's own key is recorded in the machine's baseline first.
    virtual BaselineRegistry& Registry() = 0;
    virtual const Environment& Env() const = 0;
    virtual System& Sys() = 0;
    // Writes back what changed since the last save. Fails with a reason and
    // leaves the machine's files as they were.
    // The first save that follows a write to the machine also sets up the
    // program's folder there (see ProgramFolder.h).
    virtual Status Save() = 0;
    // Makes a folder (a Windows path) for a change and records it for Undo
    // all. On a machine folder it is made with the next Save, in the same
    // change as the registry's files; on Windows at once.
    virtual Status MakeFolder(const std::string& windowsPath) = 0;
    // Replaces (or makes) a file (a Windows path) by `bytes`, with the given
    // DOS attributes or the old file's, for a change, in the same way; a file
    // it makes is recorded for Undo all.
    virtual Status WriteDriveFile(const std::string& windowsPath, std::string bytes,
                                  std::optional<std::uint32_t> attributes) = 0;
    // Removes an empty folder (a Windows path) for a change, in the same way.
    virtual Status RemoveFolder(const std::string& windowsPath) = 0;
    // Makes whatever of the program's folder the machine lacks, recorded for
    // Undo all (see ProgramFolder.h); on a machine folder, saved together
    // with the registry: a save of what changed so far.
    virtual Status MakeProgramFolder() = 0;
    // Said once when the machine is opened: a wineserver runs for the prefix,
    // so its files may be older than what the server holds. Nothing otherwise.
    [[nodiscard]] virtual std::optional<std::string> StaleWarning() const { return std::nullopt; }
    // Which machine this is, for the window to show: "the default machine
    // (DIR)", "Wine prefix DIR", "machine folder DIR" or "this Windows".
    [[nodiscard]] virtual std::string Description() const = 0;
};

// A machine folder laid out like a Wine prefix.
Result<std::unique_ptr<Machine>> OpenMachineFolder(const std::filesystem::path& dir);

// The machine the program works on when none is named: the real system on
// Windows, the built-in default machine elsewhere.
Result<std::unique_ptr<Machine>> OpenHomeMachine();

}  // namespace glyphmoor
