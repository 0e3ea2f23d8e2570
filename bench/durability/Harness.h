// The durability harness: what its three experiments share.
//
// Each experiment works on machine folders in a scratch folder and runs the
// command-line tool as a user would, as separate processes (killed with
// SIGKILL where the experiment says so). It is a POSIX program and not part
// of the test run: `bench/durability/README.md` says how to run it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace glyphmoor::durability {

namespace fs = std::filesystem;

inline constexpr const char* kHives[] = {"system.reg", "user.reg", "userdef.reg"};

struct Options {
    fs::path cli;
    fs::path scratch;
    int kills = 1000;
    int writers = 8;
    int writesEach = 20;
    std::size_t hiveBytes = 20U << 20;
    unsigned seed = 1;
};

// How a run of the tool ended.
struct RunEnd {
    bool killed = false;  // the kill came before the tool ended
    int status = 0;       // its exit status when it ended by itself
    std::string err;      // its error stream, when captured
};

// Runs the tool with args; when killAfterUs is given, sends SIGKILL that
// many microseconds after the start unless it ended before.
RunEnd RunCli(const Options& options, const std::vector<std::string>& args,
              std::optional<std::int64_t> killAfterUs = std::nullopt);

// A default machine made from the seed at dir, its system.reg grown with
// keys of the kind a long-used prefix has to about `bytes` (0: not grown).
void MakeMachine(const fs::path& dir, std::size_t bytes);
// The three hive files copied from one machine folder to another.
void CopyHives(const fs::path& from, const fs::path& to);
// The whole machine folder copied over another, which goes first.
void CopyMachine(const fs::path& from, const fs::path& to);

// What a hive says, without the key times a save stamps: two files with the
// same digest hold the same keys and values in the same order.
std::uint64_t HiveDigest(const fs::path& hive);
std::vector<std::uint64_t> HiveDigests(const fs::path& machine);
// The hives' digests, then one of the names of every file and folder on
// drive C: (what an operation makes there besides the registry).
std::vector<std::uint64_t> MachineDigests(const fs::path& machine);

// Opens the machine's registry as every command does (finishing a save a
// kill interrupted); the reason when it cannot be read.
std::optional<std::string> OpenRegistry(const fs::path& machine);

// The experiments; each prints its counts and returns how many faults it saw.
int RunKills(const Options& options);
int RunConcurrentWriters(const Options& options);
int RunFullDisk(const Options& options);

}  // namespace glyphmoor::durability
