#include "tweaks/StartupPage.h"

#include "foundation/Startup.h"

#include <array>

namespace glyphmoor {

namespace {

constexpr std::string_view kMyComputerVerb =
    "HKEY_CLASSES_ROOT\\CLSID\\{20D04FE0-3AEA-1069-A2D8-08002B30309D}\\shell\\Glyphmoor";
constexpr std::string_view kFolderVerb = "HKEY_CLASSES_ROOT\\Folder\\shell\\ChangeIcon";
// MsgConfirmPermanentDelete's "Yes".
constexpr std::int16_t kPermanentDeleteYes = 1;

constexpr auto kRows = std::to_array<TweakRow>({
    {.kind = TweakKind::Group, .key = "Options"},
    {.parent = "Options",
     .key = kOptionContextMenu,
     .path = "HKEY_CLASSES_ROOT\\CLSID\\{20D04FE0-3AEA-1069-A2D8-08002B30309D}\\shell\\Glyphmoor\\command",
     .read = ReadRule::Exists,
     .write = WriteRule::VerbKey,
     .onValue = "\"{program}\\Glyphmoor.exe\"",
     .verbKey = kMyComputerVerb,
     .verbCaption = "&Glyphmoor",
     .restore = TweakDefault::Off,
     .help = "Adds Glyphmoor to the menu of My Computer, so that a right click on it starts Glyphmoor."},
    {.parent = "Options",
     .key = kOptionChangeIcon,
     .path = "HKEY_CLASSES_ROOT\\Folder\\shell\\ChangeIcon\\command",
     .read = ReadRule::Exists,
     .write = WriteRule::VerbKey,
     .onValue = "\"{program}\\Glyphmoor.exe\" /f %1",
     .verbKey = kFolderVerb,
     .verbCaption = "C&hange Icon...",
     .restore = TweakDefault::NotReset,
     .help = "Adds Change Icon... to the menu of every folder: it opens Glyphmoor's Folders page at that "
             "folder."},
    {.parent = "Options",
     .key = kOptionRestorePosition,
     .store = TweakStore::Dword,
     .path = kSettingsPath,
     .name = "Positions",
     .readValue = "1",
     .onValue = "1",
     .offValue = "0",
     .restore = TweakDefault::On,
     .help = "Opens Glyphmoor's window where it was when you last closed it, instead of in the middle of "
             "the screen."},
});

std::string NodeKey(StartupList list, std::string_view name) {
    return std::string(InfoOf(list).caption) + "\\" + std::string(name);
}

TweakNode EntryNode(const StartupEntry& entry) {
    return TweakNode{.kind = TweakKind::Entry,
                     .parent = std::string(InfoOf(entry.list).caption),
                     .key = NodeKey(entry.list, entry.name),
                     .text = entry.text,
                     .image = kTweakImageEntry,
                     .pending = entry.command,
                     .machineImage = kTweakImageEntry,
                     .machinePending = entry.command};
}

}  // namespace

std::span<const TweakRow> OptionRows() {
    return kRows;
}

void BuildOptionGroup(TweakTree& tree) {
    if (tree.Find("Options") != nullptr) {
        return;
    }
    for (const TweakRow& row : OptionRows()) {
        TweakNode node{.row = &row,
                       .kind = row.kind,
                       .parent = std::string(row.parent),
                       .key = std::string(row.key),
                       .text = std::string(row.Text())};
        node.image = row.kind == TweakKind::Group   ? kTweakImageGroup
                     : tree.ReadCheck(row, row.key) ? kTweakImageOn
                                                    : kTweakImageOff;
        node.machineImage = node.image;
        tree.AddNode(std::move(node));
    }
}

void BuildStartupListNodes(TweakTree& tree) {
    if (tree.Startup().Loaded()) {
        return;
    }
    tree.Startup().Load(tree.Registry());
    for (const StartupListInfo& info : StartupListInfos()) {
        tree.AddNode(TweakNode{.kind = TweakKind::Group,
                               .key = std::string(info.caption),
                               .text = std::string(info.caption),
                               .image = kTweakImageGroup,
                               .machineImage = kTweakImageGroup});
        for (const StartupEntry& entry : tree.Startup().Entries()) {
            if (entry.list == info.list) {
                tree.AddNode(EntryNode(entry));
            }
        }
    }
}

std::optional<StartupList> StartupListOf(const TweakTree& tree, std::string_view key) {
    const TweakNode* node = tree.Find(key);
    if (node == nullptr) {
        return std::nullopt;
    }
    const std::string_view group = node->kind == TweakKind::Entry ? std::string_view(node->parent) : key;
    for (const StartupListInfo& info : StartupListInfos()) {
        if (info.caption == group && (node->kind == TweakKind::Entry || node->row == nullptr)) {
            return info.list;
        }
    }
    return std::nullopt;
}

bool DeleteStartupNode(TweakTree& tree, MsgContext& messages, std::string_view key) {
    const TweakNode* node = tree.Find(key);
    const auto list = StartupListOf(tree, key);
    if (node == nullptr || node->kind != TweakKind::Entry || !list) {
        return false;
    }
    // The node's name is its key less the list's caption and backslash.
    const std::string name = node->key.substr(InfoOf(*list).caption.size() + 1);
    if (MsgConfirmPermanentDelete(messages, node->text) != kPermanentDeleteYes) {
        return false;
    }
    if (!tree.Startup().QueueDelete(*list, name)) {
        return false;
    }
    tree.RemoveNode(std::string(key));
    messages.state.applyEnabled = true;
    return true;
}

bool AddStartupNode(TweakTree& tree, AppState& state, StartupList list, std::string_view name,
                    std::string_view command) {
    if (!tree.Startup().QueueAdd(list, name, command)) {
        return false;
    }
    const StartupEntry& added = tree.Startup().Entries().back();
    tree.RemoveNode(NodeKey(list, added.name));
    // After the list's last program, or its group when it has none.
    auto& nodes = tree.Nodes();
    const std::string caption(InfoOf(list).caption);
    auto at = nodes.end();
    for (auto it = nodes.begin(); it != nodes.end(); ++it) {
        if (it->key == caption || it->parent == caption) {
            at = it + 1;
        }
    }
    nodes.insert(at, EntryNode(added));
    state.applyEnabled = true;
    return true;
}

void ApplyStartupLists(TweakTree& tree, RegistryStore& registry) {
    if (tree.Startup().Loaded()) {
        tree.Startup().Apply(registry);
    }
}

}  // namespace glyphmoor
