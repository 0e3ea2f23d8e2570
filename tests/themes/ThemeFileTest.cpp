// Reading theme files: names, placement, values as icon locations, the key
// list's limit and the order in which keys reach the catalogue.
#include "ThemeMachine.h"
#include "foundation/modProfile.h"
#include "themes/ThemeFile.h"

#include <string>

namespace glyphmoor::test {
namespace {

TEST(ThemeNames, GetTheExtensionUnlessTheyEndInIt) {
    const struct {
        const char* given;
        const char* saved;
    } cases[] = {
        {"Ocean", "Ocean.gmtheme"}, {"Ocean.GmTheme", "Ocean.GmTheme"}, {"Ocean.txt", "Ocean.txt.gmtheme"},
        {".gmtheme", ".gmtheme"},   {"gmtheme", "gmtheme.gmtheme"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(WithThemeExtension(c.given), c.saved) << c.given;
    }
}

TEST(ThemeNames, SavedStraightIntoTheLibraryGetAFolderOfTheirOwn) {
    const std::string program = "C:\\Program Files\\Glyphmoor";
    const struct {
        const char* given;
        const char* placed;
    } cases[] = {
        {"C:\\Program Files\\Glyphmoor\\Themes\\Ocean.gmtheme",
         "C:\\Program Files\\Glyphmoor\\Themes\\Ocean\\Ocean.gmtheme"},
        {"c:\\program files\\GLYPHMOOR\\themes\\Sea.Shore.gmtheme",
         "c:\\program files\\GLYPHMOOR\\themes\\Sea.Shore\\Sea.Shore.gmtheme"},
        {"C:\\Program Files\\Glyphmoor\\Themes\\Ocean\\Ocean.gmtheme",
         "C:\\Program Files\\Glyphmoor\\Themes\\Ocean\\Ocean.gmtheme"},
        {"D:\\Work\\Ocean.gmtheme", "D:\\Work\\Ocean.gmtheme"},
        {"C:\\Program Files\\Glyphmoor\\Ocean.gmtheme", "C:\\Program Files\\Glyphmoor\\Ocean.gmtheme"},
        {"Ocean.gmtheme", "C:\\Program Files\\Glyphmoor\\Themes\\Ocean\\Ocean.gmtheme"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ThemePlacement(c.given, program, program + "\\Themes"), c.placed) << c.given;
    }
}

class ThemeLoading : public ThemeMachine {
protected:
    static constexpr const char* kTheme = "C:\\Themes\\T\\T.gmtheme";

    void Load(std::string_view text) {
        WriteFile(kTheme, text);
        LoadThemeFile(Catalogue(), m_state, kTheme);
    }
};

// The macros themselves: PathMacros.
TEST_F(ThemeLoading, ValuesAreExpandedThenSplitIntoFileAndIndex) {
    const struct {
        const char* value;
        IconLocation expected;
    } cases[] = {
        {"%ThemeDir%mc.ico", {"C:\\Themes\\T\\mc.ico", 0}},
        {"%themedir%mc.ico,2", {"%themedir%mc.ico", 2}},
        {"%WinSysDir%shell32.dll,3", {m_app.sysDir + "\\shell32.dll", 3}},
        {"C:\\x,y.dll,-154", {"C:\\x,y.dll", -154}},
    };
    for (const auto& c : cases) {
        Load(std::string("[Desktop Icons]\nmy computer=") + c.value + "\n");
        EXPECT_EQ(Entry(1, "My Computer").Current(), c.expected) << c.value;
    }
    EXPECT_TRUE(m_state.themeLoaded);
    EXPECT_TRUE(m_state.applyEnabled);
}

TEST_F(ThemeLoading, LoadsOnlyTheKeysWhoseNamesFitIn299Characters) {
    const struct {
        std::size_t fillerLength;
        bool loaded;
    } cases[] = {{100, true}, {280, true}, {288, false}, {400, false}};
    for (const auto& c : cases) {
        Entry(1, "My Computer").currentFile = "C:\\before.ico";
        // "My Computer" and its NUL after the filler's name and NUL; the list
        // ends with one more NUL.
        Load("[Desktop Icons]\n" + std::string(c.fillerLength, 'f') + "=C:\\f.ico\nMy Computer=C:\\mc.ico\n");
        const bool loaded = Entry(1, "My Computer").currentFile == "C:\\mc.ico";
        EXPECT_EQ(loaded, c.loaded) << c.fillerLength;
    }
}

TEST_F(ThemeLoading, ClearsNothingAndPassesOverWhatNoEntryHolds) {
    Entry(1, "My Documents").currentFile = "C:\\kept.ico";
    const IconLocation internet = Entry(1, "The Internet").Current();
    const IconLocation arrowBefore = Catalogue().Group(7).At(0).Current();
    const std::string arrow(Catalogue().Group(7).KeyAt(0));
    Load(
        "[Desktop Icons]\nNo Such Object=C:\\n.ico\nThe Internet=\nMy Computer=C:\\a.ico,x\n"
        "[File Icons]\nMy Computer=C:\\wrong-group.ico\n"
        "[Cursors]\n" +
        arrow + "=C:\\a.cur\n");
    EXPECT_EQ(Entry(1, "My Documents").currentFile, "C:\\kept.ico");
    EXPECT_EQ(Entry(1, "The Internet").Current(), internet);
    EXPECT_NE(Entry(1, "My Computer").currentFile, "C:\\wrong-group.ico");
    EXPECT_NE(arrowBefore.file, "C:\\a.cur");
    EXPECT_EQ(Catalogue().Group(7).At(0).currentFile, "C:\\a.cur");
}

TEST_F(ThemeLoading, AMissingFileLoadsNothing) {
    const IconLocation before = Entry(1, "My Computer").Current();
    LoadThemeFile(Catalogue(), m_state, "C:\\Themes\\None\\None.gmtheme");
    EXPECT_EQ(Entry(1, "My Computer").Current(), before);
}

}  // namespace
}  // namespace glyphmoor::test
