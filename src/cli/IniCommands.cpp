#include "cli/IniCommands.h"

#include "foundation/modProfile.h"

#include <array>

namespace glyphmoor {

namespace {

constexpr std::string_view kHelp =
    "ini read FILE SECTION KEY         print a value of a profile (INI) file\n"
    "ini keys FILE SECTION             print the key names of a section, one a line\n"
    "ini write FILE SECTION KEY VALUE  set a value, creating the section or file\n";

std::filesystem::path FilePath(const std::string& file, const Environment* env) {
    if (env != nullptr && IsDriveLetterPath(file)) {
        return env->HostPath(file);
    }
    return std::filesystem::path(file);
}

int Usage(std::ostream& err) {
    err << "usage:\n" << kHelp;
    return kExitUsage;
}

// Runs "ini VERB ..." from the dispatcher's table.
int RunIni(CliContext& context, std::string_view verb, CommandArgs args) {
    std::vector<std::string> words{std::string(verb)};
    words.insert(words.end(), args.begin(), args.end());
    const Environment* env = nullptr;
    if (!args.empty() && IsDriveLetterPath(args[0])) {
        Machine* machine = context.OpenMachine();
        if (machine == nullptr) {
            return kExitFailed;
        }
        env = &machine->Env();
    }
    return CmdIni(words, env, context.out, context.err);
}

constexpr std::array<CliCommand, 3> kCommands = {{
    {"ini read", "FILE SECTION KEY",
     "the value GetPrivateProfileStringA gives (default \"\", buffer size 127)",
     [](CliContext& c, CommandArgs a) { return RunIni(c, "read", a); }},
    {"ini keys", "FILE SECTION", "the key names of a section, one a line (buffer size 299)",
     [](CliContext& c, CommandArgs a) { return RunIni(c, "keys", a); }},
    {"ini write", "FILE SECTION KEY VALUE", "sets a value, creating the section or the file",
     [](CliContext& c, CommandArgs a) { return RunIni(c, "write", a); }},
}};

}  // namespace

std::string_view IniCommandHelp() {
    return kHelp;
}

std::span<const CliCommand> IniCommands() {
    return kCommands;
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
            err << "glyphmoor-cli: " << status.reason() << '\n';
            return kExitFailed;
        }
        return 0;
    }
    return Usage(err);
}

}  // namespace glyphmoor
