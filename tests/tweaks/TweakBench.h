// A machine for the tweak tests: its tree reads the machine's own registry,
// and Apply writes through a logging registry and system, so a test sees
// every write and call in order.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/ChangeLog.h"
#include "foundation/modRegistry.h"
#include "prompts/modMsgbox.h"
#include "support/ScriptedPrompt.h"
#include "support/TempMachine.h"
#include "tweaks/TweakApply.h"
#include "tweaks/TweakEditing.h"
#include "tweaks/TweakTree.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace glyphmoor::test {

// A Windows 98 system hive that Wine made: the machine keeps its own defaults.
inline std::string WinePrefixSystem() {
    return Win98System() + "\n[Software\\\\Wine] 1700000000\n";
}

class TweakBench {
public:
    explicit TweakBench(std::string_view systemBody = Win98System())
        : m_folder(systemBody),
          machine(m_folder.Open()),
          logged(machine->Registry(), log),
          loggedSystem(system, log),
          app(InitEnvironment(machine->Env())),
          prompt(system, app.helpFile),
          tree(logged, app) {
        system.SetOpensDocuments(false);
    }

    // What the machine holds before the program runs (no baseline is recorded).
    void Set(std::string_view path, std::string_view name, std::string_view text) {
        SetRegString(machine->Registry().Inner(), path, name, text);
    }
    void SetDword(std::string_view path, std::string_view name, std::int32_t number) {
        SetRegDword(machine->Registry().Inner(), path, name, number);
    }
    [[nodiscard]] std::string Get(std::string_view path, std::string_view name) {
        return GetRegString(machine->Registry(), path, name);
    }
    TweakTree& Built(DisplayCaps caps = {}) {
        tree.Build(caps);
        state.tweaksLoaded = true;
        return tree;
    }
    MsgContext Messages() { return {prompt, machine->Registry(), system, app, state}; }
    void Apply() { ApplyTweaks(tree, logged, loggedSystem); }
    // Toggles `key` as a click does; a test fails where it is refused.
    void Toggle(std::string_view key) {
        MsgContext messages = Messages();
        const ToggleOutcome outcome = ToggleTweak(tree, messages, key);
        ASSERT_TRUE(outcome == ToggleOutcome::TurnedOn || outcome == ToggleOutcome::TurnedOff) << key;
    }
    [[nodiscard]] int Image(std::string_view key) const {
        const TweakNode* node = tree.Find(key);
        return node != nullptr ? node->image : -1;
    }

private:
    TempMachine m_folder;

public:
    std::unique_ptr<Machine> machine;
    ChangeLog log;
    LoggingRegistry logged;
    RecordingSystem system;
    LoggingSystem loggedSystem;
    AppEnvironment app;
    AppState state;
    ScriptedPrompt prompt;
    TweakTree tree;
};

}  // namespace glyphmoor::test
