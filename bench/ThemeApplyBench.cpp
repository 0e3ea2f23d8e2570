// Applying a theme that changes every catalogue entry (every icon of the six
// icon groups and every pointer), as "/a" and `theme apply` do: the machine
// opened, the catalogue built, the theme loaded and applied, one registry
// save. Beside it the catalogue build alone (the machine opened, the icons
// and pointers read). Both on the default machine and on the same machine
// with its system.reg grown to about 20 MB.
#include "foundation/AppEnvironment.h"
#include "foundation/DefaultMachine.h"
#include "foundation/Machine.h"
#include "icons/IconCatalogue.h"
#include "themes/ThemeApply.h"
#include "themes/ThemeLibrary.h"

#include "GrowHive.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace glyphmoor {
namespace {

namespace fs = std::filesystem;

constexpr const char* kHives[] = {"system.reg", "user.reg", "userdef.reg"};

// A default machine, its hives kept aside so each run starts from them, and
// a theme that changes every entry: the first starter theme (its icons and
// its pointers).
struct Fixture {
    fs::path dir;
    fs::path pristine;
    std::string theme;

    explicit Fixture(std::size_t systemBytes) {
        const fs::path root =
            fs::temp_directory_path() / ("glyphmoor-bench-theme-" + std::to_string(systemBytes));
        fs::remove_all(root);
        dir = root / "machine";
        pristine = root / "pristine";
        if (!EnsureSeededMachine(dir, SeedDirs()).ok()) {
            throw std::runtime_error("cannot make the default machine");
        }
        if (systemBytes > 0) {
            bench::GrowHive(dir / "system.reg", systemBytes);
        }
        fs::create_directories(pristine);
        for (const char* hive : kHives) {
            fs::copy_file(dir / hive, pristine / hive);
        }
        auto machine = OpenMachineFolder(dir);
        const AppEnvironment app = InitEnvironment((*machine)->Env());
        const auto themes = ListThemeLibrary(app);
        if (themes.empty()) {
            throw std::runtime_error("the default machine has no starter theme");
        }
        theme = themes.front().path;
    }

    void Reset() const {
        for (const char* hive : kHives) {
            fs::copy_file(pristine / hive, dir / hive, fs::copy_options::overwrite_existing);
        }
    }
};

Fixture& Data(std::size_t systemBytes) {
    static Fixture plain(0);
    static Fixture grown(20U << 20);
    return systemBytes == 0 ? plain : grown;
}

void BM_BuildCatalogue(benchmark::State& state) {
    const Fixture& data = Data(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        auto machine = OpenMachineFolder(data.dir);
        const AppEnvironment app = InitEnvironment((*machine)->Env());
        IconCatalogue catalogue((*machine)->Registry(), app);
        catalogue.DetectShellIcons();
        catalogue.BuildCursorCatalogue();
        benchmark::DoNotOptimize(catalogue.Group(1).Count());
    }
}

void BM_ApplyThemeChangingEveryEntry(benchmark::State& state) {
    const Fixture& data = Data(static_cast<std::size_t>(state.range(0)));
    std::size_t changed = 0;
    for (auto _ : state) {
        state.PauseTiming();
        data.Reset();
        state.ResumeTiming();
        auto machine = OpenMachineFolder(data.dir);
        const auto applied = ApplyThemeFile(**machine, data.theme);
        if (!applied.ok()) {
            state.SkipWithError(applied.reason().c_str());
            return;
        }
        changed = applied->size();
    }
    state.counters["entries_changed"] = static_cast<double>(changed);
}

BENCHMARK(BM_BuildCatalogue)->Arg(0)->Arg(20 << 20)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_ApplyThemeChangingEveryEntry)
    ->Arg(0)
    ->Arg(20 << 20)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
}  // namespace glyphmoor
