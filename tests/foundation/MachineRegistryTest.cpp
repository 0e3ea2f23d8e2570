#include "foundation/FileIo.h"
#include "foundation/MachineRegistry.h"
#include "foundation/TextEncoding.h"
#include "foundation/modRegistry.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

constexpr std::string_view kSettings = "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings";

RegValue Value(std::uint32_t type, std::vector<std::uint8_t> data) {
    return RegValue{type, std::move(data)};
}

TEST(MachineRegistry, EveryValueTypeSurvivesASaveAndAReload) {
    TempMachine folder;
    const std::vector<std::pair<std::string, RegValue>> values = {
        {"", Value(kRegSz, {'d', 0, 0, 0})},
        {"sz", Value(kRegSz, {'a', 0, 0xe9, 0, 0x3d, 0xd8, 0x00, 0xde, '"', 0, '\\', 0, 0, 0})},
        {"expand", Value(kRegExpandSz, {'%', 0, 'x', 0, '%', 0, 0, 0})},
        {"multi", Value(kRegMultiSz, {'a', 0, 0, 0, 'b', 0, 0, 0, 0, 0})},
        {"dword", Value(kRegDword, {1, 2, 3, 4})},
        {"binary", Value(kRegBinary, std::vector<std::uint8_t>(200, 0x5a))},
        {"none", Value(kRegNone, {})},
        {"qword", Value(kRegQword, {8, 7, 6, 5, 4, 3, 2, 1})},
        {"odd string", Value(kRegSz, {'x'})},
        {"name with \"quotes\" and caf\xC3\xA9", Value(kRegDword, {0, 0, 0, 0})},
    };
    {
        auto machine = folder.Open();
        RegHandle key = kNoHandle;
        ASSERT_EQ(machine->Registry().CreateKey(RootKey::CurrentUser, "Software\\Types", key), kErrorSuccess);
        for (const auto& [name, value] : values) {
            ASSERT_EQ(machine->Registry().SetValue(key, name, value), kErrorSuccess);
        }
        ASSERT_TRUE(machine->Save().ok());
    }
    auto reopened = folder.Open();
    RegHandle key = kNoHandle;
    ASSERT_EQ(reopened->Registry().OpenKey(RootKey::CurrentUser, "software\\TYPES", RegAccess::Read, key),
              kErrorSuccess);
    for (const auto& [name, value] : values) {
        RegValue read;
        ASSERT_EQ(reopened->Registry().QueryValue(key, name, read), kErrorSuccess) << name;
        EXPECT_EQ(read, value) << name;
    }
}

TEST(MachineRegistry, StringsWithoutTheirNulGetOneAsOnWindowsNt) {
    TempMachine folder;
    auto machine = folder.Open();
    RegHandle key = kNoHandle;
    ASSERT_EQ(machine->Registry().CreateKey(RootKey::CurrentUser, "k", key), kErrorSuccess);
    machine->Registry().SetValue(key, "s", Value(kRegSz, {'a', 0}));
    machine->Registry().SetValue(key, "empty", Value(kRegSz, {}));
    RegValue read;
    machine->Registry().QueryValue(key, "s", read);
    EXPECT_EQ(read.data, (std::vector<std::uint8_t>{'a', 0, 0, 0}));
    machine->Registry().QueryValue(key, "empty", read);
    EXPECT_TRUE(read.data.empty());
}

TEST(MachineRegistry, SavingWithoutChangesWritesNothing) {
    TempMachine folder;
    const FileStamp before = StampOf(folder.Dir() / "system.reg");
    auto machine = folder.Open();
    EXPECT_EQ(
        GetRegString(machine->Registry(), "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion",
                     "VersionNumber"),
        "4.10.2222");
    EXPECT_FALSE(dynamic_cast<MachineRegistry&>(machine->Registry().Inner()).HasUnsavedChanges());
    ASSERT_TRUE(machine->Save().ok());
    EXPECT_EQ(StampOf(folder.Dir() / "system.reg"), before);
    EXPECT_FALSE(std::filesystem::exists(folder.Dir() / "user.reg.tmp"));
}

TEST(MachineRegistry, TwoProcessesSavingDifferentValuesBothKeepTheirs) {
    TempMachine folder;
    auto first = folder.Open();
    auto second = folder.Open();
    SetRegString(first->Registry(), kSettings, "Left", "10");
    SetRegDword(first->Registry(), "HKEY_LOCAL_MACHINE\\Software\\One", "n", 1);
    SetRegString(second->Registry(), kSettings, "Top", "20");
    SetRegDword(second->Registry(), "HKEY_LOCAL_MACHINE\\Software\\Two", "n", 2);
    DeleteRegValue(second->Registry(), "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion",
                   "SystemRoot");
    ASSERT_TRUE(first->Save().ok());
    ASSERT_TRUE(second->Save().ok());

    auto merged = folder.Open();
    EXPECT_EQ(GetRegString(merged->Registry(), kSettings, "Left"), "10");
    EXPECT_EQ(GetRegString(merged->Registry(), kSettings, "Top"), "20");
    EXPECT_EQ(GetRegDword(merged->Registry(), "HKEY_LOCAL_MACHINE\\Software\\One", "n"), 1);
    EXPECT_EQ(GetRegDword(merged->Registry(), "HKEY_LOCAL_MACHINE\\Software\\Two", "n"), 2);
    EXPECT_EQ(GetRegString(merged->Registry(),
                           "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion", "SystemRoot"),
              "Error");
    // The first process goes on from the merged state too.
    SetRegString(first->Registry(), kSettings, "Left", "11");
    ASSERT_TRUE(first->Save().ok());
    auto last = folder.Open();
    EXPECT_EQ(GetRegString(last->Registry(), kSettings, "Left"), "11");
    EXPECT_EQ(GetRegString(last->Registry(), kSettings, "Top"), "20");
}

TEST(MachineRegistry, AMalformedHiveIsRefusedAndLeftAlone) {
    TempMachine folder;
    const std::string broken =
        HiveText("\\\\User\\\\S-1-5-21-0-0-0-1000", "\n[Software] 0\n\"v\"=dword:nope\n");
    folder.Folder().Write("user.reg", broken);
    auto machine = OpenMachineFolder(folder.Dir());
    ASSERT_FALSE(machine.ok());
    EXPECT_NE(machine.reason().find("user.reg:7: value \"v\": bad dword value"), std::string::npos)
        << machine.reason();
    EXPECT_EQ(folder.Folder().Read("user.reg"), broken);
}

TEST(MachineRegistry, PredefinedKeysMapAsOnWindows) {
    TempMachine folder(Win98System() + "\n[Software\\\\Classes\\\\.txt] 0\n@=\"txtfile\"\n",
                       "\n[Software\\\\Mine] 0\n\"who\"=\"current user\"\n",
                       "\n[Software\\\\Mine] 0\n\"who\"=\"default user\"\n");
    auto machine = folder.Open();
    RegistryStore& r = machine->Registry();
    EXPECT_EQ(GetRegString(r, "HKEY_CLASSES_ROOT\\.txt", ""), "txtfile");
    EXPECT_EQ(GetRegString(r, "HKEY_USERS\\.Default\\Software\\Mine", "who"), "default user");
    EXPECT_EQ(GetRegString(r, "HKEY_USERS\\S-1-5-21-0-0-0-1000\\Software\\Mine", "who"), "current user");
    EXPECT_EQ(GetRegString(r, "HKEY_CURRENT_USER\\Software\\Mine", "who"), "current user");
    SetRegString(r, "HKEY_CURRENT_CONFIG\\Display", "x", "y");
    EXPECT_EQ(
        GetRegString(r, "HKEY_LOCAL_MACHINE\\System\\CurrentControlSet\\Hardware Profiles\\Current\\Display",
                     "x"),
        "y");
    std::vector<std::string> users;
    EnumRegKeys(r, "HKEY_USERS", users);
    EXPECT_EQ(users, (std::vector<std::string>{".Default", "S-1-5-21-0-0-0-1000"}));
    for (const char* root : {"HKEY_DYN_DATA", "HKEY_PERFORMANCE_DATA"}) {
        EXPECT_FALSE(RegKeyExists(r, root));
        SetRegString(r, std::string(root) + "\\x", "v", "1");
        EXPECT_EQ(GetRegString(r, std::string(root) + "\\x", "v"), "Error");
    }
    EXPECT_FALSE(RegKeyExists(r, "HKEY_USERS\\S-1-5-21-9"));
}

TEST(MachineRegistry, WineLinkKeysAreFollowed) {
    // In a Wine prefix CurrentControlSet links to ControlSet001.
    std::string link = "\\Registry\\Machine\\System\\ControlSet001";
    std::string hex;
    for (char c : link) {
        char byte[8];
        std::snprintf(byte, sizeof byte, "%02x,00,", static_cast<unsigned char>(c));
        hex += byte;
    }
    hex.pop_back();
    TempMachine folder(
        "\n[System\\\\ControlSet001\\\\Control] 0\n\"Current User\"=\"wine\"\n"
        "\n[System\\\\ControlSet001\\\\Hardware Profiles\\\\Current] 0\n"
        "\n[System\\\\CurrentControlSet] 0\n#link\n\"SymbolicLinkValue\"=hex(6):" +
        hex + "\n");
    auto machine = folder.Open();
    RegistryStore& r = machine->Registry();
    EXPECT_EQ(GetRegString(r, "HKEY_LOCAL_MACHINE\\System\\CurrentControlSet\\Control", "Current User"),
              "wine");
    SetRegDword(r, "HKEY_CURRENT_CONFIG\\Software", "n", 5);
    EXPECT_EQ(GetRegDword(
                  r, "HKEY_LOCAL_MACHINE\\System\\ControlSet001\\Hardware Profiles\\Current\\Software", "n"),
              5);
}

}  // namespace
}  // namespace glyphmoor::test

namespace glyphmoor::test {
namespace {

// A hive section header for a key `depth` levels deep, each level named `name`.
std::string DeepKey(std::size_t depth, const std::string& name) {
    std::string path = name;
    for (std::size_t i = 1; i < depth; ++i) {
        path += "\\\\" + name;
    }
    return "\n[" + path + "] 0\n\"v\"=\"deep\"\n";
}

TEST(MachineRegistry, HiveKeysBeyondWindowsLimitsAreRefusedWithFileAndLine) {
    struct Case {
        const char* what;
        std::string body;
        const char* says;  // empty: the hive loads
    };
    const Case cases[] = {
        {"512 levels", DeepKey(512, "k"), ""},
        {"513 levels", DeepKey(513, "k"), "user.reg:6: a key more than 512 levels deep"},
        {"200,000 levels", DeepKey(200000, "k"), "user.reg:6: a key more than 512 levels deep"},
        {"a name of 255 characters", DeepKey(2, std::string(255, 'n')), ""},
        {"a name of 256 characters", DeepKey(2, std::string(256, 'n')),
         "user.reg:6: a key name longer than 255 characters"},
    };
    for (const auto& c : cases) {
        TempMachine folder(Win98System(), c.body);
        auto machine = OpenMachineFolder(folder.Dir());
        if (std::string_view(c.says).empty()) {
            ASSERT_TRUE(machine.ok()) << c.what << ": " << machine.reason();
            continue;
        }
        ASSERT_FALSE(machine.ok()) << c.what;
        EXPECT_NE(machine.reason().find(c.says), std::string::npos) << c.what << ": " << machine.reason();
    }
}

TEST(MachineRegistry, WritesBeyondWindowsLimitsAreRefused) {
    auto deep = [](std::size_t depth) {
        std::string path = "HKEY_CURRENT_USER\\k";
        for (std::size_t i = 1; i < depth; ++i) {
            path += "\\k";
        }
        return path;
    };
    struct Case {
        const char* what;
        std::string path;
        long rc;
    };
    const Case cases[] = {
        {"512 levels", deep(512), kErrorSuccess},
        {"513 levels", deep(513), kErrorInvalidParameter},
        {"24,000 levels", deep(24000), kErrorInvalidParameter},
        {"a name of 255 characters", "HKEY_CURRENT_USER\\" + std::string(255, 'n'), kErrorSuccess},
        {"a name of 256 characters", "HKEY_CURRENT_USER\\" + std::string(256, 'n'), kErrorInvalidParameter},
        {"classes 511 levels below their root", "HKEY_CLASSES_ROOT" + deep(511).substr(17),
         kErrorAccessDenied},
    };
    for (const auto& c : cases) {
        TempMachine folder;
        auto machine = folder.Open();
        EXPECT_EQ(SetRegString(machine->Registry(), c.path, "v", "x"), c.rc) << c.what;
        EXPECT_EQ(GetRegString(machine->Registry(), c.path, "v"), c.rc == kErrorSuccess ? "x" : "Error")
            << c.what;
        ASSERT_TRUE(machine->Save().ok()) << c.what;
        EXPECT_EQ(GetRegString(folder.Open()->Registry(), c.path, "v"), c.rc == kErrorSuccess ? "x" : "Error")
            << c.what;
    }
}

TEST(MachineRegistry, TextsReadAsTheHiveStoresThem) {
    // What RegQueryValueExA counts: a NUL only where one is stored.
    struct Case {
        const char* stored;
        std::string binary;
    };
    const Case cases[] = {
        {"hex(1):61,00,62,00", "ab"},
        {"hex(1):", ""},
        {"hex(2):25,00,61,00,25,00", "%a%"},
        {"\"ab\"", std::string("ab\0", 3)},
        {"str(2):\"%a%\"", std::string("%a%\0", 4)},
    };
    for (const auto& c : cases) {
        TempMachine folder(Win98System(), std::string("\n[Software] 0\n\"v\"=") + c.stored + "\n");
        auto machine = folder.Open();
        EXPECT_EQ(GetRegBinary(machine->Registry(), "HKEY_CURRENT_USER\\Software", "v"), c.binary)
            << c.stored;
    }
}

}  // namespace
}  // namespace glyphmoor::test
