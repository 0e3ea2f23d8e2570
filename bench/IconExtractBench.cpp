// Extracting every icon group of a large library to icon files, against
// reading the file once and against icoutils' wrestool (when installed).
//
// The library is Wine's 64-bit shell32.dll unless GLYPHMOOR_BENCH_LIBRARY
// names another file. Build in Release for figures worth quoting.
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace glyphmoor {
namespace {

std::filesystem::path Library() {
    if (const char* file = std::getenv("GLYPHMOOR_BENCH_LIBRARY")) {
        return file;
    }
    return "/usr/lib/x86_64-linux-gnu/wine/x86_64-windows/shell32.dll";
}

std::filesystem::path OutputDir(const char* name) {
    const auto dir = std::filesystem::temp_directory_path() / "glyphmoor-bench" / name;
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    return dir;
}

bool HaveLibrary(benchmark::State& state) {
    if (!std::filesystem::is_regular_file(Library())) {
        state.SkipWithError(("no library at " + Library().string()).c_str());
        return false;
    }
    return true;
}

// The floor: the file's bytes into memory.
void BM_ReadFileOnce(benchmark::State& state) {
    if (!HaveLibrary(state)) {
        return;
    }
    for (auto _ : state) {
        auto bytes = ReadFileBytes(Library(), std::size_t{1} << 30);
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(std::filesystem::file_size(Library())));
}
BENCHMARK(BM_ReadFileOnce)->Unit(benchmark::kMillisecond)->UseRealTime();

// What `glyphmoor-cli extract-all` does: read the file, then every icon
// group as DIR/<name>_<index>.ico.
void BM_ExtractAllToIconFiles(benchmark::State& state) {
    if (!HaveLibrary(state)) {
        return;
    }
    const auto dir = OutputDir("glyphmoor");
    const std::string stem = Library().filename().string();
    std::size_t groups = 0;
    for (auto _ : state) {
        auto module = ExecutableModule::Open(Library());
        if (!module) {
            state.SkipWithError(module.reason().c_str());
            return;
        }
        groups = module->IconGroups().size();
        cFileIcon icon;
        for (std::size_t i = 0; i < groups; ++i) {
            if (LoadIconOfModule(*module, static_cast<int>(i), icon)) {
                icon.SaveIcon(dir / (stem + "_" + std::to_string(i) + ".ico"));
            }
        }
    }
    state.counters["icons"] = static_cast<double>(groups);
}
BENCHMARK(BM_ExtractAllToIconFiles)->Unit(benchmark::kMillisecond)->UseRealTime();

// The same without writing files: reading and gathering the groups only.
void BM_ExtractAllInMemory(benchmark::State& state) {
    if (!HaveLibrary(state)) {
        return;
    }
    for (auto _ : state) {
        auto module = ExecutableModule::Open(Library());
        cFileIcon icon;
        for (std::size_t i = 0; module && i < module->IconGroups().size(); ++i) {
            if (LoadIconOfModule(*module, static_cast<int>(i), icon)) {
                benchmark::DoNotOptimize(icon.ToBytes());
            }
        }
    }
}
BENCHMARK(BM_ExtractAllInMemory)->Unit(benchmark::kMillisecond)->UseRealTime();

// icoutils' wrestool doing the same job, when it is installed.
void BM_WrestoolExtractAll(benchmark::State& state) {
    if (!HaveLibrary(state)) {
        return;
    }
    if (std::system("command -v wrestool >/dev/null 2>&1") != 0) {
        state.SkipWithError("wrestool is not installed (Debian package icoutils)");
        return;
    }
    const auto dir = OutputDir("wrestool");
    const std::string command = "wrestool -x -t 14 '" + Library().string() + "' -o '" + dir.string() + "/'";
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0) {
            state.SkipWithError("wrestool failed");
            return;
        }
    }
}
BENCHMARK(BM_WrestoolExtractAll)->Unit(benchmark::kMillisecond)->UseRealTime();

// Every icon image of Wine's own programs and libraries (GLYPHMOOR_BENCH_WINE_DIR,
// else Debian's wine64 folder) decoded to pixels, files read included.
void BM_DecodeEveryImageOfWine(benchmark::State& state) {
    const char* given = std::getenv("GLYPHMOOR_BENCH_WINE_DIR");
    const std::filesystem::path folder =
        given != nullptr ? given : "/usr/lib/x86_64-linux-gnu/wine/x86_64-windows";
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        const std::string ext = entry.path().extension().string();
        if (ext == ".dll" || ext == ".exe" || ext == ".cpl" || ext == ".ocx") {
            files.push_back(entry.path());
        }
    }
    if (files.empty()) {
        state.SkipWithError(("no Wine files in " + folder.string()).c_str());
        return;
    }
    std::size_t images = 0;
    for (auto _ : state) {
        images = 0;
        for (const auto& file : files) {
            auto module = ExecutableModule::Open(file);
            cFileIcon icon;
            for (std::size_t i = 0; module && i < module->IconGroups().size(); ++i) {
                if (!LoadIconOfModule(*module, static_cast<int>(i), icon)) {
                    continue;
                }
                for (int image = 0; image < icon.ImageCount(); ++image) {
                    auto pixels = icon.DecodeImage(image);
                    images += pixels.ok() ? 1 : 0;
                    benchmark::DoNotOptimize(pixels);
                }
            }
        }
    }
    state.counters["files"] = static_cast<double>(files.size());
    state.counters["images"] = static_cast<double>(images);
}
BENCHMARK(BM_DecodeEveryImageOfWine)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace glyphmoor
