// The "undo-all" command: every value and file the program ever changed on the
// machine back to what it was before the program first wrote there.
//
//   undo-all          prints what it would do, a step a line: "restore", TAB,
//                     key, TAB, value name, TAB, the old data; "delete value",
//                     TAB, key, TAB, value name; "delete key", TAB, key;
//                     "remove file", TAB, Windows path. Changes nothing.
//   undo-all --yes    does it, tells the shell the icons changed and saves.
#pragma once

#include "cli/Cli.h"

namespace glyphmoor {

int UndoAllCommand(CliContext& c, CommandArgs a);

}  // namespace glyphmoor
