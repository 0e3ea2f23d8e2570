// The favourites commands: the menu, adding a theme, making a folder.
#pragma once

#include "cli/Cli.h"

namespace glyphmoor {

int Favorites(CliContext& context, CommandArgs args);
int FavoritesAdd(CliContext& context, CommandArgs args);
int FavoritesNewFolder(CliContext& context, CommandArgs args);

}  // namespace glyphmoor
