// RegistryStore: the seam between the registry module and a registry.
//
// It mirrors the wide-character registry functions of Windows at the level the
// registry module needs: keys are opened, used and closed through handles;
// names are UTF-8 text; value data is kept exactly as the registry keeps it
// (strings as UTF-16LE with their terminating NUL). Results are Windows error
// codes, so that every backend reports failures the same way.
//
// Two backends implement it: MachineRegistry (the hives of a machine folder)
// and, in the Windows build, the real registry.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// Windows error codes the registry module tells apart.
enum : long {
    kErrorSuccess = 0,
    kErrorFileNotFound = 2,
    kErrorAccessDenied = 5,
    kErrorInvalidHandle = 6,
    kErrorInvalidParameter = 87,
    kErrorBadPathname = 161,
    kErrorMoreData = 234,
    kErrorNoMoreItems = 259,
};

// Value types as Windows numbers them.
enum : std::uint32_t {
    kRegNone = 0,
    kRegSz = 1,
    kRegExpandSz = 2,
    kRegBinary = 3,
    kRegDword = 4,
    kRegDwordBigEndian = 5,
    kRegLink = 6,
    kRegMultiSz = 7,
    kRegQword = 11,
};

// The predefined keys, with their Windows handle values.
enum class RootKey : std::uint32_t {
    None = 0,
    ClassesRoot = 0x80000000U,
    CurrentUser = 0x80000001U,
    LocalMachine = 0x80000002U,
    Users = 0x80000003U,
    PerformanceData = 0x80000004U,
    CurrentConfig = 0x80000005U,
    DynData = 0x80000006U,
};

enum class RegAccess : std::uint32_t {
    Read = 0x20019,   // KEY_READ
    Write = 0x20006,  // KEY_WRITE
};

struct RegValue {
    std::uint32_t type = kRegNone;
    std::vector<std::uint8_t> data;

    friend bool operator==(const RegValue&, const RegValue&) = default;
};

// What RegQueryInfoKey reports. Lengths of names are in characters, lengths
// of data in bytes as stored.
struct RegKeyInfo {
    std::uint32_t subkeyCount = 0;
    std::uint32_t longestSubkeyName = 0;
    std::uint32_t longestClassName = 0;
    std::uint32_t valueCount = 0;
    std::uint32_t longestValueName = 0;
    std::uint32_t longestValueData = 0;
};

using RegHandle = std::uint64_t;
inline constexpr RegHandle kNoHandle = 0;

class RegistryStore {
public:
    virtual ~RegistryStore() = default;
    RegistryStore() = default;
    RegistryStore(const RegistryStore&) = delete;
    RegistryStore& operator=(const RegistryStore&) = delete;

    // Opens an existing key; fails with kErrorFileNotFound when it is absent.
    virtual long OpenKey(RootKey root, std::string_view subkey, RegAccess access, RegHandle& out) = 0;
    // Opens a key, creating it and every missing key on its path.
    virtual long CreateKey(RootKey root, std::string_view subkey, RegHandle& out) = 0;
    virtual long CloseKey(RegHandle key) = 0;

    virtual long QueryValue(RegHandle key, std::string_view name, RegValue& out) = 0;
    // Stores a value. Like Windows NT, a string-typed value whose data lacks its
    // terminating NUL is stored with one.
    virtual long SetValue(RegHandle key, std::string_view name, const RegValue& value) = 0;
    virtual long DeleteValue(RegHandle key, std::string_view name) = 0;
    // Removes one named subkey of an open key; whether its own subkeys go with
    // it is the platform's rule (see DeletesSubtrees).
    virtual long DeleteSubKey(RegHandle key, std::string_view name) = 0;

    virtual long QueryInfoKey(RegHandle key, RegKeyInfo& out) = 0;
    // Enumerate by index from 0; kErrorNoMoreItems past the end.
    virtual long EnumKey(RegHandle key, std::uint32_t index, std::string& name) = 0;
    virtual long EnumValue(RegHandle key, std::uint32_t index, std::string& name, RegValue& value) = 0;
};

}  // namespace glyphmoor
