#include "foundation/WineRegistryEscapes.h"

#include "foundation/Hex.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace glyphmoor {

char16_t DecodeEscape(std::string_view text, std::size_t& i) {
    static constexpr std::string_view kLetters = "abefnrtv";
    static constexpr std::array<char16_t, 8> kUnits = {7, 8, 27, 12, 10, 13, 9, 11};
    const char e = text[i++];
    if (const auto letter = kLetters.find(e); letter != std::string_view::npos) {
        return kUnits[letter];
    }
    if (e == 'x') {
        unsigned v = 0;
        int digits = 0;
        for (; digits < 4 && i < text.size() && IsHexDigit(text[i]); ++digits, ++i) {
            v = v * 16 + static_cast<unsigned>(HexValue(text[i]));
        }
        return digits == 0 ? u'x' : static_cast<char16_t>(v);
    }
    if (e >= '0' && e <= '7') {
        auto v = static_cast<unsigned>(e - '0');
        for (int digits = 1; digits < 3 && i < text.size() && text[i] >= '0' && text[i] <= '7';
             ++digits, ++i) {
            v = v * 8 + static_cast<unsigned>(text[i] - '0');
        }
        return static_cast<char16_t>(v);
    }
    return static_cast<char16_t>(static_cast<unsigned char>(e));
}

std::size_t Utf8SequenceEnd(std::string_view text, std::size_t i) {
    std::size_t end = i + 1;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
        ++end;
    }
    return end;
}

std::size_t FindDelimiterOrEscape(std::string_view text, char delimiter, std::size_t from) {
    for (std::size_t i = from; i < text.size(); ++i) {
        if (text[i] == delimiter || text[i] == '\\') {
            return i;
        }
    }
    return std::string_view::npos;
}

bool EndsWithinText(std::string_view text, char delimiter) {
    // An escape's digits and a UTF-8 sequence's bytes are never a delimiter
    // or a backslash, so only the character right after a backslash needs
    // skipping.
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == delimiter) {
            return true;
        }
        if (text[i] == '\\') {
            ++i;
        }
    }
    return false;
}

namespace {

// An escape that stands for the ASCII character after the backslash.
bool StandsForItself(char escaped) {
    static constexpr std::string_view kDecoded = "abefnrtvx01234567";
    return static_cast<unsigned char>(escaped) < 0x80 && kDecoded.find(escaped) == std::string_view::npos;
}

// ASCII text whose escapes each stand for the character after the backslash
// (a doubled backslash in a key path, an escaped quote), read without
// decoding units; false when the text holds anything else.
bool ReadPlainEscapedAscii(std::string_view text, char delimiter, std::size_t& consumed, std::string& out) {
    auto ascii = [](std::string_view run) {
        return std::all_of(run.begin(), run.end(),
                           [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    };
    std::size_t from = 0;
    for (std::size_t i = FindDelimiterOrEscape(text, delimiter); i != std::string_view::npos;
         i = FindDelimiterOrEscape(text, delimiter, from)) {
        const std::string_view run = text.substr(from, i - from);
        if (!ascii(run)) {
            return false;
        }
        out += run;
        if (text[i] == delimiter) {
            consumed = i + 1;
            return true;
        }
        if (i + 1 >= text.size() || !StandsForItself(text[i + 1])) {
            return false;
        }
        out += text[i + 1];
        from = i + 2;
    }
    return false;
}

}  // namespace

Result<std::string> ReadEscapedUtf8(std::string_view text, char delimiter, std::size_t& consumed) {
    if (std::string simple; ReadPlainEscapedAscii(text, delimiter, consumed, simple)) {
        return simple;
    }
    std::string out;
    out.reserve(text.size());
    char16_t high = 0;
    TRY(UnescapeUnits(text, delimiter, consumed, [&](char16_t unit) {
        if (high != 0) {
            if (unit >= 0xDC00 && unit <= 0xDFFF) {
                AppendUtf8(out, 0x10000 + ((static_cast<char32_t>(high) - 0xD800) << 10) + (unit - 0xDC00));
                high = 0;
                return;
            }
            AppendUtf8(out, 0xFFFD);
            high = 0;
        }
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            high = unit;
        } else if (unit >= 0xDC00 && unit <= 0xDFFF) {
            AppendUtf8(out, 0xFFFD);
        } else {
            AppendUtf8(out, unit);
        }
    }));
    if (high != 0) {
        AppendUtf8(out, 0xFFFD);
    }
    return out;
}

std::string EscapeRegistryString(std::u16string_view text, std::string_view delimiters) {
    static constexpr std::string_view kEscapes = ".......abtnvfr.............e....";
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        const bool hasNext = i + 1 < text.size();
        const char16_t next = hasNext ? text[i + 1] : 0;
        if (c > 127) {
            out += "\\x";
            AppendHex(out, c, hasNext && next < 128 && IsHexDigit(static_cast<char>(next)) ? 4 : 1);
        } else if (c < 32) {
            if (kEscapes[c] != '.') {
                out += '\\';
                out += kEscapes[c];
            } else {
                std::array<char, 8> buf{};
                const bool octalFollows = hasNext && next >= '0' && next <= '7';
                std::snprintf(buf.data(), buf.size(), octalFollows ? "\\%03o" : "\\%o",
                              static_cast<unsigned>(c));
                out += buf.data();
            }
        } else {
            const char ch = static_cast<char>(c);
            if (ch == '\\' || delimiters.find(ch) != std::string_view::npos) {
                out += '\\';
            }
            out += ch;
        }
    }
    return out;
}

Result<std::u16string> UnescapeRegistryString(std::string_view text, char delimiter, std::size_t& consumed) {
    std::u16string out;
    out.reserve(text.size());
    TRY(UnescapeUnits(text, delimiter, consumed, [&](char16_t unit) { out.push_back(unit); }));
    return out;
}

}  // namespace glyphmoor
