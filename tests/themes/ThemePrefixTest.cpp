// Themes on a fresh Wine prefix (GLYPHMOOR_TEST_PREFIX): a theme that names
// the prefix's own icons changes nothing, and one that changes an icon writes
// that icon's value alone.
#include "cli/CliRun.h"
#include "foundation/Machine.h"
#include "foundation/modProfile.h"
#include "icons/IconCatalogue.h"
#include "support/PrefixSnapshot.h"
#include "support/TempMachine.h"
#include "themes/ThemeFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;
using Values = RegistryValues;

// Writes the prefix's own icons and pointers as a theme file, every group.
void WriteOwnTheme(const fs::path& dir, const std::string& theme, std::string& myComputer) {
    auto machine = OpenMachineFolder(dir);
    ASSERT_TRUE(machine.ok()) << machine.reason();
    const AppEnvironment app = InitEnvironment((*machine)->Env());
    IconCatalogue catalogue((*machine)->Registry(), app);
    catalogue.DetectShellIcons();
    catalogue.BuildCursorCatalogue();
    const auto host = (*machine)->Env().HostPath(theme);
    for (std::size_t i = 0; i < kLoadedThemeSections; ++i) {
        const IconGroup& group = catalogue.Group(static_cast<int>(i) + 1);
        ASSERT_FALSE(group.Empty()) << i;
        for (const SystemIconEntry& e : group.Entries()) {
            ASSERT_TRUE(WriteProfileValue(host, ThemeSectionNames.at(i), e.Key(), e.Current().Text()).ok());
        }
    }
    myComputer = app.sysDir + "\\shell32.dll,5";
    ASSERT_NE(catalogue.Group(1).Find("My Computer"), nullptr);
    ASSERT_NE(catalogue.Group(1).Find("My Computer")->Current().Text(), myComputer);
}

TEST(ThemesOnAWinePrefix, ApplyWritesOnlyWhatDiffers) {
    const char* prefix = std::getenv("GLYPHMOOR_TEST_PREFIX");
    if (prefix == nullptr || !fs::exists(fs::path(prefix) / "system.reg")) {
        GTEST_SKIP() << "no Wine prefix to try (GLYPHMOOR_TEST_PREFIX)";
    }
    TempDir copy;
    const fs::path dir = copy.Path() / "prefix";
    fs::copy(prefix, dir, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    const std::string theme = "C:\\own.gmtheme";
    std::string myComputer;
    WriteOwnTheme(dir, theme, myComputer);
    const Values pristine = SnapshotRegistry(dir);
    const std::set<std::string> files = Files(dir);

    const CliRun same = RunCliCaptured({"--machine", dir.string(), "theme", "apply", theme});
    ASSERT_EQ(same.status, 0) << same.err;
    EXPECT_EQ(same.out, "");
    EXPECT_EQ(Differences(pristine, SnapshotRegistry(dir)), std::vector<std::string>{});
    EXPECT_EQ(Files(dir), files);

    auto machine = OpenMachineFolder(dir);
    ASSERT_TRUE(machine.ok());
    ASSERT_TRUE(
        WriteProfileValue((*machine)->Env().HostPath(theme), "Desktop Icons", "My Computer", myComputer)
            .ok());
    const CliRun one = RunCliCaptured({"--machine", dir.string(), "theme", "apply", theme});
    ASSERT_EQ(one.status, 0) << one.err;
    EXPECT_EQ(std::count(one.out.begin(), one.out.end(), '\n'), 1) << one.out;
    // The icon's value, and the icon size the cache rebuild always writes back.
    const std::vector<std::string> changed = Differences(pristine, SnapshotRegistry(dir));
    EXPECT_GE(changed.size(), 1U);
    EXPECT_LE(changed.size(), 2U) << ::testing::PrintToString(changed);
}

}  // namespace
}  // namespace glyphmoor::test
