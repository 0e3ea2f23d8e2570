// The "startup" commands: the startup-program lists of the Miscellaneous tab
// listed, added to and deleted from, applied as the window's Apply applies.
#pragma once

#include "cli/Cli.h"

namespace glyphmoor {

// startup [LIST]: every entry (of one list), a line: list, name, command.
int Startup(CliContext& c, CommandArgs a);
// startup add LIST NAME COMMAND: a Run list's value, then applies.
int StartupAdd(CliContext& c, CommandArgs a);
// startup delete LIST NAME --yes: the entry goes, then applies; without
// --yes the window's question is shown and nothing changes.
int StartupDelete(CliContext& c, CommandArgs a);

}  // namespace glyphmoor
