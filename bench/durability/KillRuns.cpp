// Kills at random moments: each operation is run on a copy of the same
// machine and killed with SIGKILL at a moment drawn from its whole length;
// the machine is then opened as the next command would open it, and each hive
// compared with what it held before the operation and after a whole run.
#include "Harness.h"

#include "foundation/AppEnvironment.h"
#include "foundation/Machine.h"
#include "themes/ThemeLibrary.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <random>
#include <sstream>
#include <stdexcept>

namespace glyphmoor::durability {

namespace {

struct Operation {
    std::string name;
    fs::path start;  // the hives it starts from
    std::vector<std::string> args;
};

struct Counts {
    int old = 0, fresh = 0, torn = 0, half = 0, filesAhead = 0, lost = 0, finished = 0, failed = 0;
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

// Every check item of the Tweak Shell tree turned to its other state, as
// arguments of `tweaks set` (as many as it takes).
std::vector<std::string> FlippedChecks(const Options& options, const fs::path& machine) {
    const std::string command = options.cli.string() + " --machine '" + machine.string() + "' tweaks";
    std::FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) {
        throw std::runtime_error("cannot list the tweaks");
    }
    std::string listing;
    std::array<char, 4096> buffer{};
    for (std::size_t n = 0; (n = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
        listing.append(buffer.data(), n);
    }
    ::pclose(pipe);
    constexpr std::size_t kMostItems = 60;
    std::vector<std::string> flipped;
    std::istringstream lines(listing);
    for (std::string line; std::getline(lines, line) && flipped.size() < kMostItems;) {
        std::vector<std::string> fields;
        std::istringstream parts(line);
        for (std::string field; std::getline(parts, field, '\t');) {
            fields.push_back(field);
        }
        if (fields.size() == 5 && fields[0] == "check") {
            flipped.push_back(fields[2] + "=" + (fields[4] == "on" ? "off" : "on"));
        }
    }
    return flipped;
}

// The hives a whole run leaves, and how long it takes (the shortest of three).
std::vector<std::uint64_t> WholeRun(const Options& options, const Operation& op, const fs::path& work,
                                    std::int64_t& lengthUs) {
    std::vector<std::uint64_t> result;
    lengthUs = INT64_MAX;
    for (int run = 0; run < 3; ++run) {
        CopyMachine(op.start, work);
        const auto begin = std::chrono::steady_clock::now();
        const RunEnd end = RunCli(options, op.args);
        const auto us =
            std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - begin)
                .count();
        if (end.status != 0) {
            throw std::runtime_error(op.name + " failed: " + end.err);
        }
        lengthUs = std::min<std::int64_t>(lengthUs, us);
        const auto digests = MachineDigests(work);
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
    const auto now = MachineDigests(work);
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
    // The hives (all but the last digest) must each be old or new; files on
    // drive C: made while every hive stayed old, some or all of them, count
    // apart from hives some old and some new.
    bool eachOldOrNew = true;
    bool hivesOld = true;
    for (std::size_t i = 0; i + 1 < now.size(); ++i) {
        eachOldOrNew = eachOldOrNew && (now[i] == before[i] || now[i] == after[i]);
        hivesOld = hivesOld && now[i] == before[i];
    }
    ++(!eachOldOrNew ? counts.torn : hivesOld ? counts.filesAhead : counts.half);
}

int KillOperation(const Options& options, const Operation& op, const fs::path& work, int kills,
                  std::mt19937& random) {
    const auto before = MachineDigests(op.start);
    std::int64_t lengthUs = 0;
    const auto after = WholeRun(options, op, work, lengthUs);
    std::uniform_int_distribution<std::int64_t> moment(0, lengthUs + lengthUs / 10);
    Counts counts;
    for (int i = 0; i < kills; ++i) {
        CopyMachine(op.start, work);
        const RunEnd end = RunCli(options, op.args, moment(random));
        Classify(before, after, work, end, counts);
    }
    std::printf(
        "%-22s %6d kills over %4lld ms: %4d old, %4d new, %d torn, %d half-applied (hives), %d with files "
        "made "
        "and hives old, %d lost "
        "(%d ended before the kill, %d failed)\n",
        op.name.c_str(), kills, static_cast<long long>(lengthUs / 1000), counts.old, counts.fresh,
        counts.torn, counts.half, counts.filesAhead, counts.lost, counts.finished, counts.failed);
    std::fflush(stdout);
    return counts.torn + counts.half + counts.filesAhead + counts.lost + counts.failed;
}

}  // namespace

int RunKills(const Options& options) {
    const fs::path root = options.scratch / "kills";
    const fs::path fresh = root / "fresh";
    const fs::path themed = root / "themed";
    const fs::path work = root / "work";
    MakeMachine(work, options.hiveBytes);
    CopyMachine(work, fresh);
    auto flipped = FlippedChecks(options, work);
    const std::string theme = FirstStarterTheme(work);
    const std::string machine = work.string();
    if (RunCli(options, {"--machine", machine, "theme", "apply", theme}).status != 0) {
        throw std::runtime_error("cannot apply " + theme);
    }
    CopyMachine(work, themed);

    const std::size_t flippedCount = flipped.size();
    std::vector<std::string> tweaks = {"--machine", machine, "tweaks", "set"};
    for (auto& item : flipped) {
        tweaks.push_back(std::move(item));
    }
    tweaks.emplace_back("--yes");
    std::vector<Operation> operations = {
        {"theme apply", fresh, {"--machine", machine, "theme", "apply", theme}},
        {"tweaks set (" + std::to_string(flippedCount) + " items)", fresh, tweaks},
        {"icons restore-all", themed, {"--machine", machine, "icons", "restore-all", "--yes"}},
        {"icons restore-all -c",
         themed,
         {"--machine", machine, "icons", "restore-all", "--cursors", "--yes"}},
    };
    if (flippedCount == 0) {
        std::printf("tweaks set: the tool has no tweaks; left out\n");
        operations.erase(operations.begin() + 1);
    }
    std::printf("Kills (SIGKILL at a random moment; system.reg of %.1f MB)\n",
                static_cast<double>(fs::file_size(fresh / "system.reg")) / 1e6);
    std::mt19937 random(options.seed);
    int faults = 0;
    const int each = options.kills / static_cast<int>(operations.size());
    for (std::size_t i = 0; i < operations.size(); ++i) {
        const int kills = i + 1 == operations.size() ? options.kills - each * static_cast<int>(i) : each;
        faults += KillOperation(options, operations[i], work, kills, random);
    }
    return faults;
}

}  // namespace glyphmoor::durability
