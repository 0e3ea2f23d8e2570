// Wine's text registry format (system.reg, user.reg, userdef.reg).
//
// The reader is a small state machine over lines: the header, the preamble
// (comments and "#arch=" lines before the first key), and key sections. Every
// value form Wine writes is understood; lines it does not understand are kept
// with their key. The writer produces what Wine itself writes for a changed
// key and gives every unchanged key back as it was read.
#pragma once

#include "foundation/Hive.h"
#include "foundation/Result.h"

#include <memory>
#include <string>
#include <string_view>

namespace glyphmoor {

inline constexpr std::string_view kWineRegistryHeader = "WINE REGISTRY Version 2";

// Parses a whole file. fileName only serves the reason of a failure, which
// names the file and line ("user.reg:12: ...").
Result<Hive> ParseWineRegistry(std::shared_ptr<const std::string> text, std::string_view fileName);

std::string SerializeWineRegistry(const Hive& hive);

// Wine's string escapes. delimiters are the two characters that get a
// backslash besides the backslash itself: "\"\"" in values, "[]" in key names.
std::string EscapeRegistryString(std::u16string_view text, std::string_view delimiters);
// Reads an escaped string up to an unescaped delimiter; consumed is set past
// the delimiter. Fails when the delimiter never comes.
Result<std::u16string> UnescapeRegistryString(std::string_view text, char delimiter, std::size_t& consumed);

// One value as Wine writes it, with its line end(s).
std::string FormatRegistryValue(std::string_view name, const RegValue& value);

// A header for a new empty hive: "WINE REGISTRY Version 2", the relative-root
// comment and the architecture line.
std::string NewHivePreamble(std::string_view relativeRoot, std::string_view arch);

}  // namespace glyphmoor
