#include "cli/Cli.h"

#include "foundation/Version.h"

#include <ostream>

namespace glyphmoor {

namespace {

constexpr std::string_view kProgram = "glyphmoor-cli";

void PrintUsageLine(std::ostream& out, const CliCommand& command) {
    out << "usage: " << kProgram << ' ' << command.name << ' ' << command.usage << '\n';
}

void PrintHelp(std::ostream& out) {
    out << "usage: glyphmoor-cli [--machine DIR] COMMAND [ARGUMENTS]\n\n"
           "Without --machine, commands work on the built-in default machine (a Windows 98\n"
           "machine folder in the user's data folder). DIR may be any Wine prefix; a Wine\n"
           "prefix whose wineserver runs is refused for writing.\n\n"
           "PATH is a registry path such as HKEY_CURRENT_USER\\Control Panel\\Cursors; an\n"
           "empty value NAME is given as \"\" and names the unnamed value.\n\n"
           "commands:\n";
    out << "  help [COMMAND]\n      this text, or what COMMAND does (also --help, -h)\n";
    for (const CliCommand& command : CliCommands()) {
        out << "  " << command.name;
        if (!command.usage.empty()) {
            out << ' ' << command.usage;
        }
        out << "\n      " << command.summary << '\n';
    }
    out << "  --version\n      the program's version\n";
}

// Finds the command whose name (one or two words) begins args, the two-word
// name first ("icons set" before "icons"); sets used to the words it takes.
const CliCommand* FindCommand(CommandArgs args, std::size_t& used) {
    const CliCommand* found = nullptr;
    for (const CliCommand& command : CliCommands()) {
        const std::string_view name = command.name;
        const auto space = name.find(' ');
        if (space == std::string_view::npos) {
            if (found == nullptr && args[0] == name) {
                found = &command;
                used = 1;
            }
        } else if (args.size() >= 2 && args[0] == name.substr(0, space) &&
                   args[1] == name.substr(space + 1)) {
            used = 2;
            return &command;
        }
    }
    return found;
}

int UnknownCommand(std::ostream& err, CommandArgs args) {
    err << kProgram << ": unknown command '" << args[0] << (args.size() > 1 ? " " + args[1] : std::string())
        << "'; 'glyphmoor-cli help' lists the commands\n";
    return kExitUsage;
}

// help COMMAND: its usage line, its summary and its help text.
int HelpOn(CommandArgs args, std::ostream& out, std::ostream& err) {
    std::size_t used = 0;
    const CliCommand* command = FindCommand(args, used);
    if (command == nullptr || used != args.size()) {
        return UnknownCommand(err, args);
    }
    PrintUsageLine(out, *command);
    out << '\n' << command->summary << '\n';
    if (!command->help.empty()) {
        out << '\n' << command->help << '\n';
    }
    return kExitOk;
}

// Checks the command's arity, opens its machine, runs it.
int RunCommand(const CliCommand& command, CliContext& context, CommandArgs args) {
    if (args.size() < command.minArgs || args.size() > command.maxArgs) {
        return UsageError(context, command);
    }
    if (command.needsMachine && context.OpenMachine() == nullptr) {
        return kExitFailed;
    }
    return command.run(context, args);
}

}  // namespace

Machine* CliContext::OpenMachine() {
    if (m_machine) {
        return m_machine.get();
    }
    auto machine = m_machineDir ? OpenMachineFolder(*m_machineDir) : OpenHomeMachine();
    if (!machine) {
        err << kProgram << ": " << machine.reason() << '\n';
        return nullptr;
    }
    m_machine = std::move(*machine);
    if (auto warning = m_machine->StaleWarning()) {
        err << kProgram << ": warning: " << *warning << '\n';
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
        err << kProgram << ": " << saved.reason() << '\n';
        return false;
    }
    return true;
}

int UsageError(CliContext& context, const CliCommand& command) {
    PrintUsageLine(context.err, command);
    return kExitUsage;
}

int UsageError(CliContext& context, std::string_view name) {
    for (const CliCommand& command : CliCommands()) {
        if (command.name == name) {
            return UsageError(context, command);
        }
    }
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
            err << kProgram << ": --machine needs a folder\n";
            return kExitUsage;
        }
    }
    const CommandArgs rest(args.data() + first, args.size() - first);
    if (rest.empty()) {
        PrintHelp(out);
        return kExitUsage;
    }
    if (rest[0] == "--version") {
        out << kProgram << ' ' << ProgramVersion() << '\n';
        return kExitOk;
    }
    if (rest[0] == "help" || rest[0] == "--help" || rest[0] == "-h") {
        if (rest.size() > 1) {
            return HelpOn(rest.subspan(1), out, err);
        }
        PrintHelp(out);
        return kExitOk;
    }
    std::size_t used = 0;
    const CliCommand* command = FindCommand(rest, used);
    if (command == nullptr) {
        return UnknownCommand(err, rest);
    }
    CliContext context(out, err, machineDir);
    return RunCommand(*command, context, rest.subspan(used));
}

}  // namespace glyphmoor
