// Wine's text registry format (system.reg, user.reg, userdef.reg): the reader
// (WineRegistryReader.cpp) and the writer (WineRegistryWriter.cpp); the string
// escapes they share are in WineRegistryEscapes.h.
//
// The reader is a small state machine over lines: the header, the preamble
// (comments and "#arch=" lines before the first key), and key sections. Every
// value form Wine writes is understood; lines it does not understand are kept
// with their key. The writer produces what Wine itself writes for a changed
// key and gives every unchanged key back as it was read.
#pragma once

#include "foundation/Hive.h"
#include "foundation/Result.h"
#include "foundation/TextPieces.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

inline constexpr std::string_view kWineRegistryHeader = "WINE REGISTRY Version 2";

// A key's time: seconds since 1970 in its section header, a FILETIME (100 ns
// since 1601) in "#time=".
inline constexpr std::uint64_t kUnixEpochAsFileTime = 116444736000000000ULL;
inline constexpr std::uint64_t kTicksPerSecond = 10000000ULL;

// Parses a whole file. fileName only serves the reason of a failure, which
// names the file and line ("user.reg:12: ...").
Result<Hive> ParseWineRegistry(std::shared_ptr<const std::string> text, std::string_view fileName);

// Reads the values of lines ParseWineRegistry checked and left unread in a
// key (HiveKey::unreadValues) into the key, each in its place.
void ReadCheckedValues(std::string_view lines, HiveKey& key);

std::string SerializeWineRegistry(const Hive& hive);
// The same text as the pieces it is made of: the untouched stretches of the
// loaded file are borrowed from it (hive.source), so they are valid while the
// hive is and unchanged.
TextPieces SerializeWineRegistryPieces(const Hive& hive);

// One value as Wine writes it, with its line end(s).
std::string FormatRegistryValue(std::string_view name, const RegValue& value);

// A header for a new empty hive: "WINE REGISTRY Version 2", the relative-root
// comment and the architecture line.
std::string NewHivePreamble(std::string_view relativeRoot, std::string_view arch);

}  // namespace glyphmoor
