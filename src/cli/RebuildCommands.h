// The "rebuild-icons" command: the icon-cache rebuild from the command line.
#pragma once

#include "cli/Cli.h"

namespace glyphmoor {

// rebuild-icons: the rebuild, answering its messages silently; prints each
// registry write and message sent, a line each.
int RebuildIcons(CliContext& c, CommandArgs a);

}  // namespace glyphmoor
