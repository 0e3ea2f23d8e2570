// The table of the Tweak Shell tree, in tree order.
#include "tweaks/TweakCatalogue.h"

#include <array>

namespace glyphmoor {

namespace {

// The only data written to the binary values of the catalogue.
constexpr std::string_view kZero4("\0\0\0\0", 4);
constexpr std::string_view kOne4("\x01\0\0\0", 4);

constexpr std::string_view kSound = "HKEY_CURRENT_USER\\Control Panel\\Sound";
constexpr std::string_view kExplorer =
    "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer";
constexpr std::string_view kShellIcons =
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\explorer\\Shell Icons";
constexpr std::string_view kExploreCommand = "EXPLORER.EXE /E,/Root,/IDList,%I";
constexpr std::string_view kNotepadCommand = "NOTEPAD.EXE \"%1\"";

constexpr TweakRow Group(std::string_view key, std::string_view parent = {}, bool displayOnly = false) {
    return TweakRow{.kind = TweakKind::Group, .parent = parent, .key = key, .displayOnly = displayOnly};
}

// A DWORD under a policy key that is on for exactly `on` and off as 0.
constexpr TweakRow Restriction(std::string_view path, std::string_view key, std::string_view name,
                               std::string_view on, ToggleEffect effect, std::string_view help,
                               TweakConfirm confirm = TweakConfirm::None) {
    return TweakRow{.parent = "Restrictions",
                    .key = key,
                    .store = TweakStore::Dword,
                    .path = path,
                    .name = name,
                    .readValue = on,
                    .onValue = on,
                    .offValue = "0",
                    .confirm = confirm,
                    .effect = effect,
                    .help = help};
}

// A menu of the Start menu shown as a cascade: a folder named by the special
// folder's name and class id inside the Start menu folder.
constexpr TweakRow Cascade(std::string_view key, std::string_view text) {
    return TweakRow{.parent = "Cascading Menus",
                    .key = key,
                    .text = text,
                    .store = TweakStore::Folder,
                    .read = ReadRule::FolderExists,
                    .write = WriteRule::Folder,
                    .restore = TweakDefault::NotReset,
                    .help =
                        "Shows this folder's contents as a menu of its own on the Start menu, instead "
                        "of opening it in a window."};
}

constexpr TweakRow Value(std::string_view parent, std::string_view key, std::string_view text,
                         std::string_view path, std::string_view name, std::string_view byDefault,
                         std::string_view unit, ValueLimit limitKind, int limit, std::uint32_t spiAction,
                         std::string_view help) {
    return TweakRow{.kind = TweakKind::Value,
                    .parent = parent,
                    .key = key,
                    .text = text,
                    .path = path,
                    .name = name,
                    .buildDefault = byDefault,
                    .restoreValue = byDefault,
                    .unit = unit,
                    .limitKind = limitKind,
                    .limit = limit,
                    .spi = spiAction == 0 ? SpiRule::None : SpiRule::Number,
                    .spiAction = spiAction,
                    .help = help};
}

constexpr auto kRows = std::to_array<TweakRow>({
    Group("General"),
    {.parent = "General",
     .key = "Beep On Errors",
     .path = kSound,
     .name = "Beep",
     .read = ReadRule::NotEqualsNoCase,
     .readValue = "no",
     .onValue = "Yes",
     .offValue = "No",
     .restore = TweakDefault::On,
     .spi = SpiRule::OnOff,
     .spiAction = 2,
     .help = "Sounds the warning beep when a program reports an error or you press a key that does "
             "nothing."},
    {.parent = "General",
     .key = "Bitmap Thumbnail as Default Icon",
     .path = "HKEY_CLASSES_ROOT\\Paint.Picture\\DefaultIcon",
     .readValue = "%1",
     .write = WriteRule::IconApply,
     .effect = ToggleEffect::Rebuild,
     .help = "Shows each bitmap file with a small picture of its own contents instead of the Paint icon."},
    {.parent = "General",
     .key = "Non-blinking Cursor",
     .path = kTweakDeskPath,
     .name = "CursorBlinkRate",
     .readValue = "65535",
     .onValue = "65535",
     .offValue = "500",
     .help = "Keeps the text cursor steady instead of blinking."},
    {.parent = "General",
     .key = "Hide the Taskbar from use",
     .path = kRunPath,
     .name = "Hide Taskbar",
     .read = ReadRule::Exists,
     .write = WriteRule::Taskbar,
     .restore = TweakDefault::NotReset,
     .help = "Hides the taskbar completely, now and each time Windows starts, through the small program "
             "Taskbar.exe in Glyphmoor's folder."},
    {.parent = "General",
     .key = "Smooth Scrolling",
     .store = TweakStore::Dword,
     .path = kTweakDeskPath,
     .name = "SmoothScroll",
     .readValue = "1",
     .onValue = "1",
     .offValue = "0",
     .help = "Scrolls lists and documents smoothly instead of a line at a time."},
    {.parent = "General",
     .key = "Window Animation",
     .path = kTweakMetricsPath,
     .name = "MinAnimate",
     .read = ReadRule::NotEquals,
     .readValue = "0",
     .onValue = "1",
     .offValue = "0",
     .restore = TweakDefault::On,
     .spi = SpiRule::Animation,
     .spiAction = 73,
     .help = "Shows windows shrinking to the taskbar and growing from it when they are minimised and "
             "restored."},

    Group("Display", {}, true),
    {.parent = "Display",
     .key = "Font Smoothing",
     .path = kTweakDeskPath,
     .name = "FontSmoothing",
     .readValue = "1",
     .onValue = "{smoothing}",
     .offValue = "0",
     .spi = SpiRule::WrittenNumber,
     .spiAction = 75,
     .help = "Smooths the edges of screen fonts. On Windows NT a setting made here is shown as off the next "
             "time, although it stays in effect."},
    {.parent = "Display",
     .key = "Full Window Dragging",
     .path = kTweakDeskPath,
     .name = "DragFullWindows",
     .readValue = "1",
     .onValue = "1",
     .offValue = "0",
     .restore = TweakDefault::On,
     .spi = SpiRule::OnOff,
     .spiAction = 37,
     .help = "Shows a window's contents while it is moved or sized, instead of an outline."},
    {.parent = "Display",
     .key = "Stretch Desktop Wallpaper",
     .path = kTweakDeskPath,
     .name = "WallpaperStyle",
     .readValue = "2",
     .onValue = "2",
     .offValue = "0",
     .spi = SpiRule::Wallpaper,
     .spiAction = 20,
     .help = "Stretches the desktop wallpaper to fill the whole screen."},

    Group("Explorer"),
    {.parent = "Explorer",
     .key = "Save Settings on Exit",
     .store = TweakStore::Binary,
     .path = kTweakPolicyExplorerPath,
     .name = "NoSaveSettings",
     .read = ReadRule::Exists,
     .onValue = kZero4,
     .offValue = kOne4,
     .restore = TweakDefault::On,
     .help = "Keeps the positions of open windows and desktop icons when Windows shuts down. Once applied "
             "it is shown as on whatever it was set to."},
    {.parent = "Explorer",
     .key = "\"Shortcut to\" Prefix on New Shortcuts",
     .store = TweakStore::Binary,
     .path = kExplorer,
     .name = "link",
     .read = ReadRule::Exists,
     .write = WriteRule::DeleteWhenOff,
     .onValue = kZero4,
     .restore = TweakDefault::On,
     .effect = ToggleEffect::Restart,
     .help = "Names a new shortcut \"Shortcut to\" followed by the name of what it points at."},
    {.parent = "Explorer",
     .key = "Remove Shortcut Overlay",
     .path = kShellIcons,
     .name = "29",
     .readValue = "{program}\\blank.ico",
     .onValue = "{program}\\blank.ico",
     .offValue = "{system}\\shell32.dll,29",
     .restore = TweakDefault::NotReset,
     .help = "Draws shortcuts without the small arrow in their corner."},
    Group("Menu Items", "Explorer"),
    Group("Folder", "Menu Items"),
    {.parent = "Folder",
     .key = "Explore From Here",
     .path = "HKEY_CLASSES_ROOT\\Folder\\Shell\\RootExplore\\Command",
     .read = ReadRule::EqualsOrEmpty,
     .readValue = kExploreCommand,
     .write = WriteRule::VerbKey,
     .onValue = kExploreCommand,
     .verbKey = "HKEY_CLASSES_ROOT\\Folder\\Shell\\RootExplore",
     .verbCaption = "E&xplore From Here",
     .help = "Adds \"Explore From Here\" to a folder's menu: an Explorer window whose tree starts at that "
             "folder."},
    Group("Directory", "Menu Items"),
    {.parent = "Directory",
     .key = "Command Prompt From Here",
     .path = "HKEY_CLASSES_ROOT\\Directory\\Shell\\DosHere\\Command",
     .read = ReadRule::EqualsNoCase,
     .readValue = "{prompt}",
     .write = WriteRule::VerbKey,
     .onValue = "{prompt}",
     .verbKey = "HKEY_CLASSES_ROOT\\Directory\\Shell\\DosHere",
     .verbCaption = "Command &Prompt From Here",
     .help = "Adds \"Command Prompt From Here\" to a folder's menu: a command prompt that starts in that "
             "folder."},
    Group("All Files", "Menu Items"),
    {.parent = "All Files",
     .key = "Quick View",
     .path = "HKEY_CLASSES_ROOT\\*\\QuickView",
     .readValue = "*",
     .write = WriteRule::VerbKey,
     .onValue = "*",
     .verbKey = "HKEY_CLASSES_ROOT\\*\\QuickView",
     .help = "Offers \"Quick View\" on the menu of every file, whatever its type."},
    {.parent = "All Files",
     .key = "Note Pad",
     .path = "HKEY_CLASSES_ROOT\\*\\Shell\\Notepad\\Command",
     .readValue = kNotepadCommand,
     .write = WriteRule::VerbKey,
     .onValue = kNotepadCommand,
     .verbKey = "HKEY_CLASSES_ROOT\\*\\Shell\\Notepad",
     .verbCaption = "&Notepad",
     .confirm = TweakConfirm::Notepad,
     .help = "Adds \"Notepad\" to the menu of every file, to open any file as text."},

    Group("Icons"),
    {.parent = "Icons",
     .key = "Large Icons",
     .path = kTweakMetricsPath,
     .name = "Shell Icon Size",
     .readValue = "48",
     .onValue = "48",
     .offValue = "32",
     .effect = ToggleEffect::Rebuild,
     .help = "Draws the desktop's and folders' large icons at 48 pixels instead of 32."},
    {.parent = "Icons",
     .key = "Show Icons Using All Possible Colours",
     .path = kTweakMetricsPath,
     .name = "Shell Icon BPP",
     .readValue = "16",
     .onValue = "16",
     .offValue = "4",
     .confirm = TweakConfirm::LowColour,
     .effect = ToggleEffect::Restart,
     .help = "Draws icons with all the colours the display can show instead of 16. Needs a display set to "
             "High Colour or True Colour."},
    {.parent = "Icons",
     .key = "Wrap Icon Titles",
     .path = kTweakMetricsPath,
     .name = "IconTitleWrap",
     .read = ReadRule::NotEquals,
     .readValue = "0",
     .onValue = "1",
     .offValue = "0",
     .restore = TweakDefault::On,
     .spi = SpiRule::OnOff,
     .spiAction = 26,
     .help = "Breaks a long icon title over several lines instead of cutting it short."},

    Group("Mouse"),
    {.parent = "Mouse",
     .key = "Swap Mouse Buttons",
     .path = kTweakMousePath,
     .name = "SwapMouseButtons",
     .readValue = "1",
     .onValue = "1",
     .offValue = "0",
     .spi = SpiRule::OnOff,
     .spiAction = 33,
     .help = "Swaps the left and right mouse buttons, for left-handed use."},
    Group("Double Click", "Mouse"),
    Value("Double Click", "Double Click Width", "Width", kTweakDeskPath, "DoubleClickWidth", "4", "pixels",
          ValueLimit::Fixed, 32, 29,
          "How far, in pixels, the pointer may move sideways between the two clicks "
          "of a double click."),
    Value("Double Click", "Double Click Height", "Height", kTweakDeskPath, "DoubleClickHeight", "4", "pixels",
          ValueLimit::Fixed, 32, 30,
          "How far, in pixels, the pointer may move up or down between the two "
          "clicks of a double click."),
    Value("Double Click", "Double Click Speed", "Speed", kTweakMousePath, "DoubleClickSpeed", "500",
          "milliseconds", ValueLimit::Fixed, 900, 32,
          "The longest time, in milliseconds, between the two "
          "clicks of a double click."),
    Group("Drag", "Mouse"),
    Value("Drag", "Drag Width", "Width", kTweakDeskPath, "DragWidth", "2", "pixels", ValueLimit::Fixed, 32,
          76, "How far, in pixels, the pointer must move sideways with a button held before a drag begins."),
    Value("Drag", "Drag Height", "Height", kTweakDeskPath, "DragHeight", "2", "pixels", ValueLimit::Fixed, 32,
          77,
          "How far, in pixels, the pointer must move up or down with a button held before a drag begins."),

    Group("Start Menu"),
    [] {
        TweakRow row = Value("Start Menu", "Menu Show Delay", "", kTweakDeskPath, "MenuShowDelay", "400",
                             "milliseconds", ValueLimit::Fixed, 9999, 0,
                             "How long, in milliseconds, the pointer rests on a menu entry before its "
                             "submenu opens.");
        row.alsoDefault = "65535";
        return row;
    }(),
    {.parent = "Start Menu",
     .key = "Delay Until Clicked",
     .path = kTweakDeskPath,
     .name = "MenuShowDelay",
     .readValue = "65535",
     .write = WriteRule::DelayUntilClicked,
     .onValue = "65535",
     .restore = TweakDefault::NotReset,
     .help = "Opens submenus only when they are clicked, not when the pointer rests on them."},
    Group("Cascading Menus", "Start Menu"),
    Cascade("Control Panel.{21EC2020-3AEA-1069-A2DD-08002B30309D}", "Control Panel"),
    Cascade("Printers.{2227A280-3AEA-1069-A2DE-08002B30309D}", "Printers"),
    Cascade("Recycle Bin.{645FF040-5081-101B-9F08-00AA002F954E}", "Recycle Bin"),
    Cascade("Url History.{FF393560-C2A7-11CF-BFF4-444553540000}", "Url History"),

    Group("Wallpaper"),
    Value("Wallpaper", "Wallpaper Horizontal Origin", "Horizontal Origin", kTweakDeskPath, "WallpaperOriginX",
          "0", "pixels", ValueLimit::ScreenWidth, 0, 0,
          "Where, in pixels from the left of the screen, the wallpaper begins."),
    Value("Wallpaper", "Wallpaper Vertical Origin", "Vertical Origin", kTweakDeskPath, "WallpaperOriginY",
          "0", "pixels", ValueLimit::ScreenHeight, 0, 0,
          "Where, in pixels from the top of the screen, the wallpaper begins."),

    Group("Restrictions"),
    Restriction(kTweakPolicyExplorerPath, "Hide Network Neighborhood", "NoNetHood", "999",
                ToggleEffect::Restart, "Removes Network Neighborhood from the desktop.",
                TweakConfirm::HideNetwork),
    Restriction(kTweakPolicyNetworkPath, "Hide 'Entire Network' in Network Neighborhood", "NoEntireNetwork",
                "1", ToggleEffect::Rebuild, "Leaves \"Entire Network\" out of Network Neighborhood."),
    Restriction(kTweakPolicyNetworkPath, "Hide workgroup contents in Network Neighborhood",
                "NoWorkgroupContents", "1", ToggleEffect::Rebuild,
                "Shows no computers of your workgroup in Network Neighborhood."),
    Restriction(kTweakPolicyExplorerPath, "Disable Desktop", "NoDesktop", "1", ToggleEffect::Restart,
                "Shows no icons on the desktop at all.", TweakConfirm::DisableDesktop),
    Restriction(kTweakPolicyExplorerPath, "Hide Drives in 'My Computer'", "NoDrives", "67108863",
                ToggleEffect::Rebuild, "Hides every drive letter, A: to Z:, in My Computer."),
    Restriction(kTweakPolicyExplorerPath, "Remove folders from 'Settings' on Start Menu", "NoSetFolders", "1",
                ToggleEffect::Rebuild, "Leaves Control Panel and Printers out of the Start menu's Settings."),
    Restriction(kTweakPolicyExplorerPath, "Remove Taskbar from 'Settings' on Start Menu", "NoSetTaskbar", "1",
                ToggleEffect::Rebuild, "Leaves the Taskbar entry out of the Start menu's Settings."),
    Restriction(kTweakPolicyExplorerPath, "Remove 'Find' Command", "NoFind", "1", ToggleEffect::Rebuild,
                "Leaves Find out of the Start menu."),
    Restriction(kTweakPolicyExplorerPath, "Remove 'Run' Command", "NoRun", "1", ToggleEffect::Rebuild,
                "Leaves Run out of the Start menu."),
    Restriction(kTweakPolicyExplorerPath, "Disable Shut Down Command", "NoClose", "1", ToggleEffect::Rebuild,
                "Leaves Shut Down out of the Start menu, so Windows cannot be shut down from it."),
});

}  // namespace

std::span<const TweakRow> TweakRows() {
    return kRows;
}

}  // namespace glyphmoor
