#include "cli/ThemeCommands.h"

#include "cli/IconCommands.h"
#include "cli/IconSession.h"
#include "foundation/TextEncoding.h"
#include "themes/ThemeFile.h"
#include "themes/ThemeLibrary.h"

#include <filesystem>
#include <optional>
#include <sstream>
#include <system_error>

namespace glyphmoor {

namespace {

// The theme a FILE argument names, as a Windows path of the machine: given
// so when it begins with a drive letter, else the host file's path on the
// machine's drives. Nothing after saying why.
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

// The theme file to load: it must be there and be a ".gmtheme" file.
std::optional<std::string> ThemeToLoad(CliContext& c, const std::string& argument) {
    auto path = ThemePath(c, argument);
    if (!path) {
        return std::nullopt;
    }
    const std::string_view text = *path;
    const bool isTheme = text.size() > kThemeExtension.size() &&
                         EqualsNoCase(text.substr(text.size() - kThemeExtension.size()), kThemeExtension);
    if (!isTheme) {
        c.err << "The file " << *path << " does not appear to be a valid theme file.\n";
        return std::nullopt;
    }
    std::error_code ec;
    if (!std::filesystem::is_regular_file(c.TheMachine().Env().HostPath(*path), ec)) {
        c.err << "glyphmoor-cli: there is no theme file " << *path << '\n';
        return std::nullopt;
    }
    return path;
}

// The catalogue lines of the entries whose icon differs from what the machine holds.
std::string ChangedLines(const IconCatalogue& catalogue) {
    std::ostringstream lines;
    for (int number = 1; number <= kIconGroupCount; ++number) {
        const IconGroup& group = catalogue.Group(number);
        IconGroup changed(number, group.Name());
        for (const SystemIconEntry& e : group.Entries()) {
            if (e.IconChanged()) {
                changed.Add(e);
            }
        }
        PrintIconGroup(lines, changed);
    }
    return lines.str();
}

// Loads the theme of FILE into a session; the lines it changes, or nothing after saying why.
std::optional<std::string> LoadInto(CliContext& c, IconSession& s, const std::string& argument) {
    const auto path = ThemeToLoad(c, argument);
    if (!path) {
        return std::nullopt;
    }
    LoadThemeFile(s.catalogue, s.state, *path);
    s.state.currentTheme = *path;
    return ChangedLines(s.catalogue);
}

}  // namespace

int ThemeApply(CliContext& c, CommandArgs a) {
    IconSession s(c.TheMachine(), true);
    const auto lines = LoadInto(c, s, a[0]);
    if (!lines) {
        return kExitFailed;
    }
    const std::string theme = s.state.currentTheme;  // SetCurrentTheme replaces the one it reads
    SetCurrentTheme(s.machine.Registry(), s.state, theme);
    if (!s.ApplyAndSave(c)) {
        return kExitFailed;
    }
    c.out << *lines;
    return kExitOk;
}

int ThemePreview(CliContext& c, CommandArgs a) {
    IconSession s(c.TheMachine(), true);
    const auto lines = LoadInto(c, s, a[0]);
    if (!lines) {
        return kExitFailed;
    }
    c.out << *lines;
    return kExitOk;
}

int ThemeSave(CliContext& c, CommandArgs a) {
    const auto path = ThemePath(c, a[0]);
    if (!path) {
        return kExitFailed;
    }
    IconSession s(c.TheMachine(), false);
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
    return kExitOk;
}

}  // namespace glyphmoor
