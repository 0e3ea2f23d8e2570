#include "foundation/DefaultMachine.h"
#include "foundation/FileIo.h"
#include "foundation/ProgramFolder.h"
#include "foundation/TextEncoding.h"
#include "themes/BundleCheck.h"
#include "themes/BundleZip.h"
#include "themes/ThemeBundle.h"
#include "themes/ThemeFile.h"
#include "themes/ThemeLibrary.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <optional>
#include <random>
#include <system_error>

namespace glyphmoor {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kUnpackPrefix = ".unpack-";

bool IsThemeName(std::string_view name) {
    return EndsWithNoCase(name, kThemeExtension);
}

// The entry of `folder` named `name` without regard to case, as Windows and
// Wine find it: its real name, or nothing.
std::optional<std::string> FindNoCase(const fs::path& folder, std::string_view name) {
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(folder, ec)) {
        const std::string found = entry.path().filename().string();
        if (EqualsNoCase(found, name)) {
            return found;
        }
    }
    return std::nullopt;
}

Status WriteNewFile(const fs::path& file, const std::string& contents) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    out.close();
    if (!out) {
        return Fail("cannot write " + file.string());
    }
    return {};
}

// Folders left by an unpack that was killed before it ended: an hour old at
// least, so an unpack another process is doing meanwhile keeps its folder.
void RemoveLeftovers(const fs::path& library) {
    std::error_code ec;
    std::vector<fs::path> leftovers;
    const auto anHourAgo = fs::file_time_type::clock::now() - std::chrono::hours(1);
    for (const auto& entry : fs::directory_iterator(library, ec)) {
        std::error_code timeError;
        if (entry.path().filename().string().starts_with(kUnpackPrefix) &&
            entry.last_write_time(timeError) < anHourAgo && !timeError) {
            leftovers.push_back(entry.path());
        }
    }
    for (const fs::path& folder : leftovers) {
        fs::remove_all(folder, ec);
    }
}

// A new, empty folder in the library that no other unpack uses.
Result<fs::path> MakeTemporaryFolder(const fs::path& library, std::string_view folderName) {
    std::random_device random;
    for (int attempt = 0; attempt < 8; ++attempt) {
        const fs::path folder =
            library / (std::string(kUnpackPrefix) + std::string(folderName) + "-" + std::to_string(random()));
        std::error_code ec;
        if (fs::create_directory(folder, ec)) {
            return folder;
        }
    }
    return Fail("cannot make a temporary folder in the theme library " + library.string());
}

// The checked archive: its entries and their inflated contents.
struct CheckedBundle {
    std::vector<BundleEntry> entries;
    std::vector<std::string> contents;
    std::string themeName;
};

Result<CheckedBundle> ReadBundle(const fs::path& zip, std::string_view folderName) {
    if (!BundlesBuilt()) {
        return Fail("theme bundles are not part of this build (it was made without libzip)");
    }
    const std::vector<std::byte> bytes = TRY(ReadFileBytes(zip, kBundleMaxArchiveBytes));
    auto entries = CheckBundle(bytes);
    if (!entries.ok()) {
        return Fail(zip.string() + " is refused as a theme bundle: " + entries.reason() +
                    "; nothing was written");
    }
    CheckedBundle bundle;
    bundle.entries = std::move(entries).value();
    std::vector<std::string> names;
    for (const BundleEntry& entry : bundle.entries) {
        names.push_back(entry.name);
    }
    bundle.themeName = ChooseBundleTheme(names, folderName);
    if (bundle.themeName.empty()) {
        return Fail(zip.string() + " holds no theme file (" + std::string(kThemeExtension) +
                    "); nothing was written");
    }
    auto contents = InflateBundle(bytes, bundle.entries);
    if (!contents.ok()) {
        return Fail(zip.string() + " is refused as a theme bundle: " + contents.reason() +
                    "; nothing was written");
    }
    bundle.contents = std::move(contents).value();
    return bundle;
}

// Moves the unpacked files into a theme folder that exists already, asking
// about each one that is there; every question is answered before anything moves.
Result<UnpackReport> MergeInto(const fs::path& temporary, const fs::path& target,
                               const std::string& windowsFolder, const CheckedBundle& bundle,
                               const OverwriteQuestion& question) {
    UnpackReport report;
    std::vector<std::optional<std::string>> existing;
    std::vector<OverwriteAnswer> answers;
    for (const BundleEntry& entry : bundle.entries) {
        existing.push_back(FindNoCase(target, entry.name));
        OverwriteAnswer answer = OverwriteAnswer::Overwrite;
        if (existing.back()) {
            answer = question(windowsFolder + "\\" + *existing.back());
            if (answer == OverwriteAnswer::Stop) {
                return Fail("stopped before overwriting " + windowsFolder + "\\" + *existing.back() +
                            "; nothing was written");
            }
        }
        answers.push_back(answer);
    }
    for (std::size_t i = 0; i < bundle.entries.size(); ++i) {
        const std::string& name = bundle.entries[i].name;
        std::error_code ec;
        if (answers[i] == OverwriteAnswer::Keep) {
            report.kept.push_back(windowsFolder + "\\" + *existing[i]);
            continue;
        }
        if (existing[i] && *existing[i] != name) {
            fs::remove(target / *existing[i], ec);
        }
        fs::rename(temporary / name, target / name, ec);
        if (ec) {
            return Fail("cannot move " + name + " into " + target.string() + ": " + ec.message());
        }
        report.written.push_back(windowsFolder + "\\" + name);
    }
    return report;
}

}  // namespace

Result<std::string> BundleFolderName(const fs::path& zip) {
    const std::string file = zip.filename().string();
    const std::string folder = file.substr(0, file.find('.'));
    if (folder.empty() || !CheckBundleEntryName(folder).ok()) {
        return Fail("the bundle's name " + file +
                    " gives no usable folder name (its name up to the first dot)");
    }
    return folder;
}

std::string ChooseBundleTheme(const std::vector<std::string>& names, std::string_view folderName) {
    std::vector<std::string> themes;
    std::copy_if(names.begin(), names.end(), std::back_inserter(themes), IsThemeName);
    for (const std::string& theme : themes) {
        if (EqualsNoCase(std::string_view(theme).substr(0, theme.size() - kThemeExtension.size()),
                         folderName)) {
            return theme;
        }
    }
    std::sort(themes.begin(), themes.end(),
              [](const std::string& a, const std::string& b) { return LowerAscii(a) < LowerAscii(b); });
    return themes.empty() ? std::string() : themes.front();
}

Result<UnpackReport> UnpackBundle(Machine& machine, const fs::path& zip, const OverwriteQuestion& question) {
    std::string folderName = TRY(BundleFolderName(zip));
    const CheckedBundle bundle = TRY(ReadBundle(zip, folderName));

    TRY(machine.MakeProgramFolder());
    const AppEnvironment app = InitEnvironment(machine.Env());
    const std::string library = ThemeLibraryFolder(app);
    const fs::path libraryHost = machine.Env().HostPath(library);
    std::error_code ec;
    fs::create_directories(libraryHost, ec);
    RemoveLeftovers(libraryHost);
    const fs::path temporary = TRY(MakeTemporaryFolder(libraryHost, folderName));
    const auto cleanUp = [&temporary] {
        std::error_code ignored;
        fs::remove_all(temporary, ignored);
    };
    for (std::size_t i = 0; i < bundle.entries.size(); ++i) {
        if (Status written = WriteNewFile(temporary / bundle.entries[i].name, bundle.contents[i]);
            !written.ok()) {
            cleanUp();
            return Fail(written.reason() + "; nothing was unpacked");
        }
    }

    if (const auto found = FindNoCase(libraryHost, folderName)) {
        folderName = *found;
    }
    const fs::path target = libraryHost / folderName;
    const std::string windowsFolder = library + "\\" + folderName;
    Result<UnpackReport> report = UnpackReport{};
    if (!fs::exists(target, ec)) {
        fs::rename(temporary, target, ec);
        if (ec) {
            cleanUp();
            return Fail("cannot move the unpacked theme into " + target.string() + ": " + ec.message());
        }
        for (const BundleEntry& entry : bundle.entries) {
            report->written.push_back(windowsFolder + "\\" + entry.name);
        }
    } else if (!fs::is_directory(target, ec)) {
        cleanUp();
        return Fail(windowsFolder + " is a file, not a theme folder; nothing was unpacked");
    } else {
        report = MergeInto(temporary, target, windowsFolder, bundle, question);
        cleanUp();
        if (!report.ok()) {
            return report;
        }
    }
    report->folder = windowsFolder;
    report->themePath =
        windowsFolder + "\\" + FindNoCase(target, bundle.themeName).value_or(bundle.themeName);
    return report;
}

}  // namespace glyphmoor
