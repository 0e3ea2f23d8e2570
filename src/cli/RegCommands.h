// The "reg" commands: the registry module from the command line.
#pragma once

#include "cli/Cli.h"

namespace glyphmoor {

std::span<const CliCommand> RegCommands();

// Bytes below 0x20 or above 0x7e as \xHH, others as they are.
std::string EscapeForDisplay(std::string_view bytes);

}  // namespace glyphmoor
