// The values of Wine's text registry format, one line each (continuation
// lines joined): read into a HiveValue, or only checked, without building
// anything, for a value whose reading the reader defers (HiveKey::unreadValues).
#pragma once

#include "foundation/Hive.h"
#include "foundation/Result.h"

#include <string>
#include <string_view>

namespace glyphmoor {

// A whole value line: the name, "=", the data.
Result<HiveValue> ParseValueText(std::string_view text);

// Whether ParseValueText reads a value line, checked without building its
// data; its name is given back.
bool ValueReads(std::string_view text, std::string& name);

// A hex value ends its line with a backslash when it goes on; a string
// value cannot (its closing quote comes last).
bool LooksContinued(std::string_view text);

}  // namespace glyphmoor
