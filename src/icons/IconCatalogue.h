// IconCatalogue: every shell icon and mouse pointer the user may change, in
// seven groups, built from the program's fixed table and the machine's state.
//
// The catalogue is the model behind the Icons & Cursors page: the window shows
// its groups, the theme loader sets entries by their stable key (group name
// and catalogue name), the apply step writes each entry back to its icon
// store. It reads the registry only while building; everything the user stages
// afterwards lives in the groups until it is applied.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/RegistryStore.h"
#include "icons/IconGroup.h"
#include "icons/ShellIconState.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace glyphmoor {

enum class GroupNumber : int {
    DesktopIcons = 1,
    StartIcons = 2,
    FolderIcons = 3,
    DriveIcons = 4,
    OtherIcons = 5,
    FileIcons = 6,
    Cursors = 7,
};
inline constexpr int kIconGroupCount = 7;

// Adds one catalogue row to `list`, the one way every row is added:
//   1. With a class key, its unnamed value is the user's name for the object:
//      when it is neither empty nor "Error" the row's own name moves to the
//      catalogue name and the user's name is shown.
//   2. The icon store's value, when neither empty nor "Error", is the current
//      icon: a leading "%systemroot%" (any case) becomes WinDir, then the text
//      is split into file and index.
//   3. Otherwise the current icon is the default.
// A row whose stored text cannot be split is not added (false).
bool AddCatalogueEntry(RegistryStore& registry, std::string_view winDir, IconGroup& list,
                       std::string displayName, const IconStore& store, std::string defaultFile,
                       std::int32_t defaultIndex, std::string classKey, std::string catalogueName);

// The shortcut-arrow tweak has hidden the arrows: the Shell Icons value "29"
// names the program's blank.ico. A full build then leaves the "Shortcut
// Overlay" row out.
bool ShortcutOverlayHidden(RegistryStore& registry, const AppEnvironment& app);

class IconCatalogue {
public:
    // The registry and the environment must outlive the catalogue.
    IconCatalogue(RegistryStore& registry, const AppEnvironment& app);

    // Reads the machine's state (ShellIconState); unless `noBuild`, then
    // builds groups 1 to 6 (BuildIconCatalogue).
    void DetectShellIcons(bool noBuild = false);
    // Fills groups 1 to 6 in order, "Other Icons" through BuildOtherIcons with
    // the shortcut overlay row unless the arrows are hidden, and marks the
    // catalogue as built. Detects the machine's state first when that has not
    // been done.
    void BuildIconCatalogue();
    // Fills group 5, with or without the "Shortcut Overlay" row.
    void BuildOtherIcons(bool includeShortcutOverlay);
    // Fills group 7, the pointers.
    void BuildCursorCatalogue();

    [[nodiscard]] bool Detected() const { return m_state.has_value(); }
    [[nodiscard]] const AppEnvironment& App() const { return m_app; }
    [[nodiscard]] const ShellIconState& State() const { return *m_state; }
    // Groups 1 to 6 have been built: the apply step writes icons only then.
    [[nodiscard]] bool Built() const { return m_built; }
    [[nodiscard]] bool CursorsBuilt() const { return m_cursorsBuilt; }

    // Groups by number, 1 to 7.
    [[nodiscard]] IconGroup& Group(int number) { return m_groups.at(static_cast<std::size_t>(number - 1)); }
    [[nodiscard]] const IconGroup& Group(int number) const {
        return m_groups.at(static_cast<std::size_t>(number - 1));
    }
    [[nodiscard]] IconGroup& Group(GroupNumber number) { return Group(static_cast<int>(number)); }
    // The group with that name (compared without regard to case), or nullptr.
    [[nodiscard]] IconGroup* FindGroup(std::string_view groupName);

    // The entry with the stable key, or nullptr.
    [[nodiscard]] SystemIconEntry* Find(std::string_view groupName, std::string_view name);
    // Sets the entry with the stable key; false when there is none.
    bool SetByKey(std::string_view groupName, std::string_view name, const IconLocation& location);

private:
    const ShellIconState& EnsureState();

    RegistryStore& m_registry;
    const AppEnvironment& m_app;
    std::optional<ShellIconState> m_state;
    std::array<IconGroup, kIconGroupCount> m_groups;
    bool m_built = false;
    bool m_cursorsBuilt = false;
};

}  // namespace glyphmoor
