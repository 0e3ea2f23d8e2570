// The "reg" commands: the registry module from the command line. Each runs on
// the machine the runner opened; the writing ones save it.
#pragma once

#include "cli/Cli.h"

#include <string>
#include <string_view>

namespace glyphmoor {

int RegRead(CliContext& c, CommandArgs a);
int RegReadDword(CliContext& c, CommandArgs a);
int RegReadBinary(CliContext& c, CommandArgs a);
int RegWrite(CliContext& c, CommandArgs a);
int RegWriteDword(CliContext& c, CommandArgs a);
int RegWriteBinary(CliContext& c, CommandArgs a);
int RegDeleteValue(CliContext& c, CommandArgs a);
int RegDeleteKey(CliContext& c, CommandArgs a);
int RegCreateKey(CliContext& c, CommandArgs a);
int RegExists(CliContext& c, CommandArgs a);
int RegKeys(CliContext& c, CommandArgs a);
int RegValues(CliContext& c, CommandArgs a);

// Bytes below 0x20 or above 0x7e as \xHH, others as they are.
std::string EscapeForDisplay(std::string_view bytes);

}  // namespace glyphmoor
