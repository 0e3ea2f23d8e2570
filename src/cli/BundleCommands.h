// The theme bundle commands: pack and unpack.
#pragma once

#include "cli/Cli.h"

namespace glyphmoor {

int ThemePack(CliContext& context, CommandArgs args);
int ThemeUnpack(CliContext& context, CommandArgs args);

}  // namespace glyphmoor
