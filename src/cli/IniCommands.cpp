#include "cli/IniCommands.h"

#include "foundation/modProfile.h"

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>

namespace glyphmoor {

namespace {

// The host file of a profile file the command reads. A missing file reads as
// an empty one, as the profile functions read it; anything that is there but
// cannot be read (a folder, a pipe) is refused with the reason.
std::optional<std::filesystem::path> ReadableProfile(CliContext& c, const std::string& argument) {
    auto file = c.HostFile(argument);
    if (!file) {
        return std::nullopt;
    }
    if (auto loaded = LoadProfileFile(*file); !loaded) {
        c.err << "glyphmoor-cli: " << loaded.reason() << '\n';
        return std::nullopt;
    }
    return file;
}

}  // namespace

int IniRead(CliContext& c, CommandArgs a) {
    const auto file = ReadableProfile(c, a[0]);
    if (!file) {
        return kExitFailed;
    }
    c.out << ReadProfileValue(*file, a[1], a[2]) << '\n';
    return kExitOk;
}

int IniKeys(CliContext& c, CommandArgs a) {
    const auto file = ReadableProfile(c, a[0]);
    if (!file) {
        return kExitFailed;
    }
    for (const auto& name : ReadProfileKeys(*file, a[1])) {
        c.out << name << '\n';
    }
    return kExitOk;
}

int IniWrite(CliContext& c, CommandArgs a) {
    const auto file = c.HostFile(a[0]);
    if (!file) {
        return kExitFailed;
    }
    const Status status = WriteProfileValue(*file, a[1], a[2], a[3]);
    if (!status.ok()) {
        c.err << "glyphmoor-cli: " << status.reason() << '\n';
        return kExitFailed;
    }
    return kExitOk;
}

}  // namespace glyphmoor
