// Saving a theme: the credits, one entry per catalogue item with its icon
// copied beside the theme file, and the "Include" section.
#include "themes/ThemeFile.h"

#include "foundation/RecentThemes.h"
#include "foundation/TextEncoding.h"
#include "foundation/Version.h"
#include "foundation/modMacros.h"
#include "foundation/modProfile.h"
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"
#include "icons/IconEditing.h"
#include "icons/OwnDefaults.h"

#include <filesystem>
#include <system_error>

namespace glyphmoor {

namespace {

// The size the drawn fall-back copies: the image the shell draws at 32 pixels.
constexpr int kDrawnSize = 32;
constexpr int kDrawnDepth = 32;

bool HasIcoExtension(std::string_view file) {
    const auto dot = file.rfind('.');
    return dot != std::string_view::npos && EqualsNoCase(file.substr(dot + 1), "ico");
}

// The icon as the shell would draw it, as a one-image icon: what a file that
// the resource reader cannot read yields. Nothing when the file holds no icon.
bool DrawnIcon(const std::filesystem::path& file, int index, cFileIcon& out) {
    cFileIcon icon;
    if (!LoadIconOfFile(file, index, icon).ok()) {
        return false;
    }
    const int best = icon.PickImage(kDrawnSize, kDrawnDepth);
    if (best < 0) {
        return false;
    }
    const auto data = icon.ImageData(best);
    out.Clear();
    out.AddImage(icon.Entry(best), std::vector<std::byte>(data.begin(), data.end()));
    return true;
}

enum class Copy { Copied, NoGroups, Failed };

// Copies icon `index` of `source` to `target` as an icon file.
Copy CopyIcon(const std::filesystem::path& source, int index, const std::filesystem::path& target) {
    cFileIcon icon;
    if (HasIcoExtension(source.string())) {
        return icon.LoadIcon(source) && icon.SaveIcon(target) ? Copy::Copied : Copy::Failed;
    }
    auto module = ExecutableModule::Open(source);
    if (!module.ok()) {
        return DrawnIcon(source, index, icon) && icon.SaveIcon(target) ? Copy::Copied : Copy::Failed;
    }
    const auto groups = module.value().IconGroups();
    if (groups.empty()) {
        return Copy::NoGroups;
    }
    const auto position = static_cast<std::size_t>(index);
    if (position >= groups.size()) {
        return Copy::Failed;
    }
    return icon.LoadIconFromEXE(module.value(), groups[position].name) && icon.SaveIcon(target)
               ? Copy::Copied
               : Copy::Failed;
}

}  // namespace

EntryWritten WriteThemeEntry(const ThemeTarget& target, std::string_view section, std::string_view key,
                             const IconLocation& location) {
    const AppEnvironment& app = target.app;
    if (location.file.empty() || location.file == app.programFile || location.file == kNoGraphic) {
        return EntryWritten::Skipped;
    }
    // A resource id (a negative index) is copied from the file's first icon.
    const int index = location.index < 0 ? 0 : location.index;
    const std::string iconName = target.baseName + " " + std::string(key) + ".ico";
    const auto source = app.machine.HostPath(InSystemFolder(app, location.file));
    const auto copied = CopyIcon(source, index, app.machine.HostPath(target.themeDir + iconName));
    if (copied == Copy::Failed) {
        return EntryWritten::NoCopy;
    }
    const Status written =
        WriteProfileValue(HostFileOf(app, target.path), section, key, std::string(kThemeDirMacro) + iconName);
    if (!written.ok()) {
        return EntryWritten::Failed;
    }
    return copied == Copy::Copied ? EntryWritten::Written : EntryWritten::KeyOnly;
}

Result<std::string> SaveThemeFile(IconCatalogue& catalogue, RegistryStore& registry, AppState& state,
                                  std::string_view path) {
    if (!catalogue.Built()) {
        catalogue.DetectShellIcons();
    }
    const AppEnvironment& app = catalogue.App();
    const std::string placed =
        ThemePlacement(WithThemeExtension(path), app.machine.ProgramDirectory(), app.currentDirectory);
    const ThemeTarget target = ThemeTargetOf(app, placed);
    std::error_code ec;
    std::filesystem::create_directories(app.machine.HostPath(target.themeDir), ec);
    if (ec) {
        return Fail("cannot make the folder " + target.themeDir + ": " + ec.message());
    }
    SetCurrentTheme(registry, state, placed);

    const auto file = HostFileOf(app, placed);
    const std::string software = "Glyphmoor " + std::string(ProgramVersion());
    for (const auto& [key, value] : {std::pair<std::string_view, std::string_view>{"Software", software},
                                     {"Company", kThemeCompany},
                                     {"Author", kThemeAuthor},
                                     {"Website", kThemeWebsite},
                                     {"Email", kThemeEmail}}) {
        TRY(WriteProfileValue(file, kCreditsSection, key, value));
    }
    for (std::size_t i = 0; i < kSavedThemeSections; ++i) {
        const IconGroup& group = catalogue.Group(static_cast<int>(i) + 1);
        for (std::size_t position = 0; position < group.Count(); ++position) {
            if (WriteThemeEntry(target, ThemeSectionNames.at(i), group.KeyAt(position),
                                group.LocationAt(position)) == EntryWritten::Failed) {
                return Fail("cannot write " + placed);
            }
        }
    }
    TRY(WriteProfileValue(file, kIncludeSection, kReadMeKey, kReadMeValue));
    StoreCurrentTheme(registry, placed);
    return placed;
}

}  // namespace glyphmoor
