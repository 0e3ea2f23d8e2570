#include "cli/StartupCommands.h"

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "prompts/SilentPrompt.h"
#include "prompts/modMsgbox.h"
#include "tweaks/StartupLists.h"

namespace glyphmoor {

namespace {

std::optional<StartupList> ListArgument(CliContext& c, std::string_view name) {
    const auto list = StartupListByName(name);
    if (!list) {
        c.err << "glyphmoor-cli: no list '" << name
              << "'; the lists are uninstall, run, run-services, user-run\n";
    }
    return list;
}

}  // namespace

int Startup(CliContext& c, CommandArgs a) {
    std::optional<StartupList> only;
    if (!a.empty()) {
        only = ListArgument(c, a[0]);
        if (!only) {
            return kExitFailed;
        }
    }
    StartupLists lists;
    lists.Load(c.TheMachine().Registry());
    for (const StartupEntry& entry : lists.Entries()) {
        if (!only || entry.list == *only) {
            c.out << InfoOf(entry.list).cliName << '\t' << entry.text << '\t' << entry.command << '\n';
        }
    }
    return kExitOk;
}

int StartupAdd(CliContext& c, CommandArgs a) {
    const auto list = ListArgument(c, a[0]);
    if (!list) {
        return kExitFailed;
    }
    StartupLists lists;
    lists.Load(c.TheMachine().Registry());
    if (!lists.QueueAdd(*list, a[1], a[2])) {
        c.err << "glyphmoor-cli: "
              << (*list == StartupList::Uninstall
                      ? "programs are added to the uninstall list by their installers"
                      : "an entry needs a name and a command")
              << "; nothing was changed\n";
        return kExitFailed;
    }
    lists.Apply(c.TheMachine().Registry());
    return c.SaveMachine() ? kExitOk : kExitFailed;
}

int StartupDelete(CliContext& c, CommandArgs a) {
    const bool yes = a.size() == 3 && a[2] == "--yes";
    if (a.size() == 3 && !yes) {
        return UsageError(c, "startup delete");
    }
    const auto list = ListArgument(c, a[0]);
    if (!list) {
        return kExitFailed;
    }
    Machine& machine = c.TheMachine();
    StartupLists lists;
    lists.Load(machine.Registry());
    const StartupEntry* entry = lists.Find(*list, a[1]);
    if (entry == nullptr) {
        c.err << "glyphmoor-cli: the " << InfoOf(*list).cliName << " list has no single entry '" << a[1]
              << "'; nothing was changed\n";
        return kExitFailed;
    }
    if (!yes) {
        const AppEnvironment app = InitEnvironment(machine.Env());
        AppState state;
        SilentPrompt prompt(machine.Sys(), app.helpFile);
        MsgContext messages{prompt, machine.Registry(), machine.Sys(), app, state};
        static_cast<void>(MsgConfirmPermanentDelete(messages, entry->text));
        c.err << prompt.Answered().back() << "\n\nglyphmoor-cli: give --yes to continue\n";
        return kExitFailed;
    }
    lists.QueueDelete(*list, a[1]);
    lists.Apply(machine.Registry());
    return c.SaveMachine() ? kExitOk : kExitFailed;
}

}  // namespace glyphmoor
