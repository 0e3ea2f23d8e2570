#include "cli/Cli.h"

#include "cli/IconCommands.h"
#include "cli/IconFileCommands.h"
#include "cli/IniCommands.h"
#include "cli/RebuildCommands.h"
#include "cli/RegCommands.h"
#include "cli/UndoCommands.h"

#include <array>
#include <ostream>

namespace glyphmoor {

namespace {

// Every group of commands, each a table of its own.
std::vector<std::span<const CliCommand>> CommandGroups() {
    return {RegCommands(),      IniCommands(),     IconCommands(),
            IconFileCommands(), RebuildCommands(), UndoCommands()};
}

void PrintHelp(std::ostream& out) {
    out << "usage: glyphmoor-cli [--machine DIR] COMMAND [ARGUMENTS]\n\n"
           "Without --machine, commands work on the built-in default machine (a Windows 98\n"
           "machine folder in the user's data folder). DIR may be any Wine prefix; a Wine\n"
           "prefix whose wineserver runs is refused for writing.\n\n"
           "PATH is a registry path such as HKEY_CURRENT_USER\\Control Panel\\Cursors; an\n"
           "empty value NAME is given as \"\" and names the unnamed value.\n\n"
           "commands:\n";
    out << "  help\n      this text\n";
    for (auto group : CommandGroups()) {
        for (const auto& command : group) {
            out << "  " << command.name;
            if (!command.usage.empty()) {
                out << ' ' << command.usage;
            }
            out << "\n      " << command.summary << '\n';
        }
    }
}

// Finds the command whose name (one or two words) begins args; sets used to
// the number of words it takes.
const CliCommand* FindCommand(CommandArgs args, std::size_t& used) {
    for (auto group : CommandGroups()) {
        for (const auto& command : group) {
            const std::string_view name = command.name;
            const auto space = name.find(' ');
            if (space == std::string_view::npos) {
                if (args[0] == name) {
                    used = 1;
                    return &command;
                }
            } else if (args.size() >= 2 && args[0] == name.substr(0, space) &&
                       args[1] == name.substr(space + 1)) {
                used = 2;
                return &command;
            }
        }
    }
    return nullptr;
}

}  // namespace

Machine* CliContext::OpenMachine() {
    if (m_machine) {
        return m_machine.get();
    }
    auto machine = m_machineDir ? OpenMachineFolder(*m_machineDir) : OpenHomeMachine();
    if (!machine) {
        err << "glyphmoor-cli: " << machine.reason() << '\n';
        return nullptr;
    }
    m_machine = std::move(*machine);
    if (auto warning = m_machine->StaleWarning()) {
        err << "glyphmoor-cli: warning: " << *warning << '\n';
    }
    return m_machine.get();
}

std::optional<std::filesystem::path> CliContext::HostFile(const std::string& argument) {
    if (!IsDriveLetterPath(argument)) {
        return std::filesystem::path(argument);
    }
    Machine* machine = OpenMachine();
    if (machine == nullptr) {
        return std::nullopt;
    }
    return machine->Env().HostPath(argument);
}

bool CliContext::SaveMachine() {
    if (!m_machine) {
        return true;
    }
    Status saved = m_machine->Save();
    if (!saved) {
        err << "glyphmoor-cli: " << saved.reason() << '\n';
        return false;
    }
    return true;
}

int UsageError(CliContext& context, const CliCommand& command) {
    context.err << "usage: glyphmoor-cli " << command.name << ' ' << command.usage << '\n';
    return kExitUsage;
}

int RunCli(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::optional<std::filesystem::path> machineDir;
    std::size_t first = 0;
    while (first < args.size() && args[first].starts_with("--machine")) {
        if (args[first] == "--machine" && first + 1 < args.size()) {
            machineDir = args[first + 1];
            first += 2;
        } else if (args[first].starts_with("--machine=")) {
            machineDir = args[first].substr(10);
            first += 1;
        } else {
            err << "glyphmoor-cli: --machine needs a folder\n";
            return kExitUsage;
        }
    }
    const CommandArgs rest(args.data() + first, args.size() - first);
    if (rest.empty() || rest[0] == "help" || rest[0] == "--help" || rest[0] == "-h") {
        PrintHelp(out);
        return rest.empty() ? kExitUsage : kExitOk;
    }
    std::size_t used = 0;
    const CliCommand* command = FindCommand(rest, used);
    if (command == nullptr) {
        err << "glyphmoor-cli: unknown command '" << rest[0]
            << (rest.size() > 1 ? " " + rest[1] : std::string())
            << "'; 'glyphmoor-cli help' lists the commands\n";
        return kExitUsage;
    }
    CliContext context(out, err, machineDir);
    return command->run(context, rest.subspan(used));
}

}  // namespace glyphmoor
