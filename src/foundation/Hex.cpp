#include "foundation/Hex.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace glyphmoor {

void AppendHexByte(std::string& out, std::uint8_t byte) {
    static constexpr std::string_view kDigits = "0123456789abcdef";
    out += kDigits[byte >> 4];
    out += kDigits[byte & 0xF];
}

void AppendHex(std::string& out, std::uint64_t v, int minDigits) {
    std::array<char, 20> buf{};
    const auto [end, ec] = std::to_chars(buf.data(), buf.data() + buf.size(), v, 16);
    static_cast<void>(ec);  // 20 characters hold any 64-bit number
    const auto len = static_cast<int>(end - buf.data());
    out.append(static_cast<std::size_t>(std::max(0, minDigits - len)), '0');
    out.append(buf.data(), end);
}

std::optional<std::string> ParseHexPairs(std::string_view hex) {
    if (hex.size() % 2 != 0) {
        return std::nullopt;
    }
    std::string bytes;
    bytes.reserve(hex.size() / 2);
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        if (!IsHexDigit(hex[i]) || !IsHexDigit(hex[i + 1])) {
            return std::nullopt;
        }
        bytes.push_back(static_cast<char>(HexValue(hex[i]) * 16 + HexValue(hex[i + 1])));
    }
    return bytes;
}

}  // namespace glyphmoor
