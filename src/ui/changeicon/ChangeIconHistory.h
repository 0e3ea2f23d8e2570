// ChangeIconHistory: the files the Change Icon dialog has listed, kept as the
// values "0" to "15" under HKEY_CURRENT_USER\Software\Veltrane\Glyphmoor\ChangeIcons.
#pragma once

#include "foundation/RegistryStore.h"

#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

inline constexpr std::string_view kChangeIconsPath =
    "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\ChangeIcons";
inline constexpr std::size_t kChangeIconsHistoryMax = 16;

// The files in order, read from "0" on up to the first value that reads "Error".
std::vector<std::string> ReadChangeIconHistory(RegistryStore& registry);

// `history` with `file` at the top: an entry naming the same file (compared
// without regard to case) moves up rather than being listed twice, and the
// list keeps at most 16 files.
std::vector<std::string> WithFileOnTop(std::vector<std::string> history, std::string_view file);

// Writes the files as "0", "1", ... (at most 16 values).
void WriteChangeIconHistory(RegistryStore& registry, const std::vector<std::string>& history);

}  // namespace glyphmoor
