#include "cli/ThemeCommands.h"

#include "cli/IconCommands.h"
#include "cli/IconSession.h"
#include "foundation/DefaultMachine.h"
#include "foundation/ProgramFolder.h"
#include "foundation/RecentThemes.h"
#include "themes/ThemeApply.h"
#include "themes/ThemeBundle.h"
#include "themes/ThemeFile.h"
#include "themes/ThemeLibrary.h"

#include <filesystem>
#include <optional>
#include <ostream>
#include <system_error>
#include <vector>

namespace glyphmoor {

std::optional<std::string> ThemePath(CliContext& c, const std::string& argument) {
    if (IsDriveLetterPath(argument)) {
        return argument;
    }
    std::error_code ec;
    const auto absolute = std::filesystem::absolute(argument, ec);
    const std::string path = ec ? std::string() : c.TheMachine().Env().WindowsPath(absolute);
    if (path.empty()) {
        c.err << "glyphmoor-cli: " << argument
              << " lies on no drive of the machine; give a Windows path (C:\\...) or a file on one\n";
        return std::nullopt;
    }
    return path;
}

namespace {

// The theme file to load: it must be there and be a ".gmtheme" file.
std::optional<std::string> ThemeToLoad(CliContext& c, const std::string& argument) {
    auto path = ThemePath(c, argument);
    if (!path) {
        return std::nullopt;
    }
    if (Status usable = CheckThemeFile(c.TheMachine().Env(), *path); !usable.ok()) {
        c.err << usable.reason() << '\n';
        return std::nullopt;
    }
    return path;
}

// The catalogue lines of the entries, as `icons` prints them.
void PrintEntries(std::ostream& out, const std::vector<SystemIconEntry>& entries,
                  const std::vector<int>& groups) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        IconGroup line(groups.at(i), "");
        line.Add(entries[i]);
        PrintIconGroup(out, line);
    }
}

}  // namespace

int ThemeApply(CliContext& c, CommandArgs a) {
    // A bundle may lie anywhere on the host: it is unpacked into the library first.
    const auto path = IsBundlePath(a[0]) ? std::optional<std::string>(a[0]) : ThemePath(c, a[0]);
    if (!path) {
        return kExitFailed;
    }
    std::vector<int> groups;
    const auto changed = ApplyThemeFile(c.TheMachine(), *path, &groups);
    if (!changed.ok()) {
        c.err << changed.reason() << '\n';
        return kExitFailed;
    }
    PrintEntries(c.out, changed.value(), groups);
    return kExitOk;
}

int ThemePreview(CliContext& c, CommandArgs a) {
    const auto path = ThemeToLoad(c, a[0]);
    if (!path) {
        return kExitFailed;
    }
    IconSession s(c.TheMachine(), true);
    LoadThemeFile(s.catalogue, s.state, *path);
    std::vector<int> groups;
    const auto changed = ChangedEntries(s.catalogue, &groups);
    PrintEntries(c.out, changed, groups);
    return kExitOk;
}

int ThemeSave(CliContext& c, CommandArgs a) {
    const auto path = ThemePath(c, a[0]);
    if (!path) {
        return kExitFailed;
    }
    IconSession s(c.TheMachine(), false);
    // The theme goes into the program's folder: it is set up first, and what
    // it makes is recorded in the machine's baseline.
    if (const Status made = s.machine.MakeProgramFolder(); !made) {
        c.err << "glyphmoor-cli: " << made.reason() << '\n';
        return kExitFailed;
    }
    const auto saved = SaveThemeFile(s.catalogue, s.machine.Registry(), s.state, *path);
    if (!saved.ok()) {
        c.err << "glyphmoor-cli: " << saved.reason() << '\n';
        return kExitFailed;
    }
    if (!c.SaveMachine()) {
        return kExitFailed;
    }
    c.out << saved.value() << '\n';
    return kExitOk;
}

int ThemeList(CliContext& c, CommandArgs /*a*/) {
    const AppEnvironment app = InitEnvironment(c.TheMachine().Env());
    for (const LibraryTheme& theme : ListThemeLibrary(app)) {
        c.out << theme.caption << '\t' << theme.path << '\n';
    }
    return kExitOk;
}

int ThemeDelete(CliContext& c, CommandArgs a) {
    const bool yes = a.size() == 2 && a[1] == "--yes";
    if (a.size() == 2 && !yes) {
        return UsageError(c, "theme delete");
    }
    const auto path = ThemePath(c, a[0]);
    if (!path) {
        return kExitFailed;
    }
    const AppEnvironment app = InitEnvironment(c.TheMachine().Env());
    const auto folder = ThemeFolderToDelete(app, *path);
    if (!folder.ok()) {
        c.err << "glyphmoor-cli: " << folder.reason() << '\n';
        return kExitFailed;
    }
    if (!yes) {
        c.err << "Deleting the theme removes the folder " << folder.value()
              << " and everything in it.\n\nglyphmoor-cli: give --yes to continue\n";
        return kExitFailed;
    }
    if (Status deleted = DeleteTheme(app, *path); !deleted.ok()) {
        c.err << "glyphmoor-cli: " << deleted.reason() << '\n';
        return kExitFailed;
    }
    // Neither "Current Theme" nor the recent themes keep naming it.
    AppState state;
    ForgetTheme(c.TheMachine().Registry(), state, *path);
    return c.SaveMachine() ? kExitOk : kExitFailed;
}

}  // namespace glyphmoor
