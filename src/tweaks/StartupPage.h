// StartupPage: the Miscellaneous tab's part of the tweak tree. The "Options"
// group (three registry items, toggled, restored and applied as the
// catalogue's items are) and a group per startup-program list with a node per
// program, added after the boot groups.
//
// The options:
//   - "Add Glyphmoor to My Computer context menu": the verb "Glyphmoor" on My
//     Computer's class key, whose command starts the program.
//   - "Add Change Icon to Folder context menu": the verb "ChangeIcon" of
//     folders, "C&hange Icon...", whose command starts the program with
//     " /f %1" (the Folders page at that folder).
//   - "Restore Window Position": the DWORD "Positions" of the program's
//     settings, 1 when on.
// Each reads on when its value is there (the verbs' command) or is 1.
#pragma once

#include "prompts/modMsgbox.h"
#include "tweaks/TweakTree.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace glyphmoor {

inline constexpr std::string_view kOptionChangeIcon = "Add Change Icon to Folder context menu";

std::span<const TweakRow> OptionRows();

// Adds the "Options" group to a built tree (once), read from the registry.
void BuildOptionGroup(TweakTree& tree);
// Reads the startup lists into the tree's StartupLists and adds a group per
// list ("Uninstall List", "Run", "Run Services", "User Run") with a node per
// program (once). A program's key is its list's caption, a backslash and its name.
void BuildStartupListNodes(TweakTree& tree);

// The list a node belongs to (a list's group or one of its programs).
std::optional<StartupList> StartupListOf(const TweakTree& tree, std::string_view key);

// The Delete key on a node: a program asks MsgConfirmPermanentDelete with its
// text and on "Yes" its deletion is queued, its node goes and Apply is
// enabled. True when it was queued; nothing for any other node.
bool DeleteStartupNode(TweakTree& tree, MsgContext& messages, std::string_view key);
// Add New Item on a Run list: the program is queued, its node added (or an
// entry of that name replaced) and Apply enabled. False for the uninstall
// list or an empty name or command.
bool AddStartupNode(TweakTree& tree, AppState& state, StartupList list, std::string_view name,
                    std::string_view command);

// Apply's startup step: the queued deletions and additions, in order.
void ApplyStartupLists(TweakTree& tree, RegistryStore& registry);

}  // namespace glyphmoor
