#include "foundation/MachineFolder.h"

namespace glyphmoor {

// On Windows no wineserver can hold a machine folder's registry.
std::vector<std::filesystem::path> WineServerDirs(const std::filesystem::path& /*prefix*/) {
    return {};
}

std::optional<std::string> MachineFolder::RunningWineServer() const {
    return std::nullopt;
}

}  // namespace glyphmoor
