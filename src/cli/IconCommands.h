// The "icons" commands: the system icon catalogue from the command line.
//
//   icons [--group N]   one entry a line: group number, display name,
//                       catalogue name (empty when it is the display name),
//                       current file, current index, default file, default
//                       index, TAB-separated, in table order; groups 1 to 7,
//                       or only group N.
//   icons set GROUP NAME LOCATION, icons restore GROUP NAME,
//   icons rename GROUP NAME NEWNAME, icons restore-all [--cursors] [--yes]
//                       stage one change as the Icons & Cursors page does,
//                       apply it as Apply does and save the machine; print
//                       the changed entries as "icons" prints them. GROUP is
//                       a number or a group's name, NAME an entry's stable
//                       name. Restoring all asks the page's question on the
//                       error stream and stops unless --yes answers it.
#pragma once

#include "cli/Cli.h"
#include "icons/IconCatalogue.h"

#include <optional>
#include <ostream>
#include <string>

namespace glyphmoor {

int Icons(CliContext& c, CommandArgs a);
int IconsSet(CliContext& c, CommandArgs a);
int IconsRestore(CliContext& c, CommandArgs a);
int IconsRename(CliContext& c, CommandArgs a);
int IconsRestoreAll(CliContext& c, CommandArgs a);

// Why LOCATION cannot be given to an entry of the group (1 to 7): the file
// is not on the machine, or does not hold that icon, or is no pointer file.
// Nothing when it can.
std::optional<std::string> WhyNotUsable(Machine& machine, int group, const IconLocation& location);

// Writes every entry of one group as the "icons" command prints it.
void PrintIconGroup(std::ostream& out, const IconGroup& group);

}  // namespace glyphmoor
