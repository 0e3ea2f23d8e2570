// Load and save of a registry file of about 20 MB (Wine prefixes grow that
// large), and a batch of 500 value writes ending in one save, beside a plain
// read of the same file for comparison.
#include "foundation/FileIo.h"
#include "foundation/Machine.h"
#include "foundation/WineRegistryText.h"
#include "foundation/modRegistry.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <random>

namespace glyphmoor {
namespace {

namespace fs = std::filesystem;

// A Wine-like hive: nested keys with strings, dwords, escapes and wrapped binary data.
std::string GenerateHive(std::size_t targetBytes) {
    std::mt19937 random(42);
    std::string text = "WINE REGISTRY Version 2\n;; All keys relative to \\\\Machine\n\n#arch=win64\n";
    for (std::size_t k = 0; text.size() < targetBytes; ++k) {
        text += "\n[Software\\\\Vendor" + std::to_string(k / 400) + "\\\\Product" + std::to_string(k / 20) +
                "\\\\Key" + std::to_string(k) + "] 1795323958\n#time=1dd7a3f2949b940\n";
        const int values = 1 + static_cast<int>(random() % 5);
        for (int v = 0; v < values; ++v) {
            switch (random() % 4) {
                case 0:
                    text += "\"Path" + std::to_string(v) + "\"=\"C:\\\\windows\\\\system32\\\\file" +
                            std::to_string(random() % 1000) + ".dll,-" + std::to_string(v) + "\"\n";
                    break;
                case 1:
                    text += "\"Count" + std::to_string(v) + "\"=dword:0000" + std::to_string(1000 + v) + "\n";
                    break;
                case 2:
                    text += "\"Caf\\xe9" + std::to_string(v) + "\"=str(2):\"%SystemRoot%\\\\x\"\n";
                    break;
                default:
                    text += "\"Data" + std::to_string(v) + "\"=hex:";
                    for (int b = 0; b < 40; ++b) {
                        text += (b == 0 ? "" : ",");
                        text += "5a";
                        if (b == 22) {
                            text += ",\\\n  5a";
                        }
                    }
                    text += "\n";
            }
        }
    }
    return text;
}

struct Fixture {
    fs::path dir;
    std::string text;
    Fixture() {
        dir = fs::temp_directory_path() / "glyphmoor-bench-registry";
        fs::remove_all(dir);
        fs::create_directories(dir / "drive_c");
        text = GenerateHive(20U << 20);
        std::ofstream(dir / "system.reg", std::ios::binary) << text;
    }
};

Fixture& Data() {
    static Fixture fixture;
    return fixture;
}

void BM_ReadFileOnly(benchmark::State& state) {
    for (auto _ : state) {
        auto text = ReadWholeFile(Data().dir / "system.reg");
        benchmark::DoNotOptimize(text);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * Data().text.size()));
}

void BM_LoadHive(benchmark::State& state) {
    for (auto _ : state) {
        auto text = ReadWholeFile(Data().dir / "system.reg");
        auto hive = ParseWineRegistry(std::make_shared<const std::string>(std::move(*text)), "system.reg");
        if (!hive.ok()) {
            state.SkipWithError(hive.reason().c_str());
        }
        benchmark::DoNotOptimize(hive);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * Data().text.size()));
}

void BM_SaveHiveWithOneChange(benchmark::State& state) {
    auto hive = ParseWineRegistry(std::make_shared<const std::string>(Data().text), "system.reg");
    hive->Create("Software\\Vendor1\\Product30\\Key600", FileTimeNow())
        .SetValue("x", {kRegDword, {1, 0, 0, 0}});
    const fs::path out = Data().dir / "saved.reg";
    for (auto _ : state) {
        Status written = WriteFileAtomically(out, SerializeWineRegistry(*hive));
        if (!written.ok()) {
            state.SkipWithError(written.reason().c_str());
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * Data().text.size()));
}

void BM_FiveHundredWritesOneSave(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto machine = OpenMachineFolder(Data().dir);
        state.ResumeTiming();
        for (int i = 0; i < 500; ++i) {
            const std::string key =
                "HKEY_LOCAL_MACHINE\\Software\\Vendor" + std::to_string(i % 7) + "\\Batch";
            if (i % 2 == 0) {
                SetRegString((*machine)->Registry(), key, "v" + std::to_string(i), "C:\\WINDOWS\\icon.ico,3");
            } else {
                SetRegDword((*machine)->Registry(), key, "n" + std::to_string(i), i);
            }
        }
        Status saved = (*machine)->Save();
        if (!saved.ok()) {
            state.SkipWithError(saved.reason().c_str());
        }
    }
}

BENCHMARK(BM_ReadFileOnly)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadHive)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveHiveWithOneChange)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FiveHundredWritesOneSave)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
}  // namespace glyphmoor
