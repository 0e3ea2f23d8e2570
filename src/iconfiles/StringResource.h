// String resources: the texts LoadStringW finds in an executable's string
// tables (type 6), which keep sixteen strings a block, block n + 1 holding
// the strings n * 16 to n * 16 + 15, each a 16-bit length and that many
// UTF-16 units.
#pragma once

#include "iconfiles/modResource.h"

#include <cstdint>
#include <span>
#include <string>

namespace glyphmoor {

inline constexpr std::uint16_t kRtString = 6;

// The text of string `index` (0 to 15) of one string-table block; nothing when
// the block is shorter than it claims.
std::optional<std::string> StringOfBlock(std::span<const std::byte> block, unsigned index);

// String `id` of a module, or nothing when it has none (an empty string is none, as
// LoadStringW reports it).
std::optional<std::string> LoadStringResource(const ExecutableModule& module, std::uint32_t id);

}  // namespace glyphmoor
