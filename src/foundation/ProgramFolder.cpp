#include "foundation/ProgramFolder.h"

#include <array>
#include <string_view>

namespace glyphmoor {

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::string_view, 2> kProgramFiles = {"Glyphmoor.exe", "blank.ico"};
constexpr std::array<std::string_view, 2> kProgramFolders = {"Themes", "Favorites"};
// Where a seed keeps the program's folder.
constexpr std::string_view kSeedProgramFolder = "drive_c/Program Files/Glyphmoor";

// Makes a folder and every missing folder above it, recording each it makes.
Status MakeFolder(const Environment& env, BaselineRegistry& baseline, const std::string& windowsPath) {
    std::error_code ec;
    const fs::path host = env.HostPath(windowsPath);
    if (fs::is_directory(host, ec)) {
        return {};
    }
    const auto slash = windowsPath.rfind('\\');
    if (slash != std::string::npos && slash > 2) {
        Status parent = MakeFolder(env, baseline, windowsPath.substr(0, slash));
        if (!parent) {
            return parent;
        }
    }
    baseline.RecordCreatedFile(windowsPath);
    if (!fs::create_directory(env.HostPath(windowsPath), ec) && ec) {
        return Fail("cannot make the folder " + windowsPath + " on the machine: " + ec.message());
    }
    return {};
}

}  // namespace

Status EnsureProgramFolder(const Environment& env, BaselineRegistry& baseline,
                           const std::vector<fs::path>& seeds) {
    const std::string program = env.ProgramDirectory();
    Status made = MakeFolder(env, baseline, program);
    for (std::string_view folder : kProgramFolders) {
        if (made) {
            made = MakeFolder(env, baseline, program + "\\" + std::string(folder));
        }
    }
    if (!made) {
        return made;
    }
    for (std::string_view file : kProgramFiles) {
        const std::string windowsPath = program + "\\" + std::string(file);
        std::error_code ec;
        if (fs::exists(env.HostPath(windowsPath), ec)) {
            continue;
        }
        for (const fs::path& seed : seeds) {
            const fs::path source = seed / kSeedProgramFolder / file;
            if (!fs::is_regular_file(source, ec)) {
                continue;
            }
            baseline.RecordCreatedFile(windowsPath);
            if (!fs::copy_file(source, env.HostPath(windowsPath), ec)) {
                return Fail("cannot copy " + std::string(file) + " to " + windowsPath + ": " + ec.message());
            }
            break;
        }
    }
    return {};
}

}  // namespace glyphmoor
