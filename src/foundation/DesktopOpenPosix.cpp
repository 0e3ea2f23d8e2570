#include "foundation/System.h"

#include <spawn.h>
#include <string>

extern char** environ;

namespace glyphmoor {

bool OpenWithDesktop(std::string_view pathOrAddress) {
    std::string program = "xdg-open";
    std::string argument(pathOrAddress);
    char* argv[] = {program.data(), argument.data(), nullptr};
    pid_t pid = 0;
    // The handler runs on by itself; the program does not wait for it.
    return ::posix_spawnp(&pid, "xdg-open", nullptr, nullptr, argv, environ) == 0;
}

}  // namespace glyphmoor
