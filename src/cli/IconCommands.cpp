#include "cli/IconCommands.h"
#include "cli/IconSession.h"

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/RecentThemes.h"
#include "foundation/TextEncoding.h"
#include "iconfiles/modResource.h"
#include "icons/IconCacheRebuild.h"
#include "icons/IconEditing.h"
#include "icons/OwnDefaults.h"
#include "prompts/SilentPrompt.h"
#include "prompts/modMsgbox.h"

#include <array>
#include <charconv>
#include <filesystem>
#include <optional>

namespace glyphmoor {

namespace {

// The group number of "--group N", 1 to 7.
std::optional<int> ParseGroup(std::string_view text) {
    int number = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (ec != std::errc() || end != text.data() + text.size() || number < 1 || number > kIconGroupCount) {
        return std::nullopt;
    }
    return number;
}

// The group of a GROUP argument: its number or its name ("Desktop Icons").
std::optional<int> GroupArgument(std::string_view text) {
    if (auto number = ParseGroup(text)) {
        return number;
    }
    for (int number = 1; number <= kIconGroupCount; ++number) {
        if (EqualsNoCase(kGroupNames.at(static_cast<std::size_t>(number - 1)), text)) {
            return number;
        }
    }
    return std::nullopt;
}

// Finds GROUP and NAME; says why on the error stream when either is unknown.
std::optional<std::pair<int, std::size_t>> FindEntry(CliContext& c, IconSession& s,
                                                     std::string_view groupText, std::string_view name) {
    const auto group = GroupArgument(groupText);
    if (!group) {
        c.err << "glyphmoor-cli: no icon group '" << groupText << "'; give 1 to " << kIconGroupCount
              << " or a group's name\n";
        return std::nullopt;
    }
    const IconGroup& list = s.catalogue.Group(*group);
    for (std::size_t i = 0; i < list.Count(); ++i) {
        if (EqualsNoCase(list.KeyAt(i), name)) {
            return std::make_pair(*group, i);
        }
    }
    c.err << "glyphmoor-cli: the group '" << list.Name() << "' has no entry '" << name
          << "' on this machine\n";
    return std::nullopt;
}

// Runs one staging step on one entry; applies and saves when it changed something.
template <typename Step>
int OnEntry(CliContext& c, std::string_view groupText, std::string_view name, Step step) {
    const auto group = GroupArgument(groupText);
    IconSession s(c.TheMachine(), group && *group == static_cast<int>(GroupNumber::Cursors));
    const auto found = FindEntry(c, s, groupText, name);
    if (!found) {
        return kExitFailed;
    }
    const auto [number, position] = *found;
    if (!step(s, number, position)) {
        c.err << "glyphmoor-cli: nothing to change\n";
        return kExitOk;
    }
    // Like the window's Apply, a change prints nothing; `icons` shows the result.
    return s.ApplyAndSave(c) ? kExitOk : kExitFailed;
}

}  // namespace

// Why LOCATION cannot be given to an entry of the group: the file is not on
// the machine, or does not hold that icon, or is no pointer file. Nothing when
// it can.
std::optional<std::string> WhyNotUsable(Machine& machine, int group, const IconLocation& location) {
    const AppEnvironment app = InitEnvironment(machine.Env());
    const std::string file = InSystemFolder(app, location.file);
    const std::filesystem::path host = machine.Env().HostPath(file);
    std::error_code ec;
    if (!std::filesystem::is_regular_file(host, ec)) {
        return "the machine has no file " + file;
    }
    if (group == static_cast<int>(GroupNumber::Cursors)) {
        const std::string_view extension =
            std::string_view(file).substr(file.size() >= 4 ? file.size() - 4 : 0);
        if (EqualsNoCase(extension, ".cur") || EqualsNoCase(extension, ".ani")) {
            return std::nullopt;
        }
        return file + " is not a pointer file (.cur or .ani)";
    }
    OwnDefaultFinder finder(machine.Registry(), app);
    if (finder.Holds(location)) {
        return std::nullopt;
    }
    if (location.index < 0) {
        return file + " holds no icon with the resource id " + std::to_string(-location.index);
    }
    return file + " holds no icon at index " + std::to_string(location.index) + " (it holds " +
           std::to_string(IconCountOfFile(host)) + ")";
}

int IconsSet(CliContext& c, CommandArgs a) {
    const auto location = SplitIconLocation(a[2]);
    if (!location || location->file.empty()) {
        c.err << "glyphmoor-cli: '" << a[2] << "' is not an icon location (file,index)\n";
        return kExitUsage;
    }
    if (const auto group = GroupArgument(a[0])) {
        if (auto why = WhyNotUsable(c.TheMachine(), *group, *location)) {
            c.err << "glyphmoor-cli: " << *why << "; nothing was changed\n";
            return kExitFailed;
        }
    }
    return OnEntry(c, a[0], a[1], [&](IconSession& s, int number, std::size_t position) {
        return ChangeIcon(s.catalogue, s.state, number, position, *location);
    });
}

int IconsRestore(CliContext& c, CommandArgs a) {
    return OnEntry(c, a[0], a[1], [&](IconSession& s, int number, std::size_t position) {
        const std::string label = PathLabelText(number, s.catalogue.Group(number).At(position));
        return RestoreIcon(s.catalogue, s.state, number, position, label);
    });
}

int IconsRename(CliContext& c, CommandArgs a) {
    bool notRenamable = false;
    bool emptyName = false;
    const int status = OnEntry(c, a[0], a[1], [&](IconSession& s, int number, std::size_t position) {
        if (!IsRenamable(s.catalogue.Group(number).At(position))) {
            notRenamable = true;
            return false;
        }
        const RenameOutcome outcome = RenameIcon(s.catalogue, s.state, s.names, number, position, a[2]);
        emptyName = outcome == RenameOutcome::EmptyName;
        return outcome == RenameOutcome::Renamed;
    });
    if (notRenamable) {
        c.err << "glyphmoor-cli: '" << a[1] << "' cannot be renamed\n";
        return kExitFailed;
    }
    if (emptyName) {
        c.err << "glyphmoor-cli: " << kRenameEmptyNameText << '\n';
        return kExitUsage;
    }
    return status;
}

int IconsRestoreAll(CliContext& c, CommandArgs a) {
    bool cursors = false;
    bool yes = false;
    for (const std::string& arg : a) {
        if (arg == "--cursors") {
            cursors = true;
        } else if (arg == "--yes") {
            yes = true;
        } else {
            return UsageError(c, "icons restore-all");
        }
    }
    Machine* machine = &c.TheMachine();
    IconSession s(*machine, cursors);
    if (!yes) {
        // The window's question, answered as "/a" answers it (Cancel), and shown here.
        SilentPrompt prompt(machine->Sys(), s.app.helpFile);
        MsgContext messages{prompt, machine->Registry(), machine->Sys(), s.app, s.state};
        static_cast<void>(cursors ? MsgConfirmRestorePointers(messages) : MsgConfirmRestoreIcons(messages));
        c.err << prompt.Answered().back() << "\n\nglyphmoor-cli: give --yes to continue\n";
        return kExitFailed;
    }
    RestoreAll(s.catalogue, machine->Registry(), s.state, cursors);
    return s.ApplyAndSave(c) ? kExitOk : kExitFailed;
}

int Icons(CliContext& c, CommandArgs a) {
    std::optional<int> only;
    if (a.size() == 2 && a[0] == "--group") {
        only = GroupArgument(a[1]);
        if (!only) {
            c.err << "glyphmoor-cli: --group takes a group number from 1 to " << kIconGroupCount
                  << " or a group's name\n";
            return UsageError(c, "icons");
        }
    } else if (!a.empty()) {
        return UsageError(c, "icons");
    }
    Machine* machine = &c.TheMachine();
    const AppEnvironment app = InitEnvironment(machine->Env());
    IconCatalogue catalogue(machine->Registry(), app);
    const bool wantIcons = !only || *only != static_cast<int>(GroupNumber::Cursors);
    const bool wantCursors = !only || *only == static_cast<int>(GroupNumber::Cursors);
    catalogue.DetectShellIcons(!wantIcons);
    if (wantCursors) {
        catalogue.BuildCursorCatalogue();
    }
    for (int number = 1; number <= kIconGroupCount; ++number) {
        if (!only || *only == number) {
            PrintIconGroup(c.out, catalogue.Group(number));
        }
    }
    return kExitOk;
}

void PrintIconGroup(std::ostream& out, const IconGroup& group) {
    for (const SystemIconEntry& e : group.Entries()) {
        out << group.Number() << '\t' << e.displayName << '\t' << e.catalogueName << '\t' << e.currentFile
            << '\t' << e.currentIndex << '\t' << e.defaultFile << '\t' << e.defaultIndex << '\n';
    }
}

}  // namespace glyphmoor
