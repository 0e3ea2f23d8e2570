// Machine: the system Glyphmoor customises, with its seams.
//
// The window and the command line create one Machine and pass it down; nothing
// in the core reaches a machine any other way. Changes made through the
// registry are kept in memory until Save(), which ends a user-level operation
// (an Apply, a save, a close).
#pragma once

#include "foundation/Environment.h"
#include "foundation/RegistryStore.h"
#include "foundation/Result.h"
#include "foundation/System.h"

#include <filesystem>
#include <memory>

namespace glyphmoor {

class Machine {
public:
    virtual ~Machine() = default;
    Machine() = default;
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    virtual RegistryStore& Registry() = 0;
    virtual const Environment& Env() const = 0;
    virtual System& Sys() = 0;
    // Writes back what changed since the last save. Fails with a reason and
    // leaves the machine's files as they were.
    virtual Status Save() = 0;
};

// A machine folder laid out like a Wine prefix.
Result<std::unique_ptr<Machine>> OpenMachineFolder(const std::filesystem::path& dir);

// The machine the program works on when none is named: the real system on
// Windows, the built-in default machine elsewhere.
Result<std::unique_ptr<Machine>> OpenHomeMachine();

}  // namespace glyphmoor
