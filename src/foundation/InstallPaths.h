// InstallPaths: where the program finds the files it ships with. An
// installed program keeps them in `share/glyphmoor` beside its `bin` folder
// (/usr/bin/glyphmoor reads /usr/share/glyphmoor); a program run from its
// build folder reads them from the source tree and the build folder.
#pragma once

#include <filesystem>

namespace glyphmoor {

// The folder of the running program's file; empty when the system does not say.
std::filesystem::path RunningProgramDir();

// `../share/glyphmoor` from the running program's folder when that folder
// exists; empty for a program that is not installed.
std::filesystem::path InstalledDataDir();

// The help pages: $GLYPHMOOR_HELP_DIR when set, else the installed `help`
// folder, else the source tree's.
std::filesystem::path HelpDir();

}  // namespace glyphmoor
