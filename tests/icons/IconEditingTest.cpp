// Staging and applying icon changes on a small Windows 98 machine folder. Each
// test stages through the page's operations, applies, saves the machine and
// reads the registry back from a freshly opened machine.
#include "foundation/RecentThemes.h"
#include "foundation/modRegistry.h"
#include "icons/IconEditing.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <map>

namespace glyphmoor::test {
namespace {

constexpr const char* kShellIcons =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\explorer\\Shell Icons";
constexpr const char* kMyComputer =
    "HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\{20D04FE0-3AEA-1069-A2D8-08002B30309D}";
constexpr const char* kRecycleBin =
    "HKEY_CURRENT_USER\\Software\\Classes\\CLSID\\{645FF040-5081-101B-9F08-00AA002F954E}";
constexpr const char* kControlPanel = "HKEY_CLASSES_ROOT\\CLSID\\{21EC2020-3AEA-1069-A2DD-08002B30309D}";

constexpr int kDesktop = 1;
constexpr int kStart = 2;
constexpr int kFolder = 3;
constexpr int kFiles = 6;
constexpr int kCursors = 7;

// A Windows 98 machine with a bitmap type, its catalogue and the page's state.
class Page {
public:
    Page() : m_machine(m_folder.Open()), m_app(InitEnvironment(m_machine->Env())) {
        Set("HKEY_CLASSES_ROOT\\.bmp", "", "Paint.Picture");
        Set(kRecycleBin, "", "Recycle Bin");
        m_catalogue.emplace(Registry(), m_app);
        m_catalogue->DetectShellIcons();
        m_catalogue->BuildCursorCatalogue();
    }

    RegistryStore& Registry() { return m_machine->Registry(); }
    void Set(std::string_view path, std::string_view name, std::string_view text) {
        SetRegString(Registry(), path, name, text);
    }
    IconCatalogue& Catalogue() { return *m_catalogue; }
    const AppEnvironment& App() const { return m_app; }
    RecordingSystem& Sys() { return dynamic_cast<RecordingSystem&>(m_machine->Sys()); }

    std::size_t Position(int group, std::string_view key) {
        const IconGroup& list = Catalogue().Group(group);
        for (std::size_t i = 0; i < list.Count(); ++i) {
            if (list.KeyAt(i) == key) {
                return i;
            }
        }
        ADD_FAILURE() << "no entry " << key;
        return 0;
    }
    SystemIconEntry& Entry(int group, std::string_view key) {
        return Catalogue().Group(group).At(Position(group, key));
    }

    bool Change(int group, std::string_view key, const IconLocation& to) {
        return ChangeIcon(Catalogue(), state, group, Position(group, key), to);
    }
    bool Restore(int group, std::string_view key) {
        const std::size_t at = Position(group, key);
        return RestoreIcon(Catalogue(), state, group, at,
                           PathLabelText(group, Catalogue().Group(group).At(at)));
    }
    RenameOutcome Rename(int group, std::string_view key, std::string_view name) {
        return RenameIcon(Catalogue(), state, names, group, Position(group, key), name);
    }

    // Applies, saves, and gives a freshly opened copy of the machine.
    std::unique_ptr<Machine> ApplyAndReopen(std::optional<bool> thumbnail = false) {
        ApplyIconChanges(Catalogue(), Registry(), m_machine->Sys(), state, names, thumbnail);
        EXPECT_TRUE(m_machine->Save().ok());
        return m_folder.Open();
    }

    AppState state;
    IconNameMarks names;

private:
    TempMachine m_folder;
    std::unique_ptr<Machine> m_machine;
    AppEnvironment m_app;
    std::optional<IconCatalogue> m_catalogue;
};

std::string Read(Machine& m, std::string_view path, std::string_view name) {
    return GetRegString(m.Registry(), path, name);
}

TEST(ChangeIcon, StagesAndMarksAsThePageDoes) {
    struct Row {
        int group;
        const char* key;
        IconLocation to;
        bool changed;
        bool rebuild;
        IconLocation after;
    };
    const Row rows[] = {
        {kDesktop, "My Computer", {"C:\\a.ico", 0}, true, true, {"C:\\a.ico", 0}},
        {kStart, "Run", {"C:\\WINDOWS\\SYSTEM\\lib.icl", 7}, true, true, {"C:\\WINDOWS\\SYSTEM\\lib.icl", 7}},
        // The very same icon: nothing staged, nothing marked.
        {kStart,
         "Run",
         {"C:\\WINDOWS\\SYSTEM\\shell32.dll", 24},
         false,
         false,
         {"C:\\WINDOWS\\SYSTEM\\shell32.dll", 24}},
        // A pointer takes the file alone and needs no icon-cache rebuild.
        {kCursors,
         "Busy",
         {"C:\\WINDOWS\\CURSORS\\hourglas.ani", 3},
         true,
         false,
         {"C:\\WINDOWS\\CURSORS\\hourglas.ani", 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        Page page;
        EXPECT_EQ(page.Change(row.group, row.key, row.to), row.changed);
        EXPECT_EQ(page.Entry(row.group, row.key).Current(), row.after);
        EXPECT_EQ(page.state.rebuildPending, row.rebuild);
        EXPECT_EQ(page.state.groupChanged.at(static_cast<std::size_t>(row.group - 1)), row.changed);
        EXPECT_EQ(page.state.applyEnabled, row.changed);
    }
}

TEST(RestoreIcon, PutsTheDefaultBackUnlessItIsShown) {
    struct Row {
        int group;
        const char* key;
        std::optional<IconLocation> before;  // staged first, when given
        bool restored;
    };
    const Row rows[] = {
        {kDesktop, "My Computer", IconLocation{"C:\\a.ico", 2}, true},
        {kDesktop, "My Computer", std::nullopt, false},
        // The default in another case is still the default.
        {kStart, "Find", IconLocation{"c:\\windows\\system\\SHELL32.DLL", 22}, false},
        {kCursors, "Busy", IconLocation{"C:\\b.cur", 0}, true},
        // A pointer shown as the default cursor is left alone.
        {kCursors, "Busy", std::nullopt, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        Page page;
        if (row.before) {
            page.Entry(row.group, row.key).currentFile = row.before->file;
            page.Entry(row.group, row.key).currentIndex = row.before->index;
        }
        EXPECT_EQ(page.Restore(row.group, row.key), row.restored);
        if (row.restored) {
            EXPECT_EQ(page.Entry(row.group, row.key).Current(), page.Entry(row.group, row.key).Default());
        }
        EXPECT_EQ(page.state.applyEnabled, row.restored);
        EXPECT_FALSE(page.state.rebuildPending);
    }
}

TEST(PathLabel, NamesTheIconThePointerOrTheMissingGraphic) {
    Page page;
    page.Entry(kStart, "Help").currentFile = "NO_GRAPHIC";
    page.Change(kCursors, "Move", {"C:\\m.cur", 0});
    const std::map<std::pair<int, std::string>, std::string> expected = {
        {{kDesktop, "My Computer"}, "File name: C:\\WINDOWS\\explorer.exe,0"},
        {{kStart, "Help"}, "Missing or invalid graphic configured for this icon."},
        {{kCursors, "Busy"}, "File name: Windows Default Cursor"},
        {{kCursors, "Move"}, "File name: C:\\m.cur"},
    };
    for (const auto& [where, text] : expected) {
        EXPECT_EQ(PathLabelText(where.first, page.Entry(where.first, where.second)), text) << where.second;
    }
    EXPECT_EQ(StartingLocation(page.Entry(kStart, "Help"), page.App().sysDir),
              (IconLocation{"C:\\WINDOWS\\SYSTEM\\shell32.dll", 0}));
}

TEST(Buttons, RenameOnlyForNamedObjectsAndNoDefaultForZipFiles) {
    const std::map<std::string, EntryButtons> expected = {
        {"My Computer", {true, true}}, {"Recycle Bin (full)", {true, true}}, {"Printers", {true, true}},
        {"Programs", {false, true}},   {"Zip File", {false, false}},         {"Normal Select", {false, true}},
    };
    for (const auto& [key, buttons] : expected) {
        SystemIconEntry entry;
        entry.displayName = key;
        EXPECT_EQ(ButtonsFor(entry), buttons) << key;
    }
}

TEST(Rename, TheRecycleBinsTwoEntriesAreRenamedTogether) {
    Page page;
    EXPECT_EQ(
        RenameStartText(page.Catalogue().Group(kDesktop), page.Position(kDesktop, "Recycle Bin (full)")),
        "Recycle Bin");
    EXPECT_EQ(page.Rename(kDesktop, "Recycle Bin (full)", "Trash"), RenameOutcome::Renamed);
    EXPECT_EQ(page.Entry(kDesktop, "Recycle Bin (empty)").displayName, "Trash (empty)");
    EXPECT_EQ(page.Entry(kDesktop, "Recycle Bin (full)").displayName, "Trash (full)");
    EXPECT_TRUE(page.names.desktopNamesChanged);
    EXPECT_FALSE(page.names.folderNamesChanged);
    EXPECT_TRUE(page.state.rebuildPending);
}

TEST(Rename, OutcomesAndFlags) {
    struct Row {
        int group;
        const char* key;
        const char* name;
        RenameOutcome outcome;
        bool desktopFlag;
        bool folderFlag;
    };
    const Row rows[] = {
        {kDesktop, "My Computer", "", RenameOutcome::EmptyName, false, false},
        {kDesktop, "My Computer", "My Computer", RenameOutcome::Unchanged, false, false},
        {kDesktop, "My Computer", "Workstation", RenameOutcome::Renamed, true, false},
        {kFolder, "Printers", "Print Room", RenameOutcome::Renamed, false, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Page page;
        EXPECT_EQ(page.Rename(row.group, row.key, row.name), row.outcome);
        EXPECT_EQ(page.names.desktopNamesChanged, row.desktopFlag);
        EXPECT_EQ(page.names.folderNamesChanged, row.folderFlag);
        EXPECT_EQ(page.state.applyEnabled, row.outcome == RenameOutcome::Renamed);
        // The entry is still found by its catalogue name.
        EXPECT_EQ(page.Entry(row.group, row.key).Key(), row.key);
    }
}

TEST(ApplyIcons, WritesOnlyTheMarkedGroupsThenTheCurrentTheme) {
    Page page;
    page.state.currentTheme = "C:\\Themes\\Blue\\Blue.gmtheme";
    page.Change(kStart, "Programs", {"C:\\p.ico", 0});
    page.Change(kDesktop, "My Computer", {"C:\\c.ico", 1});
    auto m = page.ApplyAndReopen();
    EXPECT_EQ(Read(*m, kShellIcons, "19"), "C:\\p.ico,0");
    // The rest of the marked group is written with what it holds, defaults too.
    EXPECT_EQ(Read(*m, kShellIcons, "20"), "C:\\WINDOWS\\SYSTEM\\shell32.dll,20");
    EXPECT_EQ(Read(*m, std::string(kMyComputer) + "\\DefaultIcon", ""), "C:\\c.ico,1");
    // Folder Icons was not marked.
    EXPECT_EQ(Read(*m, kShellIcons, "3"), "Error");
    EXPECT_EQ(Read(*m, "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings", "Current Theme"),
              "C:\\Themes\\Blue\\Blue.gmtheme");
    EXPECT_FALSE(page.state.applyEnabled);
    EXPECT_EQ(page.state.groupChanged, (std::array<bool, 7>{}));
    // The icon cache is rebuilt after the apply; the flag waits for it.
    EXPECT_TRUE(page.state.rebuildPending);
}

TEST(ApplyIcons, TheBinFollowsTheValuesItHadBeforeTheWrite) {
    struct Row {
        const char* unnamed;
        const char* empty;
        const char* shown;
    };
    const std::string binIcons = std::string(kRecycleBin) + "\\DefaultIcon";
    const Row rows[] = {
        {"C:\\old.ico,0", "C:\\old.ico,0", "C:\\e.ico,0"},
        {"c:\\OLD.ico,0", "C:\\old.ico,0", "C:\\e.ico,0"},  // equal but for case: empty
        {"C:\\full.ico,0", "C:\\old.ico,0", "C:\\f.ico,0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.unnamed);
        Page page;
        page.Set(binIcons, "", row.unnamed);
        page.Set(binIcons, "empty", row.empty);
        page.Change(kDesktop, "Recycle Bin (empty)", {"C:\\e.ico", 0});
        page.Change(kDesktop, "Recycle Bin (full)", {"C:\\f.ico", 0});
        auto m = page.ApplyAndReopen();
        EXPECT_EQ(Read(*m, binIcons, ""), row.shown);
        EXPECT_EQ(Read(*m, binIcons, "Empty"), "C:\\e.ico,0");
        EXPECT_EQ(Read(*m, binIcons, "Full"), "C:\\f.ico,0");
    }
}

TEST(ApplyIcons, NamesGoToTheObjectsClassKeys) {
    Page page;
    page.Rename(kDesktop, "My Computer", "Workstation");
    page.Rename(kDesktop, "Recycle Bin (empty)", "Trash");
    page.Rename(kFolder, "Control Panel", "Settings Room");
    auto m = page.ApplyAndReopen();
    EXPECT_EQ(Read(*m, kMyComputer, ""), "Workstation");
    EXPECT_EQ(Read(*m, kRecycleBin, ""), "Trash");
    EXPECT_EQ(Read(*m, kControlPanel, ""), "Settings Room");
    // Names alone write no icons.
    EXPECT_EQ(Read(*m, std::string(kMyComputer) + "\\DefaultIcon", ""), "Error");
}

TEST(ApplyIcons, TheBitmapThumbnailTweakDecidesTheBitmapIcon) {
    struct Row {
        std::optional<bool> tweak;
        const char* stored;  // Paint.Picture's icon before the apply
        const char* icon;
        const char* shellNew;
    };
    const Row rows[] = {
        {true, "", "%1", ""},
        {false, "%1", "C:\\Program Files\\Accessories\\mspaint.exe,1", "Error"},
        {std::nullopt, "%1", "%1", ""},  // the tweak tree not loaded: as the registry has it
        {std::nullopt, "x.ico,0", "C:\\Program Files\\Accessories\\mspaint.exe,1", "Error"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.stored);
        Page page;
        page.Set("HKEY_CLASSES_ROOT\\Paint.Picture\\DefaultIcon", "", row.stored);
        page.Change(kFiles, "Default Icon", {"C:\\d.ico", 0});
        auto m = page.ApplyAndReopen(row.tweak);
        EXPECT_EQ(Read(*m, "HKEY_CLASSES_ROOT\\Paint.Picture\\DefaultIcon", ""), row.icon);
        EXPECT_EQ(Read(*m, "HKEY_CLASSES_ROOT\\.bmp\\ShellNew", "Command"), row.shellNew);
        EXPECT_EQ(Read(*m, kShellIcons, "0"), "C:\\d.ico,0");
    }
}

TEST(ApplyIcons, PointersAreWrittenAloneThenReloadedFifteenTimes) {
    Page page;
    page.Change(kCursors, "Normal Select", {"C:\\WINDOWS\\CURSORS\\arrow.cur", 0});
    auto m = page.ApplyAndReopen();
    EXPECT_EQ(Read(*m, "HKEY_CURRENT_USER\\Control Panel\\Cursors", "Arrow"),
              "C:\\WINDOWS\\CURSORS\\arrow.cur");
    EXPECT_EQ(Read(*m, "HKEY_CURRENT_USER\\Control Panel\\Cursors", "Hand"), page.App().programFile);
    std::vector<std::string> expected;
    for (int i = 0; i < 15; ++i) {
        expected.push_back("SystemParametersInfo 0x57 " + std::to_string(i) + " null 0");
    }
    EXPECT_EQ(page.Sys().Calls(), expected);
    EXPECT_FALSE(page.state.rebuildPending);
}

TEST(RestoreAll, IconsOrPointersAndThenEveryGroupIsWritten) {
    for (const bool cursors : {false, true}) {
        SCOPED_TRACE(cursors);
        Page page;
        page.Set(kShellIcons, "3", "C:\\folder.ico,0");
        page.Set("HKEY_CURRENT_USER\\Control Panel\\Cursors", "Wait", "C:\\busy.ani");
        page.state.currentTheme = "C:\\Themes\\A\\A.gmtheme";
        page.state.caption = CaptionFor(page.state.currentTheme);
        // Built again so that the values above are what the lists hold.
        page.Catalogue().DetectShellIcons();
        page.Catalogue().BuildCursorCatalogue();
        RestoreAll(page.Catalogue(), page.Registry(), page.state, cursors);
        EXPECT_EQ(page.state.caption, "Glyphmoor");
        EXPECT_TRUE(page.state.rebuildPending);
        auto m = page.ApplyAndReopen();
        // Every group is written, whichever was restored.
        EXPECT_EQ(Read(*m, kShellIcons, "3"),
                  cursors ? "C:\\folder.ico,0" : "C:\\WINDOWS\\SYSTEM\\shell32.dll,3");
        EXPECT_EQ(Read(*m, "HKEY_CURRENT_USER\\Control Panel\\Cursors", "Wait"),
                  cursors ? page.App().programFile : "C:\\busy.ani");
        EXPECT_EQ(Read(*m, "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings", "Current Theme"),
                  "");
    }
}

}  // namespace
}  // namespace glyphmoor::test
