// The theme commands: apply, preview, save, list and delete.
#pragma once

#include "cli/Cli.h"

namespace glyphmoor {

int ThemeApply(CliContext& context, CommandArgs args);
int ThemePreview(CliContext& context, CommandArgs args);
int ThemeSave(CliContext& context, CommandArgs args);
int ThemeList(CliContext& context, CommandArgs args);
int ThemeDelete(CliContext& context, CommandArgs args);

}  // namespace glyphmoor
