#include "foundation/RecentThemes.h"

#include "foundation/Startup.h"
#include "foundation/TextEncoding.h"
#include "foundation/modFunctions.h"
#include "foundation/modRegistry.h"

namespace glyphmoor {

namespace {

bool IsFullPath(std::string_view path) {
    return path.size() >= 2 && path[1] == ':';
}

std::string RecentName(int n) {
    return std::to_string(n);
}

}  // namespace

std::string CaptionFor(std::string_view themePath) {
    if (themePath.empty()) {
        return std::string(kProgramCaption);
    }
    return std::string(kProgramCaption) + " - " + FileTitleOf(themePath);
}

std::string ReadCurrentTheme(RegistryStore& registry) {
    return GetRegString(registry, kSettingsPath, "Current Theme");
}

void StoreCurrentTheme(RegistryStore& registry, std::string_view path) {
    SetRegString(registry, kSettingsPath, "Current Theme", path);
}

void SetCurrentTheme(RegistryStore& registry, AppState& state, std::string_view pathOrLoad) {
    if (pathOrLoad == "load") {
        const std::string stored = ReadCurrentTheme(registry);
        SetCurrentTheme(registry, state, IsFullPath(stored) ? std::string_view(stored) : std::string_view{});
        return;
    }
    state.caption = CaptionFor(pathOrLoad);
    state.currentTheme = std::string(pathOrLoad);
    if (!pathOrLoad.empty()) {
        AddRecentTheme(registry, pathOrLoad);
    }
}

void AddRecentTheme(RegistryStore& registry, std::string_view path) {
    for (int n = 1; n <= kRecentThemeCount; ++n) {
        if (EqualsNoCase(GetRegString(registry, kRecentThemesPath, RecentName(n)), path)) {
            return;
        }
    }
    for (int n = kRecentThemeCount - 1; n >= 1; --n) {
        const std::string value = GetRegString(registry, kRecentThemesPath, RecentName(n));
        if (IsFullPath(value)) {
            SetRegString(registry, kRecentThemesPath, RecentName(n + 1), value);
        }
    }
    SetRegString(registry, kRecentThemesPath, RecentName(1), path);
}

void ForgetTheme(RegistryStore& registry, AppState& state, std::string_view path) {
    if (EqualsNoCase(state.currentTheme, path)) {
        state.currentTheme.clear();
        state.caption = CaptionFor({});
    }
    if (EqualsNoCase(ReadCurrentTheme(registry), path)) {
        DeleteRegValue(registry, kSettingsPath, "Current Theme");
    }
    std::vector<std::string> kept;
    for (std::string& recent : RecentThemes(registry)) {
        if (!EqualsNoCase(recent, path)) {
            kept.push_back(std::move(recent));
        }
    }
    const std::size_t before = RecentThemes(registry).size();
    if (kept.size() == before) {
        return;
    }
    for (std::size_t i = 0; i < before; ++i) {
        const std::string name = RecentName(static_cast<int>(i) + 1);
        if (i < kept.size()) {
            SetRegString(registry, kRecentThemesPath, name, kept[i]);
        } else {
            DeleteRegValue(registry, kRecentThemesPath, name);
        }
    }
}

std::vector<std::string> RecentThemes(RegistryStore& registry) {
    std::vector<std::string> themes;
    for (int n = 1; n <= kRecentThemeCount; ++n) {
        std::string value = GetRegString(registry, kRecentThemesPath, RecentName(n));
        if (value == kRegError) {
            break;
        }
        themes.push_back(std::move(value));
    }
    return themes;
}

std::vector<RecentMenuItem> RecentMenuItems(RegistryStore& registry) {
    std::vector<RecentMenuItem> items;
    int n = 0;
    for (auto& path : RecentThemes(registry)) {
        ++n;
        const auto slash = path.rfind('\\');
        const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
        items.push_back(
            {"RecentTheme " + std::to_string(n), "&" + std::to_string(n) + " " + name, std::move(path)});
    }
    return items;
}

}  // namespace glyphmoor
