#include "icons/IconCatalogue.h"

#include "foundation/TextEncoding.h"
#include "foundation/modRegistry.h"
#include "icons/OwnDefaults.h"

#include <cstdlib>

#include <algorithm>
#include <span>

namespace glyphmoor {

namespace {

// ---------------------------------------------------------------------------
// The catalogue table. Each group is a list of rows walked in order by Fill;
// a row names where its icon is kept, its default, whether the user can rename
// it, and when it exists.

// Where a row's IconLocation text is kept.
enum class Store {
    ShellIcons,  // a value of Shell Icons; its name is `key`, or the default index
    ObjectIcon,  // DefaultIcon of a desktop object's class key (`object`)
    KeyIcon,     // DefaultIcon of the class key `key`
    FileClass,   // DefaultIcon of the class that HKEY_CLASSES_ROOT\`key` names
    Cursors,     // the value `key` of Control Panel\Cursors
};

// The default file: shell32.dll, a file in the system or Windows folder
// (`fileName`), one of the machine's variables, the program's own file, or
// none at all.
enum class File {
    Shell32,
    SysDir,
    WinDir,
    InBox,
    Paint,
    Wordpad,
    Player,
    Sound,
    DialUp,
    History,
    Program,
    None
};

// The default index: `number`, or one of the machine's variables.
enum class Index { Fixed, Text, Bat, Ini, CtlPanel, Printers, UsersGroup, History, InBox, DialUp };

enum class Name {
    Fixed,       // the row's own name
    UserGiven,   // renamable: the name is read from the row's class key
    RecycleBin,  // the Recycle Bin's current name followed by `display`
};

enum class When {
    Always,
    NewShell,         // the desktop-update shell is installed
    Win98,            // WindowsFlavour "Win98"
    WinNT,            // WindowsFlavour "WinNT"
    ShellFolder,      // the unnamed value of `key`\ShellFolder reads
    FileClass,        // the extension `key` names a class (neither empty nor "Error")
    ShortcutOverlay,  // the builder of "Other Icons" was asked for this row
};

// A default IconLocation: its file (`fileName` names it in the system or
// Windows folder) and its index (`number`, or a variable of the machine).
struct Default {
    File file = File::Shell32;
    std::string_view fileName = {};
    Index index = Index::Fixed;
    std::int32_t number = 0;
};

constexpr Default Shell32(std::int32_t index) {
    return {File::Shell32, {}, Index::Fixed, index};
}
constexpr Default Shell32(Index index) {
    return {File::Shell32, {}, index, 0};
}
constexpr Default InSysDir(std::string_view fileName, std::int32_t index) {
    return {File::SysDir, fileName, Index::Fixed, index};
}
constexpr Default InWinDir(std::string_view fileName, std::int32_t index) {
    return {File::WinDir, fileName, Index::Fixed, index};
}
constexpr Default Variable(File file, Index index) {
    return {file, {}, index, 0};
}
constexpr Default Variable(File file, std::int32_t index) {
    return {file, {}, Index::Fixed, index};
}

struct Row {
    std::string_view display;
    std::string_view catalogueName = {};
    Store store = Store::ShellIcons;
    std::string_view key = {};
    DesktopObject object = DesktopObject::MyComputer;
    std::string_view value = {};  // the value name under a DefaultIcon key
    Default byDefault = {};
    Name name = Name::Fixed;
    When when = When::Always;
};

// A Shell Icons row whose value name is its default shell32 index.
constexpr Row ShellIcon(std::string_view display, std::int32_t index, When when = When::Always,
                        std::string_view catalogueName = {}) {
    return {.display = display, .catalogueName = catalogueName, .byDefault = Shell32(index), .when = when};
}

// A Shell Icons row with its own value name.
constexpr Row ShellIcon(std::string_view display, std::string_view valueName, Default byDefault, When when) {
    return {.display = display, .key = valueName, .byDefault = byDefault, .when = when};
}

// A desktop object the user can rename, kept under its class key.
constexpr Row Renamable(std::string_view display, DesktopObject object, Default byDefault,
                        When when = When::Always) {
    return {.display = display,
            .store = Store::ObjectIcon,
            .object = object,
            .byDefault = byDefault,
            .name = Name::UserGiven,
            .when = when};
}

// An object the user can rename, at a class key of its own.
constexpr Row Renamable(std::string_view display, std::string_view classKey, Default byDefault) {
    return {.display = display,
            .store = Store::KeyIcon,
            .key = classKey,
            .byDefault = byDefault,
            .name = Name::UserGiven};
}

// One of the Recycle Bin's two icons: the bin's current name and `suffix`.
// The rows have no class key of their own, so the name is not looked up again.
constexpr Row RecycleBin(std::string_view suffix, std::string_view catalogueName, std::string_view value,
                         std::int32_t index) {
    return {.display = suffix,
            .catalogueName = catalogueName,
            .store = Store::ObjectIcon,
            .object = DesktopObject::RecycleBin,
            .value = value,
            .byDefault = Shell32(index),
            .name = Name::RecycleBin};
}

// A folder of Internet Explorer's that exists when its ShellFolder key reads.
constexpr Row WebFolder(std::string_view display, std::string_view key, Default byDefault) {
    return {.display = display,
            .store = Store::KeyIcon,
            .key = key,
            .byDefault = byDefault,
            .when = When::ShellFolder};
}

constexpr Row FileType(std::string_view display, std::string_view extension, Default byDefault,
                       When when = When::FileClass) {
    return {.display = display,
            .store = Store::FileClass,
            .key = extension,
            .byDefault = byDefault,
            .when = when};
}

constexpr Row Pointer(std::string_view display, std::string_view valueName, std::int32_t number,
                      When when = When::Always) {
    return {.display = display,
            .store = Store::Cursors,
            .key = valueName,
            .byDefault = Variable(File::Program, number),
            .when = when};
}

constexpr Row kDesktopIcons[] = {
    Renamable("My Computer", DesktopObject::MyComputer, InWinDir("\\explorer.exe", 0)),
    Renamable("My Documents", DesktopObject::MyDocuments, InSysDir("\\mydocs.dll", 0), When::Win98),
    Renamable("Network Neighborhood", DesktopObject::NetworkNeighborhood, Shell32(17)),
    Renamable("The Internet", DesktopObject::TheInternet, InSysDir("\\mshtml.dll", 0)),
    Renamable("In Box", DesktopObject::InBox, Variable(File::InBox, Index::InBox)),
    Renamable("My Briefcase", "HKEY_CLASSES_ROOT\\CLSID\\{85BBD920-42A0-1069-A2E4-08002B30309D}",
              InSysDir("\\syncui.dll", 0)),
    RecycleBin(" (empty)", "Recycle Bin (empty)", "Empty", 31),
    RecycleBin(" (full)", "Recycle Bin (full)", "Full", 32),
};

constexpr Row kStartIcons[] = {
    ShellIcon("Programs", 19),
    ShellIcon("Favorites", 43, When::NewShell),
    ShellIcon("Documents", 20),
    ShellIcon("Settings", 21),
    ShellIcon("Find", 22),
    ShellIcon("Help", 23),
    ShellIcon("Run...", 24, When::Always, "Run"),
    ShellIcon("Log Off...", 44, When::NewShell, "Log Off"),
    ShellIcon("Suspend", 25),
    ShellIcon("Shut Down...", 27, When::Always, "Shut Down"),
    ShellIcon("Settings - Control Panel", 35),
    ShellIcon("Settings - Printers", 37),
};

constexpr Row kFolderIcons[] = {
    ShellIcon("Closed Folder", 3),
    ShellIcon("Open Folder", 4),
    ShellIcon("Program Group", 36),
    ShellIcon("Users Program Group", "42", Shell32(Index::UsersGroup), When::WinNT),
    Renamable("Control Panel", "HKEY_CLASSES_ROOT\\CLSID\\{21EC2020-3AEA-1069-A2DD-08002B30309D}",
              Shell32(Index::CtlPanel)),
    Renamable("Dial-Up Networking", DesktopObject::DialUpNetworking, Variable(File::DialUp, Index::DialUp)),
    Renamable("Printers", "HKEY_CLASSES_ROOT\\CLSID\\{2227A280-3AEA-1069-A2DE-08002B30309D}",
              Shell32(Index::Printers)),
    WebFolder("Favorites", "HKEY_CLASSES_ROOT\\CLSID\\{1A9BA3A0-143A-11CF-8350-444553540000}", Shell32(79)),
    WebFolder("Url History", "HKEY_CLASSES_ROOT\\CLSID\\{FF393560-C2A7-11CF-BFF4-444553540000}",
              Variable(File::History, Index::History)),
    WebFolder("ActiveX Cache", "HKEY_CLASSES_ROOT\\CLSID\\{88C6C381-2E85-11D0-94DE-444553540000}",
              InSysDir("\\occache.dll", 0)),
    WebFolder("Subscriptions", "HKEY_CLASSES_ROOT\\CLSID\\{F5175861-2688-11d0-9C5E-00AA00A45957}",
              InSysDir("\\webcheck.dll", 0)),
    WebFolder("Scheduled Tasks", "HKEY_CLASSES_ROOT\\CLSID\\{D6277990-4C6A-11CF-8D87-00AA0060F5BF}",
              InSysDir("\\mstask.dll", 0)),
};

constexpr Row kDriveIcons[] = {
    ShellIcon("Floppy Drive 5\u00bc", 5),
    ShellIcon("Floppy Drive 3\u00bd", 6),
    ShellIcon("Hard Drive", 8),
    ShellIcon("Network Drive (connected)", 9),
    ShellIcon("Network Drive (offline)", 10),
    ShellIcon("CD-ROM Drive", 11),
    ShellIcon("Removable Drive", 7),
    ShellIcon("RAM Drive", 12),
};

constexpr Row kOtherIcons[] = {
    ShellIcon("Shortcut Overlay", 29, When::ShortcutOverlay),
    ShellIcon("Sharing Overlay", 28),
    ShellIcon("Desktop", 34),
    ShellIcon("Entire Network", 13),
    ShellIcon("Workgroup", 18),
    ShellIcon("Computer", 15),
    ShellIcon("Audio CD", 40),
};

constexpr Row kFileIcons[] = {
    FileType("Bitmap Image", ".bmp", Variable(File::Paint, 1)),
    FileType("Configuration Settings", ".ini", Shell32(Index::Ini)),
    ShellIcon("Default Icon", 0),
    ShellIcon("Default Document", 1),
    FileType("GIF Image", ".gif", InSysDir("\\mshtml.dll", 8)),
    FileType("Internet Document", ".html", InSysDir("\\mshtml.dll", 1)),
    FileType("JPEG Image", ".jpeg", InSysDir("\\mshtml.dll", 8)),
    FileType("Media Clip", ".mmm", Variable(File::Player, 0)),
    FileType("Movie Clip", ".mpeg", InSysDir("\\quartz.dll", 3)),
    ShellIcon("MS-DOS Application", 2),
    // The batch file's class is read for its icon store but not tested.
    FileType("MS-DOS Batch File", ".bat", Shell32(Index::Bat), When::Always),
    FileType("MIDI Sequence", ".mid", InSysDir("\\quartz.dll", 8)),
    FileType("Rich Text Format", ".rtf", Variable(File::Wordpad, 1)),
    FileType("Text Document", ".txt", Shell32(Index::Text)),
    FileType("Video Clip", ".avi", InSysDir("\\quartz.dll", 0)),
    FileType("Wave Sound", ".wav", InSysDir("\\quartz.dll", 4)),
    FileType("Write Document", ".wri", Variable(File::Wordpad, 2)),
    FileType("Zip File", ".zip", Variable(File::None, 0)),
};

// The default of every pointer is the program's own file: it carries the
// standard pointers as its resources 1 to 15, in this order.
constexpr Row kCursors[] = {
    Pointer("Normal Select", "Arrow", 1),
    Pointer("Help Select", "Help", 2),
    Pointer("Working In Background", "AppStarting", 3),
    Pointer("Busy", "Wait", 4),
    Pointer("Precision Select", "Crosshair", 5),
    Pointer("Text Select", "IBeam", 6),
    Pointer("Handwriting", "NWPEN", 7),
    Pointer("Unavailable", "No", 8),
    Pointer("Vertical Resize", "SizeNS", 9),
    Pointer("Horizontal Resize", "SizeWE", 10),
    Pointer("Diagonal Resize 1", "SizeNWSE", 11),
    Pointer("Diagonal Resize 2", "SizeNESW", 12),
    Pointer("Move", "SizeAll", 13),
    Pointer("Alternate Select", "UpArrow", 14),
    Pointer("Hand", "Hand", 15, When::Win98),
};

constexpr std::string_view kSystemRoot = "%systemroot%";
constexpr std::string_view kDefaultRecycleName = "Recycle Bin";

bool Readable(std::string_view text) {
    return !text.empty() && text != kRegError;
}

std::string DefaultIconOf(std::string_view key) {
    return std::string(key) + "\\DefaultIcon";
}

// Walks one group's rows against the machine.
class RowWalker {
public:
    RowWalker(RegistryStore& registry, const AppEnvironment& app, const ShellIconState& state)
        : m_registry(registry), m_app(app), m_state(state), m_ownDefaults(registry, app) {}

    void Fill(IconGroup& group, std::span<const Row> rows, bool includeShortcutOverlay) {
        m_includeShortcutOverlay = includeShortcutOverlay;
        group.Clear();
        for (const Row& row : rows) {
            if (!Holds(row)) {
                continue;
            }
            std::string display =
                (row.name == Name::RecycleBin ? RecycleName() : std::string()) + std::string(row.display);
            const IconStore store = StoreOf(row);
            OwnDefault byDefault{{DefaultFile(row), DefaultIndex(row)}, false};
            if (KeepsOwnDefaults(m_app.kind)) {
                auto own = OwnDefaultOf(row, store, byDefault.location);
                if (!own) {
                    continue;  // the machine has no such object, or no picture for it
                }
                byDefault = std::move(*own);
            }
            if (!AddCatalogueEntry(m_registry, m_app.winDir, group, std::move(display), store,
                                   byDefault.location.file, byDefault.location.index,
                                   row.name == Name::UserGiven ? ClassKeyOf(row) : std::string(),
                                   std::string(row.catalogueName))) {
                continue;
            }
            SystemIconEntry& added = group.At(group.Count() - 1);
            ShowOwnName(row, added);
            added.defaultAbsent = byDefault.absent;
            added.loaded = added.Current();
            added.loadedName = added.displayName;
        }
        group.Refresh();
    }

private:
    // A row's own default on a machine that has the row's object.
    std::optional<OwnDefault> OwnDefaultOf(const Row& row, const IconStore& store,
                                           const IconLocation& described) {
        const bool classRow = row.store == Store::ObjectIcon || row.store == Store::KeyIcon;
        if ((classRow && !RegKeyExists(m_registry, ClassKeyOf(row))) || store.path.empty()) {
            return std::nullopt;
        }
        OwnDefaultQuery query{store, described, {}, {}, {}};
        if (row.store == Store::ShellIcons) {
            query.shellIndex = std::atoi(store.valueName.c_str());
        } else if (row.store == Store::FileClass) {
            query.fileClass = FileClass(row);
        } else if (row.store == Store::Cursors) {
            query.cursorValue = row.key;
        }
        return m_ownDefaults.Find(query);
    }

    // The name the machine's shell shows for a renamable object.
    void ShowOwnName(const Row& row, SystemIconEntry& entry) {
        if (!KeepsOwnDefaults(m_app.kind)) {
            return;
        }
        const std::string key = row.name == Name::RecycleBin  ? m_state.ClassKey(DesktopObject::RecycleBin)
                                : row.name == Name::UserGiven ? ClassKeyOf(row)
                                                              : std::string();
        const auto shown = ShownName(m_registry, m_app, key);
        if (!shown) {
            return;
        }
        if (entry.catalogueName.empty()) {
            entry.catalogueName = entry.displayName;
        }
        entry.displayName = row.name == Name::RecycleBin ? *shown + std::string(row.display) : *shown;
    }

    bool Holds(const Row& row) const {
        switch (row.when) {
            case When::Always:
                return true;
            case When::NewShell:
                return m_state.newShell;
            case When::Win98:
                return m_app.windowsFlavour == "Win98";
            case When::WinNT:
                return m_app.windowsFlavour == "WinNT";
            case When::ShellFolder:
                return GetRegString(m_registry, std::string(row.key) + "\\ShellFolder", "") != kRegError;
            case When::FileClass:
                return Readable(FileClass(row));
            case When::ShortcutOverlay:
                return m_includeShortcutOverlay;
        }
        return false;
    }

    std::string FileClass(const Row& row) const {
        return GetRegString(m_registry, "HKEY_CLASSES_ROOT\\" + std::string(row.key), "");
    }

    // The row's class key: its object's, or the key it names itself.
    std::string ClassKeyOf(const Row& row) const {
        return row.store == Store::ObjectIcon ? m_state.ClassKey(row.object) : std::string(row.key);
    }

    IconStore StoreOf(const Row& row) const {
        switch (row.store) {
            case Store::ShellIcons:
                return {std::string(kShellIconsPath),
                        row.key.empty() ? std::to_string(row.byDefault.number) : std::string(row.key)};
            case Store::ObjectIcon:
            case Store::KeyIcon:
                return {DefaultIconOf(ClassKeyOf(row)), std::string(row.value)};
            case Store::FileClass: {
                // A type without a readable class has no icon store: "Error"
                // is a marker, never a class name.
                const std::string fileClass = FileClass(row);
                return Readable(fileClass) ? IconStore{DefaultIconOf("HKEY_CLASSES_ROOT\\" + fileClass), {}}
                                           : IconStore{};
            }
            case Store::Cursors:
                return {std::string(kCursorsPath), std::string(row.key)};
        }
        return {};
    }

    std::string DefaultFile(const Row& row) const {
        switch (row.byDefault.file) {
            case File::Shell32:
                return m_app.sysDir + "\\shell32.dll";
            case File::SysDir:
                return m_app.sysDir + std::string(row.byDefault.fileName);
            case File::WinDir:
                return m_app.winDir + std::string(row.byDefault.fileName);
            case File::InBox:
                return m_state.inBoxFile;
            case File::Paint:
                return m_state.paintFile;
            case File::Wordpad:
                return m_state.wordpadFile;
            case File::Player:
                return m_state.playerFile;
            case File::Sound:
                return m_state.soundFile;
            case File::DialUp:
                return m_state.dialUpFile;
            case File::History:
                return m_state.historyFile;
            case File::Program:
                return m_app.programFile;
            case File::None:
                break;
        }
        return {};
    }

    std::int32_t DefaultIndex(const Row& row) const {
        switch (row.byDefault.index) {
            case Index::Fixed:
                return row.byDefault.number;
            case Index::Text:
                return m_state.textIdx;
            case Index::Bat:
                return m_state.batIdx;
            case Index::Ini:
                return m_state.iniIdx;
            case Index::CtlPanel:
                return m_state.ctlPanelIdx;
            case Index::Printers:
                return m_state.printersIdx;
            case Index::UsersGroup:
                return m_state.usersGroupIdx;
            case Index::History:
                return m_state.historyIdx;
            case Index::InBox:
                return m_state.inBoxIdx;
            case Index::DialUp:
                return m_state.dialUpIdx;
        }
        return 0;
    }

    // The bin's name as the user gave it, or "Recycle Bin" when none reads.
    std::string RecycleName() const {
        std::string name = GetRegString(m_registry, m_state.ClassKey(DesktopObject::RecycleBin), "");
        return Readable(name) ? name : std::string(kDefaultRecycleName);
    }

    RegistryStore& m_registry;
    const AppEnvironment& m_app;
    const ShellIconState& m_state;
    OwnDefaultFinder m_ownDefaults;
    bool m_includeShortcutOverlay = true;
};

}  // namespace

bool AddCatalogueEntry(RegistryStore& registry, std::string_view winDir, IconGroup& list,
                       std::string displayName, const IconStore& store, std::string defaultFile,
                       std::int32_t defaultIndex, std::string classKey, std::string catalogueName) {
    if (!classKey.empty()) {
        std::string userName = GetRegString(registry, classKey, "");
        if (Readable(userName)) {
            catalogueName = std::move(displayName);
            displayName = std::move(userName);
        }
    }
    SystemIconEntry entry{.displayName = std::move(displayName),
                          .currentFile = {},
                          .currentIndex = defaultIndex,
                          .catalogueName = std::move(catalogueName),
                          .defaultFile = std::move(defaultFile),
                          .defaultIndex = defaultIndex,
                          .store = store,
                          .classKey = std::move(classKey),
                          .defaultAbsent = false,
                          .loaded = {},
                          .loadedName = {}};
    entry.currentFile = entry.defaultFile;
    std::string stored = GetRegString(registry, store.path, store.valueName);
    if (Readable(stored)) {
        if (EqualsNoCase(std::string_view(stored).substr(0, kSystemRoot.size()), kSystemRoot)) {
            stored = std::string(winDir) + stored.substr(kSystemRoot.size());
        }
        const auto location = SplitIconLocation(stored);
        if (!location) {
            return false;
        }
        entry.currentFile = location->file;
        entry.currentIndex = location->index;
    }
    list.Add(std::move(entry));
    return true;
}

bool ShortcutOverlayHidden(RegistryStore& registry, const AppEnvironment& app) {
    return GetRegString(registry, kShellIconsPath, "29") == app.machine.ProgramDirectory() + "\\blank.ico";
}

IconCatalogue::IconCatalogue(RegistryStore& registry, const AppEnvironment& app)
    : m_registry(registry), m_app(app), m_groups{IconGroup(1, kGroupNames[0]), IconGroup(2, kGroupNames[1]),
                                                 IconGroup(3, kGroupNames[2]), IconGroup(4, kGroupNames[3]),
                                                 IconGroup(5, kGroupNames[4]), IconGroup(6, kGroupNames[5]),
                                                 IconGroup(7, kGroupNames[6])} {}

const ShellIconState& IconCatalogue::EnsureState() {
    if (!m_state) {
        m_state = DetectShellState(m_registry, m_app);
    }
    return *m_state;
}

void IconCatalogue::DetectShellIcons(bool noBuild) {
    m_state = DetectShellState(m_registry, m_app);
    if (!noBuild) {
        BuildIconCatalogue();
    }
}

void IconCatalogue::BuildIconCatalogue() {
    RowWalker walker(m_registry, m_app, EnsureState());
    walker.Fill(Group(GroupNumber::DesktopIcons), kDesktopIcons, true);
    walker.Fill(Group(GroupNumber::StartIcons), kStartIcons, true);
    walker.Fill(Group(GroupNumber::FolderIcons), kFolderIcons, true);
    walker.Fill(Group(GroupNumber::DriveIcons), kDriveIcons, true);
    BuildOtherIcons(!ShortcutOverlayHidden(m_registry, m_app));
    walker.Fill(Group(GroupNumber::FileIcons), kFileIcons, true);
    m_built = true;
}

void IconCatalogue::BuildOtherIcons(bool includeShortcutOverlay) {
    RowWalker(m_registry, m_app, EnsureState())
        .Fill(Group(GroupNumber::OtherIcons), kOtherIcons, includeShortcutOverlay);
}

void IconCatalogue::BuildCursorCatalogue() {
    RowWalker(m_registry, m_app, EnsureState()).Fill(Group(GroupNumber::Cursors), kCursors, true);
    m_cursorsBuilt = true;
}

IconGroup* IconCatalogue::FindGroup(std::string_view groupName) {
    const auto found = std::ranges::find_if(
        m_groups, [groupName](const IconGroup& g) { return EqualsNoCase(g.Name(), groupName); });
    return found == m_groups.end() ? nullptr : &*found;
}

SystemIconEntry* IconCatalogue::Find(std::string_view groupName, std::string_view name) {
    IconGroup* group = FindGroup(groupName);
    return group == nullptr ? nullptr : group->Find(name);
}

bool IconCatalogue::SetByKey(std::string_view groupName, std::string_view name,
                             const IconLocation& location) {
    IconGroup* group = FindGroup(groupName);
    return group != nullptr && group->SetByKey(name, location);
}

}  // namespace glyphmoor
