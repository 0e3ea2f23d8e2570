// Commands of glyphmoor-cli over icon files and executable resources. Each
// takes the command's own arguments (without the command name), prints its
// output to `out`, reasons for failure to `err`, and returns the exit status.
// FILE and DIR arguments are host paths.
#pragma once

#include "cli/Cli.h"

#include <ostream>
#include <string>
#include <vector>

namespace glyphmoor {

// resources FILE: "id TAB display name" a line per type, in directory order;
// then "type TAB name" a line per resource of each type.
int CmdResources(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
// icon-count FILE: the number of icons in FILE.
int CmdIconCount(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
// extract FILE INDEX OUT [--size N]: icon INDEX of FILE as an icon file (OUT
// ending in .ico) or its best image for N pixels, default 32, as PNG (.png).
int CmdExtract(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
// extract-all FILE DIR: every icon of FILE as DIR/<file name>_<index>.ico.
int CmdExtractAll(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The four commands for glyphmoor-cli, FILE, OUT and DIR arguments given as
// Windows paths on the machine or host paths.
std::span<const CliCommand> IconFileCommands();

}  // namespace glyphmoor
