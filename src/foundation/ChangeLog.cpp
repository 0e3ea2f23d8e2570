#include "foundation/ChangeLog.h"

#include "foundation/TextEncoding.h"

#include <array>
#include <cstdio>

namespace glyphmoor {

std::string RegistryPathOf(RootKey root, std::string_view subkey) {
    struct Entry {
        RootKey key;
        std::string_view name;
    };
    static constexpr std::array<Entry, 7> kRoots = {{
        {RootKey::ClassesRoot, "HKEY_CLASSES_ROOT"},
        {RootKey::CurrentUser, "HKEY_CURRENT_USER"},
        {RootKey::LocalMachine, "HKEY_LOCAL_MACHINE"},
        {RootKey::Users, "HKEY_USERS"},
        {RootKey::PerformanceData, "HKEY_PERFORMANCE_DATA"},
        {RootKey::CurrentConfig, "HKEY_CURRENT_CONFIG"},
        {RootKey::DynData, "HKEY_DYN_DATA"},
    }};
    std::string path;
    for (const auto& entry : kRoots) {
        if (entry.key == root) {
            path = entry.name;
        }
    }
    if (!subkey.empty()) {
        path += '\\';
        path += subkey;
    }
    return path;
}

std::string DescribeRegValue(const RegValue& value) {
    const auto& data = value.data;
    if (value.type == kRegSz || value.type == kRegExpandSz) {
        std::u16string text =
            BytesToUtf16(std::string_view(reinterpret_cast<const char*>(data.data()), data.size()));
        if (const auto nul = text.find(u'\0'); nul != std::u16string::npos) {
            text.resize(nul);
        }
        return Utf16ToUtf8(text);
    }
    if (value.type == kRegDword && data.size() == 4) {
        const std::uint32_t number =
            data[0] | (data[1] << 8) | (data[2] << 16) | (static_cast<std::uint32_t>(data[3]) << 24);
        return std::to_string(number);
    }
    std::string hex;
    for (std::uint8_t byte : data) {
        char two[3];
        std::snprintf(two, sizeof two, "%02x", byte);
        hex += two;
    }
    return hex;
}

long LoggingRegistry::OpenKey(RootKey root, std::string_view subkey, RegAccess access, RegHandle& out) {
    const long result = m_inner.OpenKey(root, subkey, access, out);
    if (result == kErrorSuccess) {
        m_paths[out] = RegistryPathOf(root, subkey);
    }
    return result;
}

long LoggingRegistry::CreateKey(RootKey root, std::string_view subkey, RegHandle& out) {
    const long result = m_inner.CreateKey(root, subkey, out);
    if (result == kErrorSuccess) {
        m_paths[out] = RegistryPathOf(root, subkey);
    }
    return result;
}

long LoggingRegistry::CloseKey(RegHandle key) {
    m_paths.erase(key);
    return m_inner.CloseKey(key);
}

long LoggingRegistry::QueryValue(RegHandle key, std::string_view name, RegValue& out) {
    return m_inner.QueryValue(key, name, out);
}

long LoggingRegistry::SetValue(RegHandle key, std::string_view name, const RegValue& value) {
    const long result = m_inner.SetValue(key, name, value);
    if (result == kErrorSuccess) {
        m_log.Add("write\t" + PathOf(key) + "\t" + std::string(name) + "\t" + DescribeRegValue(value));
    }
    return result;
}

long LoggingRegistry::DeleteValue(RegHandle key, std::string_view name) {
    const long result = m_inner.DeleteValue(key, name);
    if (result == kErrorSuccess) {
        m_log.Add("delete-value\t" + PathOf(key) + "\t" + std::string(name));
    }
    return result;
}

long LoggingRegistry::DeleteSubKey(RegHandle key, std::string_view name) {
    const long result = m_inner.DeleteSubKey(key, name);
    if (result == kErrorSuccess) {
        m_log.Add("delete-key\t" + PathOf(key) + "\t" + std::string(name));
    }
    return result;
}

long LoggingRegistry::QueryInfoKey(RegHandle key, RegKeyInfo& out) {
    return m_inner.QueryInfoKey(key, out);
}

long LoggingRegistry::EnumKey(RegHandle key, std::uint32_t index, std::string& name) {
    return m_inner.EnumKey(key, index, name);
}

long LoggingRegistry::EnumValue(RegHandle key, std::uint32_t index, std::string& name, RegValue& value) {
    return m_inner.EnumValue(key, index, name, value);
}

std::string LoggingRegistry::PathOf(RegHandle key) const {
    const auto found = m_paths.find(key);
    return found == m_paths.end() ? std::string() : found->second;
}

void LoggingSystem::Note() {
    const auto& calls = m_notes.Calls();
    for (; m_noted < calls.size(); ++m_noted) {
        m_log.Add("send\t" + calls[m_noted]);
    }
}

void LoggingSystem::BroadcastSettingChange(std::uint32_t wParam, std::optional<std::string> section) {
    m_notes.BroadcastSettingChange(wParam, section);
    Note();
    m_inner.BroadcastSettingChange(wParam, std::move(section));
}

bool LoggingSystem::SystemParametersInfo(std::uint32_t action, std::uint32_t uiParam, const SpiParam& pvParam,
                                         std::uint32_t winIni) {
    m_notes.SystemParametersInfo(action, uiParam, pvParam, winIni);
    Note();
    return m_inner.SystemParametersInfo(action, uiParam, pvParam, winIni);
}

void LoggingSystem::EnableShutdownPrivilege() {
    m_notes.EnableShutdownPrivilege();
    Note();
    m_inner.EnableShutdownPrivilege();
}

void LoggingSystem::ExitWindows(std::uint32_t flags, std::uint32_t reserved) {
    m_notes.ExitWindows(flags, reserved);
    Note();
    m_inner.ExitWindows(flags, reserved);
}

bool LoggingSystem::OpenDocument(std::string_view pathOrAddress) {
    m_notes.OpenDocument(pathOrAddress);
    Note();
    return m_inner.OpenDocument(pathOrAddress);
}

void LoggingSystem::RunProgram(std::string_view commandLine, int showCommand) {
    m_notes.RunProgram(commandLine, showCommand);
    Note();
    m_inner.RunProgram(commandLine, showCommand);
}

void LoggingSystem::ShellExecuteVerb(std::string_view verb, std::string_view file,
                                     std::string_view parameters, int showCommand) {
    m_notes.ShellExecuteVerb(verb, file, parameters, showCommand);
    Note();
    m_inner.ShellExecuteVerb(verb, file, parameters, showCommand);
}

void LoggingSystem::OpenHelp(std::string_view helpFile, std::uint32_t command, std::string_view data) {
    m_notes.OpenHelp(helpFile, command, data);
    Note();
    m_inner.OpenHelp(helpFile, command, data);
}

}  // namespace glyphmoor
