#include "cli/IniCommands.h"

#include "foundation/modProfile.h"

#include <ostream>

namespace glyphmoor {

int IniRead(CliContext& c, CommandArgs a) {
    const auto file = c.HostFile(a[0]);
    if (!file) {
        return kExitFailed;
    }
    c.out << ReadProfileValue(*file, a[1], a[2]) << '\n';
    return kExitOk;
}

int IniKeys(CliContext& c, CommandArgs a) {
    const auto file = c.HostFile(a[0]);
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
