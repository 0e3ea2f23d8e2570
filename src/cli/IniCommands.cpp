#include "cli/IniCommands.h"

#include "foundation/modProfile.h"

namespace glyphmoor {

namespace {

constexpr std::string_view kHelp =
    "ini read FILE SECTION KEY         print a value of a profile (INI) file\n"
    "ini keys FILE SECTION             print the key names of a section, one a line\n"
    "ini write FILE SECTION KEY VALUE  set a value, creating the section or file\n";

bool IsWindowsPath(std::string_view path) {
    const bool letter =
        !path.empty() && ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
    return letter && path.size() >= 2 && path[1] == ':';
}

std::filesystem::path FilePath(const std::string& file, const Environment* env) {
    if (env != nullptr && IsWindowsPath(file)) {
        return env->HostPath(file);
    }
    return std::filesystem::path(file);
}

int Usage(std::ostream& err) {
    err << "usage:\n" << kHelp;
    return 2;
}

}  // namespace

std::string_view IniCommandHelp() {
    return kHelp;
}

int CmdIni(const std::vector<std::string>& args, const Environment* env, std::ostream& out,
           std::ostream& err) {
    if (args.empty()) {
        return Usage(err);
    }
    const std::string& verb = args[0];
    if (verb == "read" && args.size() == 4) {
        out << ReadProfileValue(FilePath(args[1], env), args[2], args[3]) << '\n';
        return 0;
    }
    if (verb == "keys" && args.size() == 3) {
        for (const auto& name : ReadProfileKeys(FilePath(args[1], env), args[2])) {
            out << name << '\n';
        }
        return 0;
    }
    if (verb == "write" && args.size() == 5) {
        const Status status = WriteProfileValue(FilePath(args[1], env), args[2], args[3], args[4]);
        if (!status.ok()) {
            err << status.reason() << '\n';
            return 1;
        }
        return 0;
    }
    return Usage(err);
}

}  // namespace glyphmoor
