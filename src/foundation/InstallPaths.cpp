#include "foundation/InstallPaths.h"

#include <cstdlib>

namespace fs = std::filesystem;

namespace glyphmoor {

fs::path InstalledDataDir() {
    const fs::path program = RunningProgramDir();
    if (program.empty()) {
        return {};
    }
    const fs::path data = program.parent_path() / "share" / "glyphmoor";
    std::error_code ec;
    return fs::is_directory(data, ec) ? data : fs::path();
}

fs::path HelpDir() {
    const char* help = std::getenv("GLYPHMOOR_HELP_DIR");
    if (help != nullptr && *help != '\0') {
        return help;
    }
    const fs::path installed = InstalledDataDir();
    return installed.empty() ? fs::path(GLYPHMOOR_HELP_DIR) : installed / "help";
}

}  // namespace glyphmoor
