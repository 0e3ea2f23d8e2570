#include "foundation/PhysicalMemory.h"

#include <fstream>
#include <iterator>

namespace glyphmoor {

std::optional<PhysicalMemory> ReadPhysicalMemory() {
    // A /proc file reports a size of 0: it is read to its end as a stream.
    std::ifstream in("/proc/meminfo");
    if (!in) {
        return std::nullopt;
    }
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    return ParseMemInfo(text);
}

}  // namespace glyphmoor
