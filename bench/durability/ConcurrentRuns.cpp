// Concurrent writers: several processes at once, each writing values of its
// own into both registry hives and keys of its own into one INI file, one
// command a value. Afterwards every value each one wrote must be there.
#include "Harness.h"

#include "foundation/MachineFolder.h"
#include "foundation/MachineRegistry.h"
#include "foundation/modProfile.h"
#include "foundation/modRegistry.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>

namespace glyphmoor::durability {

namespace {

std::string RegPath(int writer, int k) {
    return std::string(k % 2 == 0 ? "HKEY_CURRENT_USER" : "HKEY_LOCAL_MACHINE") +
           "\\Software\\Glyphmoor Durability\\Writer" + std::to_string(writer);
}

std::string ValueText(int writer, int k) {
    return "w" + std::to_string(writer) + "-" + std::to_string(k);
}

// One writer's commands, run one after another; exits with the failures.
[[noreturn]] void Writer(const Options& options, const fs::path& machine, const fs::path& ini, int writer) {
    int failures = 0;
    for (int k = 0; k < options.writesEach; ++k) {
        const std::string name = "V" + std::to_string(k);
        failures += RunCli(options, {"--machine", machine.string(), "reg", "write", RegPath(writer, k), name,
                                     ValueText(writer, k)})
                        .status != 0;
        failures += RunCli(options, {"ini", "write", ini.string(), "Writer" + std::to_string(writer),
                                     "Key" + std::to_string(k), ValueText(writer, k)})
                        .status != 0;
    }
    ::_exit(failures > 255 ? 255 : failures);
}

}  // namespace

int RunConcurrentWriters(const Options& options) {
    const fs::path machine = options.scratch / "concurrent";
    MakeMachine(machine, 0);
    const fs::path ini = machine / "drive_c" / "shared.ini";
    std::vector<pid_t> children;
    for (int writer = 0; writer < options.writers; ++writer) {
        const pid_t child = ::fork();
        if (child == 0) {
            Writer(options, machine, ini, writer);
        }
        children.push_back(child);
    }
    int failed = 0;
    for (const pid_t child : children) {
        int status = 0;
        ::waitpid(child, &status, 0);
        failed += WIFEXITED(status) ? WEXITSTATUS(status) : options.writesEach * 2;
    }
    auto folder = MachineFolder::Open(machine);
    if (!folder) {
        throw std::runtime_error(folder.reason());
    }
    auto registry = MachineRegistry::Load(*folder);
    if (!registry) {
        throw std::runtime_error(registry.reason());
    }
    int lostValues = 0;
    int lostKeys = 0;
    for (int writer = 0; writer < options.writers; ++writer) {
        for (int k = 0; k < options.writesEach; ++k) {
            const std::string expected = ValueText(writer, k);
            lostValues += GetRegString(**registry, RegPath(writer, k), "V" + std::to_string(k)) != expected;
            lostKeys += ReadProfileValue(ini, "Writer" + std::to_string(writer), "Key" + std::to_string(k)) !=
                        expected;
        }
    }
    const int total = options.writers * options.writesEach;
    std::printf("Concurrent writers (%d processes, %d writes each, a command a write)\n", options.writers,
                options.writesEach);
    std::printf("%-22s %6d writes: %d lost\n", "registry (both hives)", total, lostValues);
    std::printf("%-22s %6d writes: %d lost\n", "one INI file", total, lostKeys);
    std::printf("%-22s %6d commands failed\n", "", failed);
    std::fflush(stdout);
    return lostValues + lostKeys + failed;
}

}  // namespace glyphmoor::durability
