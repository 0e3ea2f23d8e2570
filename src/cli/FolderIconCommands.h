// The "folder-icon" commands: the icon of a single folder or drive.
//
//   folder-icon show PATH              file, TAB, index; or "Windows Default Icon"
//   folder-icon set PATH FILE INDEX    gives it the icon (desktop.ini or autorun.inf)
//   folder-icon restore PATH [--yes]   takes it away, after the window's question
//
// PATH is a Windows path of the machine ("C:\My Documents", "D:\"), found
// without regard to case; a folder that does not exist is an error and
// nothing is made.
#pragma once

#include "cli/Cli.h"

namespace glyphmoor {

int FolderIconShow(CliContext& c, CommandArgs a);
int FolderIconSet(CliContext& c, CommandArgs a);
int FolderIconRestore(CliContext& c, CommandArgs a);

}  // namespace glyphmoor
