#include "cli/UndoCommands.h"

#include "foundation/Baseline.h"

#include <ostream>

namespace glyphmoor {

int UndoAllCommand(CliContext& c, CommandArgs a) {
    const bool yes = a.size() == 1 && a[0] == "--yes";
    if (!a.empty() && !yes) {
        return UsageError(c, "undo-all");
    }
    Machine* machine = &c.TheMachine();
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

}  // namespace glyphmoor
