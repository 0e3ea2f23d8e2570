// glyphmoor-durability: kills, concurrent writers and a full disk against
// the command-line tool; prints the counts and exits non-zero on any fault.
#include "Harness.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

namespace {

using glyphmoor::durability::Options;

int Usage() {
    std::fprintf(stderr,
                 "usage: glyphmoor-durability [--cli PATH] [--scratch DIR] [--kills N] [--writers N]\n"
                 "                            [--writes N] [--megabytes N] [--seed N] "
                 "[kills|concurrent|full-disk]...\n");
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    options.cli = GLYPHMOOR_CLI;
    options.scratch = std::filesystem::temp_directory_path() / "glyphmoor-durability";
    std::vector<std::string> experiments;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const bool hasValue = i + 1 < argc;
        if (arg == "--cli" && hasValue) {
            options.cli = argv[++i];
        } else if (arg == "--scratch" && hasValue) {
            options.scratch = argv[++i];
        } else if (arg == "--kills" && hasValue) {
            options.kills = std::atoi(argv[++i]);
        } else if (arg == "--writers" && hasValue) {
            options.writers = std::atoi(argv[++i]);
        } else if (arg == "--writes" && hasValue) {
            options.writesEach = std::atoi(argv[++i]);
        } else if (arg == "--megabytes" && hasValue) {
            options.hiveBytes = static_cast<std::size_t>(std::atoi(argv[++i])) << 20;
        } else if (arg == "--seed" && hasValue) {
            options.seed = static_cast<unsigned>(std::atoi(argv[++i]));
        } else if (arg == "kills" || arg == "concurrent" || arg == "full-disk") {
            experiments.push_back(arg);
        } else {
            return Usage();
        }
    }
    if (experiments.empty()) {
        experiments = {"kills", "concurrent", "full-disk"};
    }
    std::filesystem::remove_all(options.scratch);
    std::filesystem::create_directories(options.scratch);
    int faults = 0;
    try {
        for (const auto& experiment : experiments) {
            faults += experiment == "kills"        ? glyphmoor::durability::RunKills(options)
                      : experiment == "concurrent" ? glyphmoor::durability::RunConcurrentWriters(options)
                                                   : glyphmoor::durability::RunFullDisk(options);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "glyphmoor-durability: %s\n", error.what());
        return 1;
    }
    std::printf("%d faults\n", faults);
    std::filesystem::remove_all(options.scratch);
    return faults == 0 ? 0 : 1;
}
