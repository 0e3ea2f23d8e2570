// glyphmoor-cli ini: profile files read and written as the program's profile
// functions read and write them.
//
//   ini read FILE SECTION KEY         the value GetPrivateProfileStringA gives
//                                     with default "" into a buffer of size 127
//   ini keys FILE SECTION             the key names it gives for a null key into
//                                     a 300-character buffer of size 299, one a line
//   ini write FILE SECTION KEY VALUE  WritePrivateProfileStringA; prints nothing
//
// FILE is a Windows path on the machine when it begins with a drive letter and
// a colon (C:\Msdos.sys), which opens the machine, else a path of the host.
#pragma once

#include "cli/Cli.h"

namespace glyphmoor {

int IniRead(CliContext& c, CommandArgs a);
int IniKeys(CliContext& c, CommandArgs a);
// 1 when the file cannot be written.
int IniWrite(CliContext& c, CommandArgs a);

}  // namespace glyphmoor
