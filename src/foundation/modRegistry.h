// modRegistry: every registry access of the program, by textual path.
//
// Callers name a key by a RegistryPath text ("HKEY_CURRENT_USER\Control
// Panel\Cursors") and a value name (empty for the unnamed value). Each call
// opens the key, does one thing and closes it. Failures are not raised: text
// reads give "Error", number reads give 10, enumerations give nothing, writes
// and deletions fail silently: the program ignores what they return. They
// return the store's Windows error code (kErrorSuccess when done), which the
// command line reports. The functions reproduce what the ANSI registry
// functions of Windows give the program, whatever backend holds the data.
#pragma once

#include "foundation/RegistryStore.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace glyphmoor {

// The marker every text-returning read gives when it cannot read.
inline constexpr std::string_view kRegError = "Error";
// What GetRegDword gives when it cannot read.
inline constexpr std::int32_t kRegDwordUnreadable = 10;

// The predefined key named exactly (case-sensitive) by a root name, or None.
RootKey RootFromName(std::string_view rootName);

// Splits a RegistryPath at its first backslash: sets root, replaces path by
// its subkey part and returns the full path as it was.
std::string SplitRegPath(std::string& path, RootKey& root);

std::string GetRegString(RegistryStore& store, std::string_view path, std::string_view name);
long SetRegString(RegistryStore& store, std::string_view path, std::string_view name, std::string_view text);
std::int32_t GetRegDword(RegistryStore& store, std::string_view path, std::string_view name);
long SetRegDword(RegistryStore& store, std::string_view path, std::string_view name, std::int32_t number);
// Binary data travel as text of one character per byte, each byte the
// character's code in the ANSI code page (Windows-1252).
std::string GetRegBinary(RegistryStore& store, std::string_view path, std::string_view name);
long SetRegBinary(RegistryStore& store, std::string_view path, std::string_view name, std::string_view text);
// A value as the registry keeps it (type and bytes); nothing when the key or
// the value is absent.
std::optional<RegValue> GetRegValue(RegistryStore& store, std::string_view path, std::string_view name);
long SetRegValue(RegistryStore& store, std::string_view path, std::string_view name, const RegValue& value);
long DeleteRegValue(RegistryStore& store, std::string_view path, std::string_view name);
long DeleteRegKey(RegistryStore& store, std::string_view parentPath, std::string_view subkey);
long CreateRegKey(RegistryStore& store, std::string_view path);
bool RegKeyExists(RegistryStore& store, std::string_view path);

// Append to names (and datas) from position names.size(); return how many were
// appended. The lists are never cleared; a key that cannot be opened leaves
// them as they were and gives 0.
std::size_t EnumRegKeys(RegistryStore& store, std::string_view path, std::vector<std::string>& names);
std::size_t EnumRegValues(RegistryStore& store, std::string_view path, std::vector<std::string>& names,
                          std::vector<std::string>& datas);

// The values of a key as the store keeps them, appended to values in
// enumeration order; how many were appended (0 when the key cannot be opened).
std::size_t EnumRegRawValues(RegistryStore& store, std::string_view path,
                             std::vector<std::pair<std::string, RegValue>>& values);

// A Windows error code of the registry as the system words it.
std::string RegErrorText(long code);

// The text up to, not including, its first NUL character.
std::string TrimAtNull(std::string_view text);

}  // namespace glyphmoor
