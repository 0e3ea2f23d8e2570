// Hex digits, written and read: the one home of the program's hex helpers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace glyphmoor {

[[nodiscard]] constexpr bool IsHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// The value of a hex digit (IsHexDigit(c) holds).
[[nodiscard]] constexpr int HexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c - 'A' + 10;
}

// Two lower-case hex digits.
void AppendHexByte(std::string& out, std::uint8_t byte);
// v in lower-case hex, with leading zeros up to minDigits.
void AppendHex(std::string& out, std::uint64_t v, int minDigits);

// A hex number of 1 to maxDigits digits, nothing else; false leaves out alone.
template <typename T>
bool ParseHexNumber(std::string_view s, T& out, std::size_t maxDigits) {
    if (s.empty() || s.size() > maxDigits) {
        return false;
    }
    T v = 0;
    for (char c : s) {
        if (!IsHexDigit(c)) {
            return false;
        }
        v = static_cast<T>(v * 16 + static_cast<T>(HexValue(c)));
    }
    out = v;
    return true;
}

// Bytes given as two hex digits each, no separators ("0aff"); nothing for an
// odd count or anything else.
std::optional<std::string> ParseHexPairs(std::string_view hex);

}  // namespace glyphmoor
