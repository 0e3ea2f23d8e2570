// Path macros, file titles and the folder listing, on a temporary machine
// folder (drive C: of a FakeEnvironment).
#include "foundation/FakeEnvironment.h"
#include "foundation/modFunctions.h"
#include "foundation/modMacros.h"
#include "support/TempMachine.h"

#include "foundation/HostFiles.h"

#include <gtest/gtest.h>

#include <fstream>

namespace glyphmoor {
namespace {

class PathMacros : public ::testing::Test {
protected:
    void SetUp() override {
        const auto themeDir = m_dir.Path() / "Themes" / "T1";
        std::filesystem::create_directories(themeDir);
        std::ofstream(themeDir / "x.gmtheme", std::ios::binary) << "[Desktop Icons]\r\n"
                                                                   "My Computer=%ThemeDir%icons\\a.ico\r\n"
                                                                   "Sys=%WINSYSDIR%shell32.dll\r\n"
                                                                   "Win=%WinDir%explorer.exe\r\n"
                                                                   "Upper=%THEMEDIR%a.ico\r\n"
                                                                   "Doubled=%winsysdir%\\shell32.dll\r\n"
                                                                   "Quoted=\"%windir%q.ico,2\"\r\n"
                                                                   "Short=%windir\r\n"
                                                                   "Inside=C:\\%windir%x\r\n"
                                                                   "Two=%windir%%winsysdir%y.dll\r\n"
                                                                   "Root=%systemroot%\\a.ico\r\n"
                                                                   "Empty=\r\n"
                                                                   "Long=%ThemeDir%"
                                                                << std::string(130, 'L') << "\r\n";
    }
    test::TempDir m_dir;
    FakeEnvironment m_env{m_dir.Path()};
    AppEnvironment m_app = InitEnvironment(m_env);
};

TEST_F(PathMacros, ReadThemeValueExpandsTheMacroAtTheStart) {
    const struct {
        const char* key;
        std::string expected;
        std::uint32_t count;
    } cases[] = {
        {"My Computer", "c:\\THEMES\\t1\\icons\\a.ico", 21},
        {"Sys", "C:\\WINDOWS\\SYSTEM\\shell32.dll", 22},
        {"Win", "C:\\WINDOWS\\explorer.exe", 20},
        {"Upper", "%THEMEDIR%a.ico", 15},
        {"Doubled", "C:\\WINDOWS\\SYSTEM\\\\shell32.dll", 23},
        {"Quoted", "C:\\WINDOWS\\q.ico,2", 15},
        {"Short", "%windir", 7},
        {"Inside", "C:\\%windir%x", 12},
        {"Two", "C:\\WINDOWS\\%winsysdir%y.dll", 24},  // one macro only
        {"Root", "%systemroot%\\a.ico", 18},           // not a macro of themes
        {"Empty", "", 0},
        {"Missing", "", 0},
        {"Long", "c:\\THEMES\\t1\\" + std::string(117, 'L'), 127},
    };
    for (const auto& c : cases) {
        std::uint32_t count = 99;
        // The file is named as Windows would name it, in any case.
        EXPECT_EQ(ReadThemeValue(m_app, "desktop icons", c.key, "c:\\THEMES\\t1\\X.gmtheme", &count),
                  c.expected)
            << c.key;
        EXPECT_EQ(count, c.count) << c.key;
    }
    EXPECT_EQ(ReadThemeValue(m_app, "Desktop Icons", "My Computer", "C:\\Themes\\T1\\missing.gmtheme"), "");
}

TEST(ThemeDirOf, FolderOfAPath) {
    const struct {
        const char* path;
        const char* expected;
    } cases[] = {
        {"C:\\Themes\\T1\\x.gmtheme", "C:\\Themes\\T1\\"},
        {"C:\\x.gmtheme", "C:\\"},
        {"Themes\\x.gmtheme", "Themes\\"},
        {"x.gmtheme", "C:\\Program Files\\Glyphmoor\\"},
        {"", "C:\\Program Files\\Glyphmoor\\"},
        {"C:x.gmtheme", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ThemeDirOf(c.path, "C:\\Program Files\\Glyphmoor"), c.expected) << c.path;
    }
    EXPECT_EQ(ThemeDirOf("x", "C:\\"), "C:\\");
}

TEST(FileTitleOf, TextBeforeTheFirstDot) {
    const struct {
        const char* text;
        const char* expected;
    } cases[] = {
        {"Blue.gmtheme", "Blue"}, {"C:\\My.Themes\\x.gmtheme", "C:\\My"},
        {"Read Me", "Read Me"},   {"a.b.c", "a"},
        {".hidden", ""},          {"", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(FileTitleOf(c.text), c.expected) << c.text;
    }
}

TEST(ListDirectory, FoldersFirstThenFilesWithoutExtension) {
    test::TempDir dir;
    const auto lib = dir.Path() / "Lib";
    for (const char* folder : {"beta", "Alpha", "Sys", "Hid", ".dotted", "with.dot"}) {
        std::filesystem::create_directories(lib / folder);
    }
    for (const char* file : {"README", "notes.txt", "SysFile", "HidFile", "ReadOnly", "zeta"}) {
        std::ofstream(lib / file) << "x";
    }
    const auto mark = [&](const char* name, std::uint32_t attributes) {
        return WriteHostAttributes(lib / name, attributes).ok();
    };
    if (!mark("Sys", kAttrSystem) || !mark("Hid", kAttrHidden) || !mark("SysFile", kAttrSystem) ||
        !mark("HidFile", kAttrHidden | kAttrArchive) || !mark("ReadOnly", kAttrReadOnly)) {
        GTEST_SKIP() << "the temporary folder takes no DOS attributes";
    }
    const FakeEnvironment env(dir.Path());
    const AppEnvironment app = InitEnvironment(env);
    const std::vector<DirectoryEntry> expected = {
        {"Alpha", true},     {"beta", true},     {"with.dot", true}, {"README", false},
        {"ReadOnly", false}, {"SysFile", false}, {"zeta", false},
    };
    EXPECT_EQ(ListDirectory(app, "C:\\lib"), expected);
    if (!test::HostPathsHaveDriveLetters()) {
        EXPECT_EQ(ListDirectory(app, (dir.Path() / "Lib").string()), expected)
            << "a host path lists the same";
    }
    EXPECT_TRUE(ListDirectory(app, "C:\\No such folder").empty());
}

}  // namespace
}  // namespace glyphmoor
