// The theme commands on the default machine: a theme saved, every icon
// restored, the theme applied again; listing, previewing and deleting.
#include "CliRun.h"
#include "themes/BundleZip.h"

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;

class ThemeCommands : public DefaultMachineCli {
protected:
    std::string m_library = m_machine->Env().ProgramDirectory() + "\\Themes";
};

// save, restore-all, preview and apply together: the applied theme gives the
// entries their icons copied beside it and becomes the current theme. What
// the copies hold is the theme saving tests'.
TEST_F(ThemeCommands, ASavedThemeIsAppliedAfterRestoringAll) {
    ASSERT_EQ(
        Run({"icons", "set", "Desktop Icons", "My Computer", "C:\\WINDOWS\\SYSTEM\\shell32.dll,5"}).status,
        0);
    const CliRun saved = Run({"theme", "save", m_library + "\\Round"});
    ASSERT_EQ(saved.status, 0) << saved.err;
    const std::string theme = m_library + "\\Round\\Round.gmtheme";
    EXPECT_EQ(saved.out, theme + "\n");
    ASSERT_EQ(Run({"icons", "restore-all", "--yes"}).status, 0);
    const std::string restored = Run({"icons"}).out;
    const CliRun preview = Run({"theme", "preview", theme});
    ASSERT_EQ(preview.status, 0) << preview.err;
    EXPECT_EQ(Run({"icons"}).out, restored);

    const CliRun applied = Run({"theme", "apply", theme});
    ASSERT_EQ(applied.status, 0) << applied.err;
    EXPECT_EQ(applied.out, preview.out);
    const std::string copy = m_library + "\\Round\\Round My Computer.ico";
    EXPECT_NE(applied.out.find(copy), std::string::npos) << applied.out;
    EXPECT_NE(Run({"icons", "--group", "1"}).out.find("\tMy Computer\t" + copy + "\t0\t"), std::string::npos);
    // Applied again, only the bitmap type, which its tweak's rule writes back each time, differs.
    for (const auto& line : TabFields(Run({"theme", "apply", theme}).out)) {
        EXPECT_EQ(line.at(1), "Bitmap Image");
    }
    EXPECT_EQ(
        Run({"reg", "read", "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings", "Current Theme"})
            .out,
        theme + "\n");
    EXPECT_NE(Run({"theme", "list"}).out.find("Round\t" + theme + "\n"), std::string::npos);
}

// The default machine's starter themes: each changes every entry of the
// catalogue, pointers included, to a picture of its own folder, and carries
// its Read Me.
TEST_F(ThemeCommands, TheStarterThemesChangeEveryEntry) {
    const std::size_t entries = TabFields(Run({"icons"}).out).size();
    const auto themes = TabFields(Run({"theme", "list"}).out);
    ASSERT_EQ(themes.size(), 3U);
    for (const auto& theme : themes) {
        SCOPED_TRACE(theme.at(0));
        const std::string folder = m_library + "\\" + theme.at(0) + "\\";
        EXPECT_EQ(theme.at(1), folder + theme.at(0) + ".gmtheme");
        EXPECT_TRUE(fs::is_regular_file(Host(folder + "Read Me.txt")));
        const auto changes = TabFields(Run({"theme", "preview", theme.at(1)}).out);
        EXPECT_EQ(changes.size(), entries);
        for (const auto& change : changes) {
            EXPECT_EQ(change.at(3).substr(0, folder.size()), folder) << change.at(1);
            EXPECT_TRUE(fs::is_regular_file(Host(change.at(3)))) << change.at(3);
        }
    }
}

TEST_F(ThemeCommands, RefusesWhatIsNoThemeFile) {
    std::ofstream(m_home.Path() / "notes.txt") << "[Desktop Icons]\n";
    const struct {
        std::string file;
        std::string says;
    } cases[] = {
        {"C:\\notes.txt", "does not appear to be a valid theme file."},
        {"C:\\missing.gmtheme", "there is no theme file"},
        {"/nowhere/x.gmtheme", "lies on no drive of the machine"},
    };
    for (const auto& c : cases) {
        for (const char* command : {"apply", "preview"}) {
            const CliRun run = Run({"theme", command, c.file});
            EXPECT_EQ(run.status, 1) << c.file;
            EXPECT_NE(run.err.find(c.says), std::string::npos) << run.err;
        }
    }
}

TEST_F(ThemeCommands, DeletesOnlyAThemesOwnFolderInTheLibrary) {
    const CliRun saved = Run({"theme", "save", m_library + "\\Gone.gmtheme"});
    ASSERT_EQ(saved.status, 0) << saved.err;
    const std::string theme = m_library + "\\Gone\\Gone.gmtheme";
    const auto put = [&](const std::string& file) {
        fs::create_directories(Host(file).parent_path());
        std::ofstream(Host(file)) << "[Desktop Icons]\n";
    };
    const std::vector<std::string> refused = {
        m_library + "\\Loose.gmtheme",     m_library + "\\Gone\\Inner\\Deep.gmtheme",
        "C:\\Work\\W\\W.gmtheme",          m_library + "\\Gone\\..\\Up.gmtheme",
        m_library + "\\Gone\\Read Me.txt", m_library + "\\\\Twice.gmtheme",
    };
    for (const std::string& file : refused) {
        put(file);
        const CliRun run = Run({"theme", "delete", file, "--yes"});
        EXPECT_EQ(run.status, 1) << file;
        EXPECT_FALSE(run.err.empty());
        EXPECT_TRUE(fs::exists(Host(file))) << file;
        EXPECT_TRUE(fs::exists(Host(theme))) << file;
    }
    const CliRun asked = Run({"theme", "delete", theme});
    EXPECT_EQ(asked.status, 1);
    EXPECT_NE(asked.err.find("--yes"), std::string::npos);
    EXPECT_TRUE(fs::exists(Host(theme)));

    const CliRun deleted = Run({"theme", "delete", theme, "--yes"});
    EXPECT_EQ(deleted.status, 0) << deleted.err;
    EXPECT_FALSE(fs::exists(Host(m_library + "\\Gone")));
    EXPECT_TRUE(fs::exists(Host(m_library + "\\Loose.gmtheme")));
    EXPECT_EQ(Run({"theme", "delete", theme, "--yes"}).status, 1);
}

TEST_F(ThemeCommands, ADeletedThemeIsNoLongerCurrentNorRecent) {
    const std::string settings = "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings";
    const std::string recent = "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Themes";
    const std::string first = m_library + "\\First\\First.gmtheme";
    const std::string second = m_library + "\\Second\\Second.gmtheme";
    ASSERT_EQ(Run({"theme", "save", first}).status, 0);
    ASSERT_EQ(Run({"theme", "save", second}).status, 0);
    const auto read = [&](const std::string& path, const std::string& name) {
        return Run({"reg", "read", path, name}).out;
    };
    ASSERT_EQ(read(settings, "Current Theme"), second + "\n");
    ASSERT_EQ(read(recent, "2"), first + "\n");

    // The older theme goes: the current one stays, the list closes up.
    ASSERT_EQ(Run({"theme", "delete", first, "--yes"}).status, 0);
    EXPECT_EQ(read(settings, "Current Theme"), second + "\n");
    EXPECT_EQ(read(recent, "1"), second + "\n");
    EXPECT_EQ(read(recent, "2"), "Error\n");
    // The current theme goes, named in another case: nothing names it any more.
    std::string upper = second;
    for (char& ch : upper) {
        ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    }
    ASSERT_EQ(Run({"theme", "delete", upper, "--yes"}).status, 0);
    EXPECT_EQ(read(settings, "Current Theme"), "Error\n");
    EXPECT_EQ(read(recent, "1"), "Error\n");
}

TEST_F(ThemeCommands, PacksAndUnpacksABundleAskingBeforeItOverwrites) {
    const std::string theme = Run({"theme", "save", m_library + "\\Sea"}).out;
    ASSERT_FALSE(theme.empty());
    const std::string zip = (m_home.Path() / "Sea.v1.zip").string();
    const CliRun packed = Run({"theme", "pack", theme.substr(0, theme.size() - 1), zip});
    if (!BundlesBuilt()) {
        EXPECT_EQ(packed.status, 1);
        EXPECT_NE(packed.err.find("not part of this build"), std::string::npos) << packed.err;
        return;
    }
    ASSERT_EQ(packed.status, 0) << packed.err;
    EXPECT_EQ(packed.out, zip + "\n");
    // The theme saved without a Read Me: the bundle leaves it out and says so.
    EXPECT_NE(packed.err.find("left out " + m_library + "\\Sea\\Read Me.txt"), std::string::npos)
        << packed.err;

    const fs::path icon = Host(m_library + "\\Sea\\Sea My Computer.ico");
    std::ofstream(icon, std::ios::binary | std::ios::trunc) << "changed since";
    const struct {
        std::vector<std::string> options;
        int status;
        std::string icon;
    } cases[] = {
        {{}, 1, "changed since"},
        {{"--overwrite", "no"}, 0, "changed since"},
        {{"--overwrite", "yes"}, 0, ""},
        {{"--overwrite"}, 2, ""},
    };
    for (const auto& c : cases) {
        std::vector<std::string> args = {"theme", "unpack", zip};
        args.insert(args.end(), c.options.begin(), c.options.end());
        const CliRun run = Run(args);
        EXPECT_EQ(run.status, c.status) << run.err;
        if (c.status == 0) {
            EXPECT_EQ(run.out, theme);
        }
        if (c.status == 1) {
            EXPECT_NE(run.err.find("Overwrite " + m_library + "\\Sea\\Sea My Computer.ico?"),
                      std::string::npos)
                << run.err;
        }
        std::ifstream in(icon, std::ios::binary);
        const std::string now((std::istreambuf_iterator<char>(in)), {});
        if (!c.icon.empty()) {
            EXPECT_EQ(now, c.icon);
        } else if (c.status == 0) {
            EXPECT_NE(now, "changed since");
        }
    }
    // The bundle lies on no drive of the machine: the unpacked theme becomes the current theme.
    EXPECT_EQ(
        Run({"reg", "read", "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings", "Current Theme"})
            .out,
        theme);
}

TEST_F(ThemeCommands, RefusesABundleThatIsNoZipArchiveAndWritesNothing) {
    if (!BundlesBuilt()) {
        GTEST_SKIP() << "this build has no bundles";
    }
    const fs::path zip = m_home.Path() / "Broken.zip";
    std::ofstream(zip, std::ios::binary) << "PK\x03\x04 cut short";
    const CliRun run = Run({"theme", "unpack", zip.string()});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("refused as a theme bundle"), std::string::npos) << run.err;
    EXPECT_FALSE(fs::exists(Host(m_library + "\\Broken")));
}

TEST_F(ThemeCommands, AddsThemesToFavoritesAndListsTheMenu) {
    const std::string theme = Run({"theme", "save", m_library + "\\Sea"}).out;
    ASSERT_FALSE(theme.empty());
    const std::string favorites = m_machine->Env().ProgramDirectory() + "\\Favorites";
    EXPECT_EQ(Run({"favorites", "new-folder", "Blue"}).out, favorites + "\\Blue\n");
    const CliRun added =
        Run({"favorites", "add", theme.substr(0, theme.size() - 1), "--in", "Blue", "--name", "Deep"});
    EXPECT_EQ(added.status, 0) << added.err;
    EXPECT_EQ(added.out, favorites + "\\Blue\\Deep.lnk\n");
    EXPECT_EQ(Run({"favorites"}).out, "0\tfolder\tBlue\n1\tlink\tDeep\t" + theme);

    const struct {
        std::vector<std::string> args;
        int status;
    } refused[] = {
        {{"favorites", "add", "C:\\gone.gmtheme"}, 1},
        {{"favorites", "add", theme.substr(0, theme.size() - 1), "--in"}, 2},
        {{"favorites", "add", theme.substr(0, theme.size() - 1), "--to", "x"}, 2},
        {{"favorites", "new-folder", "Blue"}, 1},
    };
    for (const auto& c : refused) {
        EXPECT_EQ(Run(c.args).status, c.status) << c.args.back();
    }
    EXPECT_EQ(Run({"favorites"}).out, "0\tfolder\tBlue\n1\tlink\tDeep\t" + theme);
}

}  // namespace
}  // namespace glyphmoor::test
