#include "themes/ThemeApply.h"

#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/RecentThemes.h"
#include "foundation/TextEncoding.h"
#include "icons/IconCacheRebuild.h"
#include "icons/IconEditing.h"
#include "prompts/SilentPrompt.h"
#include "prompts/modMsgbox.h"
#include "themes/ThemeBundle.h"
#include "themes/ThemeFile.h"

#include <filesystem>
#include <system_error>

namespace glyphmoor {

Status CheckThemeFile(const Environment& machine, std::string_view path) {
    if (!EndsWithNoCase(path, kThemeExtension)) {
        return Fail("The file " + std::string(path) + " does not appear to be a valid theme file.");
    }
    std::error_code ec;
    if (!std::filesystem::is_regular_file(machine.HostPath(path), ec)) {
        return Fail("there is no theme file " + std::string(path));
    }
    return {};
}

std::vector<SystemIconEntry> ChangedEntries(const IconCatalogue& catalogue, std::vector<int>* groups) {
    std::vector<SystemIconEntry> changed;
    for (int number = 1; number <= kIconGroupCount; ++number) {
        for (const SystemIconEntry& e : catalogue.Group(number).Entries()) {
            if (e.IconChanged()) {
                changed.push_back(e);
                if (groups != nullptr) {
                    groups->push_back(number);
                }
            }
        }
    }
    return changed;
}

namespace {

// The theme file `path` names: itself, or for a bundle the theme it unpacks
// to, a file already in the theme's folder kept as the silent prompt answers.
Result<std::string> ThemeFileToApply(Machine& machine, std::string_view path) {
    if (!IsBundlePath(path)) {
        TRY(CheckThemeFile(machine.Env(), path));
        return std::string(path);
    }
    const std::filesystem::path zip =
        IsDriveLetterPath(path) ? machine.Env().HostPath(path) : std::filesystem::path(std::string(path));
    const UnpackReport unpacked =
        TRY(UnpackBundle(machine, zip, [](std::string_view /*file*/) { return OverwriteAnswer::Keep; }));
    return unpacked.themePath;
}

}  // namespace

Result<std::vector<SystemIconEntry>> ApplyThemeFile(Machine& machine, std::string_view path,
                                                    std::vector<int>* groups) {
    const std::string theme = TRY(ThemeFileToApply(machine, path));
    const AppEnvironment app = InitEnvironment(machine.Env());
    IconCatalogue catalogue(machine.Registry(), app);
    catalogue.DetectShellIcons();
    catalogue.BuildCursorCatalogue();
    AppState state;
    IconNameMarks names;
    LoadThemeFile(catalogue, state, theme);
    SetCurrentTheme(machine.Registry(), state, IsDriveLetterPath(path) ? path : std::string_view(theme));
    auto changed = ChangedEntries(catalogue, groups);

    ApplyIconChanges(catalogue, machine.Registry(), machine.Sys(), state, names);
    if (state.rebuildPending) {
        SilentPrompt prompt(machine.Sys(), app.helpFile);
        MsgContext messages{prompt, machine.Registry(), machine.Sys(), app, state};
        RebuildHooks hooks;
        hooks.desktopUpdateShell = [&catalogue] { return catalogue.State().newShell; };
        RebuildIconCache(messages, hooks);
    }
    TRY(machine.Save());
    return changed;
}

}  // namespace glyphmoor
