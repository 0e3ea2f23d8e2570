// SystemIconEntry: one item of an icon group, as its list holds it.
#pragma once

#include "icons/IconLocation.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace glyphmoor {

// Where an entry's IconLocation text is kept: a RegistryPath and a value
// name (empty for the unnamed value).
struct IconStore {
    std::string path;
    std::string valueName;

    friend bool operator==(const IconStore&, const IconStore&) = default;
};

struct SystemIconEntry {
    // The text the list shows: for an object the user can rename, the name
    // read from its class key; otherwise the catalogue's own name.
    std::string displayName;
    // What the registry holds now, or the default when it holds nothing.
    std::string currentFile;
    std::int32_t currentIndex = 0;
    // The fixed name of the item when it differs from the display name
    // ("Run" for "Run...", "My Computer" for a computer the user calls
    // "Workstation"); empty otherwise.
    std::string catalogueName;
    // What "restore" puts back. The "Zip File" entry has none (empty file).
    std::string defaultFile;
    std::int32_t defaultIndex = 0;

    // Kept beside the list's fields for the code that writes entries back:
    // the icon store, and for a renamable object the class key whose unnamed
    // value holds its name (empty for every other entry).
    IconStore store;
    std::string classKey;

    // On a machine with defaults of its own (see MachineKind): the default is
    // the machine's own, and restoring it means removing the value when the
    // machine held none.
    bool defaultAbsent = false;
    // The icon and the name as the build read them, so that the apply step
    // can tell what the user changed.
    IconLocation loaded;
    std::string loadedName;

    // The name the entry is found by, with its group's name: the catalogue
    // name, else the display name. Never the name the user gave an object.
    [[nodiscard]] std::string_view Key() const { return catalogueName.empty() ? displayName : catalogueName; }
    [[nodiscard]] IconLocation Current() const { return {currentFile, currentIndex}; }
    [[nodiscard]] IconLocation Default() const { return {defaultFile, defaultIndex}; }
    [[nodiscard]] bool IconChanged() const { return Current() != loaded; }
    [[nodiscard]] bool NameChanged() const { return displayName != loadedName; }

    friend bool operator==(const SystemIconEntry&, const SystemIconEntry&) = default;
};

}  // namespace glyphmoor
