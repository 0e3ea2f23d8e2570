// AppState: the program-wide state that connects editing, apply and close.
//
// The window (or "/a", or the command line) makes one and passes it down;
// nothing in the core keeps such state anywhere else.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace glyphmoor {

struct AppState {
    // Icons changed: the icon cache is to be rebuilt at the next Apply.
    bool rebuildPending = false;
    // A change needs a restart: Apply asks for it.
    bool restartNeeded = false;
    // A restart was declined: the program reminds the user when it ends.
    bool restartPending = false;
    // A theme file has been loaded and not yet applied.
    bool themeLoaded = false;

    // What has been built or read so far; Apply writes only what is loaded.
    // (The icon catalogue keeps its own: IconCatalogue::Built and CursorsBuilt.)
    bool themeListLoaded = false;
    bool tweaksLoaded = false;
    bool bootOptionsLoaded = false;
    bool startupListsLoaded = false;

    // Per icon group (1 to 7 stored at 0 to 6): the group has changes to write.
    std::array<bool, 7> groupChanged{};

    // There are unapplied changes: the Apply button is enabled.
    bool applyEnabled = false;

    // The full path of the current theme, or empty, and the window caption
    // that names it.
    std::string currentTheme;
    std::string caption = "Glyphmoor";

    // The count of the last theme value read (ReadThemeValue).
    std::uint32_t lastReadLength = 0;
};

}  // namespace glyphmoor
