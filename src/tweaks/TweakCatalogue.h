// TweakCatalogue: every node of the Tweak Shell page's tree, as one table in
// tree order. A row is a group node, a check item or a value item, and says
// where the item's state lives, how that state is read, what is written for
// each state, which system call follows, what restoring the defaults sets,
// which question stands before turning it on and what a toggle marks.
//
// The table is data: TweakTree walks it to build the tree, TweakApply to
// write it back. Nothing here reads or writes the machine.
//
// Texts in the table may name the machine's folders by tokens that
// ExpandTweakText replaces: {program} (the program's folder), {system} (the
// system folder), {prompt} (the command of "Command Prompt From Here", which
// differs between Windows NT and Windows 95/98) and {smoothing} (what "Font
// Smoothing" writes when on: "2" on Windows NT, else "1").
#pragma once

#include "foundation/AppEnvironment.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace glyphmoor {

inline constexpr std::string_view kTweakDeskPath = "HKEY_CURRENT_USER\\Control Panel\\desktop";
inline constexpr std::string_view kTweakMetricsPath =
    "HKEY_CURRENT_USER\\Control Panel\\desktop\\WindowMetrics";
inline constexpr std::string_view kTweakPolicyExplorerPath =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Policies\\Explorer";
inline constexpr std::string_view kTweakPolicyNetworkPath =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Policies\\Network";
inline constexpr std::string_view kTweakMousePath = "HKEY_CURRENT_USER\\Control Panel\\Mouse";
inline constexpr std::string_view kPlusSetupPath = "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Plus!\\Setup";
inline constexpr std::string_view kShellFoldersPath =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";

// The node images of the tree: 3 an unchecked box, 4 a checked box, 5 a value
// item. Top-level groups show 1, sub-groups 2.
inline constexpr int kTweakImageGroup = 1;
inline constexpr int kTweakImageSubGroup = 2;
inline constexpr int kTweakImageOff = 3;
inline constexpr int kTweakImageOn = 4;
inline constexpr int kTweakImageValue = 5;

// The top-level groups whose changed flags Apply consults, in the order a
// toggle compares them; the last five are built by the boot options and the
// startup lists.
inline constexpr std::array<std::string_view, 13> kTweakGroupOrder = {
    "General",      "Display", "Explorer",  "Icons",        "Mouse",     "Start Menu", "Wallpaper",
    "Restrictions", "Boot",    "Dual Boot", "Startup Menu", "Safe Mode", "Options"};

enum class TweakKind { Group, Check, Value };

// Where a check item's state lives.
enum class TweakStore { String, Dword, Binary, Folder };

// When a check item reads as on. `readValue` is the text (or, for a DWORD,
// the decimal number) the rule compares with.
enum class ReadRule {
    Equals,           // the value is exactly readValue
    EqualsNoCase,     // the value, lower-cased, is readValue lower-cased
    NotEquals,        // the value is anything but readValue ("Error" included)
    NotEqualsNoCase,  // the value, lower-cased, is not readValue
    EqualsOrEmpty,    // readValue, or an empty text (a missing value reads "Error": off)
    Exists,           // the value can be read, whatever it holds
    FolderExists,     // the folder's attributes can be read
};

// What Apply writes for a check item.
enum class WriteRule {
    Values,             // onValue or offValue, into the item's own store
    DeleteWhenOff,      // onValue; off deletes the value
    VerbKey,            // onValue, and verbCaption as verbKey's unnamed value; off deletes verbKey
    Taskbar,            // starts Taskbar.exe; on stores the Run value, off deletes it
    Folder,             // on makes the folder, off removes it
    DelayUntilClicked,  // onValue; off the pending "Menu Show Delay"
    IconApply,          // nothing: the icon apply writes it
};

// The SystemParametersInfo call that follows an item's write.
enum class SpiRule {
    None,
    OnOff,          // uiParam 1 or 0, no pvParam, flags 0
    WrittenNumber,  // uiParam the number written, no pvParam, flags 0
    Animation,      // uiParam 8, an animation record {8, on}, flags 3
    Wallpaper,      // uiParam 0, the current wallpaper's path, flags 3
    Number,         // value items: uiParam the pending number, flags 0
};

// What restore-defaults sets.
enum class TweakDefault { On, Off, NotReset };

// The question asked before a check item is turned on.
enum class TweakConfirm { None, Notepad, HideNetwork, DisableDesktop, LowColour };

// What turning a check item on or off marks beyond its group.
enum class ToggleEffect { None, Rebuild, Restart };

// The value editor's upper limit.
enum class ValueLimit { Fixed, ScreenWidth, ScreenHeight };

struct TweakRow {
    TweakKind kind = TweakKind::Check;
    std::string_view parent{};  // the parent node's key; empty at the top
    std::string_view key{};
    std::string_view text{};  // empty: the same as the key
    // Only on Windows NT or with the Plus! pack: the Display group.
    bool displayOnly = false;

    // Check and value items: where the state lives.
    TweakStore store = TweakStore::String;
    std::string_view path{};  // a RegistryPath; for a folder, empty (the Start menu folder)
    std::string_view name{};

    // Check items.
    ReadRule read = ReadRule::Equals;
    std::string_view readValue{};
    WriteRule write = WriteRule::Values;
    std::string_view onValue{};
    std::string_view offValue{};
    std::string_view verbKey{};
    std::string_view verbCaption{};
    TweakDefault restore = TweakDefault::Off;
    TweakConfirm confirm = TweakConfirm::None;
    ToggleEffect effect = ToggleEffect::None;

    // Value items: the pending value when the stored one is empty or "Error"
    // (and the stored text that also means it), what restore-defaults sets,
    // the editor's unit and upper limit.
    std::string_view buildDefault{};
    std::string_view alsoDefault{};
    std::string_view restoreValue{};
    std::string_view unit{};
    ValueLimit limitKind = ValueLimit::Fixed;
    int limit = 0;

    // Both: the system call after the write.
    SpiRule spi = SpiRule::None;
    std::uint32_t spiAction = 0;

    // The item's "What's This" help.
    std::string_view help{};

    [[nodiscard]] std::string_view Text() const { return text.empty() ? key : text; }
};

// The whole tree in order: groups, then their items and sub-groups.
std::span<const TweakRow> TweakRows();

// The row with this key (compared exactly), or null.
const TweakRow* FindTweakRow(std::string_view key);

// A table text with its tokens replaced for this machine.
std::string ExpandTweakText(std::string_view text, const AppEnvironment& app);

// The keys of the special items the startup page's Options group adds later;
// restore-defaults sets them when they are in the tree.
inline constexpr std::string_view kOptionContextMenu = "Add Glyphmoor to My Computer context menu";
inline constexpr std::string_view kOptionRestorePosition = "Restore Window Position";
inline constexpr std::string_view kMenuShowDelayKey = "Menu Show Delay";
inline constexpr std::string_view kDelayUntilClickedKey = "Delay Until Clicked";
inline constexpr std::string_view kBitmapThumbnailKey = "Bitmap Thumbnail as Default Icon";
inline constexpr std::string_view kTaskbarProgram = "\\Taskbar.exe";
inline constexpr std::string_view kRunPath =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run";

}  // namespace glyphmoor
