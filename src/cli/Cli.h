// glyphmoor-cli: scriptable commands over the core.
//
// Output is plain text, one item a line, fields separated by a TAB. Errors go to
// the error stream with a non-zero status: 1 when the work failed, 2 when the
// command line was wrong.
#pragma once

#include "foundation/Machine.h"

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

inline constexpr int kExitOk = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;

class CliContext {
public:
    CliContext(std::ostream& output, std::ostream& errors, std::optional<std::filesystem::path> machineDir)
        : out(output), err(errors), m_machineDir(std::move(machineDir)) {}

    std::ostream& out;
    std::ostream& err;

    // The machine of --machine DIR, or the built-in default machine; opened on
    // first use. nullptr after saying why on the error stream.
    Machine* OpenMachine();
    // The machine a command that needs one runs on: the runner has opened it.
    Machine& TheMachine() { return *m_machine; }
    // The host file an argument names: a Windows path on the machine when it
    // begins with a drive letter and a colon (C:\Msdos.sys), else a path of
    // the host. Nothing after saying why on the error stream.
    std::optional<std::filesystem::path> HostFile(const std::string& argument);
    // Ends a command that changed the machine: writes it back. False after
    // saying why on the error stream.
    bool SaveMachine();

private:
    std::optional<std::filesystem::path> m_machineDir;
    std::unique_ptr<Machine> m_machine;
};

// The words after the command's name.
using CommandArgs = std::span<const std::string>;

// One command of the table: the runner finds it by name, checks its arity,
// opens the machine when it needs one, then runs it.
struct CliCommand {
    std::string_view name;     // one or two words
    std::string_view usage;    // the arguments, as help shows them
    std::string_view summary;  // one line, for the list of commands
    std::string_view help;     // what `help COMMAND` adds to the summary
    std::size_t minArgs = 0;
    std::size_t maxArgs = 0;
    bool needsMachine = false;
    int (*run)(CliContext& context, CommandArgs args) = nullptr;
};

// Every command of glyphmoor-cli, in the order help lists them.
std::span<const CliCommand> CliCommands();

// Runs a whole command line (without the program's name).
int RunCli(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// Says how a command is used, on the error stream, and gives kExitUsage.
int UsageError(CliContext& context, const CliCommand& command);
// The same for the command of this name.
int UsageError(CliContext& context, std::string_view name);

}  // namespace glyphmoor
