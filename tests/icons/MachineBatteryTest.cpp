// What changing icons does to a whole machine: a fresh Wine prefix made by
// wineboot (GLYPHMOOR_TEST_PREFIX, made once per test run) and the default
// machine. Each step is checked against a snapshot of every registry value.
#include "foundation/AppEnvironment.h"
#include "foundation/AppState.h"
#include "foundation/Baseline.h"
#include "foundation/DefaultMachine.h"
#include "foundation/Machine.h"
#include "foundation/TextEncoding.h"
#include "icons/IconCatalogue.h"
#include "icons/IconEditing.h"
#include "icons/OwnDefaults.h"
#include "support/PrefixSnapshot.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

namespace glyphmoor::test {
namespace {

namespace fs = std::filesystem;
using Values = RegistryValues;

std::unique_ptr<Machine> Open(const fs::path& dir) {
    auto machine = OpenMachineFolder(dir);
    if (!machine.ok()) {
        ADD_FAILURE() << machine.reason();
        std::abort();
    }
    return std::move(*machine);
}

// A pointer is stored as its file alone, so it is compared by its file.
bool AtDefault(int group, const SystemIconEntry& e) {
    if (group == static_cast<int>(GroupNumber::Cursors)) {
        return EqualsNoCase(e.currentFile, e.defaultFile);
    }
    return EqualsNoCase(e.Current().Text(), e.Default().Text());
}

// One open machine with its catalogue built, as the Icons & Cursors page has it.
struct Session {
    std::unique_ptr<Machine> machine;
    AppEnvironment app;
    IconCatalogue catalogue;
    AppState state;
    IconNameMarks names;

    explicit Session(const fs::path& dir)
        : machine(Open(dir)), app(InitEnvironment(machine->Env())), catalogue(machine->Registry(), app) {
        catalogue.DetectShellIcons();
        catalogue.BuildCursorCatalogue();
    }

    void ApplyAndSave() {
        ApplyIconChanges(catalogue, machine->Registry(), machine->Sys(), state, names);
        ASSERT_TRUE(machine->Save().ok());
    }

    // Another icon than the entry's, one every machine holds.
    IconLocation OtherIcon(int group, const SystemIconEntry& entry) const {
        if (group == static_cast<int>(GroupNumber::Cursors)) {
            return {"C:\\test.cur", 0};
        }
        const IconLocation five{app.sysDir + "\\shell32.dll", 5};
        return entry.Current() == five ? IconLocation{five.file, 6} : five;
    }
};

// The whole battery on the machine at `dir`. On a machine with defaults of its
// own a change must touch exactly its own value; elsewhere whole groups may
// be written.
void RunBattery(const fs::path& dir) {
    std::ofstream(dir / "drive_c" / "test.cur") << "a pointer file the user brought";
    const Values pristine = SnapshotRegistry(dir);
    const std::set<std::string> files = Files(dir);
    bool ownDefaults = false;
    std::vector<std::pair<int, std::string>> firsts;
    {
        Session s(dir);
        ownDefaults = KeepsOwnDefaults(s.app.kind);
        OwnDefaultFinder finder(s.machine->Registry(), s.app);
        for (int group = 1; group <= kIconGroupCount; ++group) {
            ASSERT_FALSE(s.catalogue.Group(group).Empty()) << group;
            firsts.emplace_back(group, std::string(s.catalogue.Group(group).KeyAt(0)));
            for (const SystemIconEntry& e : s.catalogue.Group(group).Entries()) {
                EXPECT_TRUE(finder.Holds(e.Current(), group == static_cast<int>(GroupNumber::Cursors)))
                    << "group " << group << ", " << e.Key() << ": " << e.Current().Text();
            }
        }
    }
    EXPECT_EQ(Files(dir), files) << "reading made files";

    for (const auto& [group, key] : firsts) {
        SCOPED_TRACE("group " + std::to_string(group) + ", " + key);
        {
            Session s(dir);
            SystemIconEntry* entry = s.catalogue.Group(group).Find(key);
            ASSERT_NE(entry, nullptr);
            const IconLocation other = s.OtherIcon(group, *entry);
            ASSERT_TRUE(ChangeIcon(s.catalogue, s.state, group, 0, other));
            s.ApplyAndSave();
        }
        const std::vector<std::string> changed = Differences(pristine, SnapshotRegistry(dir));
        if (ownDefaults) {
            EXPECT_EQ(changed.size(), 1U) << ::testing::PrintToString(changed);
        } else {
            EXPECT_GE(changed.size(), 1U);
        }
        {
            Session s(dir);
            const SystemIconEntry& entry = *s.catalogue.Group(group).Find(key);
            // Restoring does nothing where the entry already names its default
            // (on the described Windows the bitmap type's rule writes it back).
            if (!RestoreIcon(s.catalogue, s.state, group, 0, PathLabelText(group, entry))) {
                ASSERT_FALSE(ownDefaults);
            }
            s.ApplyAndSave();
        }
        Session after(dir);
        const SystemIconEntry& entry = *after.catalogue.Group(group).Find(key);
        EXPECT_TRUE(AtDefault(group, entry)) << entry.Current().Text();
        if (ownDefaults) {
            EXPECT_EQ(Differences(pristine, SnapshotRegistry(dir)), std::vector<std::string>{})
                << "restoring one";
        }
    }

    {
        Session s(dir);
        for (const auto& [group, key] : firsts) {
            ChangeIcon(s.catalogue, s.state, group, 0, s.OtherIcon(group, s.catalogue.Group(group).At(0)));
        }
        s.ApplyAndSave();
    }
    {
        Session s(dir);
        RestoreAll(s.catalogue, s.machine->Registry(), s.state, false);
        RestoreAll(s.catalogue, s.machine->Registry(), s.state, true);
        s.ApplyAndSave();
    }
    {
        Session s(dir);
        for (int group = 1; group <= kIconGroupCount; ++group) {
            for (const SystemIconEntry& e : s.catalogue.Group(group).Entries()) {
                EXPECT_TRUE(AtDefault(group, e)) << e.Key();
            }
        }
        if (ownDefaults) {
            EXPECT_EQ(Differences(pristine, SnapshotRegistry(dir)), std::vector<std::string>{})
                << "restoring all";
        }
        UndoAll(s.machine->Registry().Inner(), s.machine->Env());
        ASSERT_TRUE(s.machine->Save().ok());
    }
    EXPECT_EQ(Differences(pristine, SnapshotRegistry(dir)), std::vector<std::string>{}) << "undoing all";
    EXPECT_EQ(Files(dir), files) << "undoing all leaves files the program made";
}

TEST(MachineBattery, AFreshWinePrefix) {
    const char* prefix = std::getenv("GLYPHMOOR_TEST_PREFIX");
    if (prefix == nullptr || !fs::exists(fs::path(prefix) / "system.reg")) {
        GTEST_SKIP() << "no Wine prefix to try (GLYPHMOOR_TEST_PREFIX; scripts/test makes one with wineboot "
                        "when Wine is installed)";
    }
    TempDir copy;
    fs::copy(prefix, copy.Path() / "prefix", fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    RunBattery(copy.Path() / "prefix");
}

TEST(MachineBattery, TheDefaultMachine) {
    TempDir home;
    ASSERT_TRUE(EnsureSeededMachine(home.Path() / "machine", SeedDirs()).ok());
    RunBattery(home.Path() / "machine");
}

}  // namespace
}  // namespace glyphmoor::test
