// FolderIcon: the icon of a single folder or drive, kept in a file of its own.
//
// A folder's icon is in the section ".ShellClassInfo" of its "desktop.ini"
// ("IconFile", and "IconIndex" in decimal); the folder carries the system
// attribute so that the shell reads the file, and the file itself is hidden.
// A drive's icon is "Icon" (file, comma, index) in the section "AUTORUN" of
// "autorun.inf" in its root. Both files go through the program's profile
// functions, so other keys and sections of a file that is there stay as they
// were; attributes go through SetFileAttributes (on a machine folder, as Wine
// keeps them).
#pragma once

#include "folders/FolderItem.h"
#include "foundation/Machine.h"
#include "foundation/Result.h"
#include "icons/IconLocation.h"
#include "prompts/modMsgbox.h"

#include <optional>
#include <string>

namespace glyphmoor {

// What the label shows for an item without an icon of its own.
inline constexpr std::string_view kWindowsDefaultIcon = "Windows Default Icon";

// The item's own icon as its file gives it; nothing when it has none (no
// file, or no icon file named in it). A missing or unreadable "IconIndex" is 0.
std::optional<IconLocation> ReadFolderIcon(const Environment& env, const FolderItem& item);

// The Windows path of the icon file a desktop.ini or autorun.inf names: a
// relative name lies in the item itself, as the shell finds it.
std::string IconFileInItem(const FolderItem& item, std::string_view file);

// Gives the item the icon: writes the file's keys, sets the attributes (the
// folder system, 4; its desktop.ini hidden and archive, 0x22) and asks the
// shell to reload its icons. A file the program makes is recorded in the
// machine's baseline and that record saved first, so a machine that cannot be
// written (a running wineserver) gets nothing. Fails with the reason when the
// item does not exist or a step fails; steps already done stay.
Status SetFolderIcon(Machine& machine, const FolderItem& item, const IconLocation& icon);

// Takes the item's icon away without asking: deletes the folder's desktop.ini
// and sets the folder to normal (0x80), or deletes the drive's autorun.inf
// whole; then asks the shell to reload its icons. Nothing else in the folder
// or drive is touched.
Status RemoveFolderIcon(Machine& machine, const FolderItem& item);

enum class FolderRestore {
    NotCustomised,  // the item has no icon of its own: the notice was shown
    Declined,       // the question was not answered OK
    Restored,
};

// What "Default Icon" does: the notice for an item without an icon of its own
// (MsgSelectCustomisedItem), else the question (MsgConfirmRemoveDesktopIni or
// MsgConfirmRemoveAutorun) and, answered OK, RemoveFolderIcon. A failure to
// remove is given in `failure`.
FolderRestore RestoreFolderIcon(MsgContext& c, Machine& machine, const FolderItem& item,
                                Status* failure = nullptr);

}  // namespace glyphmoor
