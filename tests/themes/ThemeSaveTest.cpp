// Saving themes on the default machine: the file's sections, the icons
// copied beside it and what a save over an older file keeps.
#include "ThemeMachine.h"
#include "foundation/RecentThemes.h"
#include "foundation/Version.h"
#include "foundation/modProfile.h"
#include "iconfiles/cFileIcon.h"
#include "iconfiles/modResource.h"
#include "icons/IconEditing.h"
#include "icons/OwnDefaults.h"
#include "themes/ThemeFile.h"

#include <algorithm>
#include <string>
#include <vector>

namespace glyphmoor::test {
namespace {

class ThemeSaving : public ThemeMachine {
protected:
    std::string Save(std::string_view path) {
        auto saved = SaveThemeFile(Catalogue(), m_machine->Registry(), m_state, path);
        EXPECT_TRUE(saved.ok()) << saved.reason();
        return saved.ok() ? saved.value() : std::string();
    }
    std::string Value(std::string_view theme, std::string_view section, std::string_view key) const {
        return ReadProfileValue(Host(theme), section, key);
    }
    // The icon file's bytes as the shell finds icon `index` of `location`'s file.
    std::vector<std::byte> SourceIcon(const IconLocation& location, int index) const {
        cFileIcon icon;
        EXPECT_TRUE(LoadIconOfFile(Host(InSystemFolder(m_app, location.file)), index, icon).ok())
            << location.Text();
        return icon.ToBytes();
    }
    std::vector<std::byte> CopiedIcon(std::string_view windowsPath) const {
        cFileIcon icon;
        EXPECT_TRUE(icon.LoadIcon(Host(windowsPath))) << windowsPath;
        return icon.ToBytes();
    }
};

TEST_F(ThemeSaving, WritesEveryEntryWithItsIconCopiedBesideTheTheme) {
    Entry(1, "My Computer").currentIndex = 0;
    Entry(1, "My Computer").currentFile = m_app.sysDir + "\\shell32.dll";
    Entry(2, "Programs").currentIndex = 7;
    const std::string theme = Save("C:\\Work\\Ocean");
    ASSERT_EQ(theme, "C:\\Work\\Ocean.gmtheme");

    std::size_t entries = 0;
    for (int group = 1; group <= 6; ++group) {
        const std::string_view section = ThemeSectionNames.at(static_cast<std::size_t>(group - 1));
        for (const SystemIconEntry& e : Catalogue().Group(group).Entries()) {
            SCOPED_TRACE(std::string(section) + ", " + std::string(e.Key()));
            const std::string name = "Ocean " + std::string(e.Key()) + ".ico";
            ASSERT_EQ(Value(theme, section, e.Key()), "%ThemeDir%" + name);
            EXPECT_EQ(CopiedIcon("C:\\Work\\" + name), SourceIcon(e.Current(), e.currentIndex));
            ++entries;
        }
    }
    EXPECT_GT(entries, 50U);
    EXPECT_EQ(ReadProfileKeys(Host(theme), "Cursors"), std::vector<std::string>{});
    EXPECT_EQ(Value(theme, "Software Credits", "Software"), "Glyphmoor " + std::string(ProgramVersion()));
    EXPECT_EQ(ReadProfileKeys(Host(theme), "Software Credits"),
              (std::vector<std::string>{"Software", "Company", "Author", "Website", "Email"}));
    EXPECT_EQ(Value(theme, "Include", "Read Me"), "%ThemeDir%Read Me.txt");
    EXPECT_EQ(ReadCurrentTheme(m_machine->Registry()), theme);
    EXPECT_EQ(m_state.currentTheme, theme);

    // What is saved loads back as the copies.
    for (int group = 1; group <= 6; ++group) {
        for (std::size_t i = 0; i < Catalogue().Group(group).Count(); ++i) {
            Catalogue().Group(group).At(i).currentFile = "C:\\elsewhere.ico";
        }
    }
    LoadThemeFile(Catalogue(), m_state, theme);
    for (int group = 1; group <= 6; ++group) {
        for (const SystemIconEntry& e : Catalogue().Group(group).Entries()) {
            EXPECT_EQ(e.Current(), (IconLocation{"C:\\Work\\Ocean " + std::string(e.Key()) + ".ico", 0}))
                << e.Key();
        }
    }
}

TEST_F(ThemeSaving, SkipsWhatHasNoIconAndCopiesAResourceIdFromTheFirstIcon) {
    const std::string shell32 = m_app.sysDir + "\\shell32.dll";
    WriteFile("C:\\notanicon.dll", "MZ but nothing more");
    WriteFile("C:\\broken.ico", "not an icon");
    cFileIcon ico;
    ASSERT_TRUE(LoadIconOfFile(Host(shell32), 3, ico).ok());
    ASSERT_TRUE(ico.SaveIcon(Host("C:\\mine.ico")));
    struct Case {
        std::string key;
        IconLocation location;
        bool copied;  // from the file's icon at the index, the first for a resource id
    };
    const std::vector<Case> cases = {
        {"My Computer", {shell32, -16}, true},
        {"My Documents", {std::string(kNoGraphic), 0}, false},
        {"Network Neighborhood", {m_app.programFile, 0}, false},
        {"The Internet", {"", 0}, false},
        {"In Box", {"C:\\notanicon.dll", 0}, false},
        {"My Briefcase", {"C:\\broken.ico", 0}, false},
        {"Recycle Bin (empty)", {"C:\\mine.ico", 0}, true},
        {"Recycle Bin (full)", {shell32, 100000}, false},
    };
    for (const Case& c : cases) {
        SystemIconEntry& e = Entry(1, c.key);
        e.currentFile = c.location.file;
        e.currentIndex = c.location.index;
    }
    const std::string theme = Save("C:\\Work\\Skip.gmtheme");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.key);
        const std::string name = "Skip " + c.key + ".ico";
        if (c.copied) {
            EXPECT_EQ(Value(theme, "Desktop Icons", c.key), "%ThemeDir%" + name);
            EXPECT_EQ(CopiedIcon("C:\\Work\\" + name), SourceIcon(c.location, std::max(c.location.index, 0)));
        } else {
            EXPECT_EQ(Value(theme, "Desktop Icons", c.key), "");
            EXPECT_FALSE(std::filesystem::exists(Host("C:\\Work\\" + name)));
        }
    }
}

TEST_F(ThemeSaving, DrawsTheIconOfAFileTheResourceReaderCannotRead) {
    cFileIcon source;
    ASSERT_TRUE(LoadIconOfFile(Host(m_app.sysDir + "\\shell32.dll"), 3, source).ok());
    ASSERT_TRUE(source.SaveIcon(Host("C:\\picture.icn")));
    Entry(2, "Programs").currentFile = "C:\\picture.icn";
    Entry(2, "Programs").currentIndex = 0;
    const std::string theme = Save("C:\\Work\\Drawn");
    ASSERT_EQ(Value(theme, "Start Icons", "Programs"), "%ThemeDir%Drawn Programs.ico");
    cFileIcon drawn;
    ASSERT_TRUE(drawn.LoadIcon(Host("C:\\Work\\Drawn Programs.ico")));
    ASSERT_EQ(drawn.ImageCount(), 1);
    const int best = source.PickImage(32, 32);
    ASSERT_GE(best, 0);
    const auto expected = source.ImageData(best);
    const auto copied = drawn.ImageData(0);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), copied.begin(), copied.end()));
}

TEST_F(ThemeSaving, OverAnOlderFileKeepsEveryKeyItDoesNotWrite) {
    const std::string theme = "C:\\Work\\Old.gmtheme";
    WriteFile(
        theme,
        "[Cursors]\nArrow=C:\\a.cur\n[Desktop Icons]\nRetired Object=C:\\r.ico\nMy Computer=C:\\old.ico\n"
        "[Include]\nRead Me=old\nExtra=%ThemeDir%extra.txt\n[Mine]\nk=v\n");
    ASSERT_EQ(Save(theme), theme);
    EXPECT_EQ(Value(theme, "Cursors", "Arrow"), "C:\\a.cur");
    EXPECT_EQ(Value(theme, "Desktop Icons", "Retired Object"), "C:\\r.ico");
    EXPECT_EQ(Value(theme, "Desktop Icons", "My Computer"), "%ThemeDir%Old My Computer.ico");
    EXPECT_EQ(Value(theme, "Include", "Read Me"), "%ThemeDir%Read Me.txt");
    EXPECT_EQ(Value(theme, "Include", "Extra"), "%ThemeDir%extra.txt");
    EXPECT_EQ(Value(theme, "Mine", "k"), "v");
}

TEST_F(ThemeSaving, StraightIntoTheLibraryMakesTheThemesOwnFolder) {
    const std::string library = m_machine->Env().ProgramDirectory() + "\\Themes\\";
    const std::string theme = Save(library + "Ocean");
    EXPECT_EQ(theme, library + "Ocean\\Ocean.gmtheme");
    EXPECT_TRUE(std::filesystem::is_regular_file(Host(theme)));
    EXPECT_TRUE(std::filesystem::is_regular_file(Host(library + "Ocean\\Ocean My Computer.ico")));
    EXPECT_FALSE(std::filesystem::exists(Host(library + "Ocean.gmtheme")));
}

}  // namespace
}  // namespace glyphmoor::test
