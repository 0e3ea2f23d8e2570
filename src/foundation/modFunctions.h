// modFunctions: small file utilities of the program.
#pragma once

#include "foundation/AppEnvironment.h"

#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// The text before its first "." (the whole text when it has none). The
// window caption uses it on a full theme path, so a dot in a folder name cuts
// there: "C:\My.Themes\x.gmtheme" gives "C:\My".
std::string FileTitleOf(std::string_view text);

// The number a text begins with (blanks, an optional sign, digits), as
// Visual Basic's Val reads a whole number; 0 when there is none. Bounded to int.
int LeadingNumber(std::string_view text);

struct DirectoryEntry {
    std::string name;
    bool folder = false;

    friend bool operator==(const DirectoryEntry&, const DirectoryEntry&) = default;
};

// Lists a folder for the folder views, as two enumerations:
//   1. "*.*" with folders included: every folder that is neither hidden nor
//      a system folder, flagged as a folder;
//   2. "*." with system files included: every file without an extension that
//      is not hidden, flagged as a file.
// So folders always come first and only names without an extension are
// listed as files. Within each pass names are in the order NTFS gives them
// (sorted without regard to case); "." and ".." are never listed. `directory`
// is a Windows path of the machine (or a host path); a folder that cannot be
// read gives nothing. Hidden and system come from the DOS attributes
// (ReadHostAttributes), so on a machine folder they are what Wine reports.
std::vector<DirectoryEntry> ListDirectory(const AppEnvironment& app, std::string_view directory);

}  // namespace glyphmoor
