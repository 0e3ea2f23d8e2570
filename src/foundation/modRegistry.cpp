#include "foundation/modRegistry.h"

#include "foundation/TextEncoding.h"

#include <array>
#include <optional>

namespace glyphmoor {

namespace {

// The read buffer of a text read.
constexpr std::size_t kTextCapacity = 255;
constexpr std::size_t kDwordCapacity = 4;
// Enumeration grows its buffers by this much when they are too small.
constexpr std::uint32_t kEnumGrowth = 5;

bool IsStringType(std::uint32_t type) {
    return type == kRegSz || type == kRegExpandSz || type == kRegMultiSz;
}

// A value as the ANSI registry functions hand it over: one character a byte.
// Strings come converted from UTF-16 with what was stored, terminating NUL or
// not: the NUL Windows writes after a string stored without one lies outside
// the count it reports. Other data come byte by byte through the code page.
std::u32string AnsiData(const RegValue& value) {
    std::u32string out;
    if (IsStringType(value.type)) {
        const auto& d = value.data;
        std::u16string units;
        units.reserve(d.size() / 2);
        for (std::size_t i = 0; i + 1 < d.size(); i += 2) {
            units.push_back(static_cast<char16_t>(d[i] | (d[i + 1] << 8)));
        }
        return Utf8ToCodePoints(Utf16ToUtf8(units));
    }
    out.reserve(value.data.size());
    for (std::uint8_t byte : value.data) {
        out.push_back(AnsiToCodePoint(byte));
    }
    return out;
}

std::u32string TrimBlanks(const std::u32string& text) {
    const auto first = text.find_first_not_of(U' ');
    if (first == std::u32string::npos) {
        return {};
    }
    const auto last = text.find_last_not_of(U' ');
    return text.substr(first, last - first + 1);
}

std::u32string CutAtNull(std::u32string text) {
    const auto pos = text.find(U'\0');
    if (pos != std::u32string::npos) {
        text.resize(pos);
    }
    return text;
}

// Opens the key of a path; kNoHandle when it cannot be opened, with the
// store's reason in rc when asked.
RegHandle Open(RegistryStore& store, std::string_view path, RegAccess access, long* rc = nullptr) {
    std::string subkey(path);
    RootKey root = RootKey::None;
    SplitRegPath(subkey, root);
    RegHandle handle = kNoHandle;
    const long opened = store.OpenKey(root, subkey, access, handle);
    if (rc != nullptr) {
        *rc = opened;
    }
    return opened == kErrorSuccess ? handle : kNoHandle;
}

// Opens the key for reading, reads one value and closes the key; nothing when
// either fails.
std::optional<RegValue> ReadValue(RegistryStore& store, std::string_view path, std::string_view name) {
    const RegHandle handle = Open(store, path, RegAccess::Read);
    if (handle == kNoHandle) {
        return std::nullopt;
    }
    RegValue value;
    const long rc = store.QueryValue(handle, name, value);
    store.CloseKey(handle);
    if (rc != kErrorSuccess) {
        return std::nullopt;
    }
    return value;
}

// Opens the key for writing, creating it when it cannot be opened, and hands
// it to write. The key is created at most once: a key that can neither be
// opened nor created is given up, with the store's reason for it.
template <typename Write>
long WithWritableKey(RegistryStore& store, std::string_view path, Write write) {
    long rc = kErrorSuccess;
    for (int attempt = 0; attempt < 2; ++attempt) {
        const RegHandle handle = Open(store, path, RegAccess::Write, &rc);
        if (handle != kNoHandle) {
            rc = write(handle);
            store.CloseKey(handle);
            return rc;
        }
        if (attempt == 0) {
            const long created = CreateRegKey(store, path);
            if (created != kErrorSuccess) {
                return created;
            }
        }
    }
    return rc;
}

std::vector<std::uint8_t> Utf16Data(std::string_view text) {
    std::vector<std::uint8_t> data;
    for (char16_t u : Utf8ToUtf16(text)) {
        data.push_back(static_cast<std::uint8_t>(u & 0xFF));
        data.push_back(static_cast<std::uint8_t>(u >> 8));
    }
    return data;
}

}  // namespace

RootKey RootFromName(std::string_view rootName) {
    struct Entry {
        std::string_view name;
        RootKey key;
    };
    static constexpr std::array<Entry, 7> kRoots = {{
        {"HKEY_CLASSES_ROOT", RootKey::ClassesRoot},
        {"HKEY_CURRENT_USER", RootKey::CurrentUser},
        {"HKEY_LOCAL_MACHINE", RootKey::LocalMachine},
        {"HKEY_USERS", RootKey::Users},
        {"HKEY_PERFORMANCE_DATA", RootKey::PerformanceData},
        {"HKEY_CURRENT_CONFIG", RootKey::CurrentConfig},
        {"HKEY_DYN_DATA", RootKey::DynData},
    }};
    for (const auto& entry : kRoots) {
        if (entry.name == rootName) {
            return entry.key;
        }
    }
    return RootKey::None;
}

std::string SplitRegPath(std::string& path, RootKey& root) {
    std::string full = path;
    const auto pos = path.find('\\');
    if (pos == std::string::npos) {
        root = RootFromName(path);
        path.clear();
    } else {
        root = RootFromName(std::string_view(path).substr(0, pos));
        path.erase(0, pos + 1);
    }
    return full;
}

std::string GetRegString(RegistryStore& store, std::string_view path, std::string_view name) {
    const auto value = ReadValue(store, path, name);
    if (!value) {
        return std::string(kRegError);
    }
    std::u32string data = AnsiData(*value);
    if (data.size() > kTextCapacity) {
        return std::string(kRegError);  // ERROR_MORE_DATA: 255 bytes or more with the NUL
    }
    // The buffer starts as blanks; the text lands in it without its terminating
    // NUL, so blanks at either end of the stored text are trimmed with the padding.
    if (IsStringType(value->type) && !data.empty() && data.back() == U'\0') {
        data.pop_back();
    }
    std::u32string buffer(kTextCapacity, U' ');
    buffer.replace(0, data.size(), data);
    return CodePointsToUtf8(CutAtNull(TrimBlanks(buffer)));
}

long SetRegString(RegistryStore& store, std::string_view path, std::string_view name, std::string_view text) {
    return WithWritableKey(store, path, [&](RegHandle handle) {
        // The count leaves out the terminating NUL.
        return store.SetValue(handle, name, RegValue{kRegSz, Utf16Data(text)});
    });
}

std::int32_t GetRegDword(RegistryStore& store, std::string_view path, std::string_view name) {
    const auto value = ReadValue(store, path, name);
    if (!value) {
        return kRegDwordUnreadable;
    }
    const std::u32string data = AnsiData(*value);
    if (data.size() > kDwordCapacity) {
        return kRegDwordUnreadable;
    }
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < data.size(); ++i) {
        number |= static_cast<std::uint32_t>(CodePointToAnsi(data[i])) << (8 * i);
    }
    return static_cast<std::int32_t>(number);
}

long SetRegDword(RegistryStore& store, std::string_view path, std::string_view name, std::int32_t number) {
    return WithWritableKey(store, path, [&](RegHandle handle) {
        const auto n = static_cast<std::uint32_t>(number);
        return store.SetValue(
            handle, name,
            RegValue{kRegDword,
                     {static_cast<std::uint8_t>(n), static_cast<std::uint8_t>(n >> 8),
                      static_cast<std::uint8_t>(n >> 16), static_cast<std::uint8_t>(n >> 24)}});
    });
}

std::string GetRegBinary(RegistryStore& store, std::string_view path, std::string_view name) {
    // Windows needs two queries here, one to learn the size and one to read;
    // the store hands the whole value over at once.
    const auto value = ReadValue(store, path, name);
    if (!value) {
        return std::string(kRegError);
    }
    return CodePointsToUtf8(AnsiData(*value));
}

long SetRegBinary(RegistryStore& store, std::string_view path, std::string_view name, std::string_view text) {
    return WithWritableKey(store, path, [&](RegHandle handle) {
        std::vector<std::uint8_t> bytes;
        for (char32_t c : Utf8ToCodePoints(text)) {
            bytes.push_back(CodePointToAnsi(c));
        }
        return store.SetValue(handle, name, RegValue{kRegBinary, std::move(bytes)});
    });
}

std::optional<RegValue> GetRegValue(RegistryStore& store, std::string_view path, std::string_view name) {
    return ReadValue(store, path, name);
}

long SetRegValue(RegistryStore& store, std::string_view path, std::string_view name, const RegValue& value) {
    return WithWritableKey(store, path, [&](RegHandle key) { return store.SetValue(key, name, value); });
}

long DeleteRegValue(RegistryStore& store, std::string_view path, std::string_view name) {
    long rc = kErrorSuccess;
    const RegHandle handle = Open(store, path, RegAccess::Write, &rc);
    if (handle != kNoHandle) {
        rc = store.DeleteValue(handle, name);
        store.CloseKey(handle);
    }
    return rc;
}

long DeleteRegKey(RegistryStore& store, std::string_view parentPath, std::string_view subkey) {
    long rc = kErrorSuccess;
    const RegHandle handle = Open(store, parentPath, RegAccess::Write, &rc);
    if (handle != kNoHandle) {
        rc = store.DeleteSubKey(handle, subkey);
        store.CloseKey(handle);
    }
    return rc;
}

long CreateRegKey(RegistryStore& store, std::string_view path) {
    std::string subkey(path);
    RootKey root = RootKey::None;
    SplitRegPath(subkey, root);
    RegHandle handle = kNoHandle;
    const long rc = store.CreateKey(root, subkey, handle);
    if (rc == kErrorSuccess) {
        store.CloseKey(handle);
    }
    return rc;
}

bool RegKeyExists(RegistryStore& store, std::string_view path) {
    const RegHandle handle = Open(store, path, RegAccess::Read);
    if (handle == kNoHandle) {
        return false;
    }
    store.CloseKey(handle);
    return true;
}

std::size_t EnumRegKeys(RegistryStore& store, std::string_view path, std::vector<std::string>& names) {
    const RegHandle handle = Open(store, path, RegAccess::Read);
    if (handle == kNoHandle) {
        return 0;
    }
    RegKeyInfo info;
    store.QueryInfoKey(handle, info);
    std::uint32_t nameCapacity = info.longestSubkeyName + 1;
    std::size_t count = 0;
    for (std::uint32_t index = 0;;) {
        std::string name;
        if (store.EnumKey(handle, index, name) != kErrorSuccess) {
            break;
        }
        const std::u32string chars = Utf8ToCodePoints(name);
        if (chars.size() + 1 > nameCapacity) {
            nameCapacity += kEnumGrowth;  // ERROR_MORE_DATA: try the same index again
            continue;
        }
        // The name is cut at its first NUL only when that NUL is not its first character.
        const auto nul = chars.find(U'\0');
        names.push_back(
            CodePointsToUtf8(nul != std::u32string::npos && nul >= 1 ? chars.substr(0, nul) : chars));
        ++count;
        ++index;
    }
    store.CloseKey(handle);
    return count;
}

std::size_t EnumRegValues(RegistryStore& store, std::string_view path, std::vector<std::string>& names,
                          std::vector<std::string>& datas) {
    const RegHandle handle = Open(store, path, RegAccess::Read);
    if (handle == kNoHandle) {
        return 0;
    }
    RegKeyInfo info;
    store.QueryInfoKey(handle, info);
    std::uint32_t nameCapacity = info.longestValueName + 1;
    std::uint32_t dataCapacity = info.longestValueData + 1;
    std::size_t count = 0;
    for (std::uint32_t index = 0;;) {
        std::string name;
        RegValue value;
        if (store.EnumValue(handle, index, name, value) != kErrorSuccess) {
            break;
        }
        const std::u32string nameChars = Utf8ToCodePoints(name);
        std::u32string data = AnsiData(value);
        if (nameChars.size() + 1 > nameCapacity || data.size() > dataCapacity) {
            nameCapacity += kEnumGrowth;  // ERROR_MORE_DATA: try the same index again
            dataCapacity += kEnumGrowth;
            continue;
        }
        if (value.type == kRegSz || value.type == kRegMultiSz) {
            data = CutAtNull(std::move(data));  // of a multi-string only the first string stays
        }
        names.push_back(nameChars.empty() ? std::string("(Default)") : name);
        datas.push_back(CodePointsToUtf8(data));
        ++count;
        ++index;
    }
    store.CloseKey(handle);
    return count;
}

std::size_t EnumRegRawValues(RegistryStore& store, std::string_view path,
                             std::vector<std::pair<std::string, RegValue>>& values) {
    const RegHandle handle = Open(store, path, RegAccess::Read);
    if (handle == kNoHandle) {
        return 0;
    }
    std::size_t count = 0;
    for (std::uint32_t index = 0;; ++index) {
        std::string name;
        RegValue value;
        if (store.EnumValue(handle, index, name, value) != kErrorSuccess) {
            break;
        }
        values.emplace_back(std::move(name), std::move(value));
        ++count;
    }
    store.CloseKey(handle);
    return count;
}

std::string RegErrorText(long code) {
    switch (code) {
        case kErrorSuccess:
            return "The operation completed successfully.";
        case kErrorFileNotFound:
            return "The system cannot find the file specified.";
        case kErrorAccessDenied:
            return "Access is denied.";
        case kErrorInvalidHandle:
            return "The handle is invalid.";
        case kErrorInvalidParameter:
            return "The parameter is incorrect.";
        case kErrorBadPathname:
            return "The specified path is invalid.";
        default:
            return "Error " + std::to_string(code) + ".";
    }
}

std::string TrimAtNull(std::string_view text) {
    return std::string(text.substr(0, text.find('\0')));
}

}  // namespace glyphmoor
