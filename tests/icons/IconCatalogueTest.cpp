// The icon catalogue on small machine folders of the three flavours, with and
// without the desktop-update shell. Tests follow the catalogue's tables: the
// machine's state, the conditions of the rows, then what each group reads.
#include "foundation/modRegistry.h"
#include "icons/IconCatalogue.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

using Strings = std::vector<std::string>;

enum class Flavour { Win95, Win98, WinNT };
enum class Shell { Old, NewIe471, NewIe4 };

constexpr const char* kShellIcons =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\explorer\\Shell Icons";
constexpr const char* kWin95System =
    "\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion] 1700000000\n"
    "\"SystemRoot\"=\"C:\\\\WINDOWS\"\n\"VersionNumber\"=\"4.00.950\"\n";

std::string Clsid(const char* id) {
    return std::string("HKEY_CLASSES_ROOT\\CLSID\\") + id;
}
std::string Uclsid(const char* id) {
    return std::string("HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\") + id;
}

// A machine folder of one flavour and shell, to set values in and build over.
class CatalogueMachine {
public:
    explicit CatalogueMachine(Flavour flavour, Shell shell = Shell::Old)
        : m_folder(flavour == Flavour::Win95   ? kWin95System
                   : flavour == Flavour::Win98 ? Win98System()
                                               : WinNtSystem()),
          m_machine(m_folder.Open()),
          m_app(InitEnvironment(m_machine->Env())) {
        if (shell != Shell::Old) {
            CreateRegKey(Registry(), kStartMenuOrderPath);
            Set(kInternetExplorerPath, "Version", shell == Shell::NewIe471 ? "4.71.1712.6" : "4.72.3110.8");
        }
    }

    RegistryStore& Registry() { return m_machine->Registry(); }
    AppEnvironment& App() { return m_app; }
    void Set(std::string_view path, std::string_view name, std::string_view text) {
        SetRegString(Registry(), path, name, text);
    }
    // The ShellFolder keys of Internet Explorer's five folders, readable.
    void WebFolders() {
        for (const char* id :
             {"{1A9BA3A0-143A-11CF-8350-444553540000}", "{FF393560-C2A7-11CF-BFF4-444553540000}",
              "{88C6C381-2E85-11D0-94DE-444553540000}", "{F5175861-2688-11d0-9C5E-00AA00A45957}",
              "{D6277990-4C6A-11CF-8D87-00AA0060F5BF}"}) {
            Set(Clsid(id) + "\\ShellFolder", "", "");
        }
    }
    // Every group built, the pointers too.
    IconCatalogue Build() {
        IconCatalogue catalogue(Registry(), m_app);
        catalogue.DetectShellIcons();
        catalogue.BuildCursorCatalogue();
        return catalogue;
    }

private:
    TempMachine m_folder;
    std::unique_ptr<Machine> m_machine;
    AppEnvironment m_app;
};

// "display|catalogue name|current file,index|default file,index", or "absent".
std::string Describe(const SystemIconEntry* e) {
    return e == nullptr ? "absent"
                        : e->displayName + "|" + e->catalogueName + "|" + e->Current().Text() + "|" +
                              e->Default().Text();
}

// The entry named "Group/Name", or nullptr.
const SystemIconEntry* Find(IconCatalogue& catalogue, std::string_view key) {
    const auto slash = key.find('/');
    return catalogue.Find(key.substr(0, slash), key.substr(slash + 1));
}

Strings Keys(const IconGroup& group) {
    Strings keys;
    for (std::size_t i = 0; i < group.Count(); ++i) {
        keys.emplace_back(group.KeyAt(i));
    }
    return keys;
}

// --- The machine's state ---

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
    };
    for (const auto& c : cases) {
        CatalogueMachine machine(Flavour::Win95);
        if (c.menuOrder) {
            CreateRegKey(machine.Registry(), kStartMenuOrderPath);
        }
        if (c.ieVersion != nullptr) {
            machine.Set(kInternetExplorerPath, "Version", c.ieVersion);
        }
        const ShellIconState state = DetectShellState(machine.Registry(), machine.App());
        const std::string label = std::to_string(c.menuOrder) + " " + (c.ieVersion ? c.ieVersion : "-");
        EXPECT_EQ(state.newShell, c.newShell) << label;
        EXPECT_EQ(state.ie471, c.ie471) << label;
    }
}

TEST(DetectShellIcons, Shell32IndicesFollowTheShellVersion) {
    const struct {
        Flavour flavour;
        Shell shell;
        // Control Panel, Printers, Text, Batch, Ini, Users Program Group (-1: absent)
        std::vector<int> indices;
        const char* history;
    } cases[] = {
        {Flavour::Win98, Shell::NewIe471, {50, 51, 63, 64, 62, -1}, "C:\\WINDOWS\\SYSTEM\\shdocvw.dll,36"},
        {Flavour::Win98, Shell::NewIe4, {51, 52, 64, 65, 63, -1}, "C:\\WINDOWS\\SYSTEM\\shdocvw.dll,36"},
        {Flavour::Win95, Shell::Old, {46, 47, 59, 60, 58, -1}, "C:\\WINDOWS\\SYSTEM\\cachevu.dll,0"},
        {Flavour::WinNT, Shell::Old, {46, 47, 59, 60, 58, 73}, "C:\\WINNT\\system32\\cachevu.dll,0"},
        {Flavour::WinNT, Shell::NewIe471, {50, 51, 63, 64, 62, 42}, "C:\\WINNT\\system32\\shdocvw.dll,36"},
    };
    for (const auto& c : cases) {
        CatalogueMachine machine(c.flavour, c.shell);
        machine.Set("HKEY_CLASSES_ROOT\\.txt", "", "txtfile");
        machine.Set("HKEY_CLASSES_ROOT\\.ini", "", "inifile");
        machine.WebFolders();
        IconCatalogue catalogue = machine.Build();
        std::vector<int> got;
        for (const char* key : {"Folder Icons/Control Panel", "Folder Icons/Printers",
                                "File Icons/Text Document", "File Icons/MS-DOS Batch File",
                                "File Icons/Configuration Settings", "Folder Icons/Users Program Group"}) {
            const SystemIconEntry* entry = Find(catalogue, key);
            got.push_back(entry == nullptr ? -1 : entry->defaultIndex);
        }
        EXPECT_EQ(got, c.indices) << static_cast<int>(c.flavour) << " " << static_cast<int>(c.shell);
        EXPECT_EQ(catalogue.Find("Folder Icons", "Url History")->Default().Text(), c.history);
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
    const std::string outlook = Clsid("{00020D75-0000-0000-C000-000000000046}") + "\\Shell\\Open\\Command";
    for (const auto& c : cases) {
        CatalogueMachine machine(c.flavour);
        // An Outlook command is looked at first, and every flavour replaces it.
        machine.Set(outlook, "", "\"C:\\Office\\outlook.exe\"");
        for (const char* ext : {".bmp", ".rtf", ".mmm"}) {
            machine.Set("HKEY_CLASSES_ROOT\\" + std::string(ext), "", "someclass");
        }
        IconCatalogue catalogue = machine.Build();
        Strings got;
        for (const char* key :
             {"Desktop Icons/In Box", "File Icons/Bitmap Image", "File Icons/Rich Text Format",
              "File Icons/Media Clip", "Folder Icons/Dial-Up Networking"}) {
            got.push_back(Find(catalogue, key)->Default().Text());
        }
        EXPECT_EQ(got, c.defaults) << static_cast<int>(c.flavour);

        AppEnvironment& app = machine.App();
        app.windowsFlavour.clear();
        EXPECT_EQ(DetectShellState(machine.Registry(), app).inBoxFile, "C:\\Office\\outlook.exe")
            << "without a flavour the Outlook program stays";
    }
}

// --- Rows whose condition fails are absent ---

TEST(IconCatalogue, RowsExistByFlavourAndShell) {
    const struct {
        Flavour flavour;
        Shell shell;
        Strings present;
        Strings absent;
    } cases[] = {
        {Flavour::Win95,
         Shell::Old,
         {},
         {"Desktop Icons/My Documents", "Start Icons/Favorites", "Start Icons/Log Off",
          "Folder Icons/Users Program Group", "Cursors/Hand"}},
        {Flavour::Win95,
         Shell::NewIe4,
         {"Start Icons/Favorites", "Start Icons/Log Off"},
         {"Desktop Icons/My Documents"}},
        {Flavour::Win98,
         Shell::Old,
         {"Desktop Icons/My Documents", "Cursors/Hand"},
         {"Start Icons/Log Off", "Folder Icons/Users Program Group"}},
        {Flavour::WinNT,
         Shell::NewIe471,
         {"Folder Icons/Users Program Group", "Start Icons/Log Off"},
         {"Desktop Icons/My Documents", "Cursors/Hand"}},
    };
    for (const auto& c : cases) {
        CatalogueMachine machine(c.flavour, c.shell);
        IconCatalogue catalogue = machine.Build();
        for (const auto& [list, present] : {std::pair{&c.present, true}, std::pair{&c.absent, false}}) {
            for (const std::string& key : *list) {
                EXPECT_EQ(Find(catalogue, key) != nullptr, present)
                    << static_cast<int>(c.flavour) << " " << static_cast<int>(c.shell) << " " << key;
            }
        }
    }
}

TEST(IconCatalogue, FoldersOfInternetExplorerNeedAReadableShellFolder) {
    CatalogueMachine machine(Flavour::Win98, Shell::NewIe471);
    machine.Set(Clsid("{FF393560-C2A7-11CF-BFF4-444553540000}") + "\\ShellFolder", "", "");
    // A ShellFolder key without its unnamed value does not read.
    machine.Set(Clsid("{1A9BA3A0-143A-11CF-8350-444553540000}") + "\\ShellFolder", "Attributes", "0");
    IconCatalogue catalogue = machine.Build();
    EXPECT_EQ(Keys(catalogue.Group(3)),
              (Strings{"Closed Folder", "Open Folder", "Program Group", "Control Panel", "Dial-Up Networking",
                       "Printers", "Url History"}));
}

// --- Where each group reads names and icons ---

// Each desktop object's name and icon come from the class key its shell and
// flavour use; the other candidate key holds a decoy that must not show.
TEST(DesktopIcons, NamesAndIconsComeFromTheClassKeyOfTheShell) {
    constexpr const char* kComputer = "{20D04FE0-3AEA-1069-A2D8-08002B30309D}";
    constexpr const char* kInternet = "{FBF23B42-E3F0-101B-8488-00AA003E56F8}";
    constexpr const char* kExplorer = "{871C5380-42A0-1069-A2EA-08002B30309D}";
    const struct {
        Flavour flavour;
        Shell shell;
        const char* group;
        const char* name;
        std::string used;
        std::string decoy;
    } cases[] = {
        {Flavour::Win95, Shell::Old, "Desktop Icons", "My Computer", Clsid(kComputer), Uclsid(kComputer)},
        {Flavour::Win95, Shell::NewIe4, "Desktop Icons", "My Computer", Uclsid(kComputer), Clsid(kComputer)},
        {Flavour::Win98, Shell::Old, "Desktop Icons", "My Computer", Uclsid(kComputer), Clsid(kComputer)},
        {Flavour::WinNT, Shell::NewIe471, "Desktop Icons", "Network Neighborhood",
         Uclsid("{208D2C60-3AEA-1069-A2D7-08002B30309D}"), Clsid("{208D2C60-3AEA-1069-A2D7-08002B30309D}")},
        {Flavour::Win98, Shell::Old, "Desktop Icons", "My Documents",
         Uclsid("{450D8FBA-AD25-11D0-98A8-0800361B1103}"), Clsid("{450D8FBA-AD25-11D0-98A8-0800361B1103}")},
        {Flavour::Win95, Shell::Old, "Desktop Icons", "The Internet", Clsid(kInternet), Clsid(kExplorer)},
        {Flavour::Win98, Shell::Old, "Desktop Icons", "The Internet", Clsid(kExplorer), Clsid(kInternet)},
        {Flavour::WinNT, Shell::NewIe4, "Desktop Icons", "The Internet", Clsid(kExplorer), Clsid(kInternet)},
        {Flavour::Win98, Shell::NewIe471, "Desktop Icons", "My Briefcase",
         Clsid("{85BBD920-42A0-1069-A2E4-08002B30309D}"), Uclsid("{85BBD920-42A0-1069-A2E4-08002B30309D}")},
        {Flavour::Win98, Shell::NewIe471, "Folder Icons", "Control Panel",
         Clsid("{21EC2020-3AEA-1069-A2DD-08002B30309D}"), Uclsid("{21EC2020-3AEA-1069-A2DD-08002B30309D}")},
        {Flavour::WinNT, Shell::Old, "Folder Icons", "Dial-Up Networking",
         Clsid("{a4d92740-67cd-11cf-96f2-00aa00a11dd9}"), Clsid("{992CFFA0-F557-101A-88EC-00DD010CCC48}")},
        {Flavour::Win98, Shell::Old, "Folder Icons", "Dial-Up Networking",
         Clsid("{992CFFA0-F557-101A-88EC-00DD010CCC48}"), Clsid("{a4d92740-67cd-11cf-96f2-00aa00a11dd9}")},
    };
    for (const auto& c : cases) {
        CatalogueMachine machine(c.flavour, c.shell);
        machine.Set(c.used, "", "Workstation");
        machine.Set(c.used + "\\DefaultIcon", "", "%SystemRoot%\\Icons\\mine.ico,4");
        machine.Set(c.decoy, "", "Decoy");
        machine.Set(c.decoy + "\\DefaultIcon", "", "C:\\Icons\\decoy.ico,9");
        IconCatalogue catalogue = machine.Build();
        const SystemIconEntry* entry = catalogue.Find(c.group, c.name);
        const std::string label = std::to_string(static_cast<int>(c.flavour)) + " " + c.name;
        ASSERT_NE(entry, nullptr) << label;
        EXPECT_EQ(entry->displayName + "|" + entry->catalogueName + "|" + entry->Current().Text(),
                  std::string("Workstation|") + c.name + "|" + machine.App().winDir + "\\Icons\\mine.ico,4")
            << label;
        EXPECT_EQ(entry->classKey, c.used) << label;
        EXPECT_EQ(entry->store, (IconStore{c.used + "\\DefaultIcon", ""})) << label;
    }
}

TEST(DesktopIcons, ARecycleBinNamedTrashKeepsItsCatalogueNames) {
    for (const auto& [flavour, key] :
         {std::pair{Flavour::Win98, Uclsid("{645FF040-5081-101B-9F08-00AA002F954E}")},
          std::pair{Flavour::Win95, Clsid("{645FF040-5081-101B-9F08-00AA002F954E}")}}) {
        CatalogueMachine machine(flavour);
        machine.Set(key, "", "Trash");
        machine.Set(key + "\\DefaultIcon", "Empty", "C:\\Icons\\bin.ico,0");
        machine.Set(key + "\\DefaultIcon", "Full", "C:\\Icons\\bin.ico,1");
        IconCatalogue catalogue = machine.Build();
        EXPECT_EQ(
            Describe(catalogue.Find("Desktop Icons", "Recycle Bin (empty)")),
            "Trash (empty)|Recycle Bin (empty)|C:\\Icons\\bin.ico,0|C:\\WINDOWS\\SYSTEM\\shell32.dll,31");
        const SystemIconEntry* full = catalogue.Find("Desktop Icons", "Recycle Bin (full)");
        EXPECT_EQ(Describe(full),
                  "Trash (full)|Recycle Bin (full)|C:\\Icons\\bin.ico,1|C:\\WINDOWS\\SYSTEM\\shell32.dll,32");
        EXPECT_EQ(full->store, (IconStore{key + "\\DefaultIcon", "Full"}));
        EXPECT_EQ(full->classKey, "") << "renaming goes through the bin's own key";
    }
}

TEST(DesktopIcons, TheInBoxIsWindowsMessagingWhenItsShellKeyReads) {
    const std::string messaging = Clsid("{00020D75-0000-0000-C000-000000000046}");
    for (const bool reads : {true, false}) {
        CatalogueMachine machine(Flavour::Win98, Shell::NewIe471);
        CreateRegKey(machine.Registry(), messaging + "\\Shell");
        if (reads) {
            machine.Set(messaging + "\\Shell", "", "open");
        }
        IconCatalogue catalogue = machine.Build();
        EXPECT_EQ(catalogue.Find("Desktop Icons", "In Box")->classKey,
                  reads ? messaging : Clsid("{00020D76-0000-0000-C000-000000000046}"));
    }
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
    catalogue.Group(5).SetRefreshHandler([&refreshes](const IconGroup&) { ++refreshes; });
    catalogue.BuildOtherIcons(false);
    EXPECT_EQ(catalogue.Group(5).Count(), 6U);
    EXPECT_EQ(refreshes, 1);
    catalogue.BuildOtherIcons(true);
    EXPECT_EQ(catalogue.Group(5).KeyAt(0), "Shortcut Overlay");
    EXPECT_EQ(refreshes, 2);
}

// How a stored text becomes the current icon, the same for every row.
TEST(AddCatalogueEntry, StoredTextsBecomeTheCurrentIcon) {
    const struct {
        std::string stored;
        const char* current;  // nullptr: the row is left out
    } cases[] = {
        {"%SystemRoot%\\system32\\a.dll,3", "C:\\WINDOWS\\system32\\a.dll,3"},
        {"%SYSTEMROOT%x.dll", "C:\\WINDOWSx.dll,0"},
        {"%systemroot", "%systemroot,0"},
        {"C:\\%systemroot%\\a.dll,1", "C:\\%systemroot%\\a.dll,1"},
        {"", "C:\\WINDOWS\\SYSTEM\\shell32.dll,3"},
        {"Error", "C:\\WINDOWS\\SYSTEM\\shell32.dll,3"},
        {"C:\\" + std::string(250, 'a') + ".dll,1",
         "C:\\WINDOWS\\SYSTEM\\shell32.dll,3"},  // reads as "Error"
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

TEST(FileIcons, FileTypesAreListedWhenTheirExtensionNamesAClass) {
    CatalogueMachine machine(Flavour::Win98, Shell::NewIe471);
    machine.Set("HKEY_CLASSES_ROOT\\.txt", "", "txtfile");
    machine.Set("HKEY_CLASSES_ROOT\\txtfile\\DefaultIcon", "", "C:\\Icons\\text.ico,2");
    machine.Set("HKEY_CLASSES_ROOT\\.zip", "", "WinZip");
    machine.Set("HKEY_CLASSES_ROOT\\.gif", "", "");  // empty: not registered
    IconCatalogue catalogue = machine.Build();
    EXPECT_EQ(Keys(catalogue.Group(6)), (Strings{"Default Icon", "Default Document", "MS-DOS Application",
                                                 "MS-DOS Batch File", "Text Document", "Zip File"}));
    const SystemIconEntry* text = catalogue.Find("File Icons", "Text Document");
    EXPECT_EQ(Describe(text), "Text Document||C:\\Icons\\text.ico,2|C:\\WINDOWS\\SYSTEM\\shell32.dll,63");
    EXPECT_EQ(text->store, (IconStore{"HKEY_CLASSES_ROOT\\txtfile\\DefaultIcon", ""}));
    EXPECT_EQ(Describe(catalogue.Find("File Icons", "Zip File")), "Zip File||,0|,0");
    // The batch file is always listed; without a class it has no store: the
    // marker "Error" is never taken for a class name.
    EXPECT_EQ(catalogue.Find("File Icons", "MS-DOS Batch File")->store.path, "");
}

TEST(Cursors, PointersComeFromControlPanelCursors) {
    CatalogueMachine machine(Flavour::WinNT);
    machine.Set(kCursorsPath, "Wait", "C:\\WINNT\\Cursors\\hourglas.ani");
    IconCatalogue catalogue = machine.Build();
    EXPECT_EQ(Describe(catalogue.Find("Cursors", "Busy")),
              "Busy||C:\\WINNT\\Cursors\\hourglas.ani,0|C:\\Program Files\\Glyphmoor\\Glyphmoor.exe,4");
    EXPECT_EQ(catalogue.Find("Cursors", "Alternate Select")->Default().Text(),
              "C:\\Program Files\\Glyphmoor\\Glyphmoor.exe,14");
    EXPECT_EQ(catalogue.Find("Cursors", "Busy")->store, (IconStore{std::string(kCursorsPath), "Wait"}));
}

// --- The stable key and the build's marks ---

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
