#include "themes/ThemeFile.h"

#include "foundation/TextEncoding.h"
#include "foundation/modMacros.h"
#include "foundation/modProfile.h"

namespace glyphmoor {

namespace {

// The name part of a path: what follows its last backslash.
std::string FileNameOf(std::string_view path) {
    const auto slash = path.rfind('\\');
    return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

}  // namespace

void LoadThemeFile(IconCatalogue& catalogue, AppState& state, std::string_view path) {
    const AppEnvironment& app = catalogue.App();
    const auto host = HostFileOf(app, path);
    bool iconChanged = false;
    for (std::size_t i = 0; i < kLoadedThemeSections; ++i) {
        const std::string_view section = ThemeSectionNames.at(i);
        IconGroup& group = catalogue.Group(static_cast<int>(i) + 1);
        for (const std::string& key : ReadProfileKeys(host, section)) {
            const std::string value = ReadThemeValue(app, section, key, path);
            if (value.empty()) {
                continue;
            }
            const auto location = SplitIconLocation(value);
            const SystemIconEntry* entry = group.Find(key);
            if (!location || entry == nullptr) {
                continue;
            }
            // Pointers need no icon-cache rebuild, nor does an icon the theme leaves as it was.
            iconChanged = iconChanged || (i < kSavedThemeSections && entry->Current() != *location);
            group.SetByKey(key, *location);
        }
        group.Refresh();
    }
    state.themeLoaded = true;
    state.rebuildPending = state.rebuildPending || iconChanged;
    state.applyEnabled = true;
}

std::string WithThemeExtension(std::string_view path) {
    std::string out(path);
    if (out.size() < kThemeExtension.size() ||
        LowerAscii(std::string_view(out).substr(out.size() - kThemeExtension.size())) != kThemeExtension) {
        out += kThemeExtension;
    }
    return out;
}

std::string ThemePlacement(std::string_view path, std::string_view programDirectory,
                           std::string_view currentDirectory) {
    const std::string themeDir = ThemeDirOf(path, currentDirectory);
    const std::string fileName = FileNameOf(path);
    const std::string library = std::string(programDirectory) + "\\Themes\\";
    if (LowerAscii(themeDir) != LowerAscii(library)) {
        return themeDir + fileName;
    }
    const auto dot = fileName.rfind('.');
    const std::string baseName = fileName.substr(0, dot);
    return themeDir + baseName + "\\" + fileName;
}

ThemeTarget ThemeTargetOf(const AppEnvironment& app, std::string_view path) {
    ThemeTarget target{app, std::string(path), ThemeDirOf(path, app.currentDirectory), {}};
    const std::string fileName = FileNameOf(path);
    target.baseName = fileName.substr(0, fileName.rfind('.'));
    return target;
}

}  // namespace glyphmoor
