#include "foundation/Baseline.h"

#include "foundation/ChangeLog.h"
#include "foundation/FileIo.h"
#include "foundation/Hive.h"
#include "foundation/HostFiles.h"
#include "foundation/TextEncoding.h"
#include "foundation/modRegistry.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>

namespace glyphmoor {

namespace {

// Records are numbered with eight digits, so that the registry's name order is
// the order they were made in.
constexpr std::string_view kValuesList = "Values";
constexpr std::string_view kKeysList = "Keys";
constexpr std::string_view kFilesList = "Files";
constexpr std::string_view kChangedFilesList = "Changed Files";
constexpr std::string_view kPathName = "Path";
constexpr std::string_view kAttributesName = "Attributes";
constexpr std::string_view kKeyName = "Key";
constexpr std::string_view kNameName = "Name";
constexpr std::string_view kDataName = "Data";

// Lower-cased, as the registry compares names.
std::string Folded(std::string_view text) {
    return LowerAscii(text);
}

std::string ValueId(std::string_view keyPath, std::string_view name) {
    return Folded(keyPath) + '\n' + Folded(name);
}

std::string RecordName(std::uint32_t number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%08u", number);
    return text.data();
}

RegValue TextValue(std::string_view utf8) {
    std::u16string wide = Utf8ToUtf16(utf8);
    wide.push_back(u'\0');
    RegValue value{kRegSz, {}};
    value.data.resize(wide.size() * 2);
    for (std::size_t i = 0; i < wide.size(); ++i) {
        value.data[2 * i] = static_cast<std::uint8_t>(wide[i] & 0xFF);
        value.data[2 * i + 1] = static_cast<std::uint8_t>(wide[i] >> 8);
    }
    return value;
}

// The text of a record's string value.
std::string ValueText(const RegValue& value) {
    return DescribeRegValue(value);
}

// Plain store operations by path (modRegistry), on a store that does not record.
std::optional<RegKeyInfo> KeyInfo(RegistryStore& store, std::string_view keyPath) {
    std::string subkey(keyPath);
    RootKey root = RootKey::None;
    SplitRegPath(subkey, root);
    RegHandle key = kNoHandle;
    if (store.OpenKey(root, subkey, RegAccess::Read, key) != kErrorSuccess) {
        return std::nullopt;
    }
    RegKeyInfo info;
    const long status = store.QueryInfoKey(key, info);
    store.CloseKey(key);
    return status == kErrorSuccess ? std::optional<RegKeyInfo>(info) : std::nullopt;
}

// Removes a key with everything below it, whatever the platform's rule for
// keys with subkeys.
void DeleteTree(RegistryStore& store, const std::string& keyPath) {
    std::vector<std::string> subkeys;
    EnumRegKeys(store, keyPath, subkeys);
    for (const std::string& sub : subkeys) {
        DeleteTree(store, keyPath + '\\' + sub);
    }
    const auto slash = keyPath.rfind('\\');
    DeleteRegKey(store, keyPath.substr(0, slash), keyPath.substr(slash + 1));
}

std::string ListPath(std::string_view list) {
    return std::string(kBaselinePath) + '\\' + std::string(list);
}

// The texts of a list's numbered values, in record order.
std::vector<std::string> ReadList(RegistryStore& store, std::string_view list) {
    std::vector<std::string> names;
    std::vector<std::string> datas;
    EnumRegValues(store, ListPath(list), names, datas);
    std::vector<std::string> out;
    for (const std::string& name : names) {
        if (auto value = GetRegValue(store, ListPath(list), name)) {
            out.push_back(ValueText(*value));
        }
    }
    return out;
}

// The keys of a list whose records are keys of their own, in record order.
std::vector<std::string> RecordKeys(RegistryStore& store, std::string_view list) {
    std::vector<std::string> numbers;
    EnumRegKeys(store, ListPath(list), numbers);
    for (std::string& number : numbers) {
        number = ListPath(list) + '\\' + number;
    }
    return numbers;
}

std::vector<BaselineValue> ReadValueRecords(RegistryStore& store) {
    std::vector<BaselineValue> out;
    for (const std::string& record : RecordKeys(store, kValuesList)) {
        const auto key = GetRegValue(store, record, kKeyName);
        const auto name = GetRegValue(store, record, kNameName);
        if (!key || !name) {
            continue;
        }
        out.push_back({ValueText(*key), ValueText(*name), GetRegValue(store, record, kDataName)});
    }
    return out;
}

std::string ParentOf(std::string_view path) {
    const auto slash = path.rfind('\\');
    return std::string(path.substr(0, slash == std::string_view::npos ? 0 : slash));
}

std::size_t Depth(std::string_view path) {
    return static_cast<std::size_t>(std::count(path.begin(), path.end(), '\\'));
}

// Deepest first, so that a folder or key comes after what it holds.
void SortDeepestFirst(std::vector<std::string>& paths) {
    std::stable_sort(paths.begin(), paths.end(),
                     [](const std::string& a, const std::string& b) { return Depth(a) > Depth(b); });
}

std::string Describe(const std::optional<RegValue>& data) {
    if (!data) {
        return "(no value)";
    }
    const std::string shown = DescribeRegValue(*data);
    switch (data->type) {
        case kRegSz:
        case kRegExpandSz:
            return "\"" + shown + "\"";
        case kRegDword:
            return "dword:" + shown;
        default:
            return "hex:" + shown;
    }
}

std::vector<BaselineFile> ReadFileRecords(RegistryStore& store) {
    std::vector<BaselineFile> out;
    for (const std::string& record : RecordKeys(store, kChangedFilesList)) {
        const auto path = GetRegValue(store, record, kPathName);
        if (!path) {
            continue;
        }
        BaselineFile file{ValueText(*path), std::nullopt, std::nullopt};
        if (const auto data = GetRegValue(store, record, kDataName)) {
            file.bytes = std::string(data->data.begin(), data->data.end());
        }
        const auto attributes = GetRegValue(store, record, kAttributesName);
        if (attributes && attributes->type == kRegDword && attributes->data.size() == 4) {
            std::uint32_t bits = 0;
            for (std::size_t i = 4; i-- > 0;) {
                bits = bits << 8 | attributes->data[i];
            }
            file.attributes = bits;
        }
        out.push_back(std::move(file));
    }
    return out;
}

// Whether a recorded file or folder holds something else now.
bool Differs(const BaselineFile& record, const Environment& env) {
    const std::filesystem::path host = env.HostPath(record.path);
    if (record.bytes) {
        const auto now = ReadWholeFile(host, kMostRecordedFileBytes + 1);
        if (!now || *now != *record.bytes) {
            return true;
        }
    }
    return record.attributes && ReadHostAttributes(host) != record.attributes;
}

// Puts a file or folder back as recorded; the reason when it cannot be.
std::optional<std::string> PutBack(const BaselineFile& record, const Environment& env) {
    const std::filesystem::path host = env.HostPath(record.path);
    if (record.bytes) {
        const auto current = ReadHostAttributes(host);
        if (current) {
            (void)WriteHostAttributes(host, kAttrNormal);  // a read-only file cannot be replaced
        }
        if (Status written = WriteFileAtomically(host, *record.bytes); !written) {
            if (current) {
                (void)WriteHostAttributes(host, *current);
            }
            return written.reason();
        }
    }
    if (record.attributes && ReadHostAttributes(host) != record.attributes) {
        if (Status set = WriteHostAttributes(host, *record.attributes); !set) {
            return set.reason();
        }
    }
    return std::nullopt;
}

}  // namespace

BaselineRegistry::BaselineRegistry(RegistryStore& inner) : m_inner(inner) {
    ReadRecords();
}

void BaselineRegistry::ReadRecords() {
    m_recordedValues.clear();
    m_recordedKeys.clear();
    m_recordedFiles.clear();
    m_nextRecord.clear();
    for (const BaselineValue& record : ReadValueRecords(m_inner)) {
        m_recordedValues.insert(ValueId(record.key, record.name));
    }
    for (const std::string& key : ReadList(m_inner, kKeysList)) {
        m_recordedKeys.insert(Folded(key));
    }
    for (const std::string& file : ReadList(m_inner, kFilesList)) {
        m_recordedFiles.insert(Folded(file));
    }
    for (const BaselineFile& file : ReadFileRecords(m_inner)) {
        m_recordedFiles.insert(Folded(file.path));
    }
}

long BaselineRegistry::OpenKey(RootKey root, std::string_view subkey, RegAccess access, RegHandle& out) {
    const long status = m_inner.OpenKey(root, subkey, access, out);
    if (status == kErrorSuccess) {
        m_paths[out] = {root, std::string(subkey)};
    }
    return status;
}

long BaselineRegistry::CreateKey(RootKey root, std::string_view subkey, RegHandle& out) {
    const OpenPath path{root, std::string(subkey)};
    if (Outside(path)) {
        RecordMissingKeys(root, subkey);
    }
    const long status = m_inner.CreateKey(root, subkey, out);
    if (status == kErrorSuccess) {
        m_paths[out] = path;
    }
    return status;
}

long BaselineRegistry::CloseKey(RegHandle key) {
    m_paths.erase(key);
    return m_inner.CloseKey(key);
}

long BaselineRegistry::QueryValue(RegHandle key, std::string_view name, RegValue& out) {
    return m_inner.QueryValue(key, name, out);
}

long BaselineRegistry::SetValue(RegHandle key, std::string_view name, const RegValue& value) {
    if (const auto found = m_paths.find(key); found != m_paths.end() && Outside(found->second)) {
        RecordValue(found->second, name);
    }
    return m_inner.SetValue(key, name, value);
}

long BaselineRegistry::DeleteValue(RegHandle key, std::string_view name) {
    if (const auto found = m_paths.find(key); found != m_paths.end() && Outside(found->second)) {
        RecordValue(found->second, name);
    }
    return m_inner.DeleteValue(key, name);
}

long BaselineRegistry::DeleteSubKey(RegHandle key, std::string_view name) {
    if (const auto found = m_paths.find(key); found != m_paths.end()) {
        OpenPath child = found->second;
        child.subkey += child.subkey.empty() ? "" : "\\";
        child.subkey += name;
        if (Outside(child)) {
            RecordSubtree(child);
        }
    }
    return m_inner.DeleteSubKey(key, name);
}

long BaselineRegistry::QueryInfoKey(RegHandle key, RegKeyInfo& out) {
    return m_inner.QueryInfoKey(key, out);
}

long BaselineRegistry::EnumKey(RegHandle key, std::uint32_t index, std::string& name) {
    return m_inner.EnumKey(key, index, name);
}

long BaselineRegistry::EnumValue(RegHandle key, std::uint32_t index, std::string& name, RegValue& value) {
    return m_inner.EnumValue(key, index, name, value);
}

void BaselineRegistry::RecordCreatedFile(std::string_view windowsPath) {
    m_wroteMachine = true;
    if (!m_recordedFiles.insert(Folded(windowsPath)).second) {
        return;
    }
    SetRegValue(m_inner, ListPath(kFilesList), AddRecord(kFilesList), TextValue(windowsPath));
}

bool BaselineRegistry::RecordFileBefore(std::string_view windowsPath, const std::filesystem::path& host) {
    const auto attributes = ReadHostAttributes(host);
    if (!attributes) {
        const bool added = !m_recordedFiles.contains(Folded(windowsPath));
        RecordCreatedFile(windowsPath);
        return added;
    }
    m_wroteMachine = true;
    if (!m_recordedFiles.insert(Folded(windowsPath)).second) {
        return false;
    }
    const std::string record = ListPath(kChangedFilesList) + '\\' + AddRecord(kChangedFilesList);
    SetRegValue(m_inner, record, kPathName, TextValue(windowsPath));
    if ((*attributes & kAttrDirectory) == 0) {
        if (const auto bytes = ReadWholeFile(host, kMostRecordedFileBytes)) {
            SetRegValue(m_inner, record, kDataName, RegValue{kRegBinary, {bytes->begin(), bytes->end()}});
        }
    }
    SetRegDword(m_inner, record, kAttributesName, static_cast<std::int32_t>(*attributes));
    return true;
}

// Anything outside the program's own key belongs to the machine; a write there
// is a write to the machine.
bool BaselineRegistry::Outside(const OpenPath& path) {
    const std::string text = RegistryPathOf(path.root, path.subkey);
    const std::string program = Folded(kProgramKeyPath);
    const std::string folded = Folded(text);
    const bool own = folded == program || folded.starts_with(program + "\\");
    if (!own) {
        m_wroteMachine = true;
    }
    return !own;
}

std::string BaselineRegistry::AddRecord(std::string_view list) {
    auto found = m_nextRecord.find(list);
    if (found == m_nextRecord.end()) {
        std::vector<std::string> names;
        if (list == kValuesList || list == kChangedFilesList) {
            EnumRegKeys(m_inner, ListPath(list), names);
        } else {
            std::vector<std::string> datas;
            EnumRegValues(m_inner, ListPath(list), names, datas);
        }
        std::uint32_t next = 1;
        for (const std::string& name : names) {
            next = std::max(next, static_cast<std::uint32_t>(std::strtoul(name.c_str(), nullptr, 10)) + 1);
        }
        found = m_nextRecord.emplace(std::string(list), next).first;
    }
    return RecordName(found->second++);
}

void BaselineRegistry::RecordValue(const OpenPath& path, std::string_view name) {
    const std::string keyPath = RegistryPathOf(path.root, path.subkey);
    if (!m_recordedValues.insert(ValueId(keyPath, name)).second) {
        return;
    }
    const std::optional<RegValue> before = GetRegValue(m_inner, keyPath, name);
    const std::string record = ListPath(kValuesList) + '\\' + AddRecord(kValuesList);
    SetRegValue(m_inner, record, kKeyName, TextValue(keyPath));
    SetRegValue(m_inner, record, kNameName, TextValue(name));
    if (before) {
        SetRegValue(m_inner, record, kDataName, *before);
    }
}

// Each key on the path that does not exist yet is one the program makes. A
// path beyond Windows' limits is never made, so there is nothing to record
// (and walking it level by level would cost the square of its depth).
void BaselineRegistry::RecordMissingKeys(RootKey root, std::string_view subkey) {
    if (static_cast<std::size_t>(std::count(subkey.begin(), subkey.end(), '\\')) >= kMaxKeyDepth) {
        return;
    }
    std::string partial;
    std::string_view rest = subkey;
    while (!rest.empty()) {
        const auto slash = rest.find('\\');
        partial += partial.empty() ? "" : "\\";
        partial += rest.substr(0, slash);
        rest.remove_prefix(slash == std::string_view::npos ? rest.size() : slash + 1);
        RegHandle key = kNoHandle;
        if (m_inner.OpenKey(root, partial, RegAccess::Read, key) == kErrorSuccess) {
            m_inner.CloseKey(key);
            continue;
        }
        const std::string keyPath = RegistryPathOf(root, partial);
        if (m_recordedKeys.insert(Folded(keyPath)).second) {
            SetRegValue(m_inner, ListPath(kKeysList), AddRecord(kKeysList), TextValue(keyPath));
        }
    }
}

// A key about to be removed: every value below it is recorded, so that undoing
// writes them back (and with them their keys).
void BaselineRegistry::RecordSubtree(const OpenPath& path) {
    RegHandle key = kNoHandle;
    if (m_inner.OpenKey(path.root, path.subkey, RegAccess::Read, key) != kErrorSuccess) {
        return;
    }
    std::vector<std::string> values;
    std::vector<std::string> subkeys;
    std::string name;
    RegValue value;
    for (std::uint32_t i = 0; m_inner.EnumValue(key, i, name, value) == kErrorSuccess; ++i) {
        values.push_back(name);
    }
    for (std::uint32_t i = 0; m_inner.EnumKey(key, i, name) == kErrorSuccess; ++i) {
        subkeys.push_back(name);
    }
    m_inner.CloseKey(key);
    for (const std::string& v : values) {
        RecordValue(path, v);
    }
    for (const std::string& s : subkeys) {
        RecordSubtree({path.root, path.subkey + "\\" + s});
    }
}

std::string RegValueText(const RegValue& value) {
    return value.type == kRegSz || value.type == kRegExpandSz ? ValueText(value) : std::string();
}

std::optional<std::optional<RegValue>> RecordedValue(RegistryStore& registry, std::string_view keyPath,
                                                     std::string_view name) {
    const std::string id = ValueId(keyPath, name);
    for (BaselineValue& record : ReadValueRecords(registry)) {
        if (ValueId(record.key, record.name) == id) {
            return std::move(record.data);
        }
    }
    return std::nullopt;
}

std::optional<RegValue> BaselineValueOf(RegistryStore& registry, std::string_view keyPath,
                                        std::string_view name) {
    if (auto recorded = RecordedValue(registry, keyPath, name)) {
        return *recorded;
    }
    return GetRegValue(registry, keyPath, name);
}

bool RestoreRecordedValue(RegistryStore& registry, std::string_view keyPath, std::string_view name) {
    const auto recorded = RecordedValue(registry, keyPath, name);
    if (!recorded) {
        return false;
    }
    if (*recorded) {
        SetRegValue(registry, keyPath, name, **recorded);
    } else {
        DeleteRegValue(registry, keyPath, name);
    }
    return true;
}

UndoPlan PlanUndo(RegistryStore& registry, const Environment& env) {
    UndoPlan plan;
    std::set<std::string> seen;
    // The earliest record of a value is its baseline; a later one (the same
    // value reached by another path) is not.
    for (BaselineValue& record : ReadValueRecords(registry)) {
        if (!seen.insert(ValueId(record.key, record.name)).second) {
            continue;
        }
        if (GetRegValue(registry, record.key, record.name) != record.data) {
            plan.values.push_back(std::move(record));
        }
    }
    for (std::string& key : ReadList(registry, kKeysList)) {
        if (KeyInfo(registry, key)) {
            plan.keys.push_back(std::move(key));
        }
    }
    SortDeepestFirst(plan.keys);
    for (std::string& file : ReadList(registry, kFilesList)) {
        std::error_code ec;
        if (std::filesystem::exists(env.HostPath(file), ec)) {
            plan.files.push_back(std::move(file));
        }
    }
    SortDeepestFirst(plan.files);
    for (BaselineFile& file : ReadFileRecords(registry)) {
        if (Differs(file, env)) {
            plan.changedFiles.push_back(std::move(file));
        }
    }
    return plan;
}

std::vector<std::string> DescribeUndo(const UndoPlan& plan) {
    std::vector<std::string> lines;
    for (const BaselineValue& v : plan.values) {
        const std::string name = v.name.empty() ? "(Default)" : v.name;
        lines.push_back((v.data ? "restore\t" : "delete value\t") + v.key + '\t' + name +
                        (v.data ? '\t' + Describe(v.data) : std::string()));
    }
    for (const std::string& key : plan.keys) {
        lines.push_back("delete key\t" + key);
    }
    for (const std::string& file : plan.files) {
        lines.push_back("remove file\t" + file);
    }
    for (const BaselineFile& file : plan.changedFiles) {
        lines.push_back("restore file\t" + file.path);
    }
    return lines;
}

std::vector<std::string> UndoAll(RegistryStore& registry, const Environment& env) {
    std::vector<BaselineValue> records = ReadValueRecords(registry);
    // Later records first, so the earliest record of a value has the last word.
    for (auto it = records.rbegin(); it != records.rend(); ++it) {
        if (it->data) {
            SetRegValue(registry, it->key, it->name, *it->data);
        } else {
            DeleteRegValue(registry, it->key, it->name);
        }
    }
    std::vector<std::string> keys = ReadList(registry, kKeysList);
    SortDeepestFirst(keys);
    for (const std::string& key : keys) {
        const auto info = KeyInfo(registry, key);
        if (info && info->subkeyCount == 0 && info->valueCount == 0) {
            DeleteRegKey(registry, ParentOf(key), key.substr(key.rfind('\\') + 1));
        }
    }
    std::vector<std::string> kept;
    for (const BaselineFile& file : ReadFileRecords(registry)) {
        if (!Differs(file, env)) {
            continue;
        }
        if (auto reason = PutBack(file, env)) {
            kept.push_back(file.path + " (" + *reason + ")");
        }
    }
    std::vector<std::string> files = ReadList(registry, kFilesList);
    SortDeepestFirst(files);
    for (const std::string& file : files) {
        const std::filesystem::path host = env.HostPath(file);
        std::error_code ec;
        if (!std::filesystem::exists(host, ec)) {
            continue;
        }
        if (std::filesystem::is_directory(host, ec) && !std::filesystem::is_empty(host, ec)) {
            kept.push_back(file + " (it holds files the program did not make)");
            continue;
        }
        if (!std::filesystem::remove(host, ec)) {
            kept.push_back(file + " (" + ec.message() + ")");
        }
    }
    DeleteTree(registry, std::string(kBaselinePath));
    return kept;
}

}  // namespace glyphmoor
