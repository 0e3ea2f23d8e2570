#include "foundation/Hive.h"

#include "foundation/TextEncoding.h"
#include "foundation/WineRegistryText.h"

#include <algorithm>
#include <chrono>

namespace glyphmoor {

namespace {

// Splits "a\b\c" into its first component and the rest.
std::pair<std::string_view, std::string_view> SplitFirst(std::string_view path) {
    const auto pos = path.find('\\');
    if (pos == std::string_view::npos) {
        return {path, {}};
    }
    return {path.substr(0, pos), path.substr(pos + 1)};
}

template <typename Range, typename NameOf>
auto LowerBound(Range& range, std::string_view name, NameOf nameOf) {
    return std::lower_bound(range.begin(), range.end(), name, [&](const auto& item, std::string_view n) {
        return CompareRegistryNames(nameOf(item), n) < 0;
    });
}

const std::string& KeyName(const std::unique_ptr<HiveKey>& key) {
    return key->name;
}
const std::string& ValueName(const HiveValue& value) {
    return value.name;
}

}  // namespace

bool KeyNameFits(std::string_view name) {
    return name.size() <= kMaxKeyNameLength || Utf8ToUtf16(name).size() <= kMaxKeyNameLength;
}

int CompareRegistryNames(std::string_view a, std::string_view b) {
    return CompareNoCase(a, b);
}

std::uint64_t FileTimeNow() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto ticks = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count() / 100;
    return kUnixEpochAsFileTime + static_cast<std::uint64_t>(ticks);
}

std::vector<HiveValue>& HiveKey::Values() {
    if (!unreadValues.empty()) {
        const std::string_view lines = unreadValues;
        unreadValues = {};
        ReadCheckedValues(lines, *this);
    }
    return m_values;
}

const std::vector<HiveValue>& HiveKey::Values() const {
    return const_cast<HiveKey*>(this)->Values();  // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

bool HiveKey::IsLink() const {
    return std::find(metaLines.begin(), metaLines.end(), "#link") != metaLines.end();
}

HiveKey* HiveKey::FindSubkey(std::string_view subkeyName) const {
    auto it = LowerBound(subkeys, subkeyName, KeyName);
    if (it != subkeys.end() && CompareRegistryNames((*it)->name, subkeyName) == 0) {
        return it->get();
    }
    return nullptr;
}

const HiveValue* HiveKey::FindValue(std::string_view valueName) const {
    const auto& values = Values();
    auto it = LowerBound(values, valueName, ValueName);
    if (it != values.end() && CompareRegistryNames(it->name, valueName) == 0) {
        return &*it;
    }
    return nullptr;
}

HiveKey& HiveKey::AddSubkey(std::string_view subkeyName, bool& created) {
    // Files are usually sorted: try the end first.
    if (subkeys.empty() || CompareRegistryNames(subkeys.back()->name, subkeyName) < 0) {
        created = true;
        auto key = std::make_unique<HiveKey>();
        key->name = std::string(subkeyName);
        key->parent = this;
        subkeys.push_back(std::move(key));
        return *subkeys.back();
    }
    auto it = LowerBound(subkeys, subkeyName, KeyName);
    if (it != subkeys.end() && CompareRegistryNames((*it)->name, subkeyName) == 0) {
        created = false;
        return **it;
    }
    created = true;
    auto key = std::make_unique<HiveKey>();
    key->name = std::string(subkeyName);
    key->parent = this;
    return **subkeys.insert(it, std::move(key));
}

HiveValue& HiveKey::SetValue(std::string_view valueName, RegValue value, bool* created) {
    if (created != nullptr) {
        *created = true;
    }
    auto& values = Values();
    if (values.empty() || CompareRegistryNames(values.back().name, valueName) < 0) {
        values.push_back(HiveValue{std::string(valueName), std::move(value), {}});
        return values.back();
    }
    auto it = LowerBound(values, valueName, ValueName);
    if (it != values.end() && CompareRegistryNames(it->name, valueName) == 0) {
        it->value = std::move(value);
        it->raw = {};
        if (created != nullptr) {
            *created = false;
        }
        return *it;
    }
    return *values.insert(it, HiveValue{std::string(valueName), std::move(value), {}});
}

bool HiveKey::DeleteValue(std::string_view valueName) {
    auto& values = Values();
    auto it = LowerBound(values, valueName, ValueName);
    if (it != values.end() && CompareRegistryNames(it->name, valueName) == 0) {
        values.erase(it);
        return true;
    }
    return false;
}

bool HiveKey::DeleteSubkey(std::string_view subkeyName) {
    auto it = LowerBound(subkeys, subkeyName, KeyName);
    if (it != subkeys.end() && CompareRegistryNames((*it)->name, subkeyName) == 0) {
        subkeys.erase(it);
        return true;
    }
    return false;
}

std::string HiveKey::Path() const {
    if (parent == nullptr) {
        return {};
    }
    std::string prefix = parent->Path();
    return prefix.empty() ? name : prefix + "\\" + name;
}

HiveKey* Hive::Find(std::string_view path) const {
    HiveKey* key = root.get();
    while (key != nullptr && !path.empty()) {
        auto [first, rest] = SplitFirst(path);
        if (!first.empty()) {
            key = key->FindSubkey(first);
        }
        path = rest;
    }
    return key;
}

HiveKey& Hive::Create(std::string_view path, std::uint64_t now) {
    HiveKey* key = root.get();
    while (!path.empty()) {
        auto [first, rest] = SplitFirst(path);
        if (!first.empty()) {
            bool created = false;
            HiveKey& child = key->AddSubkey(first, created);
            if (created) {
                child.changed = true;
                child.modified = now;
                // Windows and Wine stamp the parent when a subkey is made.
                key->modified = now;
                key->changed = true;
            }
            key = &child;
        }
        path = rest;
    }
    return *key;
}

}  // namespace glyphmoor
