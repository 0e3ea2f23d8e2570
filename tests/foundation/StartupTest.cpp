// Start-up, settings, recent themes and the close sequence, on temporary
// machine folders.
#include "foundation/AppEnvironment.h"
#include "foundation/FakeEnvironment.h"
#include "foundation/Machine.h"
#include "foundation/RecentThemes.h"
#include "foundation/Startup.h"
#include "foundation/modRegistry.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

namespace glyphmoor {
namespace {

// A Windows 98 machine folder, reopened from its files on demand.
class MachineTest : public ::testing::Test {
protected:
    void SetUp() override { m_machine = m_folder.Open(); }
    void Reopen() {
        ASSERT_TRUE(m_machine->Save().ok());
        m_machine = m_folder.Open();
    }
    RegistryStore& Registry() { return m_machine->Registry(); }

    test::TempMachine m_folder;
    std::unique_ptr<Machine> m_machine;
};

TEST(InitEnvironment, FlavourFromTheVersion) {
    const struct {
        OsVersion version;
        const char* flavour;
        const char* name;
    } cases[] = {
        {{kPlatformWindows, 4, 0, 950}, "Win95", "Windows 95"},
        {{kPlatformWindows, 4, 9, 0}, "Win95", "Windows 95"},
        {{kPlatformWindows, 4, 10, 1998}, "Win98", "Windows 98"},
        {{kPlatformWindows, 4, 90, 3000}, "Win98", "Windows 98"},
        {{kPlatformNt, 4, 0, 1381}, "WinNT", "Windows NT"},
        {{3, 4, 10, 0}, "", ""},
    };
    test::TempDir dir;
    for (const auto& c : cases) {
        const FakeEnvironment env(dir.Path(), c.version);
        const AppEnvironment app = InitEnvironment(env);
        EXPECT_EQ(app.windowsFlavour, c.flavour) << c.version.platformId << "." << c.version.minor;
        EXPECT_EQ(app.windowsName, c.name) << c.version.platformId << "." << c.version.minor;
    }
}

TEST(CommandLine, ModesAndArguments) {
    const struct {
        const char* line;
        StartMode mode;
        const char* argument;
        Page page;
    } cases[] = {
        {"", StartMode::Window, "", Page::Themes},
        {"/a C:\\Themes\\T\\t.gmtheme", StartMode::ApplyTheme, "C:\\Themes\\T\\t.gmtheme", Page::None},
        {"/t C:\\t.gmtheme", StartMode::PreviewTheme, "C:\\t.gmtheme", Page::IconsAndCursors},
        {"/tC:\\t.gmtheme", StartMode::PreviewTheme, ":\\t.gmtheme", Page::IconsAndCursors},
        {"/f C:\\My Documents", StartMode::OpenFolder, "C:\\My Documents", Page::Folders},
        {"/t", StartMode::PreviewTheme, "", Page::IconsAndCursors},
        {"/a  two blanks", StartMode::ApplyTheme, " two blanks", Page::None},
        {"/A C:\\t.gmtheme", StartMode::Unknown, "", Page::None},
        {"-t C:\\t.gmtheme", StartMode::Unknown, "", Page::None},
        {" /f C:\\x", StartMode::Unknown, "", Page::None},
        {"/x", StartMode::Unknown, "", Page::None},
    };
    for (const auto& c : cases) {
        const StartRequest request = ParseCommandLine(c.line);
        EXPECT_EQ(request.mode, c.mode) << c.line;
        EXPECT_EQ(request.argument, c.argument) << c.line;
        EXPECT_EQ(request.firstPage, c.page) << c.line;
    }
    EXPECT_EQ(ParseCommandLine(JoinCommandLine({"/f", "C:\\My", "Documents"})).argument, "C:\\My Documents");
}

TEST_F(MachineTest, WindowPositionAndActiveTab) {
    // Nothing stored: centred.
    EXPECT_EQ(StartPosition(Registry(), 800, 600, 500, 400), (WindowPosition{150, 100}));
    SaveWindowPosition(Registry(), {-12, 34});
    EXPECT_EQ(GetRegString(Registry(), kSettingsPath, "Left"), "-12");
    EXPECT_EQ(GetRegString(Registry(), kSettingsPath, "Top"), "34");
    // Stored, but "Positions" is not 1: still centred.
    SetRegDword(Registry(), kSettingsPath, "Positions", 0);
    EXPECT_EQ(StartPosition(Registry(), 800, 600, 500, 400), (WindowPosition{150, 100}));
    SetRegDword(Registry(), kSettingsPath, "Positions", 1);
    EXPECT_EQ(StartPosition(Registry(), 800, 600, 500, 400), (WindowPosition{-12, 34}));
    // Texts are read as Val reads them.
    SetRegString(Registry(), kSettingsPath, "Left", "120px");
    SetRegString(Registry(), kSettingsPath, "Top", "top");
    EXPECT_EQ(StartPosition(Registry(), 800, 600, 500, 400), (WindowPosition{120, 0}));

    EXPECT_EQ(ReadActiveTab(Registry()), 10);
    WriteActiveTab(Registry(), 3);
    EXPECT_EQ(ReadActiveTab(Registry()), 3);
}

TEST(CloseSequence, TheQuestionAndItsAnswers) {
    AppState state;
    EXPECT_FALSE(AsksBeforeClosing(state));
    EXPECT_EQ(CloseActionFor(state, std::nullopt), CloseAction::Close);
    state.applyEnabled = true;
    EXPECT_TRUE(AsksBeforeClosing(state));
    EXPECT_EQ(kSaveChangesButtons[0], "Cancel");
    EXPECT_EQ(CloseActionFor(state, 0), CloseAction::Cancel);
    EXPECT_EQ(CloseActionFor(state, 1), CloseAction::Close);
    EXPECT_EQ(CloseActionFor(state, 2), CloseAction::ApplyThenClose);
    EXPECT_EQ(CloseActionFor(state, std::nullopt), CloseAction::Cancel) << "a dismissed question cancels";
}

TEST_F(MachineTest, UnloadWritesThePositionAndReadsTheTab) {
    AppState state;
    state.restartPending = true;
    WriteActiveTab(Registry(), 2);
    const UnloadResult result = Unload(Registry(), state, {7, 8});
    EXPECT_TRUE(result.showNextStartNotice);
    EXPECT_EQ(result.activeTab, 2);
    Reopen();
    EXPECT_EQ(GetRegString(Registry(), kSettingsPath, "Left"), "7");
    EXPECT_EQ(GetRegString(Registry(), kSettingsPath, "Top"), "8");
}

TEST_F(MachineTest, CaptionAndCurrentTheme) {
    AppState state;
    SetCurrentTheme(Registry(), state, "load");
    EXPECT_EQ(state.caption, "Glyphmoor");
    EXPECT_EQ(state.currentTheme, "");

    StoreCurrentTheme(Registry(), "Themes\\relative.gmtheme");
    SetCurrentTheme(Registry(), state, "load");
    EXPECT_EQ(state.caption, "Glyphmoor") << "a relative path is ignored at start";
    EXPECT_TRUE(RecentThemes(Registry()).empty());

    StoreCurrentTheme(Registry(), "C:\\Program Files\\Glyphmoor\\Themes\\Blue\\Blue.gmtheme");
    SetCurrentTheme(Registry(), state, "load");
    EXPECT_EQ(state.caption, "Glyphmoor - C:\\Program Files\\Glyphmoor\\Themes\\Blue\\Blue");
    EXPECT_EQ(state.currentTheme, "C:\\Program Files\\Glyphmoor\\Themes\\Blue\\Blue.gmtheme");

    SetCurrentTheme(Registry(), state, "C:\\My.Themes\\x.gmtheme");
    EXPECT_EQ(state.caption, "Glyphmoor - C:\\My");
    EXPECT_EQ(RecentThemes(Registry()),
              (std::vector<std::string>{"C:\\My.Themes\\x.gmtheme",
                                        "C:\\Program Files\\Glyphmoor\\Themes\\Blue\\Blue.gmtheme"}));

    SetCurrentTheme(Registry(), state, "");
    EXPECT_EQ(state.caption, "Glyphmoor");
    EXPECT_EQ(state.currentTheme, "");
    EXPECT_EQ(RecentThemes(Registry()).size(), 2U);
}

TEST_F(MachineTest, RecentThemesShiftAndKeepPlaces) {
    const auto recent = [&] { return RecentThemes(Registry()); };
    using List = std::vector<std::string>;
    AddRecentTheme(Registry(), "C:\\a.gmtheme");
    AddRecentTheme(Registry(), "C:\\b.gmtheme");
    AddRecentTheme(Registry(), "C:\\c.gmtheme");
    EXPECT_EQ(recent(), (List{"C:\\c.gmtheme", "C:\\b.gmtheme", "C:\\a.gmtheme"}));
    // Opening again a theme that is third leaves it third, whatever its case.
    AddRecentTheme(Registry(), "c:\\A.GMTHEME");
    EXPECT_EQ(recent(), (List{"C:\\c.gmtheme", "C:\\b.gmtheme", "C:\\a.gmtheme"}));
    AddRecentTheme(Registry(), "C:\\d.gmtheme");
    AddRecentTheme(Registry(), "C:\\e.zip");
    EXPECT_EQ(recent(), (List{"C:\\e.zip", "C:\\d.gmtheme", "C:\\c.gmtheme", "C:\\b.gmtheme"}));
    // An entry that is not a full path is not moved down: "3" keeps the copy
    // of itself it already gave "4", and "1" is copied over the entry.
    SetRegString(Registry(), kRecentThemesPath, "2", "junk");
    AddRecentTheme(Registry(), "C:\\f.gmtheme");
    EXPECT_EQ(recent(), (List{"C:\\f.gmtheme", "C:\\e.zip", "C:\\c.gmtheme", "C:\\c.gmtheme"}));

    SetRegString(Registry(), kRecentThemesPath, "3", "junk");

    EXPECT_EQ(RecentMenuItems(Registry()),
              (std::vector<RecentMenuItem>{{"RecentTheme 1", "&1 f.gmtheme", "C:\\f.gmtheme"},
                                           {"RecentTheme 2", "&2 e.zip", "C:\\e.zip"},
                                           {"RecentTheme 3", "&3 junk", "junk"},
                                           {"RecentTheme 4", "&4 c.gmtheme", "C:\\c.gmtheme"}}));
    // The menu ends at the first entry that cannot be read.
    DeleteRegValue(Registry(), kRecentThemesPath, "2");
    EXPECT_EQ(RecentMenuItems(Registry()).size(), 1U);
    DeleteRegValue(Registry(), kRecentThemesPath, "1");
    EXPECT_TRUE(RecentMenuItems(Registry()).empty());
}

}  // namespace
}  // namespace glyphmoor
