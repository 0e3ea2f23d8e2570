#include "cli/RebuildCommands.h"

#include "icons/ShellIconState.h"

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/ChangeLog.h"
#include "foundation/modRegistry.h"
#include "icons/IconCacheRebuild.h"
#include "prompts/SilentPrompt.h"

#include <ostream>

namespace glyphmoor {

int RebuildIcons(CliContext& c, CommandArgs) {
    Machine* machine = &c.TheMachine();
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

}  // namespace glyphmoor
