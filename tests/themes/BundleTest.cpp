// Packing a theme into a bundle and unpacking it into the library.
#include "ThemeMachine.h"
#include "ZipBytes.h"
#include "foundation/RecentThemes.h"
#include "themes/ThemeApply.h"
#include "themes/ThemeBundle.h"
#include "themes/ThemeFile.h"
#include "themes/ThemeLibrary.h"

#include <gmock/gmock.h>

#include <chrono>
#include <fstream>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

const std::string kLibrary = "C:\\Program Files\\Glyphmoor\\Themes";

OverwriteQuestion Answer(OverwriteAnswer answer, std::vector<std::string>* asked = nullptr) {
    return [answer, asked](std::string_view file) {
        if (asked != nullptr) {
            asked->emplace_back(file);
        }
        return answer;
    };
}

class Bundles : public ThemeMachine {
protected:
    // The machine's icons saved as the theme Ocean in the library, with a Read Me.
    std::string SaveOcean() {
        auto saved = SaveThemeFile(Catalogue(), m_machine->Registry(), m_state, kLibrary + "\\Ocean.gmtheme");
        EXPECT_TRUE(saved.ok());
        WriteFile(kLibrary + "\\Ocean\\Read Me.txt", "Blue icons.\r\n");
        return saved.ok() ? saved.value() : std::string();
    }
    fs::path Zip(std::string_view name) const { return m_home.Path() / name; }
    void WriteZip(std::string_view name, const std::vector<ZipEntry>& entries) const {
        std::ofstream(Zip(name), std::ios::binary) << ZipArchive(entries);
    }
};

TEST_F(Bundles, ASavedThemePackedDeletedAndUnpackedComesBackFileForFile) {
    const std::string theme = SaveOcean();
    const auto before = Tree(Host(kLibrary + "\\Ocean"));
    const auto packed = PackTheme(m_app, theme, Zip("Ocean.zip"));
    ASSERT_TRUE(packed.ok()) << packed.reason();
    EXPECT_TRUE(packed->missing.empty());
    EXPECT_EQ(packed->packed.back(), "Ocean.gmtheme");
    EXPECT_EQ(packed->packed.size(), before.size());

    fs::remove_all(Host(kLibrary + "\\Ocean"));
    const auto unpacked = UnpackBundle(*m_machine, Zip("Ocean.zip"), Answer(OverwriteAnswer::Stop));
    ASSERT_TRUE(unpacked.ok()) << unpacked.reason();
    EXPECT_EQ(unpacked->themePath, theme);
    EXPECT_EQ(unpacked->written.size(), before.size());
    EXPECT_EQ(Tree(Host(kLibrary + "\\Ocean")), before);
    // Nothing of the unpack is left beside the theme (and the starter themes).
    EXPECT_THAT(Tree(Host(kLibrary)), ::testing::Contains(::testing::Key("Ocean")));
    EXPECT_THAT(Tree(Host(kLibrary)),
                ::testing::Each(::testing::Key(::testing::Not(::testing::StartsWith(".")))));
}

TEST_F(Bundles, PacksWhatTheThemeNamesLeavingOutMissingFilesAndEarlierFilesOfTheSameName) {
    WriteFile("C:\\Art\\one\\pic.ico", "first");
    WriteFile("C:\\Art\\two\\PIC.ico", "second");
    WriteFile("C:\\Art\\Ocean.gmtheme",
              "[Desktop Icons]\r\nMy Computer=C:\\Art\\one\\pic.ico\r\nRecycle Bin=C:\\Art\\gone.ico\r\n"
              "[Cursors]\r\nArrow=C:\\Art\\two\\PIC.ico\r\n[Include]\r\nRead Me=%ThemeDir%Read Me.txt\r\n");
    const auto packed = PackTheme(m_app, "C:\\Art\\Ocean.gmtheme", Zip("Ocean.zip"));
    ASSERT_TRUE(packed.ok()) << packed.reason();
    EXPECT_THAT(packed->packed, ElementsAre("PIC.ico", "Ocean.gmtheme"));
    EXPECT_THAT(packed->missing, ElementsAre("C:\\Art\\gone.ico", "C:\\Art\\Read Me.txt"));
    EXPECT_THAT(packed->replaced, ElementsAre("C:\\Art\\one\\pic.ico"));

    const auto unpacked = UnpackBundle(*m_machine, Zip("Ocean.zip"), Answer(OverwriteAnswer::Stop));
    ASSERT_TRUE(unpacked.ok()) << unpacked.reason();
    EXPECT_EQ(Tree(Host(kLibrary + "\\Ocean")).at("PIC.ico"), "second");
}

TEST_F(Bundles, RefusesToPackAThemeNamingMoreThan99Files) {
    for (const int count : {99, 100}) {
        SCOPED_TRACE(count);
        // Spread over two sections: one section's key names are read into 299 characters.
        std::string text;
        for (int i = 0; i < count; ++i) {
            text += i == 0 ? "[Other Icons]\r\n" : i == 50 ? "[File Icons]\r\n" : "";
            text += "k" + std::to_string(i) + "=C:\\i" + std::to_string(i) + ".ico\r\n";
        }
        WriteFile("C:\\Big.gmtheme", text);
        const fs::path zip = Zip("Big" + std::to_string(count) + ".zip");
        const auto packed = PackTheme(m_app, "C:\\Big.gmtheme", zip);
        EXPECT_EQ(packed.ok(), count == 99);
        EXPECT_EQ(fs::exists(zip), count == 99);
        if (!packed.ok()) {
            EXPECT_THAT(packed.reason(), HasSubstr("more than 99 files"));
        }
    }
}

TEST_F(Bundles, UnpacksIntoTheFolderNamedByTheBundleUpToItsFirstDotAndLoadsTheThemeNamedLikeIt) {
    const struct {
        std::string zip;
        std::vector<std::string> themes;
        std::string folder;
        std::string loaded;
    } cases[] = {
        {"Ocean.v2.final.zip", {"Ocean.gmtheme"}, "Ocean", "Ocean.gmtheme"},
        {"Sea.zip", {"b.gmtheme", "Sea.GMTHEME", "a.gmtheme"}, "Sea", "Sea.GMTHEME"},
        {"Lake.zip", {"Zed.gmtheme", "alpha.gmtheme", "Beta.gmtheme"}, "Lake", "alpha.gmtheme"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.zip);
        std::vector<ZipEntry> entries;
        for (const std::string& theme : c.themes) {
            entries.push_back({.name = theme, .data = "[Desktop Icons]\r\n"});
        }
        WriteZip(c.zip, entries);
        const auto unpacked = UnpackBundle(*m_machine, Zip(c.zip), Answer(OverwriteAnswer::Stop));
        ASSERT_TRUE(unpacked.ok()) << unpacked.reason();
        EXPECT_EQ(unpacked->folder, kLibrary + "\\" + c.folder);
        EXPECT_EQ(unpacked->themePath, kLibrary + "\\" + c.folder + "\\" + c.loaded);
    }
}

TEST_F(Bundles, AsksAboutEachFileThereAlreadyAndDoesWhatTheAnswerSays) {
    const struct {
        OverwriteAnswer answer;
        bool ok;
        std::string icon;
    } cases[] = {
        {OverwriteAnswer::Overwrite, true, "new icon"},
        {OverwriteAnswer::Keep, true, "old icon"},
        {OverwriteAnswer::Stop, false, "old icon"},
    };
    for (const auto& c : cases) {
        WriteFile(kLibrary + "\\Ocean\\a.ico", "old icon");
        WriteFile(kLibrary + "\\Ocean\\ocean.gmtheme", "old theme");
        WriteZip("Ocean.zip", {{.name = "A.ico", .data = "new icon"},
                               {.name = "b.ico", .data = "other"},
                               {.name = "Ocean.gmtheme", .data = "new theme"}});
        std::vector<std::string> asked;
        const auto unpacked = UnpackBundle(*m_machine, Zip("Ocean.zip"), Answer(c.answer, &asked));
        EXPECT_EQ(unpacked.ok(), c.ok);
        const auto files = Tree(Host(kLibrary + "\\Ocean"));
        // A file is found as Windows finds it, without regard to case, and replaced under its new name.
        EXPECT_EQ(files.count("a.ico") + files.count("A.ico"), 1U);
        EXPECT_EQ(files.contains("A.ico") ? files.at("A.ico") : files.at("a.ico"), c.icon);
        EXPECT_EQ(files.contains("b.ico"), c.ok);
        if (c.answer == OverwriteAnswer::Stop) {
            EXPECT_THAT(asked, ElementsAre(kLibrary + "\\Ocean\\a.ico"));
        } else {
            EXPECT_THAT(asked, ElementsAre(kLibrary + "\\Ocean\\a.ico", kLibrary + "\\Ocean\\ocean.gmtheme"));
        }
        fs::remove_all(Host(kLibrary + "\\Ocean"));
    }
}

TEST_F(Bundles, AppliedFromABundleChangesTheIconsAndMakesTheBundleTheCurrentTheme) {
    WriteFile("C:\\Art\\Blue.ico", "an icon");
    WriteFile("C:\\Art\\Ocean.gmtheme", "[Desktop Icons]\r\nMy Computer=%ThemeDir%Blue.ico\r\n");
    ASSERT_TRUE(PackTheme(m_app, "C:\\Art\\Ocean.gmtheme", Host("C:\\Art\\Ocean.zip")).ok());

    const auto applied = ApplyThemeFile(*m_machine, "C:\\Art\\Ocean.zip");
    ASSERT_TRUE(applied.ok()) << applied.reason();
    ASSERT_EQ(applied->size(), 1U);
    EXPECT_EQ(applied->front().currentFile, kLibrary + "\\Ocean\\Blue.ico");
    EXPECT_EQ(ReadCurrentTheme(m_machine->Registry()), "C:\\Art\\Ocean.zip");
}

TEST_F(Bundles, RemovesWhatAKilledUnpackLeftButNotAnUnpackUnderWay) {
    const fs::path old = Host(kLibrary) / ".unpack-Sea-1";
    const fs::path busy = Host(kLibrary) / ".unpack-Lake-2";
    fs::create_directories(old / "x");
    fs::create_directories(busy);
    std::ofstream(busy / "Lake.gmtheme") << "[Desktop Icons]\r\n";  // half unpacked: not a theme yet
    fs::last_write_time(old, fs::file_time_type::clock::now() - std::chrono::hours(2));
    WriteZip("Ocean.zip", {{.name = "Ocean.gmtheme", .data = "[Desktop Icons]\r\n"}});
    ASSERT_TRUE(UnpackBundle(*m_machine, Zip("Ocean.zip"), Answer(OverwriteAnswer::Stop)).ok());
    EXPECT_FALSE(fs::exists(old));
    EXPECT_TRUE(fs::exists(busy));
    for (const LibraryTheme& theme : ListThemeLibrary(m_app)) {
        EXPECT_FALSE(theme.path.find(".unpack-") != std::string::npos) << theme.path;
    }
}

}  // namespace
}  // namespace glyphmoor::test
