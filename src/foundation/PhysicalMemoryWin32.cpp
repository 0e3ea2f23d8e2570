#include "foundation/PhysicalMemory.h"

#include <windows.h>

namespace glyphmoor {

std::optional<PhysicalMemory> ReadPhysicalMemory() {
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof(status);
    if (GlobalMemoryStatusEx(&status) == 0) {
        return std::nullopt;
    }
    return PhysicalMemory{status.ullTotalPhys, status.ullAvailPhys};
}

}  // namespace glyphmoor
