// ShellLinkFile: shell link files on a machine. On the real Windows system
// the shell's own link object (IShellLinkW with IPersistFile) writes and
// reads them; on a machine folder the program's own writer and reader do,
// so the machine's shell (Wine's) opens what the program made.
#pragma once

#include "foundation/Environment.h"
#include "foundation/Result.h"
#include "themes/ShellLink.h"

#include <filesystem>
#include <string_view>

namespace glyphmoor {

// CreateShellLink: saves the link at `lnkFile` (a Windows path of the machine),
// replacing a file that is there.
Status CreateShellLink(const Environment& machine, std::string_view lnkFile, const ShellLink& link);

// The fields of the link at `lnkFile` (a Windows path of the machine).
Result<ShellLink> ReadShellLinkFile(const Environment& machine, std::string_view lnkFile);

// The system's own link object, in the Windows build; elsewhere these say there is none.
Status SaveSystemShellLink(const std::filesystem::path& file, const ShellLink& link);
Result<ShellLink> LoadSystemShellLink(const std::filesystem::path& file);

}  // namespace glyphmoor
