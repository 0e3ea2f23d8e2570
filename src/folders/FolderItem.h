// FolderItem: a folder or a drive's root on the Folders page, named by its
// Windows path, and the way between the items of the tree.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace glyphmoor {

enum class FolderItemKind { Folder, Drive };

struct FolderItem {
    // A drive as its letter, a colon and a backslash ("C:\"); a folder without
    // a trailing backslash ("C:\WINDOWS").
    std::string path;
    FolderItemKind kind = FolderItemKind::Folder;

    friend bool operator==(const FolderItem&, const FolderItem&) = default;
};

// The item a Windows path names: "c:", "C:\" and "C:/" are drive C:'s root,
// "C:\WINDOWS\" the folder C:\WINDOWS. The drive letter is made upper case,
// "/" becomes "\", repeated and trailing backslashes go. A path without a
// drive letter and a colon, or relative to a drive ("C:WINDOWS"), names no item.
std::optional<FolderItem> FolderItemOf(std::string_view windowsPath);

// The folder `name` inside an item.
FolderItem ChildOf(const FolderItem& parent, std::string_view name);

// The folder or drive an item lies in; nothing for a drive.
std::optional<FolderItem> ParentOf(const FolderItem& item);

// The file that holds the item's own icon: the folder's "desktop.ini", or the
// drive's "autorun.inf" in its root.
std::string IconFileOf(const FolderItem& item);

}  // namespace glyphmoor
