#include "cli/BundleCommands.h"

#include "cli/ThemeCommands.h"
#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/RecentThemes.h"
#include "themes/ThemeBundle.h"

#include <filesystem>
#include <optional>
#include <ostream>

namespace glyphmoor {

namespace {

// A bundle argument as a host file: a Windows path of the machine mapped
// through it, any other path as it is.
std::filesystem::path BundleHostPath(CliContext& c, const std::string& argument) {
    return IsDriveLetterPath(argument) ? c.TheMachine().Env().HostPath(argument)
                                       : std::filesystem::path(argument);
}

// "--overwrite yes|no", or nothing when it is not given; false when it is malformed.
bool ReadOverwriteOption(CommandArgs a, std::optional<bool>& overwrite) {
    if (a.size() == 1) {
        return true;
    }
    if (a.size() != 3 || a[1] != "--overwrite" || (a[2] != "yes" && a[2] != "no")) {
        return false;
    }
    overwrite = a[2] == "yes";
    return true;
}

}  // namespace

int ThemePack(CliContext& c, CommandArgs a) {
    const auto theme = ThemePath(c, a[0]);
    if (!theme) {
        return kExitFailed;
    }
    std::string zipArgument = a[1];
    if (!IsBundlePath(zipArgument)) {
        zipArgument += kBundleExtension;
    }
    const AppEnvironment app = InitEnvironment(c.TheMachine().Env());
    const auto packed = PackTheme(app, *theme, BundleHostPath(c, zipArgument));
    if (!packed.ok()) {
        c.err << "glyphmoor-cli: " << packed.reason() << '\n';
        return kExitFailed;
    }
    for (const std::string& missing : packed->missing) {
        c.err << "glyphmoor-cli: left out " << missing << ": there is no such file\n";
    }
    for (const std::string& replaced : packed->replaced) {
        c.err << "glyphmoor-cli: left out " << replaced << ": a later file of the theme has the same name\n";
    }
    c.out << zipArgument << '\n';
    return kExitOk;
}

int ThemeUnpack(CliContext& c, CommandArgs a) {
    std::optional<bool> overwrite;
    if (!ReadOverwriteOption(a, overwrite)) {
        return UsageError(c, "theme unpack");
    }
    const auto question = [&c, overwrite](std::string_view file) {
        if (!overwrite) {
            c.err << BundleOverwriteQuestion(file)
                  << "\n\nglyphmoor-cli: give --overwrite yes or --overwrite no\n";
            return OverwriteAnswer::Stop;
        }
        return *overwrite ? OverwriteAnswer::Overwrite : OverwriteAnswer::Keep;
    };
    const auto unpacked = UnpackBundle(c.TheMachine(), BundleHostPath(c, a[0]), question);
    if (!unpacked.ok()) {
        c.err << "glyphmoor-cli: " << unpacked.reason() << '\n';
        return kExitFailed;
    }
    // The bundle becomes the current theme, as opening it in the window makes it.
    AppState state;
    const std::string bundle =
        c.TheMachine().Env().WindowsPath(std::filesystem::absolute(BundleHostPath(c, a[0])));
    SetCurrentTheme(c.TheMachine().Registry(), state, bundle.empty() ? unpacked->themePath : bundle);
    if (!c.SaveMachine()) {
        return kExitFailed;
    }
    c.out << unpacked->themePath << '\n';
    return kExitOk;
}

}  // namespace glyphmoor
