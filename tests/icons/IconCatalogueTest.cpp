// The icon catalogue on small machine folders of the three flavours, with and
// without the desktop-update shell. Tests follow the catalogue's tables: the
// machine's state, then each group.
#include "foundation/modRegistry.h"
#include "icons/CatalogueMachine.h"
#include "icons/IconCatalogue.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

using Strings = std::vector<std::string>;

constexpr const char* kShellIcons =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\explorer\\Shell Icons";

std::string Clsid(const char* id) {
    return std::string("HKEY_CLASSES_ROOT\\CLSID\\") + id;
}
std::string Uclsid(const char* id) {
    return std::string("HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\") + id;
}

// The default IconLocation of an entry, or "absent".
std::string DefaultOf(IconCatalogue& catalogue, const char* group, const char* name) {
    const SystemIconEntry* entry = catalogue.Find(group, name);
    return entry == nullptr ? "absent" : entry->Default().Text();
}

struct Config {
    Flavour flavour;
    Shell shell;
};

std::string Label(const Config& config) {
    return std::string(FlavourName(config.flavour)) + ", " + ShellName(config.shell);
}

// --- The machine's state: shell32 indices and the flavour's default files ---

TEST(DetectShellIcons, ShellIndicesFollowTheShellVersion) {
    const struct {
        Config config;
        Strings defaults;  // Control Panel, Printers, Text, Batch, Ini, Url History, Users Program Group
    } cases[] = {
        {{Flavour::Win98, Shell::NewIe471},
         {"C:\\WINDOWS\\SYSTEM\\shell32.dll,50", "C:\\WINDOWS\\SYSTEM\\shell32.dll,51",
          "C:\\WINDOWS\\SYSTEM\\shell32.dll,63", "C:\\WINDOWS\\SYSTEM\\shell32.dll,64",
          "C:\\WINDOWS\\SYSTEM\\shell32.dll,62", "C:\\WINDOWS\\SYSTEM\\shdocvw.dll,36", "absent"}},
        {{Flavour::Win98, Shell::NewIe4},
         {"C:\\WINDOWS\\SYSTEM\\shell32.dll,51", "C:\\WINDOWS\\SYSTEM\\shell32.dll,52",
          "C:\\WINDOWS\\SYSTEM\\shell32.dll,64", "C:\\WINDOWS\\SYSTEM\\shell32.dll,65",
          "C:\\WINDOWS\\SYSTEM\\shell32.dll,63", "C:\\WINDOWS\\SYSTEM\\shdocvw.dll,36", "absent"}},
        {{Flavour::Win95, Shell::Old},
         {"C:\\WINDOWS\\SYSTEM\\shell32.dll,46", "C:\\WINDOWS\\SYSTEM\\shell32.dll,47",
          "C:\\WINDOWS\\SYSTEM\\shell32.dll,59", "C:\\WINDOWS\\SYSTEM\\shell32.dll,60",
          "C:\\WINDOWS\\SYSTEM\\shell32.dll,58", "C:\\WINDOWS\\SYSTEM\\cachevu.dll,0", "absent"}},
        {{Flavour::WinNT, Shell::Old},
         {"C:\\WINNT\\system32\\shell32.dll,46", "C:\\WINNT\\system32\\shell32.dll,47",
          "C:\\WINNT\\system32\\shell32.dll,59", "C:\\WINNT\\system32\\shell32.dll,60",
          "C:\\WINNT\\system32\\shell32.dll,58", "C:\\WINNT\\system32\\cachevu.dll,0",
          "C:\\WINNT\\system32\\shell32.dll,73"}},
        {{Flavour::WinNT, Shell::NewIe471},
         {"C:\\WINNT\\system32\\shell32.dll,50", "C:\\WINNT\\system32\\shell32.dll,51",
          "C:\\WINNT\\system32\\shell32.dll,63", "C:\\WINNT\\system32\\shell32.dll,64",
          "C:\\WINNT\\system32\\shell32.dll,62", "C:\\WINNT\\system32\\shdocvw.dll,36",
          "C:\\WINNT\\system32\\shell32.dll,42"}},
    };
    for (const auto& c : cases) {
        CatalogueMachine machine(c.config.flavour, c.config.shell);
        machine.FileClass(".txt", "txtfile");
        machine.FileClass(".ini", "inifile");
        machine.WebFolders();
        IconCatalogue catalogue = machine.Build();
        const Strings got = {
            DefaultOf(catalogue, "Folder Icons", "Control Panel"),
            DefaultOf(catalogue, "Folder Icons", "Printers"),
            DefaultOf(catalogue, "File Icons", "Text Document"),
            DefaultOf(catalogue, "File Icons", "MS-DOS Batch File"),
            DefaultOf(catalogue, "File Icons", "Configuration Settings"),
            DefaultOf(catalogue, "Folder Icons", "Url History"),
            DefaultOf(catalogue, "Folder Icons", "Users Program Group"),
        };
        EXPECT_EQ(got, c.defaults) << Label(c.config);
    }
}

TEST(DetectShellIcons, TheDesktopUpdateShellAndIe471AreReadFromTheRegistry) {
    const struct {
        bool menuOrder;
        const char* ieVersion;
        bool newShell;
        bool ie471;
    } cases[] = {
        {false, nullptr, false, false},
        {false, "4.71.1712.6", false, false},  // IE 4.71 counts only with
                                               // the new shell
        {true, nullptr, true, false},
        {true, "4.71.1712.6", true, true},
        {true, "4.71", true, true},
        {true, "4.72.3110.8", true, false},
        {true, "5.00.2614.3500", true, false},
    };
    for (const auto& c : cases) {
        CatalogueMachine machine(Flavour::Win95);
        if (c.menuOrder) {
            machine.Key(kStartMenuOrderPath);
        }
        if (c.ieVersion != nullptr) {
            machine.Set(kInternetExplorerPath, "Version", c.ieVersion);
        }
        const ShellIconState state = DetectShellState(machine.Registry(), machine.App());
        EXPECT_EQ(state.newShell, c.newShell) << c.menuOrder << " " << (c.ieVersion ? c.ieVersion : "-");
        EXPECT_EQ(state.ie471, c.ie471) << c.menuOrder << " " << (c.ieVersion ? c.ieVersion : "-");
    }
}

TEST(DetectShellIcons, DefaultFilesFollowTheFlavour) {
    const struct {
        Flavour flavour;
        Strings defaults;  // In Box, Bitmap, Rich Text, Media Clip, Dial-Up Networking
    } cases[] = {
        {Flavour::Win95,
         {"C:\\WINDOWS\\SYSTEM\\mapi32.dll,3", "C:\\Program Files\\Accessories\\Mspaint.exe,1",
          "C:\\Program Files\\Accessories\\Wordpad.exe,1", "C:\\WINDOWS\\mplayer.exe,0",
          "C:\\WINDOWS\\SYSTEM\\shell32.dll,33"}},
        {Flavour::Win98,
         {"C:\\WINDOWS\\SYSTEM\\cool.dll,30", "C:\\Program Files\\Accessories\\Mspaint.exe,1",
          "C:\\Program Files\\Accessories\\Wordpad.exe,1", "C:\\WINDOWS\\mplayer.exe,0",
          "C:\\WINDOWS\\SYSTEM\\shell32.dll,33"}},
        {Flavour::WinNT,
         {"C:\\Program Files\\Windows NT\\Windows Messaging\\exchng32.exe,0",
          "C:\\WINNT\\system32\\Mspaint.exe,1", "C:\\Program Files\\Windows NT\\Accessories\\Wordpad.exe,1",
          "C:\\WINNT\\system32\\mplay32.exe,0", "C:\\WINNT\\system32\\rasshell.dll,0"}},
    };
    for (const auto& c : cases) {
        CatalogueMachine machine(c.flavour);
        // An Outlook command is looked at first, and every flavour replaces it.
        machine.Set(Clsid("{00020D75-0000-0000-C000-000000000046}") + "\\Shell\\Open\\Command", "",
                    "\"C:\\Program Files\\Microsoft Office\\Office\\outlook.exe\"");
        for (const char* ext : {".bmp", ".rtf", ".mmm"}) {
            machine.FileClass(ext, "someclass");
        }
        IconCatalogue catalogue = machine.Build();
        const Strings got = {
            DefaultOf(catalogue, "Desktop Icons", "In Box"),
            DefaultOf(catalogue, "File Icons", "Bitmap Image"),
            DefaultOf(catalogue, "File Icons", "Rich Text Format"),
            DefaultOf(catalogue, "File Icons", "Media Clip"),
            DefaultOf(catalogue, "Folder Icons", "Dial-Up Networking"),
        };
        EXPECT_EQ(got, c.defaults) << FlavourName(c.flavour);
    }
}

TEST(DetectShellIcons, AnOutlookCommandIsTheInBoxDefaultOnlyWithoutAFlavour) {
    CatalogueMachine machine(Flavour::Win98);
    machine.Set(Clsid("{00020D75-0000-0000-C000-000000000046}") + "\\Shell\\Open\\Command", "",
                "\"C:\\Office\\outlook.exe\"");
    AppEnvironment unknown = machine.App();
    unknown.windowsFlavour.clear();
    EXPECT_EQ(DetectShellState(machine.Registry(), unknown).inBoxFile, "C:\\Office\\outlook.exe");
    EXPECT_EQ(DetectShellState(machine.Registry(), machine.App()).inBoxFile, "C:\\WINDOWS\\SYSTEM\\cool.dll");

    machine.Set(Clsid("{00020D75-0000-0000-C000-000000000046}") + "\\Shell\\Open\\Command", "",
                "\"C:\\Office\\outlook.exe\" /recycle");
    EXPECT_EQ(DetectShellState(machine.Registry(), unknown).inBoxFile, "");
}

// --- Group 1, Desktop Icons ---

TEST(DesktopIcons, ListInTableOrderWithTheirDefaults) {
    CatalogueMachine machine(Flavour::Win98, Shell::NewIe471);
    IconCatalogue catalogue = machine.Build();
    const Strings expected = {
        "My Computer||C:\\WINDOWS\\explorer.exe,0|C:\\WINDOWS\\explorer.exe,0",
        "My Documents||C:\\WINDOWS\\SYSTEM\\mydocs.dll,0|C:\\WINDOWS\\SYSTEM\\mydocs.dll,0",
        "Network Neighborhood||C:\\WINDOWS\\SYSTEM\\shell32.dll,17|C:\\WINDOWS\\SYSTEM\\shell32.dll,17",
        "The Internet||C:\\WINDOWS\\SYSTEM\\mshtml.dll,0|C:\\WINDOWS\\SYSTEM\\mshtml.dll,0",
        "In Box||C:\\WINDOWS\\SYSTEM\\cool.dll,30|C:\\WINDOWS\\SYSTEM\\cool.dll,30",
        "My Briefcase||C:\\WINDOWS\\SYSTEM\\syncui.dll,0|C:\\WINDOWS\\SYSTEM\\syncui.dll,0",
        "Recycle Bin (empty)|Recycle Bin (empty)|C:\\WINDOWS\\SYSTEM\\shell32.dll,31|"
        "C:\\WINDOWS\\SYSTEM\\shell32.dll,31",
        "Recycle Bin (full)|Recycle Bin (full)|C:\\WINDOWS\\SYSTEM\\shell32.dll,32|"
        "C:\\WINDOWS\\SYSTEM\\shell32.dll,32",
    };
    Strings got;
    for (const auto& entry : catalogue.Group(1).Entries()) {
        got.push_back(Describe(entry));
    }
    EXPECT_EQ(got, expected);

    CatalogueMachine win95(Flavour::Win95, Shell::NewIe471);
    IconCatalogue withoutDocuments = win95.Build();
    EXPECT_EQ(Keys(withoutDocuments.Group(1)),
              (Strings{"My Computer", "Network Neighborhood", "The Internet", "In Box", "My Briefcase",
                       "Recycle Bin (empty)", "Recycle Bin (full)"}));
}

// Each desktop object's name and icon come from the class key its shell and
// flavour use; the other candidate key holds a decoy that must not show.
TEST(DesktopIcons, NamesAndIconsComeFromTheClassKeyOfTheShell) {
    constexpr const char* kComputer = "{20D04FE0-3AEA-1069-A2D8-08002B30309D}";
    constexpr const char* kDocuments = "{450D8FBA-AD25-11D0-98A8-0800361B1103}";
    constexpr const char* kNetwork = "{208D2C60-3AEA-1069-A2D7-08002B30309D}";
    constexpr const char* kInternet = "{FBF23B42-E3F0-101B-8488-00AA003E56F8}";
    constexpr const char* kExplorer = "{871C5380-42A0-1069-A2EA-08002B30309D}";
    constexpr const char* kBriefcase = "{85BBD920-42A0-1069-A2E4-08002B30309D}";
    const struct {
        Config config;
        const char* name;
        std::string used;
        std::string decoy;
    } cases[] = {
        {{Flavour::Win95, Shell::Old}, "My Computer", Clsid(kComputer), Uclsid(kComputer)},
        {{Flavour::Win95, Shell::NewIe4}, "My Computer", Uclsid(kComputer), Clsid(kComputer)},
        {{Flavour::Win98, Shell::Old}, "My Computer", Uclsid(kComputer), Clsid(kComputer)},
        {{Flavour::WinNT, Shell::Old}, "My Computer", Clsid(kComputer), Uclsid(kComputer)},
        {{Flavour::WinNT, Shell::NewIe471}, "Network Neighborhood", Uclsid(kNetwork), Clsid(kNetwork)},
        {{Flavour::Win98, Shell::Old}, "My Documents", Uclsid(kDocuments), Clsid(kDocuments)},
        {{Flavour::Win95, Shell::Old}, "The Internet", Clsid(kInternet), Clsid(kExplorer)},
        {{Flavour::Win98, Shell::Old}, "The Internet", Clsid(kExplorer), Clsid(kInternet)},
        {{Flavour::WinNT, Shell::NewIe4}, "The Internet", Clsid(kExplorer), Clsid(kInternet)},
        {{Flavour::Win98, Shell::NewIe471}, "My Briefcase", Clsid(kBriefcase), Uclsid(kBriefcase)},
    };
    for (const auto& c : cases) {
        CatalogueMachine machine(c.config.flavour, c.config.shell);
        machine.Set(c.used, "", "Workstation");
        machine.Set(c.used + "\\DefaultIcon", "", "C:\\Icons\\mine.ico,4");
        machine.Set(c.decoy, "", "Decoy");
        machine.Set(c.decoy + "\\DefaultIcon", "", "C:\\Icons\\decoy.ico,9");
        IconCatalogue catalogue = machine.Build();
        const SystemIconEntry* entry = catalogue.Find("Desktop Icons", c.name);
        ASSERT_NE(entry, nullptr) << Label(c.config) << " " << c.name;
        EXPECT_EQ(entry->displayName, "Workstation") << Label(c.config) << " " << c.name;
        EXPECT_EQ(entry->catalogueName, c.name) << Label(c.config);
        EXPECT_EQ(entry->Current().Text(), "C:\\Icons\\mine.ico,4") << Label(c.config) << " " << c.name;
        EXPECT_EQ(entry->classKey, c.used) << Label(c.config) << " " << c.name;
        EXPECT_EQ(entry->store, (IconStore{c.used + "\\DefaultIcon", ""}))
            << Label(c.config) << " " << c.name;
    }
}

TEST(DesktopIcons, ARecycleBinNamedTrashKeepsItsCatalogueNames) {
    const struct {
        Config config;
        std::string key;
    } cases[] = {
        {{Flavour::Win98, Shell::NewIe471}, Uclsid("{645FF040-5081-101B-9F08-00AA002F954E}")},
        {{Flavour::Win95, Shell::Old}, Clsid("{645FF040-5081-101B-9F08-00AA002F954E}")},
    };
    for (const auto& c : cases) {
        CatalogueMachine machine(c.config.flavour, c.config.shell);
        machine.Set(c.key, "", "Trash");
        machine.Set(c.key + "\\DefaultIcon", "Empty", "C:\\Icons\\bin.ico,0");
        machine.Set(c.key + "\\DefaultIcon", "Full", "C:\\Icons\\bin.ico,1");
        IconCatalogue catalogue = machine.Build();
        const IconGroup& desktop = catalogue.Group(1);
        ASSERT_GE(desktop.Count(), 2U);
        EXPECT_EQ(
            Describe(desktop.At(desktop.Count() - 2)),
            "Trash (empty)|Recycle Bin (empty)|C:\\Icons\\bin.ico,0|C:\\WINDOWS\\SYSTEM\\shell32.dll,31")
            << Label(c.config);
        EXPECT_EQ(Describe(desktop.At(desktop.Count() - 1)),
                  "Trash (full)|Recycle Bin (full)|C:\\Icons\\bin.ico,1|C:\\WINDOWS\\SYSTEM\\shell32.dll,32")
            << Label(c.config);
        EXPECT_EQ(desktop.At(desktop.Count() - 1).store, (IconStore{c.key + "\\DefaultIcon", "Full"}));
        // The rows have no class key of their own: renaming goes through the bin's.
        EXPECT_EQ(desktop.At(desktop.Count() - 1).classKey, "");
    }
}

TEST(DesktopIcons, InBoxAndDialUpKeysDependOnTheMachine) {
    const std::string messaging = Clsid("{00020D75-0000-0000-C000-000000000046}");
    const std::string exchange = Clsid("{00020D76-0000-0000-C000-000000000046}");
    const std::string dialUp = Clsid("{992CFFA0-F557-101A-88EC-00DD010CCC48}");
    const std::string dialUpNt = Clsid("{a4d92740-67cd-11cf-96f2-00aa00a11dd9}");
    const struct {
        Flavour flavour;
        bool messagingShellReads;
        std::string inBox;
        std::string dialUp;
    } cases[] = {
        {Flavour::Win98, true, messaging, dialUp},
        {Flavour::Win98, false, exchange, dialUp},
        {Flavour::Win95, false, exchange, dialUp},
        {Flavour::WinNT, true, messaging, dialUpNt},
    };
    for (const auto& c : cases) {
        CatalogueMachine machine(c.flavour, Shell::NewIe471);
        machine.Key(messaging + "\\Shell");
        if (c.messagingShellReads) {
            machine.Set(messaging + "\\Shell", "", "open");
        }
        IconCatalogue catalogue = machine.Build();
        EXPECT_EQ(catalogue.Find("Desktop Icons", "In Box")->classKey, c.inBox) << FlavourName(c.flavour);
        EXPECT_EQ(catalogue.Find("Folder Icons", "Dial-Up Networking")->classKey, c.dialUp)
            << FlavourName(c.flavour);
    }
}

// --- Groups 2, 3 and 5: Start, Folder and Other Icons ---

TEST(StartIcons, FavoritesAndLogOffOnlyWithTheNewShell) {
    CatalogueMachine oldShell(Flavour::Win95);
    IconCatalogue without = oldShell.Build();
    EXPECT_EQ(Keys(without.Group(2)),
              (Strings{"Programs", "Documents", "Settings", "Find", "Help", "Run", "Suspend", "Shut Down",
                       "Settings - Control Panel", "Settings - Printers"}));

    CatalogueMachine newShell(Flavour::Win95, Shell::NewIe4);
    IconCatalogue with = newShell.Build();
    EXPECT_EQ(Keys(with.Group(2)),
              (Strings{"Programs", "Favorites", "Documents", "Settings", "Find", "Help", "Run", "Log Off",
                       "Suspend", "Shut Down", "Settings - Control Panel", "Settings - Printers"}));
    const SystemIconEntry* logOff = with.Find("Start Icons", "Log Off");
    EXPECT_EQ(Describe(*logOff),
              "Log Off...|Log Off|C:\\WINDOWS\\SYSTEM\\shell32.dll,44|C:\\WINDOWS\\SYSTEM\\shell32.dll,44");
    EXPECT_EQ(logOff->store, (IconStore{kShellIcons, "44"}));
}

TEST(FolderIcons, RowsExistByFlavourAndByTheirShellFolderKeys) {
    CatalogueMachine nt(Flavour::WinNT);
    nt.WebFolders();
    IconCatalogue full = nt.Build();
    EXPECT_EQ(Keys(full.Group(3)),
              (Strings{"Closed Folder", "Open Folder", "Program Group", "Users Program Group",
                       "Control Panel", "Dial-Up Networking", "Printers", "Favorites", "Url History",
                       "ActiveX Cache", "Subscriptions", "Scheduled Tasks"}));
    EXPECT_EQ(full.Find("Folder Icons", "Users Program Group")->store, (IconStore{kShellIcons, "42"}));

    // Without Windows NT no common groups; a ShellFolder key without its
    // unnamed value does not read, so that folder is absent.
    CatalogueMachine win98(Flavour::Win98, Shell::NewIe471);
    win98.Set(Clsid("{FF393560-C2A7-11CF-BFF4-444553540000}") + "\\ShellFolder", "", "");
    win98.Set(Clsid("{1A9BA3A0-143A-11CF-8350-444553540000}") + "\\ShellFolder", "Attributes", "0");
    IconCatalogue some = win98.Build();
    EXPECT_EQ(Keys(some.Group(3)), (Strings{"Closed Folder", "Open Folder", "Program Group", "Control Panel",
                                            "Dial-Up Networking", "Printers", "Url History"}));
}

TEST(FolderIcons, ControlPanelPrintersAndDialUpAreRenamable) {
    CatalogueMachine machine(Flavour::Win98, Shell::NewIe471);
    const std::string controlPanel = Clsid("{21EC2020-3AEA-1069-A2DD-08002B30309D}");
    machine.Set(controlPanel, "", "Settings Hub");
    machine.Set(controlPanel + "\\DefaultIcon", "", "%SystemRoot%\\SYSTEM\\panel.dll,2");
    machine.Set(Clsid("{2227A280-3AEA-1069-A2DE-08002B30309D}"), "", "");  // an empty name is no name
    IconCatalogue catalogue = machine.Build();
    EXPECT_EQ(
        Describe(*catalogue.Find("Folder Icons", "Control Panel")),
        "Settings Hub|Control Panel|C:\\WINDOWS\\SYSTEM\\panel.dll,2|C:\\WINDOWS\\SYSTEM\\shell32.dll,50");
    EXPECT_EQ(catalogue.Find("Folder Icons", "Control Panel")->classKey, controlPanel);
    EXPECT_EQ(Describe(*catalogue.Find("Folder Icons", "Printers")),
              "Printers||C:\\WINDOWS\\SYSTEM\\shell32.dll,51|C:\\WINDOWS\\SYSTEM\\shell32.dll,51");
    EXPECT_EQ(catalogue.Find("Folder Icons", "Closed Folder")->classKey, "");
}

TEST(OtherIcons, TheShortcutOverlayRowFollowsTheArrowTweak) {
    const struct {
        const char* overlay;  // Shell Icons "29", or nullptr
        bool listed;
    } cases[] = {
        {nullptr, true},
        {"C:\\WINDOWS\\SYSTEM\\shell32.dll,29", true},
        {"C:\\Program Files\\Glyphmoor\\blank.ico", false},
        {"C:\\Other\\blank.ico", true},
    };
    for (const auto& c : cases) {
        CatalogueMachine machine(Flavour::Win98, Shell::NewIe471);
        if (c.overlay != nullptr) {
            machine.Set(kShellIcons, "29", c.overlay);
        }
        IconCatalogue catalogue = machine.Build();
        Strings expected = {"Sharing Overlay", "Desktop",  "Entire Network",
                            "Workgroup",       "Computer", "Audio CD"};
        if (c.listed) {
            expected.insert(expected.begin(), "Shortcut Overlay");
        }
        EXPECT_EQ(Keys(catalogue.Group(5)), expected) << (c.overlay ? c.overlay : "none");
    }
}

TEST(OtherIcons, RebuildingTheGroupAddsOrDropsTheOverlayAndRefreshesIt) {
    CatalogueMachine machine(Flavour::Win98, Shell::NewIe471);
    IconCatalogue catalogue = machine.Build();
    int refreshes = 0;
    catalogue.Group(5).SetRefreshHandler([&refreshes](const IconGroup& group) {
        EXPECT_EQ(group.Number(), 5);
        ++refreshes;
    });
    catalogue.BuildOtherIcons(false);
    EXPECT_EQ(catalogue.Group(5).Count(), 6U);
    EXPECT_EQ(refreshes, 1);
    machine.Set(kShellIcons, "29", "C:\\WINDOWS\\SYSTEM\\shell32.dll,29");
    catalogue.BuildOtherIcons(true);
    EXPECT_EQ(catalogue.Group(5).KeyAt(0), "Shortcut Overlay");
    EXPECT_EQ(catalogue.Group(5).Count(), 7U);
    EXPECT_EQ(refreshes, 2);
}

// --- How a stored value becomes the current icon (every row alike) ---

TEST(AddCatalogueEntry, StoredTextsBecomeTheCurrentIcon) {
    const std::string tooLong = "C:\\" + std::string(250, 'a') + ".dll,1";
    const struct {
        std::string stored;
        const char* current;  // nullptr: the row is left out
    } cases[] = {
        {"%SystemRoot%\\system32\\a.dll,3", "C:\\WINDOWS\\system32\\a.dll,3"},
        {"%SYSTEMROOT%x.dll", "C:\\WINDOWSx.dll,0"},
        {"%systemroot", "%systemroot,0"},
        {"C:\\%systemroot%\\a.dll,1", "C:\\%systemroot%\\a.dll,1"},
        {"C:\\Icons\\folder.ico", "C:\\Icons\\folder.ico,0"},
        {"C:\\x,y.dll,5", "C:\\x,y.dll,5"},
        {"", "C:\\WINDOWS\\SYSTEM\\shell32.dll,3"},
        {"Error", "C:\\WINDOWS\\SYSTEM\\shell32.dll,3"},
        {tooLong, "C:\\WINDOWS\\SYSTEM\\shell32.dll,3"},
        {"C:\\a.dll,x", nullptr},
    };
    for (const auto& c : cases) {
        CatalogueMachine machine(Flavour::Win98);
        machine.Set(kShellIcons, "3", c.stored);
        IconCatalogue catalogue = machine.Build();
        const SystemIconEntry* entry = catalogue.Find("Folder Icons", "Closed Folder");
        if (c.current == nullptr) {
            EXPECT_EQ(entry, nullptr) << c.stored;
            EXPECT_EQ(catalogue.Group(3).KeyAt(0), "Open Folder") << "the build goes on";
            continue;
        }
        ASSERT_NE(entry, nullptr) << c.stored;
        EXPECT_EQ(entry->Current().Text(), c.current) << c.stored;
        EXPECT_EQ(entry->Default().Text(), "C:\\WINDOWS\\SYSTEM\\shell32.dll,3");
    }
}

// --- Group 6, File Icons ---

TEST(FileIcons, FileTypesAreListedWhenTheirExtensionNamesAClass) {
    CatalogueMachine machine(Flavour::Win98, Shell::NewIe471);
    machine.FileClass(".txt", "txtfile");
    machine.Set("HKEY_CLASSES_ROOT\\txtfile\\DefaultIcon", "", "C:\\Icons\\text.ico,2");
    machine.FileClass(".zip", "WinZip");
    machine.FileClass(".gif", "");  // empty: not registered
    machine.FileClass(".avi", "AVIFile");
    IconCatalogue catalogue = machine.Build();
    EXPECT_EQ(Keys(catalogue.Group(6)),
              (Strings{"Default Icon", "Default Document", "MS-DOS Application", "MS-DOS Batch File",
                       "Text Document", "Video Clip", "Zip File"}));
    const auto* text = catalogue.Find("File Icons", "Text Document");
    EXPECT_EQ(Describe(*text), "Text Document||C:\\Icons\\text.ico,2|C:\\WINDOWS\\SYSTEM\\shell32.dll,63");
    EXPECT_EQ(text->store, (IconStore{"HKEY_CLASSES_ROOT\\txtfile\\DefaultIcon", ""}));
    EXPECT_EQ(Describe(*catalogue.Find("File Icons", "Zip File")), "Zip File||,0|,0");
    EXPECT_EQ(Describe(*catalogue.Find("File Icons", "Video Clip")),
              "Video Clip||C:\\WINDOWS\\SYSTEM\\quartz.dll,0|C:\\WINDOWS\\SYSTEM\\quartz.dll,0");
    // The batch file is always listed; without a class its store names none.
    EXPECT_EQ(catalogue.Find("File Icons", "MS-DOS Batch File")->store,
              (IconStore{"HKEY_CLASSES_ROOT\\Error\\DefaultIcon", ""}));
    EXPECT_EQ(catalogue.Find("File Icons", "Default Icon")->store, (IconStore{kShellIcons, "0"}));
}

// --- Group 7, Cursors ---

TEST(Cursors, PointersComeFromControlPanelCursors) {
    const struct {
        Flavour flavour;
        std::size_t count;
    } cases[] = {{Flavour::Win95, 14}, {Flavour::Win98, 15}, {Flavour::WinNT, 14}};
    for (const auto& c : cases) {
        CatalogueMachine machine(c.flavour);
        machine.Set(kCursorsPath, "Wait", "C:\\WINDOWS\\Cursors\\hourglas.ani");
        IconCatalogue catalogue = machine.Build();
        const IconGroup& cursors = catalogue.Group(7);
        ASSERT_EQ(cursors.Count(), c.count) << FlavourName(c.flavour);
        EXPECT_EQ(Describe(cursors.At(0)),
                  "Normal Select||C:\\Program Files\\Glyphmoor\\Glyphmoor.exe,1|"
                  "C:\\Program Files\\Glyphmoor\\Glyphmoor.exe,1");
        EXPECT_EQ(Describe(cursors.At(3)),
                  "Busy||C:\\WINDOWS\\Cursors\\hourglas.ani,0|C:\\Program Files\\Glyphmoor\\Glyphmoor.exe,4");
        EXPECT_EQ(cursors.At(13).store, (IconStore{std::string(kCursorsPath), "UpArrow"}));
        EXPECT_EQ(cursors.KeyAt(c.count - 1), c.count == 15 ? "Hand" : "Alternate Select");
    }
}

// --- The stable key ---

TEST(StableKey, EntriesAreFoundByGroupAndCatalogueName) {
    CatalogueMachine machine(Flavour::Win98, Shell::NewIe471);
    machine.Set(Uclsid("{20D04FE0-3AEA-1069-A2D8-08002B30309D}"), "", "Workstation");
    machine.WebFolders();
    IconCatalogue catalogue = machine.Build();
    const IconLocation theme{"C:\\Themes\\Ocean\\Ocean My Computer.ico", 0};

    EXPECT_TRUE(catalogue.SetByKey("Desktop Icons", "My Computer", theme));
    EXPECT_EQ(catalogue.Group(1).LocationAt(0), theme);
    EXPECT_EQ(catalogue.Group(1).KeyAt(0), "My Computer");
    EXPECT_FALSE(catalogue.SetByKey("Desktop Icons", "Workstation", theme)) << "the user's name is no key";
    EXPECT_TRUE(catalogue.SetByKey("start icons", "RUN", theme)) << "keys compare as profile keys do";
    EXPECT_EQ(catalogue.Find("Start Icons", "Run")->Current(), theme);
    EXPECT_FALSE(catalogue.SetByKey("Start Icons", "Run...", theme));
    EXPECT_FALSE(catalogue.SetByKey("File Icons", "GIF Image", theme)) << "not registered here";
    EXPECT_FALSE(catalogue.SetByKey("Include", "Read Me", theme));

    // The two Favorites are different items.
    EXPECT_TRUE(catalogue.SetByKey("Folder Icons", "Favorites", {"C:\\f.ico", 1}));
    EXPECT_EQ(catalogue.Find("Start Icons", "Favorites")->Current().Text(),
              "C:\\WINDOWS\\SYSTEM\\shell32.dll,43");
    EXPECT_EQ(catalogue.Find("Folder Icons", "Favorites")->Current().Text(), "C:\\f.ico,1");
}

TEST(IconCatalogue, BuildingMarksTheCatalogueAndDetectionAloneDoesNot) {
    CatalogueMachine machine(Flavour::Win98);
    IconCatalogue catalogue(machine.Registry(), machine.App());
    catalogue.DetectShellIcons(true);
    EXPECT_TRUE(catalogue.Detected());
    EXPECT_FALSE(catalogue.Built());
    EXPECT_TRUE(catalogue.Group(1).Empty());
    catalogue.BuildIconCatalogue();
    EXPECT_TRUE(catalogue.Built());
    EXPECT_FALSE(catalogue.CursorsBuilt());
    EXPECT_TRUE(catalogue.Group(7).Empty());
    for (int group = 1; group <= 6; ++group) {
        EXPECT_FALSE(catalogue.Group(group).Empty()) << group;
    }
}

}  // namespace
}  // namespace glyphmoor::test
