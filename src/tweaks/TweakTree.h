// TweakTree: the model behind the Tweak Shell page's tree `tvTweak`.
//
// Build walks the catalogue's table once: it adds every group and item in
// tree order, reads each item's state from the machine (check items by their
// read rule, value items into their pending values), and captures what the
// page needs later: the display's capabilities, whether the Display group is
// available, and the Start menu folder of the cascading-menu items. Reading
// never writes.
//
// A node's image is its state, as the page shows it: 3 off, 4 on, 5 a value
// item (see TweakCatalogue.h). The tree also keeps, per node, the state the
// machine held when it was read or last written, so that on a machine with
// defaults of its own Apply writes only what the user changed.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/RegistryStore.h"
#include "tweaks/TweakCatalogue.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// The display as the page found it when the tree was built.
struct DisplayCaps {
    int bitsPerPixel = 32;
    int width = 640;
    int height = 480;
};

struct TweakNode {
    // The node's catalogue row; null for nodes that later parts add.
    const TweakRow* row = nullptr;
    TweakKind kind = TweakKind::Check;
    std::string parent{};
    std::string key{};
    std::string text{};
    int image = kTweakImageOff;
    // A value item's pending value (a decimal number, or empty when the user
    // cleared it).
    std::string pending{};
    // What the machine held when read or last written.
    int machineImage = kTweakImageOff;
    std::string machinePending{};
    // Restore-defaults on a machine with defaults of its own gave the node
    // the state of the value the machine held before the program first
    // changed it: Apply puts that value back byte for byte.
    bool toBaseline = false;

    [[nodiscard]] bool IsOn() const { return image == kTweakImageOn; }
    // The user made this node differ from what the machine holds.
    // A value item by its pending value, anything else by its image.
    [[nodiscard]] bool Changed() const {
        return kind == TweakKind::Value ? pending != machinePending : image != machineImage;
    }
};

class TweakTree {
public:
    // The registry and the environment must outlive the tree.
    TweakTree(RegistryStore& registry, const AppEnvironment& app);

    // Builds the tree (once; later calls do nothing) and sets Loaded.
    void Build(const DisplayCaps& caps);
    [[nodiscard]] bool Loaded() const { return m_loaded; }

    [[nodiscard]] const std::vector<TweakNode>& Nodes() const { return m_nodes; }
    [[nodiscard]] std::vector<TweakNode>& Nodes() { return m_nodes; }
    // The node with this key (compared exactly, as the tree control does), or null.
    [[nodiscard]] TweakNode* Find(std::string_view key);
    [[nodiscard]] const TweakNode* Find(std::string_view key) const;
    // The node's image is 4.
    [[nodiscard]] bool IsOn(std::string_view key) const;
    // The key of the top-level group a node lies in ("" for an unknown key).
    [[nodiscard]] std::string TopGroupOf(std::string_view key) const;
    // Adds a node after the others; the boot options and startup lists add theirs this way.
    void AddNode(TweakNode node) { m_nodes.push_back(std::move(node)); }

    [[nodiscard]] bool DisplayTweaksAvailable() const { return m_displayAvailable; }
    [[nodiscard]] const DisplayCaps& Caps() const { return m_caps; }
    // The Start menu folder with a trailing backslash.
    [[nodiscard]] const std::string& StartMenuFolder() const { return m_startMenu; }
    [[nodiscard]] const AppEnvironment& App() const { return m_app; }
    [[nodiscard]] RegistryStore& Registry() const { return m_registry; }

    // The changed flags of the top-level groups (kTweakGroupOrder).
    [[nodiscard]] bool GroupChanged(std::string_view group) const;
    void SetGroupChanged(std::string_view group, bool changed);
    [[nodiscard]] bool AnyGroupChanged() const;

    // Reads a check item's state by its row's rule: true for on.
    [[nodiscard]] bool ReadCheck(const TweakRow& row, std::string_view key) const;
    // Reads a value item's pending value.
    [[nodiscard]] std::string ReadValue(const TweakRow& row) const;
    // The state a registry item had before the program first changed its
    // value (its baseline), as the node's image and pending value would show
    // it; nothing when the program never changed it or the item lives
    // elsewhere (a folder).
    struct State {
        int image = kTweakImageOff;
        std::string pending;
    };
    [[nodiscard]] std::optional<State> BaselineState(const TweakNode& node) const;
    // The host folder of a cascading-menu item, or nothing when the Start
    // menu folder is not a Windows path of the machine.
    [[nodiscard]] std::optional<std::string> CascadeFolder(std::string_view key) const;

private:
    RegistryStore& m_registry;
    const AppEnvironment& m_app;
    std::vector<TweakNode> m_nodes;
    std::array<bool, kTweakGroupOrder.size()> m_groupChanged{};
    DisplayCaps m_caps;
    std::string m_startMenu;
    bool m_displayAvailable = false;
    bool m_loaded = false;
};

// The editor's upper limit of a value item.
int ValueLimitOf(const TweakRow& row, const DisplayCaps& caps);

}  // namespace glyphmoor
