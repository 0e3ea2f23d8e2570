#include "RegistryContract.h"

#include "foundation/TextEncoding.h"
#include "foundation/modRegistry.h"
#include "support/TempMachine.h"

#include <gtest/gtest.h>

namespace glyphmoor::test {
namespace {

TEST_P(RegistryContract, TextReadsGiveTheStoredTextWithinTheBufferLimit) {
    struct Case {
        std::string stored;
        std::string expected;
    };
    const Case cases[] = {
        {"plain", "plain"},
        {"", ""},
        {"  abc  ", "abc"},  // blanks at either end are trimmed
        {"a  b", "a  b"},
        {std::string(254, 'x'), std::string(254, 'x')},  // 254 characters and the NUL fill the buffer
        {std::string(255, 'x'), "Error"},                // one more does not fit
        {"caf\xC3\xA9", "caf\xC3\xA9"},
        {std::string("one\0two", 7), "one"},  // cut at the first NUL
        {"Error", "Error"},
    };
    for (const auto& c : cases) {
        SetRegString(Store(), Key(), "v", c.stored);
        EXPECT_EQ(GetRegString(Store(), Key(), "v"), c.expected) << "stored: " << c.stored.size() << " chars";
    }
}

TEST_P(RegistryContract, ReadsOfWhatCannotBeReadGiveTheMarkers) {
    SetRegString(Store(), Key(), "present", "x");
    const std::string missingKey = Key("missing");
    EXPECT_EQ(GetRegString(Store(), missingKey, "v"), "Error");
    EXPECT_EQ(GetRegString(Store(), Key(), "absent"), "Error");
    EXPECT_EQ(GetRegDword(Store(), missingKey, "v"), 10);
    EXPECT_EQ(GetRegDword(Store(), Key(), "absent"), 10);
    EXPECT_EQ(GetRegBinary(Store(), Key(), "absent"), "Error");
    EXPECT_FALSE(RegKeyExists(Store(), missingKey));
    EXPECT_TRUE(RegKeyExists(Store(), Key()));
}

TEST_P(RegistryContract, RootNamesAreExactAndCaseSensitive) {
    // Only the exact names are roots; a wrong case names no key at all.
    const std::string lower = "hkey_current_user" + Key().substr(std::string("HKEY_CURRENT_USER").size());
    SetRegString(Store(), lower, "v", "x");
    EXPECT_EQ(GetRegString(Store(), Key(), "v"), "Error");
    EXPECT_EQ(GetRegString(Store(), lower, "v"), "Error");
    EXPECT_FALSE(RegKeyExists(Store(), "HKEY_NOWHERE"));
    EXPECT_EQ(RootFromName("HKEY_LOCAL_MACHINE"), RootKey::LocalMachine);
    EXPECT_EQ(RootFromName("HKEY_DYN_DATA"), RootKey::DynData);
    EXPECT_EQ(RootFromName("HKEY_LOCAL_MACHINE "), RootKey::None);
}

TEST_P(RegistryContract, ARootAloneNamesTheRootKey) {
    EXPECT_TRUE(RegKeyExists(Store(), "HKEY_CURRENT_USER"));
    SetRegString(Store(), "HKEY_CURRENT_USER", "GlyphmoorContractRootValue", "at the root");
    EXPECT_EQ(GetRegString(Store(), "HKEY_CURRENT_USER", "GlyphmoorContractRootValue"), "at the root");
    DeleteRegValue(Store(), "HKEY_CURRENT_USER", "GlyphmoorContractRootValue");
    EXPECT_EQ(GetRegString(Store(), "HKEY_CURRENT_USER", "GlyphmoorContractRootValue"), "Error");
}

TEST_P(RegistryContract, WritesMakeEveryMissingKeyOnTheWay) {
    SetRegString(Store(), Key("a\\b\\c"), "", "deep");
    EXPECT_EQ(GetRegString(Store(), Key("a\\b\\c"), ""), "deep");
    SetRegDword(Store(), Key("d\\e"), "n", 7);
    EXPECT_EQ(GetRegDword(Store(), Key("d\\e"), "n"), 7);
    SetRegBinary(Store(), Key("f"), "b", "xy");
    EXPECT_EQ(GetRegBinary(Store(), Key("f"), "b"), "xy");
    CreateRegKey(Store(), Key("g\\h"));
    EXPECT_TRUE(RegKeyExists(Store(), Key("g\\h")));
}

TEST_P(RegistryContract, NumbersRoundTripAndTenMeansUnreadable) {
    for (std::int32_t n : {0, 1, 10, -1, 2147483647, -2147483647 - 1}) {
        SetRegDword(Store(), Key(), "n", n);
        EXPECT_EQ(GetRegDword(Store(), Key(), "n"), n);
    }
    // A text of one character fits the 4-byte buffer and reads as its bytes.
    SetRegString(Store(), Key(), "s", "1");
    EXPECT_EQ(GetRegDword(Store(), Key(), "s"), 0x31);
    // Anything longer than 4 bytes cannot be read as a number.
    SetRegString(Store(), Key(), "long", "12345");
    EXPECT_EQ(GetRegDword(Store(), Key(), "long"), 10);
}

TEST_P(RegistryContract, BinaryDataTravelAsOneCharacterAByte) {
    // Every byte is the character of that code in the ANSI code page, and back.
    std::string every;
    for (int b = 0; b < 256; ++b) {
        AppendUtf8(every, AnsiToCodePoint(static_cast<std::uint8_t>(b)));
    }
    SetRegBinary(Store(), Key(), "every", every);
    EXPECT_EQ(GetRegBinary(Store(), Key(), "every"), every);
    const std::string text = "\x01\x02 caf\xC3\xA9 \xE2\x82\xAC";  // é is 0xE9, € is 0x80 in the code page
    SetRegBinary(Store(), Key(), "b", text);
    EXPECT_EQ(GetRegBinary(Store(), Key(), "b"), text);
    SetRegBinary(Store(), Key(), "empty", "");
    EXPECT_EQ(GetRegBinary(Store(), Key(), "empty"), "");
    // A text value read as binary keeps its terminating NUL.
    SetRegString(Store(), Key(), "s", "ab");
    EXPECT_EQ(GetRegBinary(Store(), Key(), "s"), std::string("ab\0", 3));
}

TEST_P(RegistryContract, SubkeysEnumerateInNameOrderAndListsOnlyGrow) {
    for (const char* name : {"beta", "Alpha", "gamma", "_under", "Beta2"}) {
        CreateRegKey(Store(), Key(name));
    }
    std::vector<std::string> names = {"kept"};
    EXPECT_EQ(EnumRegKeys(Store(), Key(), names), 5U);
    EXPECT_EQ(names, (std::vector<std::string>{"kept", "_under", "Alpha", "beta", "Beta2", "gamma"}));

    std::vector<std::string> untouched = {"x"};
    EXPECT_EQ(EnumRegKeys(Store(), Key("missing"), untouched), 0U);
    EXPECT_EQ(untouched, std::vector<std::string>{"x"});
}

TEST_P(RegistryContract, ValuesEnumerateWithTheirDataAsText) {
    SetRegString(Store(), Key(), "", "default");
    SetRegString(Store(), Key(), "text", "hello");
    SetRegDword(Store(), Key(), "number", 0x00434241);
    SetRegBinary(Store(), Key(), "bytes", std::string("\x01\x00\x02", 3));
    RegHandle handle = kNoHandle;
    ASSERT_EQ(Store().CreateKey(RootKey::CurrentUser, Key().substr(18), handle), kErrorSuccess);
    const std::u16string multi(u"one\0two\0\0", 9);
    RegValue multiValue{kRegMultiSz, {}};
    for (char16_t u : multi) {
        multiValue.data.push_back(static_cast<std::uint8_t>(u));
        multiValue.data.push_back(0);
    }
    ASSERT_EQ(Store().SetValue(handle, "multi", multiValue), kErrorSuccess);
    const std::u16string expand(u"%windir%\0", 9);
    RegValue expandValue{kRegExpandSz, {}};
    for (char16_t u : expand) {
        expandValue.data.push_back(static_cast<std::uint8_t>(u));
        expandValue.data.push_back(0);
    }
    ASSERT_EQ(Store().SetValue(handle, "expand", expandValue), kErrorSuccess);
    Store().CloseKey(handle);

    std::vector<std::string> names = {"kept"};
    std::vector<std::string> datas = {"kept"};
    EXPECT_EQ(EnumRegValues(Store(), Key(), names, datas), 6U);
    EXPECT_EQ(names,
              (std::vector<std::string>{"kept", "(Default)", "bytes", "expand", "multi", "number", "text"}));
    EXPECT_EQ(datas,
              (std::vector<std::string>{"kept", "default", std::string("\x01\x00\x02", 3),
                                        std::string("%windir%\0", 9),  // not a REG_SZ: raw, NUL and all
                                        "one",                         // only the first string
                                        std::string("ABC\0", 4), "hello"}));
}

TEST_P(RegistryContract, DeletionsRemoveWhatTheyNameAndIgnoreWhatIsAbsent) {
    SetRegString(Store(), Key(), "a", "1");
    SetRegString(Store(), Key(), "b", "2");
    DeleteRegValue(Store(), Key(), "a");
    DeleteRegValue(Store(), Key(), "never there");
    DeleteRegValue(Store(), Key("no key"), "a");
    EXPECT_EQ(GetRegString(Store(), Key(), "a"), "Error");
    EXPECT_EQ(GetRegString(Store(), Key(), "b"), "2");

    CreateRegKey(Store(), Key("leaf"));
    DeleteRegKey(Store(), Key(), "leaf");
    DeleteRegKey(Store(), Key(), "no such key");
    EXPECT_FALSE(RegKeyExists(Store(), Key("leaf")));

    CreateRegKey(Store(), Key("tree\\child"));
    DeleteRegKey(Store(), Key(), "tree");
    EXPECT_EQ(RegKeyExists(Store(), Key("tree")), !m_backend->DeletesSubtrees());
}

TEST_P(RegistryContract, AnEmptyTextStoresNoBytes) {
    ASSERT_EQ(SetRegString(Store(), Key(), "empty", ""), kErrorSuccess);
    RegHandle key = kNoHandle;
    ASSERT_EQ(Store().OpenKey(RootKey::CurrentUser, Key().substr(18), RegAccess::Read, key), kErrorSuccess);
    RegValue stored;
    EXPECT_EQ(Store().QueryValue(key, "empty", stored), kErrorSuccess);
    Store().CloseKey(key);
    EXPECT_EQ(stored, (RegValue{kRegSz, {}}));
    EXPECT_EQ(GetRegBinary(Store(), Key(), "empty"), "");
    EXPECT_EQ(GetRegString(Store(), Key(), "empty"), "");
}

TEST_P(RegistryContract, OnlyALeadingEmptyNameKeepsAPathFromOpening) {
    CreateRegKey(Store(), Key("child"));
    const std::string subkey = Key().substr(std::string("HKEY_CURRENT_USER\\").size());
    struct Case {
        std::string path;
        bool opens;
    };
    const Case cases[] = {
        {"HKEY_CURRENT_USER\\\\" + subkey, false},  // the subkey starts with a backslash
        {"HKEY_CURRENT_USER\\" + subkey + "\\\\child", true},
        {"HKEY_CURRENT_USER\\" + subkey + "\\child\\", true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(RegKeyExists(Store(), c.path), c.opens) << c.path;
    }
    EXPECT_EQ(SetRegString(Store(), cases[0].path, "v", "x"), kErrorBadPathname);
    EXPECT_EQ(GetRegString(Store(), Key(), "v"), "Error");
}

TEST_P(RegistryContract, SplitRegPathSeparatesRootAndSubkey) {
    struct Case {
        std::string path;
        RootKey root;
        std::string subkey;
    };
    const Case cases[] = {
        {"HKEY_CURRENT_USER\\Control Panel\\Cursors", RootKey::CurrentUser, "Control Panel\\Cursors"},
        {"HKEY_CLASSES_ROOT", RootKey::ClassesRoot, ""},
        {"HKEY_USERS\\", RootKey::Users, ""},
        {"Nonsense\\Key", RootKey::None, "Key"},
    };
    for (const auto& c : cases) {
        std::string path = c.path;
        RootKey root = RootKey::LocalMachine;
        EXPECT_EQ(SplitRegPath(path, root), c.path);
        EXPECT_EQ(root, c.root) << c.path;
        EXPECT_EQ(path, c.subkey);
    }
}

// The machine-folder backend, on a fresh Windows 98 or NT machine folder.
class MachineFolderBackend final : public RegistryBackend {
public:
    explicit MachineFolderBackend(bool nt) : m_machine(nt ? WinNtSystem() : Win98System()), m_nt(nt) {
        m_opened = m_machine.Open();
    }
    RegistryStore& Store() override { return m_opened->Registry(); }
    [[nodiscard]] std::string Scratch() const override {
        return "HKEY_CURRENT_USER\\Software\\GlyphmoorContract";
    }
    [[nodiscard]] bool DeletesSubtrees() const override { return !m_nt; }

private:
    TempMachine m_machine;
    std::unique_ptr<Machine> m_opened;
    bool m_nt;
};

INSTANTIATE_TEST_SUITE_P(
    Backends, RegistryContract,
    ::testing::Values(RegistryBackendFactory{"MachineFolder98",
                                             [] { return std::make_unique<MachineFolderBackend>(false); }},
                      RegistryBackendFactory{"MachineFolderNT",
                                             [] { return std::make_unique<MachineFolderBackend>(true); }}),
    [](const auto& param) { return param.param.name; });

}  // namespace
}  // namespace glyphmoor::test
