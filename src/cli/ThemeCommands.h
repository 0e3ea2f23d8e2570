// The theme commands: apply, preview, save, list and delete.
#pragma once

#include "cli/Cli.h"

#include <optional>
#include <string>

namespace glyphmoor {

// The theme a FILE argument names, as a Windows path of the machine: given
// so when it begins with a drive letter, else the host file's path on the
// machine's drives. Nothing after saying why.
std::optional<std::string> ThemePath(CliContext& context, const std::string& argument);

int ThemeApply(CliContext& context, CommandArgs args);
int ThemePreview(CliContext& context, CommandArgs args);
int ThemeSave(CliContext& context, CommandArgs args);
int ThemeList(CliContext& context, CommandArgs args);
int ThemeDelete(CliContext& context, CommandArgs args);

}  // namespace glyphmoor
