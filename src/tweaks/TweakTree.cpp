#include "tweaks/TweakTree.h"

#include "foundation/Baseline.h"
#include "foundation/TextEncoding.h"
#include "foundation/modRegistry.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace glyphmoor {

namespace {

std::optional<std::size_t> GroupIndex(std::string_view group) {
    const auto* it = std::find(kTweakGroupOrder.begin(), kTweakGroupOrder.end(), group);
    if (it == kTweakGroupOrder.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(it - kTweakGroupOrder.begin());
}

bool Compare(ReadRule rule, std::string_view value, std::string_view expected) {
    switch (rule) {
        case ReadRule::Equals:
            return value == expected;
        case ReadRule::EqualsNoCase:
            return EqualsNoCase(value, expected);
        case ReadRule::NotEquals:
            return value != expected;
        case ReadRule::NotEqualsNoCase:
            return !EqualsNoCase(value, expected);
        case ReadRule::EqualsOrEmpty:
            return value == expected || value.empty();
        case ReadRule::Exists:
            return value != kRegError;
        case ReadRule::FolderExists:
            break;
    }
    return false;
}

// A value's text as the registry module's reads give it: a DWORD as its
// number, a binary value as anything but "Error", a text as itself; a value
// that is not there as the markers.
std::string ValueText(const TweakRow& row, const std::optional<RegValue>& value) {
    if (row.store == TweakStore::Dword) {
        if (!value || value->data.size() != 4) {
            return std::to_string(kRegDwordUnreadable);
        }
        const auto& d = value->data;
        const std::uint32_t n =
            d[0] | (d[1] << 8U) | (d[2] << 16U) | (static_cast<std::uint32_t>(d[3]) << 24U);
        return std::to_string(static_cast<std::int32_t>(n));
    }
    if (!value) {
        return std::string(kRegError);
    }
    return row.store == TweakStore::Binary ? std::string("binary") : RegValueText(*value);
}

}  // namespace

int ValueLimitOf(const TweakRow& row, const DisplayCaps& caps) {
    switch (row.limitKind) {
        case ValueLimit::ScreenWidth:
            return caps.width;
        case ValueLimit::ScreenHeight:
            return caps.height;
        case ValueLimit::Fixed:
            break;
    }
    return row.limit;
}

TweakTree::TweakTree(RegistryStore& registry, const AppEnvironment& app) : m_registry(registry), m_app(app) {}

bool TweakTree::ReadCheck(const TweakRow& row, std::string_view key) const {
    if (row.store == TweakStore::Folder) {
        const auto folder = CascadeFolder(key);
        std::error_code ec;
        return folder && std::filesystem::exists(m_app.machine.HostPath(*folder), ec);
    }
    std::string value;
    switch (row.store) {
        case TweakStore::Dword:
            value = std::to_string(GetRegDword(m_registry, row.path, row.name));
            break;
        case TweakStore::Binary:
            value = GetRegBinary(m_registry, row.path, row.name);
            break;
        default:
            value = GetRegString(m_registry, row.path, row.name);
            break;
    }
    return Compare(row.read, value, ExpandTweakText(row.readValue, m_app));
}

std::string TweakTree::ReadValue(const TweakRow& row) const {
    std::string value = GetRegString(m_registry, row.path, row.name);
    if (value.empty() || value == kRegError || (!row.alsoDefault.empty() && value == row.alsoDefault)) {
        return std::string(row.buildDefault);
    }
    return value;
}

std::optional<TweakTree::State> TweakTree::BaselineState(const TweakNode& node) const {
    const TweakRow* row = node.row;
    if (row == nullptr || row->path.empty() || row->store == TweakStore::Folder) {
        return std::nullopt;
    }
    const auto recorded = RecordedValue(m_registry, row->path, row->name);
    if (!recorded) {
        return std::nullopt;
    }
    const std::string text = ValueText(*row, *recorded);
    if (row->kind == TweakKind::Value) {
        const bool useDefault =
            text.empty() || text == kRegError || (!row->alsoDefault.empty() && text == row->alsoDefault);
        return State{node.image, useDefault ? std::string(row->buildDefault) : text};
    }
    const bool on = Compare(row->read, text, ExpandTweakText(row->readValue, m_app));
    return State{on ? kTweakImageOn : kTweakImageOff, node.pending};
}

std::optional<std::string> TweakTree::CascadeFolder(std::string_view key) const {
    // An unreadable Start menu folder ("Error\") names no place on the machine.
    if (!IsDriveLetterPath(m_startMenu)) {
        return std::nullopt;
    }
    return m_startMenu + std::string(key);
}

void TweakTree::Build(const DisplayCaps& caps) {
    if (m_loaded) {
        return;
    }
    m_caps = caps;
    m_displayAvailable =
        m_app.windowsFlavour == "WinNT" || GetRegString(m_registry, kPlusSetupPath, "COOL.DLL") != kRegError;
    m_startMenu = GetRegString(m_registry, kShellFoldersPath, "Start Menu") + "\\";
    for (const TweakRow& row : TweakRows()) {
        const TweakRow* parent = FindTweakRow(row.parent);
        if (!m_displayAvailable && (row.displayOnly || (parent != nullptr && parent->displayOnly))) {
            continue;
        }
        TweakNode node{.row = &row,
                       .kind = row.kind,
                       .parent = std::string(row.parent),
                       .key = std::string(row.key),
                       .text = std::string(row.Text())};
        if (row.kind == TweakKind::Group) {
            node.image = row.parent.empty() ? kTweakImageGroup : kTweakImageSubGroup;
        } else if (row.kind == TweakKind::Value) {
            node.image = kTweakImageValue;
            node.pending = ReadValue(row);
        } else {
            node.image = ReadCheck(row, row.key) ? kTweakImageOn : kTweakImageOff;
        }
        node.machineImage = node.image;
        node.machinePending = node.pending;
        m_nodes.push_back(std::move(node));
    }
    m_loaded = true;
}

TweakNode* TweakTree::Find(std::string_view key) {
    const auto it =
        std::find_if(m_nodes.begin(), m_nodes.end(), [&](const TweakNode& n) { return n.key == key; });
    return it == m_nodes.end() ? nullptr : &*it;
}

const TweakNode* TweakTree::Find(std::string_view key) const {
    const auto it =
        std::find_if(m_nodes.begin(), m_nodes.end(), [&](const TweakNode& n) { return n.key == key; });
    return it == m_nodes.end() ? nullptr : &*it;
}

bool TweakTree::IsOn(std::string_view key) const {
    const TweakNode* node = Find(key);
    return node != nullptr && node->image == kTweakImageOn;
}

std::string TweakTree::TopGroupOf(std::string_view key) const {
    const TweakNode* node = Find(key);
    // The tree is at most four levels deep; the bound keeps a broken chain finite.
    for (int depth = 0; node != nullptr && depth < 8; ++depth) {
        if (node->parent.empty()) {
            return node->key;
        }
        node = Find(node->parent);
    }
    return {};
}

bool TweakTree::GroupChanged(std::string_view group) const {
    const auto index = GroupIndex(group);
    return index && m_groupChanged.at(*index);
}

void TweakTree::SetGroupChanged(std::string_view group, bool changed) {
    if (const auto index = GroupIndex(group)) {
        m_groupChanged.at(*index) = changed;
    }
}

bool TweakTree::AnyGroupChanged() const {
    return std::any_of(m_groupChanged.begin(), m_groupChanged.end(), [](bool b) { return b; });
}

}  // namespace glyphmoor
