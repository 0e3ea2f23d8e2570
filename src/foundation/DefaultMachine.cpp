#include "foundation/DefaultMachine.h"
#include "foundation/InstallPaths.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>
#include <span>
#include <string_view>

namespace glyphmoor {

namespace fs = std::filesystem;

namespace {

// Git keeps no empty folders: the seed holds this file in the ones it needs.
constexpr std::string_view kFolderPlaceholder = ".keep";

// The user's own folders of drive C: once the machine is made: what the seed
// puts there (the starter themes) is a start, and stays deleted when the user
// deletes it.
constexpr std::array<std::string_view, 2> kUserFolders = {"Program Files/Glyphmoor/Themes",
                                                          "Program Files/Glyphmoor/Favorites"};

// Copies what src holds and dst lacks, but for what lies in `skipped` (paths
// relative to src).
void CopyMissing(const fs::path& src, const fs::path& dst, std::error_code& ec,
                 std::span<const std::string_view> skipped = {}) {
    for (auto it = fs::recursive_directory_iterator(src, ec); !ec && it != fs::recursive_directory_iterator();
         it.increment(ec)) {
        // The iterator's paths begin with src as given: relative lexically,
        // without resolving every component on each start.
        const fs::path relative = it->path().lexically_relative(src);
        if (std::find(skipped.begin(), skipped.end(), relative.generic_string()) != skipped.end()) {
            it.disable_recursion_pending();
            continue;
        }
        const fs::path target = dst / relative;
        if (it->path().filename() == kFolderPlaceholder) {
            continue;
        }
        if (it->is_directory(ec)) {
            fs::create_directories(target, ec);
        } else if (!fs::exists(target, ec)) {
            fs::copy_file(it->path(), target, ec);
        }
        if (ec) {
            return;
        }
    }
}

}  // namespace

fs::path DefaultMachineDir() {
    const char* data = std::getenv("XDG_DATA_HOME");
    if (data != nullptr && fs::path(data).is_absolute()) {
        return fs::path(data) / "glyphmoor" / "machine";
    }
    const char* home = std::getenv("HOME");
    return fs::path(home != nullptr ? home : ".") / ".local" / "share" / "glyphmoor" / "machine";
}

std::vector<fs::path> SeedDirs() {
    const char* seed = std::getenv("GLYPHMOOR_SEED_DIR");
    const bool chosen = seed != nullptr && *seed != '\0';
    const fs::path installed = InstalledDataDir();
    if (!chosen && !installed.empty()) {
        // An installed program ships the seed and the generated files as one folder.
        return {installed / "seed"};
    }
    return {fs::path(chosen ? seed : GLYPHMOOR_SEED_DIR), fs::path(GLYPHMOOR_GENERATED_SEED_DIR)};
}

Status EnsureSeededMachine(const fs::path& dir, const std::vector<fs::path>& seeds) {
    std::error_code ec;
    if (!seeds.empty() && !fs::exists(seeds.front() / "system.reg", ec)) {
        return Fail("the seed of the default machine is missing: " + seeds.front().string());
    }
    if (fs::exists(dir / "system.reg", ec)) {
        for (const auto& seed : seeds) {
            std::error_code copyError;
            if (fs::is_directory(seed / "drive_c", copyError)) {
                CopyMissing(seed / "drive_c", dir / "drive_c", copyError, kUserFolders);
            }
        }
        return {};
    }
    // Build the machine beside its place and move it there whole, so a machine
    // is never seen half made.
    fs::create_directories(dir.parent_path(), ec);
    const fs::path staging = dir.parent_path() / (".machine-" + std::to_string(std::random_device{}()));
    fs::create_directories(staging, ec);
    for (const auto& seed : seeds) {
        if (!fs::is_directory(seed, ec)) {
            ec.clear();  // the build may have generated nothing yet
            continue;
        }
        CopyMissing(seed, staging, ec);
        if (ec) {
            fs::remove_all(staging);
            return Fail("cannot make the default machine at " + dir.string() + ": " + ec.message());
        }
    }
    fs::rename(staging, dir, ec);
    if (ec) {
        fs::remove_all(staging);
        if (!fs::exists(dir / "system.reg")) {
            return Fail("cannot make the default machine at " + dir.string() + ": " + ec.message());
        }
    }
    return {};
}

Result<std::unique_ptr<Machine>> OpenDefaultMachine() {
    const fs::path dir = DefaultMachineDir();
    TRY(EnsureSeededMachine(dir, SeedDirs()));
    return OpenMachineFolder(dir);
}

}  // namespace glyphmoor
