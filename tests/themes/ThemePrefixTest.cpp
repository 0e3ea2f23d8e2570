// Themes on a fresh Wine prefix (GLYPHMOOR_TEST_PREFIX): a theme that names
// the prefix's own icons changes nothing, and one that changes an icon writes
// that icon's value alone.
#include "cli/CliRun.h"
#include "foundation/Machine.h"
#include "foundation/modProfile.h"
#include "icons/IconCatalogue.h"
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
using Values = std::map<std::string, RegValue>;

void Walk(RegistryStore& store, RootKey root, const std::string& subkey, Values& out) {
    RegHandle key = kNoHandle;
    if (store.OpenKey(root, subkey, RegAccess::Read, key) != kErrorSuccess) {
        return;
    }
    std::string name;
    RegValue value;
    for (std::uint32_t i = 0; store.EnumValue(key, i, name, value) == kErrorSuccess; ++i) {
        out[std::to_string(static_cast<int>(root)) + "\\" + subkey + "|" + name] = value;
    }
    std::vector<std::string> subkeys;
    for (std::uint32_t i = 0; store.EnumKey(key, i, name) == kErrorSuccess; ++i) {
        subkeys.push_back(name);
    }
    store.CloseKey(key);
    for (const std::string& sub : subkeys) {
        const std::string path = subkey.empty() ? sub : subkey + "\\" + sub;
        // The program's own settings (the current theme, the recent themes) may change.
        if (path.find("Software\\Veltrane\\Glyphmoor") == std::string::npos) {
            Walk(store, root, path, out);
        }
    }
}

Values Snapshot(const fs::path& dir) {
    auto machine = OpenMachineFolder(dir);
    EXPECT_TRUE(machine.ok()) << machine.reason();
    Values out;
    Walk((*machine)->Registry().Inner(), RootKey::LocalMachine, "", out);
    Walk((*machine)->Registry().Inner(), RootKey::Users, "", out);
    return out;
}

std::set<std::string> Differences(const Values& before, const Values& after) {
    std::set<std::string> out;
    for (const auto& [name, value] : before) {
        if (!after.contains(name) || after.at(name) != value) {
            out.insert(name);
        }
    }
    for (const auto& [name, value] : after) {
        if (!before.contains(name)) {
            out.insert(name);
        }
    }
    return out;
}

std::set<std::string> Files(const fs::path& dir) {
    std::set<std::string> out;
    for (auto it = fs::recursive_directory_iterator(dir); it != fs::recursive_directory_iterator(); ++it) {
        if (it->path().filename() == "dosdevices") {
            it.disable_recursion_pending();
        }
        out.insert(fs::relative(it->path(), dir).string());
    }
    return out;
}

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
    const Values pristine = Snapshot(dir);
    const std::set<std::string> files = Files(dir);

    const CliRun same = RunCliCaptured({"--machine", dir.string(), "theme", "apply", theme});
    ASSERT_EQ(same.status, 0) << same.err;
    EXPECT_EQ(same.out, "");
    EXPECT_EQ(Differences(pristine, Snapshot(dir)), std::set<std::string>{});
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
    const std::set<std::string> changed = Differences(pristine, Snapshot(dir));
    EXPECT_GE(changed.size(), 1U);
    EXPECT_LE(changed.size(), 2U) << ::testing::PrintToString(changed);
}

}  // namespace
}  // namespace glyphmoor::test
