#include "cli/RebuildCommands.h"

#include "icons/ShellIconState.h"

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/ChangeLog.h"
#include "foundation/modRegistry.h"
#include "icons/IconCacheRebuild.h"
#include "ui/core/SilentPrompt.h"

#include <array>
#include <ostream>

namespace glyphmoor {

namespace {

// The desktop-update shell, as the icon catalogue's machine state defines it:
// its Start menu order key exists.

int RebuildIcons(CliContext& c, CommandArgs a);

constexpr std::array<CliCommand, 1> kCommands = {{
    {"rebuild-icons", "",
     "rebuilds the shell's icon cache, asking and showing nothing; prints each registry write and message "
     "sent",
     RebuildIcons},
}};

int RebuildIcons(CliContext& c, CommandArgs a) {
    if (!a.empty()) {
        return UsageError(c, kCommands[0]);
    }
    Machine* machine = c.OpenMachine();
    if (machine == nullptr) {
        return kExitFailed;
    }
    ChangeLog log;
    LoggingRegistry registry(machine->Registry(), log);
    LoggingSystem system(machine->Sys(), log);
    const AppEnvironment app = InitEnvironment(machine->Env());
    AppState state;
    state.rebuildPending = true;
    SilentPrompt prompt(system, app.helpFile);
    MsgContext context{prompt, registry, system, app, state};

    RebuildHooks hooks;
    // The catalogue's own reading of the machine says whether the desktop-update shell is there.
    hooks.desktopUpdateShell = [&] { return DetectShellState(machine->Registry(), app).newShell; };
    if (RebuildIconCache(context, hooks) == RebuildOutcome::RefusedOnNt4Ie4) {
        const std::string& text = prompt.Answered().back();
        c.err << "glyphmoor-cli: the icon cache was not rebuilt: " << text.substr(0, text.find('\n')) << '\n';
        return kExitFailed;
    }
    if (!c.SaveMachine()) {
        return kExitFailed;
    }
    for (const auto& line : log.Lines()) {
        c.out << line << '\n';
    }
    return kExitOk;
}

}  // namespace

std::span<const CliCommand> RebuildCommands() {
    return kCommands;
}

}  // namespace glyphmoor
