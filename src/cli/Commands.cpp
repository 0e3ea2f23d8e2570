// The one table of glyphmoor-cli's commands: name, arguments, what they do,
// arity and whether the runner opens the machine first.
#include "cli/BundleCommands.h"
#include "cli/Cli.h"
#include "cli/FavoriteCommands.h"
#include "cli/FolderIconCommands.h"
#include "cli/IconCommands.h"
#include "cli/IconFileCommands.h"
#include "cli/IniCommands.h"
#include "cli/RebuildCommands.h"
#include "cli/RegCommands.h"
#include "cli/ThemeCommands.h"
#include "cli/TweakCommands.h"
#include "cli/UndoCommands.h"

#include <array>

namespace glyphmoor {

namespace {

constexpr bool kMachine = true;
constexpr bool kNoMachine = false;

constexpr std::string_view kWritesMachine =
    "The change is written to the machine at once; a Wine prefix whose wineserver runs is refused.";
constexpr std::string_view kHostOrMachineFile =
    "FILE is a Windows path on the machine when it begins with a drive letter and a colon "
    "(C:\\Msdos.sys), else a path of the host.";
constexpr std::string_view kThemeFile =
    "FILE is a Windows path on the machine when it begins with a drive letter and a colon, else a\n"
    "host file on one of the machine's drives.";
constexpr std::string_view kAppliesLikeApply =
    "GROUP is a group's number (1 to 7) or its name, NAME an entry's built-in name. The change is\n"
    "applied as the window's Apply applies it, the icon-cache rebuild included, and prints nothing.";

constexpr std::array<CliCommand, 42> kCommands = {{
    {"reg read", "PATH NAME", "prints the value's text, or Error",
     "Reads as the program's registry module does: one character a byte, blanks trimmed.", 2, 2, kMachine,
     RegRead},
    {"reg read-dword", "PATH NAME", "prints the value as a number (10 when it cannot be read)",
     "A value that is not a DWORD reads as 10, the program's marker.", 2, 2, kMachine, RegReadDword},
    {"reg read-binary", "PATH NAME", "prints the value's bytes in hex, or Error",
     "Two lower-case hex digits a byte, no separators.", 2, 2, kMachine, RegReadBinary},
    {"reg write", "PATH NAME TEXT", "stores a text value, making the key when needed", kWritesMachine, 3, 3,
     kMachine, RegWrite},
    {"reg write-dword", "PATH NAME N", "stores a number value",
     "N is a decimal number from -2147483648 to 4294967295, or 0x and hex digits.", 3, 3, kMachine,
     RegWriteDword},
    {"reg write-binary", "PATH NAME HEX", "stores a binary value given in hex",
     "HEX is two hex digits a byte, no separators.", 3, 3, kMachine, RegWriteBinary},
    {"reg delete-value", "PATH NAME", "removes a value", kWritesMachine, 2, 2, kMachine, RegDeleteValue},
    {"reg delete-key", "PARENTPATH SUBKEY", "removes a key",
     "Windows 95 and 98 machines remove the subtree; Windows NT refuses a key with subkeys.", 2, 2, kMachine,
     RegDeleteKey},
    {"reg create-key", "PATH", "makes a key and every key above it", kWritesMachine, 1, 1, kMachine,
     RegCreateKey},
    {"reg exists", "PATH", "prints true when the key can be opened, else false", "", 1, 1, kMachine,
     RegExists},
    {"reg keys", "PATH", "prints the key's subkeys, one a line", "In the registry's own order.", 1, 1,
     kMachine, RegKeys},
    {"reg values", "PATH", "prints NAME, TAB, DATA for each value",
     "Bytes below 0x20 or above 0x7e are shown as \\xHH.", 1, 1, kMachine, RegValues},
    {"ini read", "FILE SECTION KEY",
     "the value GetPrivateProfileStringA gives (default \"\", buffer size 127)", kHostOrMachineFile, 3, 3,
     kNoMachine, IniRead},
    {"ini keys", "FILE SECTION", "the key names of a section, one a line (buffer size 299)",
     kHostOrMachineFile, 2, 2, kNoMachine, IniKeys},
    {"ini write", "FILE SECTION KEY VALUE", "sets a value, creating the section or the file",
     kHostOrMachineFile, 4, 4, kNoMachine, IniWrite},
    {"icons set", "GROUP NAME LOCATION",
     "gives the entry NAME of GROUP (a number or a group name) the icon LOCATION (file,index; a pointer "
     "file for Cursors) and applies it",
     "LOCATION must name a file of the machine that holds that icon (a negative index is a resource id),\n"
     "or a .cur or .ani file for a pointer; otherwise nothing is changed. A bare file name is looked for\n"
     "in the system folder.\n"
     "GROUP is a group's number (1 to 7) or its name: Desktop Icons, Start Icons, Folder Icons,\n"
     "Drive Icons, Other Icons, File Icons, Cursors. NAME is an entry's built-in name. The change is\n"
     "applied as the window's Apply applies it, the icon-cache rebuild included, and prints nothing.",
     3, 3, kMachine, IconsSet},
    {"icons restore", "GROUP NAME", "puts the entry's default icon back and applies it", kAppliesLikeApply, 2,
     2, kMachine, IconsRestore},
    {"icons rename", "GROUP NAME NEWNAME",
     "renames a desktop object or a special folder (the Recycle Bin's two entries together) and applies it",
     kAppliesLikeApply, 3, 3, kMachine, IconsRename},
    {"icons restore-all", "[--cursors] [--yes]",
     "puts every icon (or with --cursors every pointer) back to its default and applies them; asks for "
     "--yes first",
     "Without --yes it shows the window's question on the error stream and changes nothing.", 0, 2, kMachine,
     IconsRestoreAll},
    {"icons", "[--group N]",
     "prints the icon catalogue, an entry a line: group, display name, catalogue name, current file, "
     "current index, default file, default index",
     "Groups 1 to 7 in table order, or group N alone (a number or a group's name). The catalogue\n"
     "name is empty when it is the display name.",
     0, 2, kMachine, Icons},
    {"theme apply", "FILE",
     "loads the theme FILE and applies it as the window's Apply does; prints the catalogue lines that "
     "changed",
     "Every group the theme names is applied in one save, the icon-cache rebuild included; on a Wine\n"
     "prefix only the entries that differ are written. FILE is a Windows path on the machine (C:\\...)\n"
     "or a host file on one of its drives.",
     1, 1, kMachine, ThemeApply},
    {"theme preview", "FILE", "prints the catalogue lines the theme FILE would change; changes nothing",
     kThemeFile, 1, 1, kMachine, ThemePreview},
    {"theme save", "FILE",
     "saves the current icons as a theme at FILE with copies of its icons; prints its path",
     "\".gmtheme\" is added unless FILE ends in it. A theme saved straight into the library folder\n"
     "(C:\\Program Files\\Glyphmoor\\Themes) gets a folder of its own. Keys already in the file stay.",
     1, 1, kMachine, ThemeSave},
    {"theme list", "", "the theme library: caption, TAB, theme file path, a line per theme",
     "The themes in the subfolders of the library folder; files lying directly in it are not listed.", 0, 0,
     kMachine, ThemeList},
    {"theme delete", "FILE [--yes]", "deletes the theme's own folder in the library; asks for --yes first",
     "Only a theme lying in a folder of its own directly in the library folder is deleted, with that\n"
     "folder; any other file is refused.",
     1, 2, kMachine, ThemeDelete},
    {"theme pack", "FILE ZIP",
     "packs the theme FILE and every file it names into the bundle ZIP; prints the bundle's path",
     "\".zip\" is added unless ZIP ends in it. Files the theme names that are not there are left out\n"
     "and named on the error stream; at most 100 files go into a bundle.",
     2, 2, kMachine, ThemePack},
    {"theme unpack", "ZIP [--overwrite yes|no]",
     "unpacks the bundle ZIP into its folder of the theme library and makes it the current theme "
     "without applying it; prints the theme file's path",
     "The bundle is checked whole first and refused whole, with nothing written, when an entry is\n"
     "not a plain file with a plain name, repeats a name, fails its size or CRC, or passes the limits\n"
     "(100 files, 16 MiB a file, 64 MiB in all). Without --overwrite a file already in the theme's\n"
     "folder stops the unpack with the question on the error stream.",
     1, 3, kMachine, ThemeUnpack},
    {"tweaks", "",
     "prints the Tweak Shell tree, a node a line: kind (group, check or value), parent key, key, text, "
     "state",
     "The state is on or off for a check item and the pending value for a value item; a group has none.\n"
     "The Display group is listed only on Windows NT or with the Plus! pack.",
     0, 0, kMachine, Tweaks},
    {"tweaks set", "KEY=VALUE... [--yes]",
     "sets check items (on, off) and value items (a number) as the Tweak Shell page does, then applies; "
     "prints whether a restart is needed",
     "KEY is a node's key as `tweaks` lists it, found without regard to case. A value item takes a\n"
     "whole number from 0 to its limit. A setting the window asks about before turning it on (Note\n"
     "Pad, Hide Network Neighborhood, Disable Desktop) needs --yes; without it the question is shown\n"
     "on the error stream and nothing is changed. On a Wine prefix only what changed is written.",
     1, 64, kMachine, TweaksSet},
    {"tweaks restore-defaults", "--yes",
     "puts every tweak back to its default and applies; asks for --yes first",
     "Without --yes it shows the window's question on the error stream and changes nothing. The\n"
     "taskbar, the shortcut overlay, the cascading menus and \"Delay Until Clicked\" keep their state.\n"
     "On a Wine prefix the default is what the prefix held before Glyphmoor first changed it.",
     0, 1, kMachine, TweaksRestoreDefaults},
    {"folder-icon show", "PATH",
     "prints a folder's or drive's own icon: file, TAB, index; or \"Windows Default Icon\"",
     "PATH is a Windows path of the machine (C:\\My Documents, or D:\\ for a drive), found without\n"
     "regard to case. A folder keeps its icon in its desktop.ini, a drive in its autorun.inf.",
     1, 1, kMachine, FolderIconShow},
    {"folder-icon set", "PATH FILE INDEX", "gives a folder or drive the icon INDEX of FILE",
     "A folder's desktop.ini gets IconFile and IconIndex under .ShellClassInfo, the folder the system\n"
     "attribute and the file hidden and archive; a drive's autorun.inf gets Icon under AUTORUN. Other\n"
     "keys of those files stay. FILE must be a file of the machine that holds that icon (a bare name\n"
     "is looked for in the system folder). A folder that does not exist is an error; nothing is made.",
     3, 3, kMachine, FolderIconSet},
    {"folder-icon restore", "PATH [--yes]", "takes a folder's or drive's own icon away; asks for --yes first",
     "Deletes the folder's desktop.ini and sets the folder to normal, or deletes the drive's\n"
     "autorun.inf whole. Without --yes it shows the window's question and changes nothing.",
     1, 2, kMachine, FolderIconRestore},
    {"favorites", "",
     "the Favorites menu, an item a line: depth, TAB, kind (folder, link or empty), TAB, caption, and "
     "for a link TAB the theme file it points at",
     "The favourites folder is C:\\Program Files\\Glyphmoor\\Favorites on the machine; each folder's\n"
     "subfolders come before its links, each in name order.",
     0, 0, kMachine, Favorites},
    {"favorites add", "THEME [--in FOLDER] [--name NAME]",
     "makes a link to the theme THEME in the favourites folder (or its folder FOLDER); prints its path",
     "NAME is the theme's name unless given. FOLDER is a path relative to the favourites folder or a\n"
     "Windows path inside it. A theme that is not there, or a favourite of that name, is refused and\n"
     "nothing is made.",
     1, 5, kMachine, FavoritesAdd},
    {"favorites new-folder", "NAME [--in FOLDER]",
     "makes the folder NAME in the favourites folder (or its folder FOLDER); prints its path",
     "A folder or file of that name is refused and nothing is made.", 1, 3, kMachine, FavoritesNewFolder},
    {"resources", "FILE", "the resource types of FILE with their names, then the names of each type",
     kHostOrMachineFile, 1, 1, kNoMachine, CmdResources},
    {"icon-count", "FILE", "the number of icons in FILE", kHostOrMachineFile, 1, 1, kNoMachine, CmdIconCount},
    {"extract", "FILE INDEX OUT [--size N]",
     "writes icon INDEX of FILE as an icon file (OUT.ico) or its best image as PNG (OUT.png)",
     "The PNG is the image best for N pixels (1 to 256, default 32) at 32 bits a pixel.", 3, 5, kNoMachine,
     CmdExtract},
    {"extract-all", "FILE DIR", "writes every icon of FILE as DIR/<file name>_<index>.ico",
     "DIR is made when it does not exist.", 2, 2, kNoMachine, CmdExtractAll},
    {"rebuild-icons", "",
     "rebuilds the shell's icon cache, asking and showing nothing; prints each registry write and message "
     "sent",
     "The same rebuild as the window's Tools, Rebuild Icon Cache, its notices answered silently.", 0, 0,
     kMachine, RebuildIcons},
    {"undo-all", "[--yes]",
     "returns every value and file the program ever changed on the machine to what it was",
     "Without --yes prints what it would do, a step a line (restore, delete value, delete key,\n"
     "remove file) and changes nothing. With --yes it does it: registry values return byte for byte,\n"
     "keys and files the program made go, and the shell is told to reload its icons.",
     0, 1, kMachine, UndoAllCommand},
}};

}  // namespace

std::span<const CliCommand> CliCommands() {
    return kCommands;
}

}  // namespace glyphmoor
