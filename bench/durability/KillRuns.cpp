// Kills at random moments: each operation is run on a copy of the same
// machine and killed with SIGKILL at a moment drawn from its whole length;
// the machine is then opened as the next command would open it, and each hive
// compared with what it held before the operation and after a whole run.
#include "Harness.h"

#include "foundation/AppEnvironment.h"
#include "foundation/Machine.h"
#include "themes/ThemeLibrary.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>
#include <stdexcept>

namespace glyphmoor::durability {

namespace {

struct Operation {
    std::string name;
    fs::path start;  // the hives it starts from
    std::vector<std::string> args;
};

struct Counts {
    int old = 0, fresh = 0, torn = 0, half = 0, lost = 0, finished = 0, failed = 0;
};

std::string FirstStarterTheme(const fs::path& machine) {
    auto opened = OpenMachineFolder(machine);
    if (!opened) {
        throw std::runtime_error(opened.reason());
    }
    const auto themes = ListThemeLibrary(InitEnvironment((*opened)->Env()));
    if (themes.empty()) {
        throw std::runtime_error("the default machine has no starter theme");
    }
    return themes.front().path;
}

// The hives a whole run leaves, and how long it takes (the shortest of three).
std::vector<std::uint64_t> WholeRun(const Options& options, const Operation& op, const fs::path& work,
                                    std::int64_t& lengthUs) {
    std::vector<std::uint64_t> result;
    lengthUs = INT64_MAX;
    for (int run = 0; run < 3; ++run) {
        CopyHives(op.start, work);
        const auto begin = std::chrono::steady_clock::now();
        const RunEnd end = RunCli(options, op.args);
        const auto us =
            std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin)
                .count();
        if (end.status != 0) {
            throw std::runtime_error(op.name + " failed: " + end.err);
        }
        lengthUs = std::min<std::int64_t>(lengthUs, us);
        const auto digests = HiveDigests(work);
        if (run > 0 && digests != result) {
            throw std::runtime_error(op.name + " does not leave the same hives twice");
        }
        result = digests;
    }
    return result;
}

void Classify(const std::vector<std::uint64_t>& before, const std::vector<std::uint64_t>& after,
              const fs::path& work, const RunEnd& end, Counts& counts) {
    if (!end.killed) {
        ++(end.status == 0 ? counts.finished : counts.failed);
    }
    if (OpenRegistry(work) || fs::exists(work / ".glyphmoor-journal")) {
        ++counts.torn;
        return;
    }
    const auto now = HiveDigests(work);
    if (now == after) {
        ++counts.fresh;
        return;
    }
    if (!end.killed && end.status == 0) {
        ++counts.lost;
    }
    if (now == before) {
        ++counts.old;
        return;
    }
    bool eachOldOrNew = true;
    for (std::size_t i = 0; i < now.size(); ++i) {
        eachOldOrNew = eachOldOrNew && (now[i] == before[i] || now[i] == after[i]);
    }
    ++(eachOldOrNew ? counts.half : counts.torn);
}

int KillOperation(const Options& options, const Operation& op, const fs::path& work, int kills,
                  std::mt19937& random) {
    const auto before = HiveDigests(op.start);
    std::int64_t lengthUs = 0;
    const auto after = WholeRun(options, op, work, lengthUs);
    std::uniform_int_distribution<std::int64_t> moment(0, lengthUs + lengthUs / 10);
    Counts counts;
    for (int i = 0; i < kills; ++i) {
        CopyHives(op.start, work);
        const RunEnd end = RunCli(options, op.args, moment(random));
        Classify(before, after, work, end, counts);
    }
    std::printf(
        "%-22s %6d kills over %4lld ms: %4d old, %4d new, %d torn, %d half-applied, %d lost "
        "(%d ended before the kill, %d failed)\n",
        op.name.c_str(), kills, static_cast<long long>(lengthUs / 1000), counts.old, counts.fresh,
        counts.torn, counts.half, counts.lost, counts.finished, counts.failed);
    std::fflush(stdout);
    return counts.torn + counts.half + counts.lost + counts.failed;
}

}  // namespace

int RunKills(const Options& options) {
    const fs::path root = options.scratch / "kills";
    const fs::path fresh = root / "fresh";
    const fs::path themed = root / "themed";
    const fs::path work = root / "work";
    MakeMachine(work, options.hiveBytes);
    fs::create_directories(fresh);
    fs::create_directories(themed);
    CopyHives(work, fresh);
    const std::string theme = FirstStarterTheme(work);
    const std::string machine = work.string();
    if (RunCli(options, {"--machine", machine, "theme", "apply", theme}).status != 0) {
        throw std::runtime_error("cannot apply " + theme);
    }
    CopyHives(work, themed);

    const std::vector<Operation> operations = {
        {"theme apply", fresh, {"--machine", machine, "theme", "apply", theme}},
        {"icons restore-all", themed, {"--machine", machine, "icons", "restore-all", "--yes"}},
        {"icons restore-all -c",
         themed,
         {"--machine", machine, "icons", "restore-all", "--cursors", "--yes"}},
    };
    std::printf("Kills (SIGKILL at a random moment; system.reg of %.1f MB)\n",
                static_cast<double>(fs::file_size(fresh / "system.reg")) / 1e6);
    std::mt19937 random(options.seed);
    int faults = 0;
    const int each = options.kills / static_cast<int>(operations.size());
    for (std::size_t i = 0; i < operations.size(); ++i) {
        const int kills = i + 1 == operations.size() ? options.kills - each * static_cast<int>(i) : each;
        faults += KillOperation(options, operations[i], work, kills, random);
    }
    if (RunCli(options, {"--machine", machine, "help", "tweaks", "set"}).status != 0) {
        std::printf("%-22s not in this build: no kills\n", "tweaks set");
    }
    return faults;
}

}  // namespace glyphmoor::durability
