#include "themes/ThemeLibrary.h"

#include "foundation/TextEncoding.h"
#include "foundation/modMacros.h"
#include "themes/ThemeFile.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace glyphmoor {

namespace {

namespace fs = std::filesystem;

bool IsThemeFile(std::string_view name) {
    return EndsWithNoCase(name, kThemeExtension);
}

// The names of a folder's entries of one kind, sorted.
std::vector<std::string> NamesIn(const fs::path& folder, bool folders) {
    std::vector<std::string> names;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(folder, ec)) {
        std::error_code kindError;
        const bool isFolder = entry.is_directory(kindError);
        const bool isFile = entry.is_regular_file(kindError);
        if (folders ? isFolder : isFile) {
            names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

std::string ThemeLibraryFolder(const AppEnvironment& app) {
    return app.machine.ProgramDirectory() + "\\Themes";
}

std::vector<LibraryTheme> ListThemeLibrary(const AppEnvironment& app) {
    std::vector<LibraryTheme> themes;
    const std::string library = ThemeLibraryFolder(app);
    const fs::path host = app.machine.HostPath(library);
    for (const std::string& folder : NamesIn(host, true)) {
        if (folder.starts_with('.')) {
            continue;  // a hidden folder, such as one a bundle is being unpacked into
        }
        for (const std::string& file : NamesIn(host / folder, false)) {
            if (IsThemeFile(file)) {
                themes.push_back({library + "\\" + folder + "\\" + file,
                                  file.substr(0, file.size() - kThemeExtension.size())});
            }
        }
    }
    return themes;
}

std::optional<IconLocation> ThemeListPicture(const AppEnvironment& app, std::string_view path) {
    const std::string value = ReadThemeValue(app, ThemeSectionNames.at(0), "My Computer", path);
    if (value.empty()) {
        return std::nullopt;
    }
    return SplitIconLocation(value);
}

Result<std::string> ThemeFolderToDelete(const AppEnvironment& app, std::string_view path) {
    const std::string library = ThemeLibraryFolder(app);
    const std::string text(path);
    if (!IsThemeFile(text)) {
        return Fail(text + " is not a theme file (" + std::string(kThemeExtension) +
                    "); nothing was deleted");
    }
    const auto slash = text.rfind('\\');
    const std::string folder = slash == std::string::npos ? std::string() : text.substr(0, slash);
    const auto parentSlash = folder.rfind('\\');
    const std::string parent =
        parentSlash == std::string::npos ? std::string() : folder.substr(0, parentSlash);
    const std::string name =
        parentSlash == std::string::npos ? std::string() : folder.substr(parentSlash + 1);
    if (EqualsNoCase(folder, library)) {
        return Fail(text + " lies directly in the theme library " + library +
                    ", not in a theme folder of its own; nothing was deleted");
    }
    if (!EqualsNoCase(parent, library) || name.empty() || name == "." || name == ".." ||
        name.find('/') != std::string::npos) {
        return Fail(text + " is not in a theme folder of the library " + library + "; nothing was deleted");
    }
    return folder;
}

Status DeleteTheme(const AppEnvironment& app, std::string_view path) {
    const std::string folder = TRY(ThemeFolderToDelete(app, path));
    const fs::path host = app.machine.HostPath(folder);
    std::error_code ec;
    if (!fs::is_regular_file(app.machine.HostPath(path), ec)) {
        return Fail("there is no theme file " + std::string(path) + "; nothing was deleted");
    }
    if (fs::is_symlink(fs::symlink_status(host, ec))) {
        return Fail(folder + " is a link, not a theme folder; nothing was deleted");
    }
    fs::remove_all(host, ec);
    if (ec) {
        return Fail("cannot delete " + folder + ": " + ec.message());
    }
    return {};
}

}  // namespace glyphmoor
