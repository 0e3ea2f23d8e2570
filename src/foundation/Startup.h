// Startup: the program's command line, its stored window settings and the
// decisions of its close sequence, as core logic the window calls.
#pragma once

#include "foundation/AppState.h"
#include "foundation/RegistryStore.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// SettingsKey and its subkeys.
inline constexpr std::string_view kSettingsKey = "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor";
inline constexpr std::string_view kSettingsPath =
    "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings";
inline constexpr std::string_view kRecentThemesPath =
    "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Themes";

// The pages of the main window, numbered as the page selector numbers them.
enum class Page { None = 0, Themes = 1, IconsAndCursors = 2, Folders = 3, TweakShell = 4 };

enum class StartMode {
    Window,        // an empty command line: the window, on the "Themes" page
    ApplyTheme,    // "/a FILE": apply the theme and end without a window
    PreviewTheme,  // "/t FILE": the "Icons & Cursors" page with the theme open for preview
    OpenFolder,    // "/f FOLDER": the "Folders" page at the folder
    Unknown,       // anything else: the window, no page chosen, start-up ends there
};

struct StartRequest {
    StartMode mode = StartMode::Window;
    std::string argument;
    Page firstPage = Page::Themes;

    friend bool operator==(const StartRequest&, const StartRequest&) = default;
};

// Parses the program's command line: the text after the program's name and
// the blank that separates them. The switch is the first two characters,
// compared with case ("/a", "/t", "/f"); the argument is everything from the
// fourth character on, whatever the third is, so exactly one blank must
// separate switch and argument ("/tC:\t.gmtheme" names ":\t.gmtheme").
StartRequest ParseCommandLine(std::string_view commandLine);
// The command line of separate words (argv without the program), joined by
// single blanks.
std::string JoinCommandLine(const std::vector<std::string>& words);

struct WindowPosition {
    int left = 0;
    int top = 0;

    friend bool operator==(const WindowPosition&, const WindowPosition&) = default;
};

// Where the window goes at start: when "Positions" is 1, the stored "Left"
// and "Top" (texts read as numbers the way Val reads them, so an unreadable
// one is 0); otherwise centred: half of what the screen has beyond the window, each way.
WindowPosition StartPosition(RegistryStore& registry, int screenWidth, int screenHeight, int windowWidth,
                             int windowHeight);
// "Left" and "Top" as decimal texts, as every close writes them.
void SaveWindowPosition(RegistryStore& registry, WindowPosition position);
// "Active Tab"; 10 when none is stored (GetRegDword's answer for nothing).
std::int32_t ReadActiveTab(RegistryStore& registry);
void WriteActiveTab(RegistryStore& registry, std::int32_t page);

// The close question, asked when there are unapplied changes, with its
// buttons in the order the prompt numbers its answers (0, 1, 2).
inline constexpr std::string_view kSaveChangesQuestion =
    "Would you like to save your changes before closing?";
inline constexpr std::array<std::string_view, 3> kSaveChangesButtons = {"Cancel", "No", "Yes"};

enum class CloseAction {
    Close,           // close without applying
    ApplyThenClose,  // what OK does: apply, then close
    Cancel,          // the window stays
};

// Whether closing asks kSaveChangesQuestion: when the Apply button is enabled.
bool AsksBeforeClosing(const AppState& state);
// What closing does, given the answer to the question (the pressed button's
// index), which is ignored when no question was asked.
CloseAction CloseActionFor(const AppState& state, std::optional<int> answer);

struct UnloadResult {
    // A declined restart: the next-start notice is shown before the program ends.
    bool showNextStartNotice = false;
    // "Active Tab" as read at unload.
    std::int32_t activeTab = 0;
};
// The unload step of the close: notes the next-start notice, reads "Active
// Tab" and writes the window's "Left" and "Top".
UnloadResult Unload(RegistryStore& registry, const AppState& state, WindowPosition position);

}  // namespace glyphmoor
