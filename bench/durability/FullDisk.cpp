// A full disk: the machine on a small tmpfs whose every free byte is taken
// by another file; a registry write and an INI write must fail with the
// system's reason and leave every file as it was, with nothing beside it.
#include "Harness.h"

#include "foundation/FileIo.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>

namespace glyphmoor::durability {

namespace {

std::map<fs::path, std::string> Contents(const fs::path& dir) {
    std::map<fs::path, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(dir)) {
        if (entry.is_regular_file()) {
            auto text = ReadWholeFile(entry.path());
            files[entry.path()] = text ? *text : std::string("(unreadable)");
        }
    }
    return files;
}

// Takes every free byte of the file system that holds dir.
void FillUp(const fs::path& dir) {
    std::ofstream out(dir / "filler", std::ios::binary);
    const std::string block(1U << 16, 'x');
    while (out.write(block.data(), static_cast<std::streamsize>(block.size()))) {
        out.flush();
    }
    // The last partial block: byte by byte until nothing more fits.
    out.clear();
    while (out.put('x') && out.flush()) {
    }
}

int TryWrites(const Options& options, const fs::path& mount, const char* label) {
    const fs::path machine = mount / "machine";
    const std::string ini = (machine / "drive_c" / "shared.ini").string();
    if (RunCli(options, {"ini", "write", ini, "Section", "Key", "old"}).status != 0) {
        throw std::runtime_error("cannot write " + ini);
    }
    FillUp(mount);
    const auto before = Contents(machine);
    const struct {
        const char* what;
        std::vector<std::string> args;
    } writes[] = {
        {"reg write HKLM",
         {"--machine", machine.string(), "reg", "write", "HKEY_LOCAL_MACHINE\\Software\\Full", "v", "new"}},
        {"reg write HKCU",
         {"--machine", machine.string(), "reg", "write", "HKEY_CURRENT_USER\\Software\\Full", "v", "new"}},
        {"ini write", {"ini", "write", ini, "Section", "Key", std::string(8192, 'n')}},
    };
    int faults = 0;
    for (const auto& write : writes) {
        const RunEnd end = RunCli(options, write.args);
        const bool says = end.err.find("No space left on device") != std::string::npos;
        const bool kept = Contents(machine) == before;
        std::printf(
            "%-16s %-15s %s, %s; message: %s", label, write.what, end.status != 0 ? "refused" : "SUCCEEDED",
            kept ? "every file as it was" : "FILES CHANGED", end.err.empty() ? "(none)\n" : end.err.c_str());
        faults += (end.status == 0) + !says + !kept;
    }
    return faults;
}

}  // namespace

int RunFullDisk(const Options& options) {
    std::printf("A full disk (the machine on a tmpfs with no byte free)\n");
    int faults = 0;
    for (const std::size_t bytes : {std::size_t{0}, options.hiveBytes}) {
        const fs::path mount = options.scratch / ("full-" + std::to_string(bytes));
        fs::create_directories(mount);
        const std::size_t size = (bytes + (16U << 20)) >> 20;
        const std::string command =
            "mount -t tmpfs -o size=" + std::to_string(size) + "m glyphmoor-full " + mount.string();
        if (std::system(command.c_str()) != 0) {
            std::printf("skipped: cannot mount a tmpfs here (it needs root)\n");
            return 0;
        }
        MakeMachine(mount / "machine", bytes);
        const std::string label = bytes == 0 ? "default machine" : "grown machine";
        faults += TryWrites(options, mount, label.c_str());
        std::system(("umount " + mount.string()).c_str());
    }
    std::fflush(stdout);
    return faults;
}

}  // namespace glyphmoor::durability
