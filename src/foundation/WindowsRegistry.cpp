#include "foundation/WindowsRegistry.h"

#include "foundation/TextEncoding.h"

#include <windows.h>

namespace glyphmoor {

namespace {

HKEY Predefined(RootKey root) {
    switch (root) {
        case RootKey::ClassesRoot:
            return HKEY_CLASSES_ROOT;
        case RootKey::CurrentUser:
            return HKEY_CURRENT_USER;
        case RootKey::LocalMachine:
            return HKEY_LOCAL_MACHINE;
        case RootKey::Users:
            return HKEY_USERS;
        case RootKey::PerformanceData:
            return HKEY_PERFORMANCE_DATA;
        case RootKey::CurrentConfig:
            return HKEY_CURRENT_CONFIG;
        case RootKey::DynData:
            return HKEY_DYN_DATA;
        case RootKey::None:
            break;
    }
    return nullptr;
}

std::wstring Wide(std::string_view text) {
    const std::u16string units = Utf8ToUtf16(text);
    return std::wstring(units.begin(), units.end());
}

std::string Narrow(const wchar_t* text, std::size_t length) {
    return Utf16ToUtf8(std::u16string_view(reinterpret_cast<const char16_t*>(text), length));
}

}  // namespace

WindowsRegistry::~WindowsRegistry() {
    for (const auto& [handle, key] : m_open) {
        ::RegCloseKey(static_cast<HKEY>(key));
    }
}

long WindowsRegistry::OpenKey(RootKey root, std::string_view subkey, RegAccess access, RegHandle& out) {
    out = kNoHandle;
    HKEY parent = Predefined(root);
    if (parent == nullptr) {
        return kErrorInvalidHandle;
    }
    HKEY key = nullptr;
    const LONG rc = ::RegOpenKeyExW(parent, Wide(subkey).c_str(), 0, static_cast<REGSAM>(access), &key);
    if (rc != ERROR_SUCCESS) {
        return rc;
    }
    out = reinterpret_cast<RegHandle>(key);
    m_open[out] = key;
    return kErrorSuccess;
}

long WindowsRegistry::CreateKey(RootKey root, std::string_view subkey, RegHandle& out) {
    out = kNoHandle;
    HKEY parent = Predefined(root);
    if (parent == nullptr) {
        return kErrorInvalidHandle;
    }
    HKEY key = nullptr;
    const LONG rc = ::RegCreateKeyExW(parent, Wide(subkey).c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE,
                                      nullptr, &key, nullptr);
    if (rc != ERROR_SUCCESS) {
        return rc;
    }
    out = reinterpret_cast<RegHandle>(key);
    m_open[out] = key;
    return kErrorSuccess;
}

long WindowsRegistry::CloseKey(RegHandle key) {
    auto it = m_open.find(key);
    if (it == m_open.end()) {
        return kErrorInvalidHandle;
    }
    const LONG rc = ::RegCloseKey(static_cast<HKEY>(it->second));
    m_open.erase(it);
    return rc;
}

long WindowsRegistry::QueryValue(RegHandle key, std::string_view name, RegValue& out) {
    auto it = m_open.find(key);
    if (it == m_open.end()) {
        return kErrorInvalidHandle;
    }
    const std::wstring wideName = Wide(name);
    DWORD type = 0;
    DWORD size = 0;
    LONG rc =
        ::RegQueryValueExW(static_cast<HKEY>(it->second), wideName.c_str(), nullptr, &type, nullptr, &size);
    // The value may grow between the two calls; ask again until it fits.
    for (int attempt = 0; attempt < 8 && rc == ERROR_SUCCESS; ++attempt) {
        out.data.resize(size);
        DWORD got = size;
        rc = ::RegQueryValueExW(static_cast<HKEY>(it->second), wideName.c_str(), nullptr, &type,
                                out.data.empty() ? nullptr : out.data.data(), &got);
        if (rc == ERROR_MORE_DATA) {
            size = got;
            rc = ERROR_SUCCESS;
            continue;
        }
        if (rc == ERROR_SUCCESS) {
            out.data.resize(got);
            out.type = type;
            return kErrorSuccess;
        }
    }
    return rc;
}

long WindowsRegistry::SetValue(RegHandle key, std::string_view name, const RegValue& value) {
    auto it = m_open.find(key);
    if (it == m_open.end()) {
        return kErrorInvalidHandle;
    }
    // NT adds the NUL a string's count left out when it finds one right after
    // the data: the buffer carries one there, outside the count.
    std::vector<std::uint8_t> data = value.data;
    data.push_back(0);
    data.push_back(0);
    return ::RegSetValueExW(static_cast<HKEY>(it->second), Wide(name).c_str(), 0, value.type,
                            value.data.empty() ? nullptr : data.data(),
                            static_cast<DWORD>(value.data.size()));
}

long WindowsRegistry::DeleteValue(RegHandle key, std::string_view name) {
    auto it = m_open.find(key);
    if (it == m_open.end()) {
        return kErrorInvalidHandle;
    }
    return ::RegDeleteValueW(static_cast<HKEY>(it->second), Wide(name).c_str());
}

long WindowsRegistry::DeleteSubKey(RegHandle key, std::string_view name) {
    auto it = m_open.find(key);
    if (it == m_open.end()) {
        return kErrorInvalidHandle;
    }
    return ::RegDeleteKeyW(static_cast<HKEY>(it->second), Wide(name).c_str());
}

long WindowsRegistry::QueryInfoKey(RegHandle key, RegKeyInfo& out) {
    auto it = m_open.find(key);
    if (it == m_open.end()) {
        return kErrorInvalidHandle;
    }
    DWORD subkeys = 0;
    DWORD longestSubkey = 0;
    DWORD longestClass = 0;
    DWORD values = 0;
    DWORD longestValueName = 0;
    DWORD longestData = 0;
    const LONG rc =
        ::RegQueryInfoKeyW(static_cast<HKEY>(it->second), nullptr, nullptr, nullptr, &subkeys, &longestSubkey,
                           &longestClass, &values, &longestValueName, &longestData, nullptr, nullptr);
    if (rc == ERROR_SUCCESS) {
        out = RegKeyInfo{subkeys, longestSubkey, longestClass, values, longestValueName, longestData};
    }
    return rc;
}

long WindowsRegistry::EnumKey(RegHandle key, std::uint32_t index, std::string& name) {
    auto it = m_open.find(key);
    if (it == m_open.end()) {
        return kErrorInvalidHandle;
    }
    // Key names are at most 255 characters.
    wchar_t buffer[256];
    DWORD length = 256;
    const LONG rc = ::RegEnumKeyExW(static_cast<HKEY>(it->second), index, buffer, &length, nullptr, nullptr,
                                    nullptr, nullptr);
    if (rc == ERROR_SUCCESS) {
        name = Narrow(buffer, length);
    }
    return rc;
}

long WindowsRegistry::EnumValue(RegHandle key, std::uint32_t index, std::string& name, RegValue& value) {
    auto it = m_open.find(key);
    if (it == m_open.end()) {
        return kErrorInvalidHandle;
    }
    RegKeyInfo info;
    LONG rc = QueryInfoKey(key, info);
    if (rc != ERROR_SUCCESS) {
        return rc;
    }
    std::wstring nameBuffer(info.longestValueName + 1, L'\0');
    std::vector<std::uint8_t> data(info.longestValueData + 2);
    for (int attempt = 0; attempt < 8; ++attempt) {
        DWORD nameLength = static_cast<DWORD>(nameBuffer.size());
        DWORD dataLength = static_cast<DWORD>(data.size());
        DWORD type = 0;
        rc = ::RegEnumValueW(static_cast<HKEY>(it->second), index, nameBuffer.data(), &nameLength, nullptr,
                             &type, data.data(), &dataLength);
        if (rc == ERROR_MORE_DATA) {
            nameBuffer.resize(nameBuffer.size() * 2 + 16);
            data.resize(data.size() * 2 + 16);
            continue;
        }
        if (rc == ERROR_SUCCESS) {
            name = Narrow(nameBuffer.data(), nameLength);
            value.type = type;
            value.data.assign(data.begin(), data.begin() + dataLength);
        }
        return rc;
    }
    return rc;
}

}  // namespace glyphmoor
