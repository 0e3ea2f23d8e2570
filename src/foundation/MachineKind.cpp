#include "foundation/MachineKind.h"

#include "foundation/modRegistry.h"

namespace glyphmoor {

MachineKind FolderKind(const std::filesystem::path& dir, RegistryStore& registry) {
    std::error_code ec;
    if (std::filesystem::exists(dir / ".update-timestamp", ec) ||
        RegKeyExists(registry, "HKEY_LOCAL_MACHINE\\Software\\Wine")) {
        return MachineKind::WinePrefix;
    }
    return MachineKind::Described;
}

}  // namespace glyphmoor
