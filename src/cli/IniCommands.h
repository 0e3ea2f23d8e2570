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
// a colon (C:\Msdos.sys), else a path of the host.
#pragma once

#include "cli/Cli.h"
#include "foundation/Environment.h"

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// `args` are the words after "ini". `env` maps Windows paths; without it every
// FILE is a host path. Returns the exit status: 0, 1 when the file cannot be
// written, 2 for a command line it does not understand.
int CmdIni(const std::vector<std::string>& args, const Environment* env, std::ostream& out,
           std::ostream& err);

// The lines `glyphmoor-cli help` shows for these commands.
std::string_view IniCommandHelp();

// The commands' table for the dispatcher. A FILE that is a Windows path opens
// the machine to map it; a host path needs no machine.
std::span<const CliCommand> IniCommands();

}  // namespace glyphmoor
