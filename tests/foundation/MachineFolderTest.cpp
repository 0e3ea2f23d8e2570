#include "foundation/Baseline.h"
#include "foundation/DefaultMachine.h"
#include "foundation/MachineEnvironment.h"
#include "foundation/MachineFolder.h"
#include "foundation/modRegistry.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;

TEST(MachineFolder, AFolderThatIsNoMachineIsRefused) {
    TempDir empty;
    auto folder = MachineFolder::Open(empty.Path());
    ASSERT_FALSE(folder.ok());
    EXPECT_NE(folder.reason().find("is not a machine folder"), std::string::npos);
    EXPECT_FALSE(MachineFolder::Open(empty.Path() / "missing").ok());
}

TEST(MachineEnvironment, TheVersionIsDecidedAsWineDecidesIt) {
    const std::string win95 =
        "\n[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion] 0\n\"VersionNumber\"=\"4.00.950\"\n";
    const std::string both = Win98System() +
                             "\n[Software\\\\Microsoft\\\\Windows NT\\\\CurrentVersion] 0\n"
                             "\"CurrentVersion\"=\"6.1\"\n\"CurrentBuildNumber\"=\"7601\"\n";
    auto wine = [](std::string_view version) {
        return "\n[Software\\\\Wine] 0\n\"Version\"=\"" + std::string(version) + "\"\n";
    };
    struct Case {
        std::string name;
        std::string system;
        std::string user;
        OsVersion expected;
    };
    const Case cases[] = {
        {"windows 95", win95, "", {kPlatformWindows, 4, 0, 950}},
        {"windows 98", Win98System(), "", {kPlatformWindows, 4, 10, 2222}},
        {"windows nt 4", WinNtSystem(), "", {kPlatformNt, 4, 0, 1381}},
        {"a fresh wine prefix", both, "", {kPlatformNt, 6, 1, 7601}},
        {"wine set to win98", both, wine("win98"), {kPlatformWindows, 4, 10, 2222}},
        {"wine set to win95", both, wine("WIN95"), {kPlatformWindows, 4, 0, 950}},
        {"wine set to nt40", Win98System(), wine("nt40"), {kPlatformNt, 4, 0, 1381}},
        {"wine set to win31", both, wine("win31"), {}},
        {"nothing recorded", "", "", {}},
    };
    for (const auto& k : cases) {
        TempMachine machine(k.system, k.user);
        auto opened = machine.Open();
        ASSERT_NE(opened, nullptr);
        EXPECT_EQ(opened->Env().Version(), k.expected) << k.name;
    }
}

TEST(MachineEnvironment, WindowsAndSystemFoldersFollowTheRegistry) {
    struct Case {
        std::string name;
        std::string system;
        std::string windows;
        std::string systemDir;
    };
    const Case cases[] = {
        {"windows 98", Win98System(), "C:\\WINDOWS", "C:\\WINDOWS\\SYSTEM"},
        {"windows nt", WinNtSystem(), "C:\\WINNT", "C:\\WINNT\\system32"},
        {"nothing recorded", "", "C:\\windows", "C:\\windows\\system32"},
    };
    for (const auto& k : cases) {
        TempMachine machine(k.system);
        auto opened = machine.Open();
        ASSERT_NE(opened, nullptr);
        EXPECT_EQ(opened->Env().WindowsDirectory(), k.windows) << k.name;
        EXPECT_EQ(opened->Env().SystemDirectory(), k.systemDir) << k.name;
        EXPECT_EQ(opened->Env().ProgramDirectory(), "C:\\Program Files\\Glyphmoor");
    }
}

// Reading a machine makes nothing; the first save after a write to it sets up
// the program's folder whole, and undoing every change removes it again.
TEST(MachineFolder, TheProgramsFolderComesWithTheFirstWrite) {
    TempMachine machine;
    auto opened = machine.Open();
    ASSERT_NE(opened, nullptr);
    const fs::path program = opened->Env().HostPath("C:\\Program Files\\Glyphmoor");
    SetRegString(opened->Registry(), "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings", "Left",
                 "1");
    ASSERT_TRUE(opened->Save().ok());
    EXPECT_FALSE(fs::exists(program)) << "the program's own settings are not a write to the machine";

    SetRegString(opened->Registry(), "HKEY_CURRENT_USER\\Control Panel\\Cursors", "Wait", "C:\\b.ani");
    ASSERT_TRUE(opened->Save().ok());
    for (const char* part : {"Themes", "Favorites", "Glyphmoor.exe", "blank.ico"}) {
        EXPECT_TRUE(fs::exists(program / part)) << part;
    }

    UndoAll(opened->Registry().Inner(), opened->Env());
    ASSERT_TRUE(opened->Save().ok());
    EXPECT_FALSE(fs::exists(program));
    EXPECT_EQ(GetRegString(opened->Registry(), "HKEY_CURRENT_USER\\Control Panel\\Cursors", "Wait"), "Error");
}

TEST(DefaultMachine, IsMadeFromTheSeedAndLaterSeedFilesAreAdded) {
    TempDir seed;
    seed.Write("system.reg", HiveText("\\\\Machine", Win98System()));
    seed.Write("drive_c/WINDOWS/SYSTEM/.keep", "");
    seed.Write("drive_c/WINDOWS/WIN.INI", "[windows]\r\n");
    TempDir generated;
    generated.Write("drive_c/WINDOWS/SYSTEM/shell32.dll", "icons");
    TempDir home;
    const fs::path dir = home.Path() / "glyphmoor" / "machine";

    ASSERT_TRUE(EnsureSeededMachine(dir, {seed.Path(), generated.Path()}).ok());
    EXPECT_TRUE(fs::exists(dir / "system.reg"));
    EXPECT_TRUE(fs::is_directory(dir / "drive_c/WINDOWS/SYSTEM"));
    EXPECT_FALSE(fs::exists(dir / "drive_c/WINDOWS/SYSTEM/.keep"));
    EXPECT_TRUE(fs::exists(dir / "drive_c/WINDOWS/SYSTEM/shell32.dll"));

    // The user's own changes stay; what a newer seed brings is added.
    home.Write("glyphmoor/machine/drive_c/WINDOWS/WIN.INI", "[windows]\r\nmine=1\r\n");
    generated.Write("drive_c/WINDOWS/SYSTEM/moricons.dll", "more icons");
    ASSERT_TRUE(EnsureSeededMachine(dir, {seed.Path(), generated.Path()}).ok());
    EXPECT_EQ(home.Read("glyphmoor/machine/drive_c/WINDOWS/WIN.INI"), "[windows]\r\nmine=1\r\n");
    EXPECT_TRUE(fs::exists(dir / "drive_c/WINDOWS/SYSTEM/moricons.dll"));

    TempDir noSeed;
    EXPECT_FALSE(EnsureSeededMachine(home.Path() / "other", {noSeed.Path()}).ok());
}

TEST(DefaultMachine, TheShippedSeedIsAWindows98Machine) {
    TempDir data;
    std::optional<ScopedEnvironment> home;
    home.emplace("XDG_DATA_HOME", data.Path().string());
    auto machine = OpenDefaultMachine();
    home.reset();
    ASSERT_TRUE(machine.ok()) << machine.reason();
    EXPECT_EQ((*machine)->Env().Version().platformId, kPlatformWindows);
    EXPECT_EQ((*machine)->Env().Version().minor, 10U);
    EXPECT_EQ((*machine)->Env().WindowsDirectory(), "C:\\WINDOWS");
    EXPECT_EQ((*machine)->Env().SystemDirectory(), "C:\\WINDOWS\\SYSTEM");
    EXPECT_TRUE(fs::is_directory((*machine)->Env().HostPath("C:\\WINDOWS\\SYSTEM")));
    EXPECT_TRUE(fs::exists((*machine)->Env().HostPath("C:\\Msdos.sys")));
    EXPECT_TRUE(fs::exists(data.Path() / "glyphmoor" / "machine" / "user.reg"));
}

}  // namespace
}  // namespace glyphmoor::test
