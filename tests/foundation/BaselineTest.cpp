#include "foundation/Baseline.h"
#include "foundation/HostFiles.h"
#include "foundation/Machine.h"
#include "foundation/modRegistry.h"
#include "support/PrefixSnapshot.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>

namespace glyphmoor::test {
namespace {

constexpr std::string_view kKey = "HKEY_LOCAL_MACHINE\\Software\\Shell";
constexpr std::string_view kSettings = "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings";

// A machine with an expandable string, a plain string and a key with a subkey.
std::string System() {
    return Win98System() +
           "\n[Software\\\\Shell] 1\n\"Path\"=str(2):\"%SystemRoot%\\\\a.dll,3\"\n"
           "\"Name\"=\"Shell\"\n\n[Software\\\\Shell\\\\Sub] 1\n\"Deep\"=dword:00000007\n";
}

// Each row changes the machine through the recording registry; undoing must
// give back every value of the machine as it was, type and bytes, and remove
// made keys.
TEST(Baseline, UndoingGivesBackWhatEachKindOfChangeTouched) {
    struct Row {
        const char* what;
        std::function<void(RegistryStore&)> change;
    };
    const Row rows[] = {
        {"a string written over an expandable one",
         [](RegistryStore& r) { SetRegString(r, kKey, "Path", "x"); }},
        {"the same value changed twice",
         [](RegistryStore& r) {
             SetRegString(r, kKey, "Name", "one");
             SetRegString(r, kKey, "Name", "two");
         }},
        {"a value deleted", [](RegistryStore& r) { DeleteRegValue(r, kKey, "Name"); }},
        {"a value in keys that did not exist",
         [](RegistryStore& r) { SetRegDword(r, "HKEY_LOCAL_MACHINE\\Software\\New\\Deeper", "n", 1); }},
        {"a key removed with what it holds", [](RegistryStore& r) { DeleteRegKey(r, kKey, "Sub"); }},
        {"the same key reached through HKEY_CLASSES_ROOT and HKEY_LOCAL_MACHINE",
         [](RegistryStore& r) {
             SetRegString(r, "HKEY_CLASSES_ROOT\\txtfile", "", "a");
             SetRegString(r, "HKEY_LOCAL_MACHINE\\Software\\Classes\\txtfile", "", "b");
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        TempMachine folder(System());
        const RegistryValues before = SnapshotRegistry(folder.Dir());
        {
            auto machine = folder.Open();
            row.change(machine->Registry());
            ASSERT_TRUE(machine->Save().ok());
        }
        auto machine = folder.Open();
        EXPECT_FALSE(PlanUndo(machine->Registry().Inner(), machine->Env()).Empty());
        EXPECT_TRUE(UndoAll(machine->Registry().Inner(), machine->Env()).empty());
        ASSERT_TRUE(machine->Save().ok());

        EXPECT_EQ(Differences(before, SnapshotRegistry(folder.Dir())), std::vector<std::string>{});
        auto reopened = folder.Open();
        RegistryStore& r = reopened->Registry();
        EXPECT_FALSE(RegKeyExists(r, "HKEY_LOCAL_MACHINE\\Software\\New"));
        EXPECT_FALSE(RegKeyExists(r, kBaselinePath)) << "the baseline is forgotten once undone";
        EXPECT_TRUE(PlanUndo(r, reopened->Env()).Empty());
    }
}

// A machine kept open after Undo all records the next change anew.
TEST(Baseline, AChangeAfterUndoingHasAWayBackToo) {
    TempMachine folder(System());
    auto machine = folder.Open();
    SetRegString(machine->Registry(), kKey, "Name", "first");
    UndoAll(machine->Registry().Inner(), machine->Env());
    machine->Registry().ReadRecords();
    SetRegString(machine->Registry(), kKey, "Name", "second");
    UndoAll(machine->Registry().Inner(), machine->Env());
    EXPECT_EQ(GetRegString(machine->Registry(), kKey, "Name"), "Shell");
}

TEST(Baseline, TheProgramsOwnKeyIsNotPartOfIt) {
    TempMachine folder(System());
    auto machine = folder.Open();
    SetRegString(machine->Registry(), kSettings, "Left", "5");
    EXPECT_FALSE(machine->Registry().WroteMachine());
    EXPECT_FALSE(RegKeyExists(machine->Registry(), kBaselinePath));
    SetRegString(machine->Registry(), kKey, "Name", "changed");
    EXPECT_TRUE(machine->Registry().WroteMachine());

    UndoAll(machine->Registry().Inner(), machine->Env());
    EXPECT_EQ(GetRegString(machine->Registry(), kSettings, "Left"), "5");
    EXPECT_EQ(GetRegString(machine->Registry(), kKey, "Name"), "Shell");
}

// A key the program made stays when something else has come to live in it.
TEST(Baseline, AMadeKeyThatHoldsOtherValuesStays) {
    TempMachine folder(System());
    auto machine = folder.Open();
    SetRegString(machine->Registry(), "HKEY_LOCAL_MACHINE\\Software\\Made", "mine", "1");
    SetRegString(machine->Registry().Inner(), "HKEY_LOCAL_MACHINE\\Software\\Made", "theirs", "2");
    UndoAll(machine->Registry().Inner(), machine->Env());
    EXPECT_EQ(GetRegString(machine->Registry(), "HKEY_LOCAL_MACHINE\\Software\\Made", "mine"), "Error");
    EXPECT_EQ(GetRegString(machine->Registry(), "HKEY_LOCAL_MACHINE\\Software\\Made", "theirs"), "2");
}

TEST(Baseline, PlanListsOnlyWhatDiffersAndSaysHow) {
    TempMachine folder(System());
    auto machine = folder.Open();
    SetRegString(machine->Registry(), kKey, "Name", "changed");
    SetRegString(machine->Registry(), kKey, "Name", "Shell");  // back as it was by hand
    SetRegString(machine->Registry(), kKey, "Added", "x");
    machine->Registry().RecordCreatedFile("C:\\Made");
    const UndoPlan plan = PlanUndo(machine->Registry().Inner(), machine->Env());
    EXPECT_EQ(DescribeUndo(plan),
              (std::vector<std::string>{"delete value\tHKEY_LOCAL_MACHINE\\Software\\Shell\tAdded"}))
        << "a file that does not exist is not listed";
    EXPECT_EQ(RestoreRecordedValue(machine->Registry(), kKey, "Nothing"), false);
    EXPECT_EQ(BaselineValueOf(machine->Registry(), kKey, "Added"), std::nullopt);
}

// A system file the program rewrites (Msdos.sys) comes back byte for byte with
// its attributes; one it made goes. The records outlive the process.
TEST(Baseline, UndoingPutsBackTheFilesTheProgramRewrote) {
    TempMachine folder(System());
    const std::string before = "[Options]\r\nBootGUI=1\r\n";
    {
        auto machine = folder.Open();
        const auto host = machine->Env().HostPath("C:\\MSDOS.SYS");
        std::ofstream(host, std::ios::binary) << before;
        ASSERT_TRUE(WriteHostAttributes(host, kAttrReadOnly | kAttrHidden).ok());
        ASSERT_TRUE(machine->WriteDriveFile("C:\\MSDOS.SYS", "[Options]\r\nBootGUI=0\r\n", kAttrSystem).ok());
        ASSERT_TRUE(machine->WriteDriveFile("C:\\MSDOS.SYS", "[Options]\r\nLogo=0\r\n", kAttrSystem).ok());
        ASSERT_TRUE(machine->WriteDriveFile("C:\\NEW.SYS", "new", std::nullopt).ok());
        ASSERT_TRUE(machine->Save().ok());
    }
    auto machine = folder.Open();
    const auto host = machine->Env().HostPath("C:\\MSDOS.SYS");
    ASSERT_NE(FileBytes(host), before);
    const auto described = DescribeUndo(PlanUndo(machine->Registry().Inner(), machine->Env()));
    EXPECT_EQ(std::count(described.begin(), described.end(), "restore file\tC:\\MSDOS.SYS"), 1);
    EXPECT_EQ(std::count(described.begin(), described.end(), "remove file\tC:\\NEW.SYS"), 1);

    EXPECT_EQ(UndoAll(machine->Registry().Inner(), machine->Env()), std::vector<std::string>{});
    EXPECT_EQ(FileBytes(host), before);
    EXPECT_EQ(ReadHostAttributes(host), kAttrArchive | kAttrReadOnly | kAttrHidden);
    EXPECT_FALSE(std::filesystem::exists(machine->Env().HostPath("C:\\NEW.SYS")));
}

// Records are the machine's registry, which anyone may edit: any attributes
// read back whole, a record without its path is passed over.
TEST(Baseline, FileRecordsEditedByHandAreReadAsTheyStand) {
    TempMachine folder(System());
    auto machine = folder.Open();
    RegistryStore& inner = machine->Registry().Inner();
    const std::string records = std::string(kBaselinePath) + "\\Changed Files\\";
    SetRegString(inner, records + "00000001", "Path", "C:\\Gone");
    SetRegDword(inner, records + "00000001", "Attributes", -1);
    SetRegDword(inner, records + "00000002", "Attributes", 2);
    const UndoPlan plan = PlanUndo(inner, machine->Env());
    ASSERT_EQ(plan.changedFiles.size(), 1U);
    EXPECT_EQ(plan.changedFiles[0].attributes, 0xFFFFFFFFU);
}

}  // namespace
}  // namespace glyphmoor::test
