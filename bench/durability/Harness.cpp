#include "Harness.h"

#include "../GrowHive.h"

#include "foundation/DefaultMachine.h"
#include "foundation/FileIo.h"
#include "foundation/MachineFolder.h"
#include "foundation/MachineRegistry.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace glyphmoor::durability {

namespace {

// The tool's error stream goes to this file, read after it ends.
std::string ReadAndRemove(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::error_code error;
    fs::remove(file, error);
    return text;
}

[[noreturn]] void ExecCli(const Options& options, const std::vector<std::string>& args,
                          const fs::path& errFile) {
    const int devnull = ::open("/dev/null", O_WRONLY);
    const int err = ::open(errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    ::dup2(devnull, STDOUT_FILENO);
    ::dup2(err, STDERR_FILENO);
    std::vector<char*> argv;
    std::string program = options.cli.string();
    argv.push_back(program.data());
    std::vector<std::string> copies = args;
    for (auto& arg : copies) {
        argv.push_back(arg.data());
    }
    argv.push_back(nullptr);
    ::execv(program.c_str(), argv.data());
    ::_exit(127);
}

}  // namespace

RunEnd RunCli(const Options& options, const std::vector<std::string>& args,
              std::optional<std::int64_t> killAfterUs) {
    static int serial = 0;
    const fs::path errFile =
        options.scratch / ("stderr-" + std::to_string(::getpid()) + "-" + std::to_string(serial++));
    const pid_t child = ::fork();
    if (child < 0) {
        throw std::runtime_error("cannot fork");
    }
    if (child == 0) {
        ExecCli(options, args, errFile);
    }
    RunEnd end;
    int status = 0;
    if (killAfterUs) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::microseconds(*killAfterUs);
        while (::waitpid(child, &status, WNOHANG) == 0) {
            if (std::chrono::steady_clock::now() >= deadline) {
                ::kill(child, SIGKILL);
                ::waitpid(child, &status, 0);
                break;
            }
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
    } else {
        ::waitpid(child, &status, 0);
    }
    end.killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    end.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    end.err = ReadAndRemove(errFile);
    return end;
}

void MakeMachine(const fs::path& dir, std::size_t bytes) {
    if (!EnsureSeededMachine(dir, SeedDirs()).ok()) {
        throw std::runtime_error("cannot make a default machine at " + dir.string());
    }
    bench::GrowHive(dir / "system.reg", bytes);
}

void CopyHives(const fs::path& from, const fs::path& to) {
    for (const char* hive : kHives) {
        fs::copy_file(from / hive, to / hive, fs::copy_options::overwrite_existing);
    }
}

std::uint64_t HiveDigest(const fs::path& hive) {
    auto text = ReadWholeFile(hive);
    if (!text) {
        return 0;
    }
    // FNV-1a over every line but the time lines, key lines cut after "]".
    std::uint64_t digest = 14695981039346656037ULL;
    std::string_view rest(*text);
    while (!rest.empty()) {
        const auto end = rest.find('\n');
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
        if (line.starts_with("#time=")) {
            continue;
        }
        if (line.starts_with("[")) {
            line = line.substr(0, line.rfind(']') + 1);
        }
        for (const char c : line) {
            digest = (digest ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
        }
        digest = (digest ^ '\n') * 1099511628211ULL;
    }
    return digest;
}

std::vector<std::uint64_t> HiveDigests(const fs::path& machine) {
    std::vector<std::uint64_t> digests;
    for (const char* hive : kHives) {
        digests.push_back(HiveDigest(machine / hive));
    }
    return digests;
}

void CopyMachine(const fs::path& from, const fs::path& to) {
    fs::remove_all(to);
    fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
}

std::vector<std::uint64_t> MachineDigests(const fs::path& machine) {
    std::vector<std::uint64_t> digests = HiveDigests(machine);
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(machine / "drive_c")) {
        names.push_back(entry.path().lexically_relative(machine).string());
    }
    std::sort(names.begin(), names.end());
    std::uint64_t digest = 14695981039346656037ULL;
    for (const auto& name : names) {
        for (const char c : name + '\n') {
            digest = (digest ^ static_cast<unsigned char>(c)) * 1099511628211ULL;
        }
    }
    digests.push_back(digest);
    return digests;
}

std::optional<std::string> OpenRegistry(const fs::path& machine) {
    auto folder = MachineFolder::Open(machine);
    if (!folder) {
        return folder.reason();
    }
    auto registry = MachineRegistry::Load(*folder);
    if (!registry) {
        return registry.reason();
    }
    return std::nullopt;
}

}  // namespace glyphmoor::durability
