#include "foundation/FileIo.h"
#include "foundation/TextEncoding.h"
#include "foundation/modMacros.h"
#include "foundation/modProfile.h"
#include "themes/BundleCheck.h"
#include "themes/BundleZip.h"
#include "themes/ThemeBundle.h"
#include "themes/ThemeFile.h"

#include <filesystem>
#include <system_error>

namespace glyphmoor {

namespace {

// Every section a bundle packs from: the icon groups, "Cursors" and "Include".
constexpr std::size_t kBundledSections = 8;

// The name part of a Windows path (or of a host path).
std::string EntryNameOf(std::string_view path) {
    const auto slash = path.find_last_of("\\/");
    return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

}  // namespace

std::string BundleOverwriteQuestion(std::string_view windowsPath) {
    return "Overwrite " + std::string(windowsPath) + "?";
}

bool IsBundlePath(std::string_view path) {
    return EndsWithNoCase(path, kBundleExtension);
}

Result<std::vector<std::string>> BundleFileList(const AppEnvironment& app, std::string_view themePath) {
    const auto host = HostFileOf(app, themePath);
    if (Status file = CheckRegularFile(host); !file.ok()) {
        return Fail("cannot read the theme " + std::string(themePath) + ": " + file.reason());
    }
    std::vector<std::string> files;
    for (std::size_t i = 0; i < kBundledSections; ++i) {
        const std::string_view section = ThemeSectionNames.at(i);
        for (const std::string& key : ReadProfileKeys(host, section)) {
            std::string value = ReadThemeValue(app, section, key, themePath);
            if (value.empty()) {
                continue;
            }
            if (files.size() == kBundleMaxEntries - 1) {
                return Fail("the theme names more than " + std::to_string(kBundleMaxEntries - 1) +
                            " files, and a bundle holds at most " + std::to_string(kBundleMaxEntries) +
                            " with the theme file; nothing was written");
            }
            files.push_back(std::move(value));
        }
    }
    files.emplace_back(themePath);
    return files;
}

Result<PackReport> PackTheme(const AppEnvironment& app, std::string_view themePath,
                             const std::filesystem::path& zip) {
    const std::vector<std::string> files = TRY(BundleFileList(app, themePath));
    PackReport report;
    std::vector<BundleSource> sources;
    std::vector<std::string> origins;  // the theme's path of each source
    for (const std::string& file : files) {
        const std::filesystem::path host = HostFileOf(app, file);
        std::error_code ec;
        if (!std::filesystem::is_regular_file(host, ec)) {
            report.missing.push_back(file);
            continue;
        }
        std::string name = EntryNameOf(file);
        if (Status usable = CheckBundleEntryName(name); !usable.ok()) {
            return Fail("the file " + file + " cannot travel in a bundle: its name " + usable.reason() +
                        "; nothing was written");
        }
        std::size_t i = 0;
        while (i < sources.size() && !EqualsNoCase(sources[i].name, name)) {
            ++i;
        }
        if (i == sources.size()) {
            sources.push_back({std::move(name), host});
            origins.push_back(file);
        } else {
            report.replaced.push_back(origins[i]);
            sources[i] = {std::move(name), host};
            origins[i] = file;
        }
    }
    TRY(WriteBundleArchive(zip, sources));
    for (const BundleSource& source : sources) {
        report.packed.push_back(source.name);
    }
    return report;
}

}  // namespace glyphmoor
