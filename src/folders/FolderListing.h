// FolderListing: what the folder tree shows: the subfolders of a folder, and
// the nearest folder that exists on the way to one that does not.
#pragma once

#include "folders/FolderItem.h"
#include "foundation/Environment.h"
#include "foundation/Result.h"

#include <filesystem>
#include <string>
#include <vector>

namespace glyphmoor {

// The names of a host folder's subfolders (the entries of "folder\*.*" that
// are folders, "." and ".." left out), in the order the tree shows them:
// without regard to case. An entry whose kind cannot be read is passed over.
// A folder that cannot be read fails with the reason.
Result<std::vector<std::string>> ListSubfolders(const std::filesystem::path& folder);

// The item itself when it exists, else the nearest folder above it that does,
// at last its drive's root (which may not exist either).
FolderItem NearestExistingItem(const Environment& env, const FolderItem& item);

// The folders from the drive's root down to the item, the root first
// ("C:\", "C:\WINDOWS", "C:\WINDOWS\SYSTEM").
std::vector<FolderItem> PathFromRoot(const FolderItem& item);

}  // namespace glyphmoor
