// BootOptions: the start-up switches of Windows 95/98 in the section
// "Options" of C:\Msdos.sys, shown in the tweak tree under the groups "Boot",
// "Dual Boot", "Startup Menu" and "Safe Mode" (the Bootup tab).
//
// The groups are added to a built TweakTree after the catalogue's own; their
// items toggle and edit as the other items do (TweakEditing), and only
// WriteBootOptions writes them, group by changed group, through the program's
// profile functions.
//
// Reading: a check item is on when its key is not "0" (a missing key reads
// on), except "BootMenu" and "BootFailSafe", which are on only for "1". The
// numbers "BootDelay", "BootMenuDefault" and "BootMenuDelay" read their
// decimal value, or 2, 0 and 4 when the key is missing, empty or not a
// number. A machine without the file shows those defaults.
//
// Windows NT keeps none of these switches in Msdos.sys: there the groups are
// not built, the Bootup tab is empty and Apply never touches the file.
#pragma once

#include "foundation/Machine.h"
#include "foundation/Result.h"
#include "tweaks/TweakTree.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace glyphmoor {

inline constexpr std::string_view kMsdosSysPath = "C:\\Msdos.sys";
inline constexpr std::string_view kBootSection = "Options";
// The attributes of the file written: hidden, system and archive. The
// read-only attribute it may have had is deliberately not set again.
inline constexpr std::uint32_t kBootAttributesAfter = 0x26;
// The default menu item: a number with no node of its own, written back as read.
inline constexpr std::string_view kBootMenuDefaultKey = "BootMenuDefault";
inline constexpr std::string_view kBootMenuDefaultFallback = "0";

// The boot groups' rows in tree order (groups and items); each item's `name`
// is its key in the section "Options".
std::span<const TweakRow> BootRows();

// A profile value as a boot number: its decimal value when it is a whole
// number (digits only, up to 9 of them), else the fallback.
std::string BootNumber(std::string_view value, std::string_view fallback);

// Adds the four groups to a built tree and reads their items from the
// machine's Msdos.sys; sets the tree's BootOptionsLoaded. Does nothing when
// they are loaded already or the machine is Windows NT. Reading never writes.
void BuildBootGroups(TweakTree& tree);

// Apply's boot step. Does nothing unless the boot groups are loaded and one
// of them changed. Otherwise each changed group's keys are set in the file's
// text ("1" or "0" for a check item, the pending number for a value, the
// default menu item after "BootMenu") and the new file, hidden, system and
// archive, goes to the machine's next save (Machine::WriteDriveFile), which
// replaces it in the same change as the registry; the written groups' flags
// are cleared. A file the program makes is recorded for Undo all.
Status WriteBootOptions(TweakTree& tree, Machine& machine);

}  // namespace glyphmoor
