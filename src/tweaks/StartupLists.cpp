#include "tweaks/StartupLists.h"

#include "foundation/Baseline.h"
#include "foundation/TextEncoding.h"
#include "foundation/modRegistry.h"

#include <algorithm>
#include <array>

namespace glyphmoor {

namespace {

constexpr std::string_view kUninstall =
    "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";

constexpr std::array<StartupListInfo, 4> kLists = {{
    {StartupList::Uninstall, "uninstall", "Uninstall List", kUninstall},
    {StartupList::Run, "run", "Run", "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Run"},
    {StartupList::RunServices, "run-services", "Run Services",
     "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\RunServices"},
    {StartupList::UserRun, "user-run", "User Run",
     "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run"},
}};

bool IsText(const RegValue& value) {
    return value.type == kRegSz || value.type == kRegExpandSz;
}

// Removes a key with everything under it, deepest first: Windows NT deletes
// no key that still has subkeys.
void DeleteKeyTree(RegistryStore& registry, const std::string& parent, const std::string& name) {
    const std::string path = parent + "\\" + name;
    std::vector<std::string> children;
    EnumRegKeys(registry, path, children);
    for (const std::string& child : children) {
        DeleteKeyTree(registry, path, child);
    }
    DeleteRegKey(registry, parent, name);
}

}  // namespace

std::span<const StartupListInfo> StartupListInfos() {
    return kLists;
}

const StartupListInfo& InfoOf(StartupList list) {
    return kLists.at(static_cast<std::size_t>(list));
}

std::optional<StartupList> StartupListByName(std::string_view cliName) {
    for (const StartupListInfo& info : kLists) {
        if (info.cliName == cliName) {
            return info.list;
        }
    }
    return std::nullopt;
}

std::vector<StartupEntry> ReadStartupList(RegistryStore& registry, StartupList list) {
    const std::string path(InfoOf(list).path);
    std::vector<StartupEntry> entries;
    if (list == StartupList::Uninstall) {
        std::vector<std::string> keys;
        EnumRegKeys(registry, path, keys);
        for (const std::string& key : keys) {
            const std::string display = GetRegString(registry, path + "\\" + key, "DisplayName");
            if (display == kRegError || display.empty()) {
                continue;
            }
            std::string command = GetRegString(registry, path + "\\" + key, "UninstallString");
            entries.push_back({list, key, display, command == kRegError ? std::string() : command});
        }
        return entries;
    }
    std::vector<std::pair<std::string, RegValue>> values;
    EnumRegRawValues(registry, path, values);
    for (const auto& [name, value] : values) {
        if (!name.empty() && IsText(value)) {
            entries.push_back({list, name, name, RegValueText(value)});
        }
    }
    return entries;
}

void StartupLists::Load(RegistryStore& registry) {
    m_entries.clear();
    m_pending.clear();
    for (const StartupListInfo& info : kLists) {
        auto entries = ReadStartupList(registry, info.list);
        m_entries.insert(m_entries.end(), entries.begin(), entries.end());
    }
    m_loaded = true;
}

const StartupEntry* StartupLists::Find(StartupList list, std::string_view name) const {
    for (const StartupEntry& entry : m_entries) {
        if (entry.list == list && EqualsNoCase(entry.name, name)) {
            return &entry;
        }
    }
    const StartupEntry* found = nullptr;
    for (const StartupEntry& entry : m_entries) {
        if (entry.list == list && EqualsNoCase(entry.text, name)) {
            if (found != nullptr) {
                return nullptr;
            }
            found = &entry;
        }
    }
    return found;
}

bool StartupLists::QueueDelete(StartupList list, std::string_view name) {
    const StartupEntry* entry = Find(list, name);
    if (entry == nullptr) {
        return false;
    }
    m_pending.push_back({false, list, entry->name, {}});
    m_entries.erase(m_entries.begin() + (entry - m_entries.data()));
    return true;
}

bool StartupLists::QueueAdd(StartupList list, std::string_view name, std::string_view command) {
    if (list == StartupList::Uninstall || name.empty() || command.empty()) {
        return false;
    }
    const auto same = [&](const StartupEntry& e) { return e.list == list && EqualsNoCase(e.name, name); };
    m_entries.erase(std::remove_if(m_entries.begin(), m_entries.end(), same), m_entries.end());
    m_entries.push_back({list, std::string(name), std::string(name), std::string(command)});
    m_pending.push_back({true, list, std::string(name), std::string(command)});
    return true;
}

void StartupLists::Apply(RegistryStore& registry) {
    for (const StartupChange& change : m_pending) {
        const std::string path(InfoOf(change.list).path);
        if (change.add) {
            SetRegString(registry, path, change.name, change.command);
        } else if (change.list == StartupList::Uninstall) {
            DeleteKeyTree(registry, path, change.name);
        } else {
            DeleteRegValue(registry, path, change.name);
        }
    }
    m_pending.clear();
}

}  // namespace glyphmoor
