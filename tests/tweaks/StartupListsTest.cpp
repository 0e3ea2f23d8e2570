// The startup-program lists: what they read from a machine made here, and
// what their queued edits write.
#include "foundation/modRegistry.h"
#include "support/TempMachine.h"
#include "tweaks/StartupLists.h"

#include <gtest/gtest.h>

namespace glyphmoor {
namespace {

constexpr std::string_view kUninstall =
    "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
constexpr std::string_view kRun = "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr std::string_view kUserRun = "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run";

class StartupListsTest : public ::testing::Test {
protected:
    void SetUp() override {
        machine = folder.Open();
        RegistryStore& r = registry();
        const std::string paint = std::string(kUninstall) + "\\PaintShop";
        SetRegString(r, paint, "DisplayName", "Paint Shop 5");
        SetRegString(r, paint, "UninstallString", "C:\\PSP\\unwise.exe");
        SetRegString(r, paint + "\\Parts", "One", "1");
        SetRegString(r, std::string(kUninstall) + "\\Hidden", "UninstallString", "x.exe");
        SetRegString(r, std::string(kUninstall) + "\\Twin1", "DisplayName", "Twin");
        SetRegString(r, std::string(kUninstall) + "\\Twin2", "DisplayName", "Twin");
        SetRegString(r, kRun, "ScanRegistry", "C:\\WINDOWS\\scanregw.exe /autorun");
        SetRegDword(r, kRun, "NotAProgram", 1);
        SetRegString(r, kUserRun, "Hide Taskbar", "\"C:\\Program Files\\Glyphmoor\\Taskbar.exe\" /h");
    }
    RegistryStore& registry() { return machine->Registry(); }

    test::TempMachine folder;
    std::unique_ptr<Machine> machine;
};

TEST_F(StartupListsTest, ReadsEachListWithNamesAndCommands) {
    struct Case {
        StartupList list;
        std::vector<std::string> lines;  // name, TAB, text, TAB, command
    };
    const Case cases[] = {
        {StartupList::Uninstall,
         {"PaintShop\tPaint Shop 5\tC:\\PSP\\unwise.exe", "Twin1\tTwin\t", "Twin2\tTwin\t"}},
        {StartupList::Run, {"ScanRegistry\tScanRegistry\tC:\\WINDOWS\\scanregw.exe /autorun"}},
        {StartupList::RunServices, {}},
        {StartupList::UserRun,
         {"Hide Taskbar\tHide Taskbar\t\"C:\\Program Files\\Glyphmoor\\Taskbar.exe\" /h"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(InfoOf(c.list).cliName);
        std::vector<std::string> lines;
        for (const StartupEntry& e : ReadStartupList(registry(), c.list)) {
            lines.push_back(e.name + "\t" + e.text + "\t" + e.command);
        }
        EXPECT_EQ(lines, c.lines);
    }
}

TEST_F(StartupListsTest, FindsByNameThenByASingleText) {
    StartupLists lists;
    lists.Load(registry());
    struct Case {
        StartupList list;
        std::string_view name;
        const char* found;  // the entry's name, or null
    };
    const Case cases[] = {
        {StartupList::Uninstall, "paint shop 5", "PaintShop"},
        {StartupList::Uninstall, "PAINTSHOP", "PaintShop"},
        {StartupList::Uninstall, "Twin", nullptr},
        {StartupList::Uninstall, "twin2", "Twin2"},
        {StartupList::Uninstall, "Hidden", nullptr},
        {StartupList::Run, "scanregistry", "ScanRegistry"},
        {StartupList::UserRun, "ScanRegistry", nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const StartupEntry* entry = lists.Find(c.list, c.name);
        if (c.found == nullptr) {
            EXPECT_EQ(entry, nullptr);
        } else {
            ASSERT_NE(entry, nullptr);
            EXPECT_EQ(entry->name, c.found);
        }
    }
}

TEST_F(StartupListsTest, QueuedEditsWaitForApplyThenWriteInOrder) {
    StartupLists lists;
    lists.Load(registry());
    EXPECT_TRUE(lists.QueueDelete(StartupList::Uninstall, "Paint Shop 5"));
    EXPECT_TRUE(lists.QueueDelete(StartupList::Run, "ScanRegistry"));
    EXPECT_TRUE(lists.QueueAdd(StartupList::RunServices, "Agent", "C:\\agent.exe"));
    EXPECT_TRUE(lists.QueueAdd(StartupList::UserRun, "hide taskbar", "C:\\other.exe"));
    EXPECT_FALSE(lists.QueueAdd(StartupList::Uninstall, "New", "C:\\new.exe"));
    EXPECT_FALSE(lists.QueueAdd(StartupList::Run, "", "C:\\new.exe"));
    EXPECT_FALSE(lists.QueueDelete(StartupList::Run, "ScanRegistry"));  // already queued
    EXPECT_EQ(lists.Pending().size(), 4U);
    // Nothing reached the machine yet.
    EXPECT_TRUE(RegKeyExists(registry(), std::string(kUninstall) + "\\PaintShop"));
    EXPECT_EQ(GetRegString(registry(), kRun, "ScanRegistry"), "C:\\WINDOWS\\scanregw.exe /autorun");

    lists.Apply(registry());
    EXPECT_TRUE(lists.Pending().empty());
    EXPECT_FALSE(RegKeyExists(registry(), std::string(kUninstall) + "\\PaintShop"));
    EXPECT_TRUE(RegKeyExists(registry(), std::string(kUninstall) + "\\Hidden"));
    EXPECT_EQ(GetRegString(registry(), kRun, "ScanRegistry"), kRegError);
    EXPECT_EQ(GetRegDword(registry(), kRun, "NotAProgram"), 1);
    EXPECT_EQ(GetRegString(registry(),
                           "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\RunServices",
                           "Agent"),
              "C:\\agent.exe");
    EXPECT_EQ(GetRegString(registry(), kUserRun, "Hide Taskbar"), "C:\\other.exe");
    StartupLists again;
    again.Load(registry());
    EXPECT_EQ(again.Entries().size(), lists.Entries().size());
}

}  // namespace
}  // namespace glyphmoor
