// The "rebuild-icons" command: the icon-cache rebuild from the command line.
#pragma once

#include "cli/Cli.h"

namespace glyphmoor {

std::span<const CliCommand> RebuildCommands();

}  // namespace glyphmoor
