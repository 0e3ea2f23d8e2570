#include "foundation/ProgramFolder.h"

#include "foundation/FileIo.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace glyphmoor {

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::string_view, 2> kProgramFiles = {"Glyphmoor.exe", "blank.ico"};
constexpr std::array<std::string_view, 2> kProgramFolders = {"Themes", "Favorites"};
// Where a seed keeps the program's folder.
constexpr std::string_view kSeedProgramFolder = "drive_c/Program Files/Glyphmoor";
// The most a program file of the seed may hold.
constexpr std::uint64_t kMostProgramFileBytes = 64U << 20U;

// Plans a folder and every missing folder above it, recording each.
void PlanFolder(const Environment& env, BaselineRegistry& baseline, const std::string& windowsPath,
                ProgramFolderPlan& plan) {
    std::error_code ec;
    const fs::path host = env.HostPath(windowsPath);
    if (fs::is_directory(host, ec) ||
        std::find(plan.folders.begin(), plan.folders.end(), host) != plan.folders.end()) {
        return;
    }
    const auto slash = windowsPath.rfind('\\');
    if (slash != std::string::npos && slash > 2) {
        PlanFolder(env, baseline, windowsPath.substr(0, slash), plan);
    }
    baseline.RecordCreatedFile(windowsPath);
    plan.folders.push_back(host);
}

}  // namespace

Result<ProgramFolderPlan> PlanProgramFolder(const Environment& env, BaselineRegistry& baseline,
                                            const std::vector<fs::path>& seeds) {
    ProgramFolderPlan plan;
    const std::string program = env.ProgramDirectory();
    PlanFolder(env, baseline, program, plan);
    for (std::string_view folder : kProgramFolders) {
        PlanFolder(env, baseline, program + "\\" + std::string(folder), plan);
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
            auto bytes = ReadWholeFile(source, kMostProgramFileBytes);
            if (!bytes) {
                return Fail("cannot copy " + std::string(file) + " to " + windowsPath + ": " +
                            bytes.reason());
            }
            baseline.RecordCreatedFile(windowsPath);
            plan.files.push_back(ProgramFolderPlan::File{env.HostPath(windowsPath), std::move(*bytes)});
            break;
        }
    }
    return plan;
}

Status MakeProgramFolder(const ProgramFolderPlan& plan) {
    for (const fs::path& folder : plan.folders) {
        std::error_code ec;
        if (!fs::create_directory(folder, ec) && ec) {
            return Fail("cannot make the folder " + folder.string() + ": " + ec.message());
        }
    }
    for (const auto& file : plan.files) {
        TRY(WriteFileAtomically(file.file, file.bytes));
    }
    return {};
}

Status EnsureProgramFolder(const Environment& env, BaselineRegistry& baseline,
                           const std::vector<fs::path>& seeds) {
    const ProgramFolderPlan plan = TRY(PlanProgramFolder(env, baseline, seeds));
    return MakeProgramFolder(plan);
}

}  // namespace glyphmoor
