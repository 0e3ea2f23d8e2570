#include "cli/UndoCommands.h"

#include "foundation/Baseline.h"

#include <array>
#include <ostream>

namespace glyphmoor {

namespace {

int UndoAllCommand(CliContext& c, CommandArgs a);

constexpr std::array<CliCommand, 1> kCommands = {{
    {"undo-all", "[--yes]",
     "without --yes prints what it would restore; with it returns every registry value and file the program "
     "ever changed on the machine to what it was before the program first wrote there",
     UndoAllCommand},
}};

int UndoAllCommand(CliContext& c, CommandArgs a) {
    const bool yes = a.size() == 1 && a[0] == "--yes";
    if (!a.empty() && !yes) {
        return UsageError(c, kCommands[0]);
    }
    Machine* machine = c.OpenMachine();
    if (machine == nullptr) {
        return kExitFailed;
    }
    RegistryStore& registry = machine->Registry().Inner();
    const UndoPlan plan = PlanUndo(registry, machine->Env());
    if (!yes) {
        for (const std::string& line : DescribeUndo(plan)) {
            c.out << line << '\n';
        }
        if (plan.Empty()) {
            c.err << "glyphmoor-cli: the machine is as it was before the program first changed it\n";
        }
        return kExitOk;
    }
    const std::vector<std::string> kept = UndoAll(registry, machine->Env());
    if (!c.SaveMachine()) {
        return kExitFailed;
    }
    // The shell reloads its icons; the registry lever of a rebuild is not
    // touched, so nothing is left changed.
    machine->Sys().BroadcastSettingChange(kSpiSetIconMetrics, std::nullopt);
    for (const std::string& file : kept) {
        c.err << "glyphmoor-cli: left in place: " << file << '\n';
    }
    return kept.empty() ? kExitOk : kExitFailed;
}

}  // namespace

std::span<const CliCommand> UndoCommands() {
    return kCommands;
}

}  // namespace glyphmoor
