#include "foundation/modMacros.h"

#include "foundation/modProfile.h"

namespace glyphmoor {

namespace {

bool StartsWithLowered(std::string_view value, std::string_view macro) {
    if (value.size() < macro.size()) {
        return false;
    }
    for (std::size_t i = 0; i < macro.size(); ++i) {
        char c = value[i];
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
        if (c != macro[i]) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::filesystem::path HostFileOf(const AppEnvironment& app, std::string_view path) {
    return app.machine.HostPath(path);
}

std::string ExpandThemeMacros(const AppEnvironment& app, std::string_view value, std::string_view themeDir) {
    constexpr std::string_view kThemeDir = "%ThemeDir%";
    constexpr std::string_view kWinSysDir = "%winsysdir%";
    constexpr std::string_view kWinDir = "%windir%";
    if (value.starts_with(kThemeDir)) {
        return std::string(themeDir).append(value.substr(kThemeDir.size()));
    }
    if (StartsWithLowered(value, kWinSysDir)) {
        return app.sysDir + "\\" + std::string(value.substr(kWinSysDir.size()));
    }
    if (StartsWithLowered(value, kWinDir)) {
        return app.winDir + "\\" + std::string(value.substr(kWinDir.size()));
    }
    return std::string(value);
}

std::string ReadThemeValue(const AppEnvironment& app, std::string_view section, std::string_view key,
                           std::string_view file, std::uint32_t* lastReadLength) {
    std::uint32_t count = 0;
    const std::string value =
        ReadProfileValue(HostFileOf(app, file), section, key, "", kThemeValueBuffer, &count);
    if (lastReadLength != nullptr) {
        *lastReadLength = count;
    }
    if (count < 1) {
        return {};
    }
    return ExpandThemeMacros(app, value, ThemeDirOf(file, app.currentDirectory));
}

std::string ThemeDirOf(std::string_view path, std::string_view currentDirectory) {
    const auto slash = path.rfind('\\');
    if (slash != std::string_view::npos) {
        return std::string(path.substr(0, slash + 1));
    }
    if (path.size() < 2 || path[1] != ':') {
        std::string dir(currentDirectory);
        if (!dir.ends_with('\\')) {
            dir += '\\';
        }
        return dir;
    }
    return {};
}

}  // namespace glyphmoor
