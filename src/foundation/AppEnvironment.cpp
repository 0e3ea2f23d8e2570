#include "foundation/AppEnvironment.h"

namespace glyphmoor {

WindowsFlavour FlavourOf(const OsVersion& version) {
    if (version.platformId == kPlatformWindows) {
        return version.minor < 10 ? WindowsFlavour{"Win95", "Windows 95"}
                                  : WindowsFlavour{"Win98", "Windows 98"};
    }
    if (version.platformId == kPlatformNt) {
        return {"WinNT", "Windows NT"};
    }
    return {};
}

AppEnvironment InitEnvironment(const Environment& env) {
    AppEnvironment app(env);
    for (std::size_t i = 0; i < kGroupNames.size(); ++i) {
        app.groupNames[i] = kGroupNames[i];
    }
    const std::string programDir = env.ProgramDirectory();
    app.programFile = programDir + "\\Glyphmoor.exe";
    app.helpFile = programDir + "\\Glyphmoor.hlp";
    const WindowsFlavour flavour = FlavourOf(env.Version());
    app.windowsFlavour = flavour.flavour;
    app.windowsName = flavour.name;
    app.winDir = env.WindowsDirectory();
    app.sysDir = env.SystemDirectory();
    app.kind = env.Kind();
    app.currentDirectory = programDir;
    return app;
}

}  // namespace glyphmoor
