// Favourites: links to themes in the favourites folder and folders below it,
// and the menu made from that tree.
#include "ThemeMachine.h"
#include "themes/Favorites.h"
#include "themes/ShellLinkFile.h"

#include <gmock/gmock.h>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using Kind = FavoriteItem::Kind;

const std::string kFavorites = "C:\\Program Files\\Glyphmoor\\Favorites";
const std::string kTheme = "C:\\Program Files\\Glyphmoor\\Themes\\Sea\\Sea.gmtheme";

class FavoritesTest : public ThemeMachine {
protected:
    FavoritesTest() { WriteFile(kTheme, "[Desktop Icons]\r\n"); }
};

TEST_F(FavoritesTest, AddMakesTheLinkTheAddFavoriteDialogMakesAndMakesTheFolderFirst) {
    fs::remove_all(Host(kFavorites));
    const auto link = AddFavorite(*m_machine, kTheme, "", "");
    ASSERT_TRUE(link.ok()) << link.reason();
    EXPECT_EQ(*link, kFavorites + "\\Sea.lnk");
    const auto read = ReadShellLinkFile(m_machine->Env(), *link);
    ASSERT_TRUE(read.ok()) << read.reason();
    EXPECT_EQ(*read, (ShellLink{kTheme, kFavorites, "", m_app.programFile, 0}));
}

TEST_F(FavoritesTest, RefusesWhatCannotBeMadeAndMakesNothing) {
    WriteFile(kFavorites + "\\Sea.lnk", "an older link");
    WriteFile("C:\\notes.txt", "not a theme");
    const struct {
        std::string theme, folder, name, why;
    } cases[] = {
        {"C:\\gone.gmtheme", "", "", "no theme file"},
        {"C:\\notes.txt", "", "", "no theme file"},
        {kTheme, "", "", "already"},
        {kTheme, "", "SEA", "already"},
        {kTheme, "..", "x", "climbs out"},
        {kTheme, "Blue\\..\\..", "x", "climbs out"},
        {kTheme, "C:\\Windows", "x", "not in the favourites folder"},
        {kTheme, "No Such Folder", "x", "no folder"},
        {kTheme, "", "a:b", "cannot be a name"},
        {kTheme, "", "CON", "cannot be a name"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.theme + " in " + c.folder + " as " + c.name);
        const auto link = AddFavorite(*m_machine, c.theme, c.folder, c.name);
        ASSERT_FALSE(link.ok());
        EXPECT_THAT(link.reason(), HasSubstr(c.why));
    }
    std::vector<std::string> names;
    for (const auto& e : fs::directory_iterator(Host(kFavorites))) {
        names.push_back(e.path().filename().string());
    }
    EXPECT_THAT(names, ::testing::ElementsAre("Sea.lnk"));
    // Asked to replace, it does.
    ASSERT_TRUE(AddFavorite(*m_machine, kTheme, "", "sea", Replace::Yes).ok());
}

TEST_F(FavoritesTest, TheMenuListsEachFolderWithItsItemsBeforeItsLinks) {
    fs::remove_all(Host(kFavorites));
    ASSERT_TRUE(NewFavoritesFolder(*m_machine, "", "blue").ok());
    ASSERT_TRUE(NewFavoritesFolder(*m_machine, "blue", "Deep").ok());
    ASSERT_TRUE(NewFavoritesFolder(*m_machine, "", "Autumn").ok());
    ASSERT_TRUE(AddFavorite(*m_machine, kTheme, "Blue/", "Sea").ok());
    ASSERT_TRUE(AddFavorite(*m_machine, kTheme, kFavorites, "zeta").ok());
    ASSERT_TRUE(AddFavorite(*m_machine, kTheme, "", "Alpha").ok());
    WriteFile(kFavorites + "\\Read Me.txt", "not a link");
    WriteFile(kFavorites + "\\Broken.lnk", "not a link inside");
    EXPECT_FALSE(NewFavoritesFolder(*m_machine, "", "BLUE").ok());

    const std::vector<FavoriteItem> expected = {
        {0, Kind::Folder, "Autumn", kFavorites + "\\Autumn", ""},
        {1, Kind::Empty, "(Empty)", "", ""},
        {0, Kind::Folder, "blue", kFavorites + "\\blue", ""},
        {1, Kind::Folder, "Deep", kFavorites + "\\blue\\Deep", ""},
        {2, Kind::Empty, "(Empty)", "", ""},
        {1, Kind::Link, "Sea", kFavorites + "\\blue\\Sea.lnk", kTheme},
        {0, Kind::Link, "Alpha", kFavorites + "\\Alpha.lnk", kTheme},
        {0, Kind::Link, "Broken", kFavorites + "\\Broken.lnk", ""},
        {0, Kind::Link, "zeta", kFavorites + "\\zeta.lnk", kTheme},
    };
    EXPECT_EQ(FavoritesMenu(m_app), expected);
}

TEST_F(FavoritesTest, AnEmptyFavoritesFolderShowsOneEmptyItem) {
    fs::remove_all(Host(kFavorites));
    EXPECT_EQ(FavoritesMenu(m_app), (std::vector<FavoriteItem>{{0, Kind::Empty, "(Empty)", "", ""}}));
}

}  // namespace
}  // namespace glyphmoor::test
