#include "foundation/WineRegistryValues.h"

#include "foundation/Hex.h"
#include "foundation/WineRegistryEscapes.h"

#include <algorithm>
#include <vector>

namespace glyphmoor {

namespace {

// Hex bytes separated by commas, blanks around them allowed; each byte goes
// to sink. False when the text is not that.
template <typename Sink>
bool ReadHexBytes(std::string_view s, Sink sink) {
    std::size_t i = 0;
    auto skipSpace = [&] {
        while (i < s.size() && (s[i] == ' ' || s[i] == '\t')) {
            ++i;
        }
    };
    skipSpace();
    while (i < s.size()) {
        if (i + 1 >= s.size() || !IsHexDigit(s[i]) || !IsHexDigit(s[i + 1])) {
            return false;
        }
        sink(static_cast<std::uint8_t>(HexValue(s[i]) * 16 + HexValue(s[i + 1])));
        i += 2;
        skipSpace();
        if (i < s.size()) {
            if (s[i] != ',') {
                return false;
            }
            ++i;
            skipSpace();
        }
    }
    return true;
}

Result<std::vector<std::uint8_t>> ParseHexBytes(std::string_view s) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(s.size() / 3 + 1);
    if (!ReadHexBytes(s, [&](std::uint8_t byte) { bytes.push_back(byte); })) {
        return Fail("bad hex data");
    }
    return bytes;
}

// A string value's text up to its closing quote, as the registry keeps it:
// UTF-16LE with its NUL. Plain ASCII text is copied as it stands.
Result<RegValue> ParseStringData(std::string_view body, std::uint32_t type) {
    const auto plainEnd = FindDelimiterOrEscape(body, '"');
    if (plainEnd != std::string_view::npos && body[plainEnd] == '"') {
        bool ascii = true;
        for (std::size_t i = 0; i < plainEnd && ascii; ++i) {
            ascii = static_cast<unsigned char>(body[i]) < 0x80;
        }
        if (ascii) {
            RegValue plain{type, {}};
            plain.data.resize((plainEnd + 1) * 2);
            for (std::size_t i = 0; i < plainEnd; ++i) {
                plain.data[2 * i] = static_cast<std::uint8_t>(body[i]);
            }
            return plain;
        }
    }
    RegValue text{type, {}};
    text.data.reserve(body.size() * 2);
    std::size_t consumed = 0;
    TRY(UnescapeUnits(body, '"', consumed, [&](char16_t unit) {
        text.data.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        text.data.push_back(static_cast<std::uint8_t>(unit >> 8));
    }));
    text.data.push_back(0);
    text.data.push_back(0);
    return text;
}

// "dword:" and eight hex digits at most, blanks after them allowed.
Result<RegValue> ParseDwordData(std::string_view digits) {
    while (!digits.empty() && (digits.back() == ' ' || digits.back() == '\t')) {
        digits.remove_suffix(1);
    }
    std::uint32_t v = 0;
    if (!ParseHexNumber(digits, v, 8)) {
        return Fail("bad dword value");
    }
    return RegValue{kRegDword,
                    {static_cast<std::uint8_t>(v), static_cast<std::uint8_t>(v >> 8),
                     static_cast<std::uint8_t>(v >> 16), static_cast<std::uint8_t>(v >> 24)}};
}

// "hex:" (binary) or "hex(TYPE):", then the bytes.
Result<RegValue> ParseHexData(std::string_view s) {
    RegValue value;
    std::string_view hex;
    if (s.starts_with("hex:")) {
        value.type = kRegBinary;
        hex = s.substr(4);
    } else {
        const auto close = s.find("):");
        if (close == std::string_view::npos || !ParseHexNumber(s.substr(4, close - 4), value.type, 8)) {
            return Fail("bad hex type");
        }
        hex = s.substr(close + 2);
    }
    value.data = TRY(ParseHexBytes(hex));
    return value;
}

// Parses the data part of a value, after "=".
Result<RegValue> ParseValueData(std::string_view s) {
    if (!s.empty() && s.front() == '"') {
        return ParseStringData(s.substr(1), kRegSz);
    }
    if (s.starts_with("str:\"")) {
        return ParseStringData(s.substr(5), kRegExpandSz);
    }
    if (s.starts_with("str(")) {
        const auto close = s.find("):\"");
        std::uint32_t type = 0;
        if (close == std::string_view::npos || !ParseHexNumber(s.substr(4, close - 4), type, 8)) {
            return Fail("bad string type");
        }
        return ParseStringData(s.substr(close + 3), type);
    }
    if (s.starts_with("dword:")) {
        return ParseDwordData(s.substr(6));
    }
    if (s.starts_with("hex:") || s.starts_with("hex(")) {
        return ParseHexData(s);
    }
    return Fail("unknown value form");
}

// Whether string data (after its opening quote) reads: as ParseStringData
// reads it, without building it.
bool StringDataReads(std::string_view body) {
    return EndsWithinText(body, '"');
}

// Whether value data (after "=") reads, checked as ParseValueData reads it
// but without building anything.
bool ValueDataReads(std::string_view data) {
    if (data.starts_with("\"")) {
        return StringDataReads(data.substr(1));
    }
    if (data.starts_with("str:\"")) {
        return StringDataReads(data.substr(5));
    }
    std::uint32_t number = 0;
    if (data.starts_with("str(")) {
        const auto close = data.find("):\"");
        return close != std::string_view::npos && ParseHexNumber(data.substr(4, close - 4), number, 8) &&
               StringDataReads(data.substr(close + 3));
    }
    if (data.starts_with("dword:")) {
        std::string_view digits = data.substr(6);
        while (!digits.empty() && (digits.back() == ' ' || digits.back() == '\t')) {
            digits.remove_suffix(1);
        }
        return ParseHexNumber(digits, number, 8);
    }
    if (data.starts_with("hex:")) {
        return ReadHexBytes(data.substr(4), [](std::uint8_t) {});
    }
    if (data.starts_with("hex(")) {
        const auto close = data.find("):");
        return close != std::string_view::npos && ParseHexNumber(data.substr(4, close - 4), number, 8) &&
               ReadHexBytes(data.substr(close + 2), [](std::uint8_t) {});
    }
    return false;
}

}  // namespace

// A whole value line (its continuation lines joined): the name, "=", the data.
Result<HiveValue> ParseValueText(std::string_view text) {
    HiveValue parsed;
    if (text.front() == '@') {
        text.remove_prefix(1);
    } else {
        std::size_t consumed = 0;
        auto name = ReadEscapedUtf8(text.substr(1), '"', consumed);
        if (!name) {
            return Fail("value name: " + name.reason());
        }
        parsed.name = std::move(*name);
        text.remove_prefix(1 + consumed);
    }
    if (text.empty() || text.front() != '=') {
        return Fail("expected '=' after the value name");
    }
    auto value = ParseValueData(text.substr(1));
    if (!value) {
        return Fail("value \"" + parsed.name + "\": " + value.reason());
    }
    parsed.value = std::move(*value);
    return parsed;
}

// A hex value ends its line with a backslash when it goes on; a string
// value cannot (its closing quote comes last).
bool LooksContinued(std::string_view text) {
    return text.find("=hex") != std::string_view::npos;
}

// Whether ParseValueText reads a value line, checked without building its
// data; its name is given back. A line that does not read is read at once,
// so that its fault is reported with the file's line.
bool ValueReads(std::string_view text, std::string& name) {
    if (text.front() == '@') {
        name.clear();
        text.remove_prefix(1);
    } else {
        const auto close = FindDelimiterOrEscape(text, '"', 1);
        std::size_t consumed = 0;
        if (close != std::string_view::npos && text[close] == '"' &&
            std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(close),
                        [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
            name.assign(text.substr(1, close - 1));
            consumed = close;
        } else if (auto decoded = ReadEscapedUtf8(text.substr(1), '"', consumed)) {
            name = std::move(*decoded);
        } else {
            return false;
        }
        text.remove_prefix(1 + consumed);
    }
    return !text.empty() && text.front() == '=' && ValueDataReads(text.substr(1));
}

}  // namespace glyphmoor
