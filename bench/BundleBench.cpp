// Packing and unpacking a theme of 81 files (80 icons of Wine's shell32.dll
// and the theme file), against Info-ZIP's `zip -j` and `unzip` where they are
// installed. Each side is measured both in-process and as a whole process
// (glyphmoor-cli theme pack / theme unpack), as a user would run it.
// Build in Release for figures worth quoting.
#include "foundation/AppEnvironment.h"
#include "foundation/DefaultMachine.h"
#include "foundation/Machine.h"
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"
#include "themes/ThemeBundle.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace glyphmoor {
namespace {

namespace fs = std::filesystem;

constexpr int kIcons = 80;
const char* const kLibrary = "/usr/lib/x86_64-linux-gnu/wine/x86_64-windows/shell32.dll";

// A machine with the theme "Bench" in its library; made once for the run.
struct BenchTheme {
    fs::path root = fs::temp_directory_path() / "glyphmoor-bundle-bench";
    std::unique_ptr<Machine> machine;
    std::string theme = "C:\\Program Files\\Glyphmoor\\Themes\\Bench\\Bench.gmtheme";
    fs::path folder;
    fs::path zip = root / "Bench.zip";
    std::string error;

    BenchTheme() {
        fs::remove_all(root);
        if (!EnsureSeededMachine(root / "machine", SeedDirs()).ok()) {
            error = "cannot make the machine";
            return;
        }
        auto opened = OpenMachineFolder(root / "machine");
        if (!opened.ok()) {
            error = opened.reason();
            return;
        }
        machine = std::move(*opened);
        folder = machine->Env().HostPath(theme).parent_path();
        fs::create_directories(folder);
        std::string text = "[Desktop Icons]\r\n";
        for (int i = 0; i < kIcons; ++i) {
            cFileIcon icon;
            if (!LoadIconOfFile(kLibrary, i, icon).ok()) {
                error = "cannot read icon " + std::to_string(i) + " of " + kLibrary;
                return;
            }
            const std::string name = "Bench " + std::to_string(i) + ".ico";
            const auto bytes = icon.ToBytes();
            std::ofstream(folder / name, std::ios::binary)
                .write(reinterpret_cast<const char*>(bytes.data()),
                       static_cast<std::streamsize>(bytes.size()));
            text += i == kIcons / 2 ? "[File Icons]\r\n" : "";
            text += "k" + std::to_string(i) + "=%ThemeDir%" + name + "\r\n";
        }
        std::ofstream(folder / "Bench.gmtheme", std::ios::binary) << text;
    }
};

BenchTheme& Theme() {
    static BenchTheme theme;
    return theme;
}

bool Ready(benchmark::State& state) {
    if (!Theme().error.empty()) {
        state.SkipWithError(Theme().error.c_str());
        return false;
    }
    return true;
}

bool Run(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

std::string Quoted(const fs::path& path) {
    return "'" + path.string() + "'";
}

void BM_PackInProcess(benchmark::State& state) {
    if (!Ready(state)) {
        return;
    }
    const AppEnvironment app = InitEnvironment(Theme().machine->Env());
    for (auto _ : state) {
        if (!PackTheme(app, Theme().theme, Theme().zip).ok()) {
            state.SkipWithError("pack failed");
            return;
        }
    }
}
BENCHMARK(BM_PackInProcess)->Unit(benchmark::kMillisecond);

void BM_PackCli(benchmark::State& state) {
    if (!Ready(state)) {
        return;
    }
    const std::string command = std::string(GLYPHMOOR_CLI) + " --machine " +
                                Quoted(Theme().root / "machine") + " theme pack '" + Theme().theme + "' " +
                                Quoted(Theme().zip);
    for (auto _ : state) {
        if (!Run(command)) {
            state.SkipWithError("glyphmoor-cli theme pack failed");
            return;
        }
    }
}
BENCHMARK(BM_PackCli)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ZipJ(benchmark::State& state) {
    if (!Ready(state) || !Run("command -v zip")) {
        state.SkipWithError("no zip installed");
        return;
    }
    const fs::path out = Theme().root / "zip-j.zip";
    const std::string command = "zip -j -q " + Quoted(out) + " " + Quoted(Theme().folder) + "/*";
    for (auto _ : state) {
        fs::remove(out);
        if (!Run(command)) {
            state.SkipWithError("zip failed");
            return;
        }
    }
}
BENCHMARK(BM_ZipJ)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_UnpackInProcess(benchmark::State& state) {
    if (!Ready(state) ||
        !PackTheme(InitEnvironment(Theme().machine->Env()), Theme().theme, Theme().zip).ok()) {
        return;
    }
    const auto keep = [](std::string_view) { return OverwriteAnswer::Overwrite; };
    for (auto _ : state) {
        state.PauseTiming();
        fs::remove_all(Theme().folder);
        state.ResumeTiming();
        if (!UnpackBundle(*Theme().machine, Theme().zip, keep).ok()) {
            state.SkipWithError("unpack failed");
            return;
        }
    }
}
BENCHMARK(BM_UnpackInProcess)->Unit(benchmark::kMillisecond);

void BM_UnpackCli(benchmark::State& state) {
    if (!Ready(state)) {
        return;
    }
    const std::string command = std::string(GLYPHMOOR_CLI) + " --machine " +
                                Quoted(Theme().root / "machine") + " theme unpack " + Quoted(Theme().zip);
    for (auto _ : state) {
        state.PauseTiming();
        fs::remove_all(Theme().folder);
        state.ResumeTiming();
        if (!Run(command)) {
            state.SkipWithError("glyphmoor-cli theme unpack failed");
            return;
        }
    }
}
BENCHMARK(BM_UnpackCli)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_Unzip(benchmark::State& state) {
    if (!Ready(state) || !Run("command -v unzip")) {
        state.SkipWithError("no unzip installed");
        return;
    }
    const fs::path out = Theme().root / "unzipped";
    const std::string command = "unzip -q -o " + Quoted(Theme().zip) + " -d " + Quoted(out);
    for (auto _ : state) {
        state.PauseTiming();
        fs::remove_all(out);
        state.ResumeTiming();
        if (!Run(command)) {
            state.SkipWithError("unzip failed");
            return;
        }
    }
}
BENCHMARK(BM_Unzip)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace glyphmoor
