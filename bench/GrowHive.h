// The keys a large Wine prefix gathers, appended to a hive until it reaches
// a size: the benchmarks' and the durability harness's large machine.
#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>

namespace glyphmoor::bench {

inline void GrowHive(const std::filesystem::path& hive, std::size_t targetBytes) {
    std::ofstream out(hive, std::ios::binary | std::ios::app);
    std::size_t size = std::filesystem::file_size(hive);
    for (std::size_t k = 0; size < targetBytes; ++k) {
        std::string key = "\n[Software\\\\Filler" + std::to_string(k / 300) + "\\\\Key" + std::to_string(k) +
                          "] 1795323958\n#time=1dd7a3f2949b940\n";
        for (int v = 0; v < 4; ++v) {
            key += "\"Path" + std::to_string(v) + "\"=\"C:\\\\windows\\\\system32\\\\file" +
                   std::to_string(k % 997) + ".dll,-" + std::to_string(v) + "\"\n\"Count" +
                   std::to_string(v) + "\"=dword:000003e8\n";
        }
        out << key;
        size += key.size();
    }
}

}  // namespace glyphmoor::bench
