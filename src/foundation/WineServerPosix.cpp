#include "foundation/MachineFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cstdio>
#include <fstream>

namespace glyphmoor {

namespace fs = std::filesystem;

std::vector<fs::path> WineServerDirs(const fs::path& prefix) {
    // wineserver keeps its socket and lock in a folder named server-DEV-INODE,
    // DEV and INODE those of the prefix folder in hex: upstream Wine in
    // /tmp/.wine-UID; Debian's Wine in the /tmp folder that the prefix's file
    // "wineserver" names.
    struct stat st {};
    if (::stat(prefix.c_str(), &st) != 0) {
        return {};
    }
    char server[64];
    std::snprintf(server, sizeof server, "server-%llx-%llx", static_cast<unsigned long long>(st.st_dev),
                  static_cast<unsigned long long>(st.st_ino));
    std::vector<fs::path> dirs = {fs::path("/tmp") / (".wine-" + std::to_string(::getuid())) / server};
    std::ifstream named(prefix / "wineserver");
    std::string name;
    if (named && std::getline(named, name) && !name.empty() && name.find('/') == std::string::npos &&
        name != "." && name != "..") {
        dirs.push_back(fs::path("/tmp") / name / server);
    }
    return dirs;
}

std::optional<std::string> MachineFolder::RunningWineServer() const {
    // A running wineserver holds a write lock on the file "lock" of its folder.
    for (const auto& dir : WineServerDirs(m_dir)) {
        const int fd = ::open((dir / "lock").c_str(), O_RDONLY | O_CLOEXEC);
        if (fd < 0) {
            continue;
        }
        struct flock query {};
        query.l_type = F_WRLCK;
        query.l_whence = SEEK_SET;
        const bool locked = ::fcntl(fd, F_GETLK, &query) == 0 && query.l_type != F_UNLCK;
        ::close(fd);
        if (locked) {
            return "The Wine prefix " + m_dir.string() +
                   " is in use by a running wineserver, which would overwrite any change when it exits. "
                   "Stop it with: WINEPREFIX=\"" +
                   m_dir.string() + "\" wineserver -k; then try again.";
        }
    }
    return std::nullopt;
}

}  // namespace glyphmoor
