// PhysicalMemory: the host's total and available physical memory, as the
// about box shows them, and the texts it shows them with.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace glyphmoor {

struct PhysicalMemory {
    std::uint64_t totalBytes = 0;
    std::uint64_t availableBytes = 0;
};

// The host's figures: /proc/meminfo on Linux, GlobalMemoryStatusEx on
// Windows. Nothing when the system does not give them.
std::optional<PhysicalMemory> ReadPhysicalMemory();

// The figures of a /proc/meminfo text: "MemTotal" and "MemAvailable" (or,
// from kernels before 3.14, "MemFree"), in kB. Nothing without MemTotal or
// with a figure that is not a number of kB.
std::optional<PhysicalMemory> ParseMemInfo(std::string_view text);

// A byte count in whole kilobytes (bytes / 1024, the rest dropped), with a
// comma between thousands and " Kb" after: 1048576 reads "1,024 Kb".
std::string FormatKilobytes(std::uint64_t bytes);

// "Version " and the three numbers joined by ".0": 1, 2, 3 read
// "Version 1.02.03", and 1, 12, 3 read "Version 1.012.03".
std::string AboutVersionText(unsigned major, unsigned minor, unsigned revision);

}  // namespace glyphmoor
