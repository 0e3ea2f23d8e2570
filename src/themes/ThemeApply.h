// ThemeApply: a whole theme applied to a machine without a window, as "/a"
// and `glyphmoor-cli theme apply` do: the catalogue built with its pointers,
// the theme loaded, the window's Apply (the icons in the catalogue's order,
// then the icon-cache rebuild with its notices answered by the silent
// prompt) and one save of the machine.
#pragma once

#include "foundation/Machine.h"
#include "foundation/Result.h"
#include "icons/IconCatalogue.h"

#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// Why `path` (a Windows path of the machine) cannot be loaded as a theme:
// only the extension ".gmtheme" is taken ("The file ... does not appear to be
// a valid theme file."), and the file must be there.
Status CheckThemeFile(const Environment& machine, std::string_view path);

// The entries of each group whose icon differs from what the machine holds,
// in the groups' order: what a loaded theme would change.
std::vector<SystemIconEntry> ChangedEntries(const IconCatalogue& catalogue,
                                            std::vector<int>* groups = nullptr);

// Applies the theme at `path` and saves the machine (a bundle, ".zip", a
// Windows path or a host path, is unpacked into the library first, keeping
// the files that are there already, and its theme applied); gives the entries it
// changed (with their group numbers in `groups`).
Result<std::vector<SystemIconEntry>> ApplyThemeFile(Machine& machine, std::string_view path,
                                                    std::vector<int>* groups = nullptr);

}  // namespace glyphmoor
