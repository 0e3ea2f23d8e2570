// Commands of glyphmoor-cli over icon files and executable resources. FILE,
// OUT and DIR arguments are Windows paths on the machine (which they open) or
// host paths.
#pragma once

#include "cli/Cli.h"

namespace glyphmoor {

// resources FILE: "id TAB display name" a line per type, in directory order;
// then "type TAB name" a line per resource of each type.
int CmdResources(CliContext& c, CommandArgs a);
// icon-count FILE: the number of icons in FILE.
int CmdIconCount(CliContext& c, CommandArgs a);
// extract FILE INDEX OUT [--size N]: icon INDEX of FILE as an icon file (OUT
// ending in .ico) or its best image for N pixels, default 32, as PNG (.png).
int CmdExtract(CliContext& c, CommandArgs a);
// extract-all FILE DIR: every icon of FILE as DIR/<file name>_<index>.ico.
int CmdExtractAll(CliContext& c, CommandArgs a);

}  // namespace glyphmoor
