#include "icons/ShellIconState.h"

#include "foundation/modRegistry.h"

namespace glyphmoor {

namespace {

// shell32.dll indices by shell: the desktop-update shell with Internet
// Explorer 4.71, the desktop-update shell of another version, the old shell.
struct ShellIndices {
    std::int32_t text, bat, ini, ctlPanel, printers, usersGroup;
    std::string_view historyFile;  // after the system folder
    std::int32_t history;
};

constexpr ShellIndices kNewShellIe471 = {63, 64, 62, 50, 51, 42, "\\shdocvw.dll", 36};
constexpr ShellIndices kNewShellOther = {64, 65, 63, 51, 52, 42, "\\shdocvw.dll", 36};
constexpr ShellIndices kOldShell = {59, 60, 58, 46, 47, 73, "\\cachevu.dll", 0};

// A class key as the table names it: CLSID(x) under HKEY_CLASSES_ROOT,
// UCLSID(x) under the user's own classes, no key at all, or (in the override
// columns) the key chosen so far.
enum class Root { Same, None, Classes, UserClasses };
struct KeyRef {
    Root root = Root::Same;
    std::string_view clsid;
};

// When the default column's alternative key is taken instead.
enum class Alternative { Never, InBoxShellUnreadable, OnWindowsNt };

struct ClassKeyRow {
    DesktopObject object;
    KeyRef byDefault;
    Alternative when;
    KeyRef alternative;
    KeyRef newShell;  // with the desktop-update shell
    KeyRef win98;     // on "Win98"
};

constexpr std::string_view kMyComputer = "{20D04FE0-3AEA-1069-A2D8-08002B30309D}";
constexpr std::string_view kMyDocuments = "{450D8FBA-AD25-11D0-98A8-0800361B1103}";
constexpr std::string_view kNetwork = "{208D2C60-3AEA-1069-A2D7-08002B30309D}";
constexpr std::string_view kInternet = "{FBF23B42-E3F0-101B-8488-00AA003E56F8}";
constexpr std::string_view kInternetExplorer = "{871C5380-42A0-1069-A2EA-08002B30309D}";
constexpr std::string_view kRecycleBin = "{645FF040-5081-101B-9F08-00AA002F954E}";
constexpr std::string_view kInBox = "{00020D75-0000-0000-C000-000000000046}";
constexpr std::string_view kInBoxOther = "{00020D76-0000-0000-C000-000000000046}";
constexpr std::string_view kDialUp = "{992CFFA0-F557-101A-88EC-00DD010CCC48}";
constexpr std::string_view kDialUpNt = "{a4d92740-67cd-11cf-96f2-00aa00a11dd9}";

constexpr KeyRef Clsid(std::string_view x) {
    return {Root::Classes, x};
}
constexpr KeyRef Uclsid(std::string_view x) {
    return {Root::UserClasses, x};
}
constexpr KeyRef kSame{};
constexpr KeyRef kNone{Root::None, {}};

constexpr ClassKeyRow kClassKeys[] = {
    {DesktopObject::MyComputer, Clsid(kMyComputer), Alternative::Never, kNone, Uclsid(kMyComputer),
     Uclsid(kMyComputer)},
    {DesktopObject::MyDocuments, kNone, Alternative::Never, kNone, Uclsid(kMyDocuments),
     Uclsid(kMyDocuments)},
    {DesktopObject::NetworkNeighborhood, Clsid(kNetwork), Alternative::Never, kNone, Uclsid(kNetwork),
     Uclsid(kNetwork)},
    {DesktopObject::TheInternet, Clsid(kInternet), Alternative::Never, kNone, Clsid(kInternetExplorer),
     Clsid(kInternetExplorer)},
    {DesktopObject::RecycleBin, Clsid(kRecycleBin), Alternative::Never, kNone, Uclsid(kRecycleBin),
     Uclsid(kRecycleBin)},
    {DesktopObject::InBox, Clsid(kInBox), Alternative::InBoxShellUnreadable, Clsid(kInBoxOther), kSame,
     kSame},
    {DesktopObject::DialUpNetworking, Clsid(kDialUp), Alternative::OnWindowsNt, Clsid(kDialUpNt), kSame,
     kSame},
};
static_assert(std::size(kClassKeys) == kDesktopObjectCount);

// A default file: a name in the system or Windows folder, or a full path.
enum class Base { SysDir, WinDir, Absolute };
struct PathRule {
    Base base;
    std::string_view path;
};

struct FlavourDefaults {
    std::string_view flavour;
    PathRule inBox;
    std::int32_t inBoxIdx;
    PathRule paint, wordpad, player, sound, dialUp;
    std::int32_t dialUpIdx;
};

constexpr PathRule kAccessoriesPaint = {Base::Absolute, "C:\\Program Files\\Accessories\\Mspaint.exe"};
constexpr PathRule kAccessoriesWordpad = {Base::Absolute, "C:\\Program Files\\Accessories\\Wordpad.exe"};

constexpr FlavourDefaults kFlavourDefaults[] = {
    {"Win95",
     {Base::SysDir, "\\mapi32.dll"},
     3,
     kAccessoriesPaint,
     kAccessoriesWordpad,
     {Base::WinDir, "\\mplayer.exe"},
     {Base::WinDir, "\\sndrec32.exe"},
     {Base::SysDir, "\\shell32.dll"},
     33},
    {"Win98",
     {Base::SysDir, "\\cool.dll"},
     30,
     kAccessoriesPaint,
     kAccessoriesWordpad,
     {Base::WinDir, "\\mplayer.exe"},
     {Base::WinDir, "\\sndrec32.exe"},
     {Base::SysDir, "\\shell32.dll"},
     33},
    {"WinNT",
     {Base::Absolute, "C:\\Program Files\\Windows NT\\Windows Messaging\\exchng32.exe"},
     0,
     {Base::SysDir, "\\Mspaint.exe"},
     {Base::Absolute, "C:\\Program Files\\Windows NT\\Accessories\\Wordpad.exe"},
     {Base::SysDir, "\\mplay32.exe"},
     {Base::SysDir, "\\sndrec32.exe"},
     {Base::SysDir, "\\rasshell.dll"},
     0},
};

std::string KeyPath(const KeyRef& key) {
    switch (key.root) {
        case Root::Classes:
            return "HKEY_CLASSES_ROOT\\CLSID\\" + std::string(key.clsid);
        case Root::UserClasses:
            return "HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\" + std::string(key.clsid);
        case Root::None:
        case Root::Same:
            break;
    }
    return {};
}

void Override(std::string& chosen, const KeyRef& key) {
    if (key.root != Root::Same) {
        chosen = KeyPath(key);
    }
}

bool AlternativeHolds(Alternative when, RegistryStore& registry, const AppEnvironment& app) {
    switch (when) {
        case Alternative::Never:
            return false;
        case Alternative::InBoxShellUnreadable:
            return GetRegString(registry, "HKEY_CLASSES_ROOT\\CLSID\\" + std::string(kInBox) + "\\Shell",
                                "") == kRegError;
        case Alternative::OnWindowsNt:
            return app.windowsFlavour == "WinNT";
    }
    return false;
}

std::string Resolve(const PathRule& rule, const AppEnvironment& app) {
    switch (rule.base) {
        case Base::SysDir:
            return app.sysDir + std::string(rule.path);
        case Base::WinDir:
            return app.winDir + std::string(rule.path);
        case Base::Absolute:
            break;
    }
    return std::string(rule.path);
}

// An Outlook command line such as "C:\...\outlook.exe" (quoted) gives the
// program's path without its quotes.
constexpr std::string_view kOutlookEnding = "\\outlook.exe\"";

}  // namespace

ShellIconState DetectShellState(RegistryStore& registry, const AppEnvironment& app) {
    ShellIconState state;
    state.newShell = RegKeyExists(registry, kStartMenuOrderPath);
    if (state.newShell) {
        state.ie471 = GetRegString(registry, kInternetExplorerPath, "Version").substr(0, 4) == "4.71";
    }

    const ShellIndices& indices = !state.newShell ? kOldShell : state.ie471 ? kNewShellIe471 : kNewShellOther;
    state.textIdx = indices.text;
    state.batIdx = indices.bat;
    state.iniIdx = indices.ini;
    state.ctlPanelIdx = indices.ctlPanel;
    state.printersIdx = indices.printers;
    state.usersGroupIdx = indices.usersGroup;
    state.historyFile = app.sysDir + std::string(indices.historyFile);
    state.historyIdx = indices.history;

    const bool win98 = app.windowsFlavour == "Win98";
    for (const ClassKeyRow& row : kClassKeys) {
        std::string& key = state.classKeys[static_cast<std::size_t>(row.object)];
        key = KeyPath(AlternativeHolds(row.when, registry, app) ? row.alternative : row.byDefault);
        if (state.newShell) {
            Override(key, row.newShell);
        }
        if (win98) {
            Override(key, row.win98);
        }
    }

    // The Outlook program first; the flavour's own default replaces it, but
    // only on the three flavours the program knows.
    const std::string outlook = GetRegString(registry, kOutlookCommandPath, "");
    if (outlook.size() >= 2 && outlook.ends_with(kOutlookEnding)) {
        state.inBoxFile = outlook.substr(1, outlook.size() - 2);
        state.inBoxIdx = 0;
    }
    for (const FlavourDefaults& defaults : kFlavourDefaults) {
        if (defaults.flavour != app.windowsFlavour) {
            continue;
        }
        state.inBoxFile = Resolve(defaults.inBox, app);
        state.inBoxIdx = defaults.inBoxIdx;
        state.paintFile = Resolve(defaults.paint, app);
        state.wordpadFile = Resolve(defaults.wordpad, app);
        state.playerFile = Resolve(defaults.player, app);
        state.soundFile = Resolve(defaults.sound, app);
        state.dialUpFile = Resolve(defaults.dialUp, app);
        state.dialUpIdx = defaults.dialUpIdx;
    }
    return state;
}

}  // namespace glyphmoor
