#include "foundation/TextEncoding.h"

#include <algorithm>
#include <array>

namespace glyphmoor {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Windows-1252 bytes 0x80 to 0x9F; the rest of the page equals Latin-1.
constexpr std::array<char32_t, 32> kCp1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// Decodes one UTF-8 sequence at text[pos]; advances pos.
char32_t DecodeUtf8(std::string_view text, std::size_t& pos) {
    const auto lead = static_cast<std::uint8_t>(text[pos]);
    if (lead < 0x80) {
        ++pos;
        return lead;
    }
    int extra = 0;
    char32_t cp = 0;
    char32_t min = 0;
    if ((lead & 0xE0) == 0xC0) {
        extra = 1;
        cp = lead & 0x1F;
        min = 0x80;
    } else if ((lead & 0xF0) == 0xE0) {
        extra = 2;
        cp = lead & 0x0F;
        min = 0x800;
    } else if ((lead & 0xF8) == 0xF0) {
        extra = 3;
        cp = lead & 0x07;
        min = 0x10000;
    } else {
        ++pos;
        return kReplacement;
    }
    if (pos + static_cast<std::size_t>(extra) >= text.size()) {
        ++pos;
        return kReplacement;
    }
    for (int i = 1; i <= extra; ++i) {
        const auto b = static_cast<std::uint8_t>(text[pos + i]);
        if ((b & 0xC0) != 0x80) {
            ++pos;
            return kReplacement;
        }
        cp = (cp << 6) | (b & 0x3F);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
        ++pos;
        return kReplacement;
    }
    pos += static_cast<std::size_t>(extra) + 1;
    return cp;
}

}  // namespace

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out.push_back(static_cast<char>(cp));
    } else if (cp < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else if (cp < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
    }
}

std::u32string Utf8ToCodePoints(std::string_view text) {
    std::u32string out;
    out.reserve(text.size());
    std::size_t pos = 0;
    while (pos < text.size()) {
        out.push_back(DecodeUtf8(text, pos));
    }
    return out;
}

std::string CodePointsToUtf8(std::u32string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char32_t cp : text) {
        AppendUtf8(out, cp);
    }
    return out;
}

std::u16string Utf8ToUtf16(std::string_view text) {
    std::u16string out;
    out.reserve(text.size());
    std::size_t pos = 0;
    while (pos < text.size()) {
        const char32_t cp = DecodeUtf8(text, pos);
        if (cp >= 0x10000) {
            const char32_t v = cp - 0x10000;
            out.push_back(static_cast<char16_t>(0xD800 + (v >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + (v & 0x3FF)));
        } else {
            out.push_back(static_cast<char16_t>(cp));
        }
    }
    return out;
}

std::string Utf16ToUtf8(std::u16string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t u = text[i];
        if (u >= 0xD800 && u <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] <= 0xDFFF) {
            AppendUtf8(out, 0x10000 + ((static_cast<char32_t>(u) - 0xD800) << 10) + (text[i + 1] - 0xDC00));
            ++i;
        } else if (u >= 0xD800 && u <= 0xDFFF) {
            AppendUtf8(out, kReplacement);
        } else {
            AppendUtf8(out, u);
        }
    }
    return out;
}

char32_t AnsiToCodePoint(std::uint8_t byte) {
    if (byte >= 0x80 && byte <= 0x9F) {
        return kCp1252High[byte - 0x80];
    }
    return byte;
}

std::uint8_t CodePointToAnsi(char32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) {
        return static_cast<std::uint8_t>(cp);
    }
    const auto* it = std::find(kCp1252High.begin(), kCp1252High.end(), cp);
    if (it != kCp1252High.end()) {
        return static_cast<std::uint8_t>(0x80 + (it - kCp1252High.begin()));
    }
    return '?';
}

std::string Utf16ToBytes(std::u16string_view text) {
    std::string out;
    out.reserve(text.size() * 2);
    for (char16_t u : text) {
        out.push_back(static_cast<char>(u & 0xFF));
        out.push_back(static_cast<char>(u >> 8));
    }
    return out;
}

std::u16string BytesToUtf16(std::string_view bytes) {
    std::u16string out;
    out.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        out.push_back(static_cast<char16_t>(static_cast<std::uint8_t>(bytes[i]) |
                                            (static_cast<std::uint8_t>(bytes[i + 1]) << 8)));
    }
    return out;
}

char16_t FoldCase(char16_t c) {
    if (c >= u'A' && c <= u'Z') {
        return static_cast<char16_t>(c + 32);
    }
    // Latin-1 upper-case letters, except the multiplication sign.
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) {
        return static_cast<char16_t>(c + 32);
    }
    return c;
}

int CompareNoCase(std::string_view a, std::string_view b) {
    // Fast path for ASCII, which is nearly every name.
    static constexpr auto kLower = [] {
        std::array<unsigned char, 128> table{};
        for (int c = 0; c < 128; ++c) {
            table[c] = static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
        }
        return table;
    }();
    const std::size_t n = std::min(a.size(), b.size());
    std::size_t i = 0;
    for (; i < n; ++i) {
        const auto ca = static_cast<unsigned char>(a[i]);
        const auto cb = static_cast<unsigned char>(b[i]);
        if (ca == cb && ca < 0x80) {
            continue;
        }
        if (ca >= 0x80 || cb >= 0x80) {
            break;
        }
        const auto ua = kLower[ca];
        const auto ub = kLower[cb];
        if (ua != ub) {
            return ua < ub ? -1 : 1;
        }
    }
    if (i == n) {
        return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
    }
    const std::u16string wa = Utf8ToUtf16(a.substr(i));
    const std::u16string wb = Utf8ToUtf16(b.substr(i));
    const std::size_t m = std::min(wa.size(), wb.size());
    for (std::size_t k = 0; k < m; ++k) {
        const auto ua = FoldCase(wa[k]);
        const auto ub = FoldCase(wb[k]);
        if (ua != ub) {
            return ua < ub ? -1 : 1;
        }
    }
    return wa.size() == wb.size() ? 0 : (wa.size() < wb.size() ? -1 : 1);
}

bool EqualsNoCase(std::string_view a, std::string_view b) {
    return CompareNoCase(a, b) == 0;
}

std::string LowerAscii(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return lower;
}

bool EndsWithNoCase(std::string_view text, std::string_view end) {
    return text.size() > end.size() && EqualsNoCase(text.substr(text.size() - end.size()), end);
}

}  // namespace glyphmoor
