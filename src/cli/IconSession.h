// IconSession: one command's machine, catalogue and state, and Apply as the
// window applies (the icon-cache rebuild answered silently, one save).
#pragma once

#include "cli/Cli.h"
#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/RecentThemes.h"
#include "icons/IconCacheRebuild.h"
#include "icons/IconEditing.h"
#include "prompts/SilentPrompt.h"
#include "prompts/modMsgbox.h"

#include <string>

namespace glyphmoor {

// One staging command's machine, catalogue and state; the groups it needs are built.
struct IconSession {
    Machine& machine;
    AppEnvironment app;
    IconCatalogue catalogue;
    AppState state;
    IconNameMarks names;

    IconSession(Machine& m, bool cursors)
        : machine(m), app(InitEnvironment(m.Env())), catalogue(m.Registry(), app) {
        catalogue.DetectShellIcons();
        if (cursors) {
            catalogue.BuildCursorCatalogue();
        }
        // The current theme stays what it is: Apply writes it back last.
        const std::string current = ReadCurrentTheme(m.Registry());
        if (current.size() > 1 && current[1] == ':') {
            state.currentTheme = current;
        }
    }

    // Applies what was staged as the window's Apply does, the icon-cache
    // rebuild included (answering its notices silently), and writes the machine back.
    bool ApplyAndSave(CliContext& c) {
        ApplyIconChanges(catalogue, machine.Registry(), machine.Sys(), state, names);
        if (state.rebuildPending) {
            SilentPrompt prompt(machine.Sys(), app.helpFile);
            MsgContext messages{prompt, machine.Registry(), machine.Sys(), app, state};
            RebuildHooks hooks;
            hooks.desktopUpdateShell = [this] { return catalogue.State().newShell; };
            RebuildIconCache(messages, hooks);
        }
        return c.SaveMachine();
    }
};

}  // namespace glyphmoor
