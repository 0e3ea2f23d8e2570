// OwnDefaults: an entry's default on a machine with defaults of its own (a
// Wine prefix, a real Windows), where the program's tables of the described
// Windows do not hold.
//
// The default is the value the machine held before the program first changed
// it (its baseline); where it held none, it is what the machine's shell draws
// without one, and restoring means removing the value again. On a Wine prefix
// that is Wine's own picture: shell32.dll's icon whose resource id is the
// shell's icon index plus one (Wine numbers its shell icons so), the desktop
// objects' pictures by their resource ids, a file type's program, and for a
// pointer the system pointer in user32.dll.
#pragma once

#include "foundation/AppEnvironment.h"
#include "foundation/RegistryStore.h"
#include "icons/IconLocation.h"
#include "icons/SystemIconEntry.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace glyphmoor {

struct OwnDefault {
    IconLocation location;
    // Restoring removes the value: the machine held none.
    bool absent = false;
};

// A desktop object Wine draws from shell32.dll when its class has no
// DefaultIcon: its class identifier and the picture's resource id.
struct WineObjectPicture {
    std::string_view clsid;
    std::int32_t resourceId;
};
std::span<const WineObjectPicture> WineObjectPictures();

// What a catalogue row says about itself, for finding its own default.
struct OwnDefaultQuery {
    IconStore store;
    // The default the program's tables give (used on a real Windows).
    IconLocation described;
    // A Shell Icons row: the shell's icon index. A file type row: its class.
    // A pointer row: its value name under Control Panel\Cursors.
    std::optional<int> shellIndex;
    std::string fileClass;
    std::string cursorValue;
};

// Looks up icons in the machine's files once each.
class OwnDefaultFinder {
public:
    OwnDefaultFinder(RegistryStore& registry, const AppEnvironment& app) : m_registry(registry), m_app(app) {}

    // The row's default, or nothing when the machine has no picture for it:
    // such a row is not listed.
    std::optional<OwnDefault> Find(const OwnDefaultQuery& query);

    // The file (a Windows path of the machine, or a bare name in the system
    // folder) holds that icon, or that pointer when `cursor`.
    bool Holds(const IconLocation& location, bool cursor = false);

private:
    std::optional<IconLocation> BaselineLocation(const IconStore& store);
    std::optional<OwnDefault> WineDrawn(const OwnDefaultQuery& query);

    RegistryStore& m_registry;
    const AppEnvironment& m_app;
    std::map<std::string, bool> m_holds;
};

// The value under a class key that holds the name the shell shows for the
// object: "LocalizedString" where the key has one (Wine and later Windows
// show it), else the unnamed value.
std::string ShownNameValue(RegistryStore& registry, const std::string& classKey);

// The name a name value's text shows: "@file,-id" is string resource id of
// that file (a bare file name lives in the system folder); any other text is
// itself. Nothing when the resource cannot be read.
std::optional<std::string> ResolveShownName(const AppEnvironment& app, std::string_view text);

// The name the shell shows for the object of a class key: its shown-name
// value resolved. Nothing when the key has none or it cannot be read.
std::optional<std::string> ShownName(RegistryStore& registry, const AppEnvironment& app,
                                     const std::string& classKey);

// A bare file name in an icon location ("shdoclc.dll,-190") names a file of
// the system folder, as the shell looks for it.
std::string InSystemFolder(const AppEnvironment& app, std::string_view file);

}  // namespace glyphmoor
