#include "foundation/InstallPaths.h"

namespace glyphmoor {

std::filesystem::path RunningProgramDir() {
    std::error_code ec;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::filesystem::path() : program.parent_path();
}

}  // namespace glyphmoor
