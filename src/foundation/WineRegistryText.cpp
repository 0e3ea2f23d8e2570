#include "foundation/WineRegistryText.h"

#include "foundation/TextEncoding.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace glyphmoor {

namespace {

constexpr std::uint64_t kUnixEpochAsFileTime = 116444736000000000ULL;
constexpr std::uint64_t kTicksPerSecond = 10000000ULL;

bool IsHexDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

int HexValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c - 'A' + 10;
}

std::string_view StripCr(std::string_view line) {
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

bool IsBlankOrComment(std::string_view line) {
    for (char c : line) {
        if (c == ';') {
            return true;
        }
        if (c != ' ' && c != '\t') {
            return false;
        }
    }
    return true;
}

std::string_view TrimLeft(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) {
        s.remove_prefix(1);
    }
    return s;
}

void AppendHex(std::string& out, std::uint64_t v, int minDigits) {
    std::array<char, 20> buf{};
    auto [end, ec] = std::to_chars(buf.data(), buf.data() + buf.size(), v, 16);
    (void)ec;
    const auto len = static_cast<int>(end - buf.data());
    out.append(static_cast<std::size_t>(std::max(0, minDigits - len)), '0');
    out.append(buf.data(), end);
}

// Reads a hex number of at most maxDigits digits.
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

// Reads an escaped string up to an unescaped delimiter, handing each UTF-16
// unit to sink: Wine's escapes \a \b \e \f \n \r \t \v, \x with up to four
// hex digits, up to three octal digits, and a backslash before any other
// character standing for that character. Raw non-ASCII text is read as UTF-8.
template <typename Sink>
Status UnescapeUnits(std::string_view text, char delimiter, std::size_t& consumed, Sink sink) {
    std::size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        if (c == delimiter) {
            consumed = i + 1;
            return {};
        }
        if (c != '\\') {
            if (static_cast<unsigned char>(c) < 0x80) {
                sink(static_cast<char16_t>(c));
                ++i;
            } else {
                std::size_t end = i + 1;
                while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
                    ++end;
                }
                for (char16_t unit : Utf8ToUtf16(text.substr(i, end - i))) {
                    sink(unit);
                }
                i = end;
            }
            continue;
        }
        ++i;
        if (i >= text.size()) {
            break;
        }
        const char e = text[i];
        switch (e) {
            case 'a':
                sink(7);
                ++i;
                break;
            case 'b':
                sink(8);
                ++i;
                break;
            case 'e':
                sink(27);
                ++i;
                break;
            case 'f':
                sink(12);
                ++i;
                break;
            case 'n':
                sink(10);
                ++i;
                break;
            case 'r':
                sink(13);
                ++i;
                break;
            case 't':
                sink(9);
                ++i;
                break;
            case 'v':
                sink(11);
                ++i;
                break;
            case 'x': {
                ++i;
                unsigned v = 0;
                int digits = 0;
                while (digits < 4 && i < text.size() && IsHexDigit(text[i])) {
                    v = v * 16 + static_cast<unsigned>(HexValue(text[i]));
                    ++i;
                    ++digits;
                }
                sink(digits == 0 ? u'x' : static_cast<char16_t>(v));
                break;
            }
            default:
                if (e >= '0' && e <= '7') {
                    unsigned v = 0;
                    int digits = 0;
                    while (digits < 3 && i < text.size() && text[i] >= '0' && text[i] <= '7') {
                        v = v * 8 + static_cast<unsigned>(text[i] - '0');
                        ++i;
                        ++digits;
                    }
                    sink(static_cast<char16_t>(v));
                } else {
                    sink(static_cast<char16_t>(static_cast<unsigned char>(e)));
                    ++i;
                }
        }
    }
    return Fail(std::string("missing closing ") + delimiter);
}

// Reads an escaped string up to its delimiter as UTF-8. Most names and texts
// hold neither escapes nor non-ASCII characters and are taken as they stand.
Result<std::string> ReadEscapedUtf8(std::string_view text, char delimiter, std::size_t& consumed) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == delimiter) {
            consumed = i + 1;
            return std::string(text.substr(0, i));
        }
        if (c == '\\' || static_cast<unsigned char>(c) >= 0x80) {
            break;
        }
    }
    // Straight to UTF-8; a surrogate pair joins into one character, a lone
    // surrogate becomes U+FFFD as in Utf16ToUtf8.
    std::string out;
    out.reserve(text.size());
    char16_t high = 0;
    Status status = UnescapeUnits(text, delimiter, consumed, [&](char16_t unit) {
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
    });
    if (!status) {
        return Fail(status.reason());
    }
    if (high != 0) {
        AppendUtf8(out, 0xFFFD);
    }
    return out;
}

Result<std::vector<std::uint8_t>> ParseHexBytes(std::string_view s) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(s.size() / 3 + 1);
    std::size_t i = 0;
    auto skipSpace = [&] {
        while (i < s.size() && (s[i] == ' ' || s[i] == '\t')) {
            ++i;
        }
    };
    skipSpace();
    while (i < s.size()) {
        if (i + 1 >= s.size() || !IsHexDigit(s[i]) || !IsHexDigit(s[i + 1])) {
            return Fail("bad hex data");
        }
        bytes.push_back(static_cast<std::uint8_t>(HexValue(s[i]) * 16 + HexValue(s[i + 1])));
        i += 2;
        skipSpace();
        if (i < s.size()) {
            if (s[i] != ',') {
                return Fail("bad hex data");
            }
            ++i;
            skipSpace();
        }
    }
    return bytes;
}

// Parses the data part of a value, after "=".
Result<RegValue> ParseValueData(std::string_view s) {
    RegValue value;
    auto parseString = [&](std::string_view body, std::uint32_t type) -> Result<RegValue> {
        const auto plainEnd = body.find_first_of("\"\\");
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
        Status status = UnescapeUnits(body, '"', consumed, [&](char16_t unit) {
            text.data.push_back(static_cast<std::uint8_t>(unit & 0xFF));
            text.data.push_back(static_cast<std::uint8_t>(unit >> 8));
        });
        if (!status) {
            return Fail(status.reason());
        }
        text.data.push_back(0);
        text.data.push_back(0);
        return text;
    };
    if (!s.empty() && s.front() == '"') {
        return parseString(s.substr(1), kRegSz);
    }
    if (s.starts_with("str:\"")) {
        return parseString(s.substr(5), kRegExpandSz);
    }
    if (s.starts_with("str(")) {
        const auto close = s.find("):\"");
        std::uint32_t type = 0;
        if (close == std::string_view::npos || !ParseHexNumber(s.substr(4, close - 4), type, 8)) {
            return Fail("bad string type");
        }
        return parseString(s.substr(close + 3), type);
    }
    if (s.starts_with("dword:")) {
        std::uint32_t v = 0;
        std::string_view digits = s.substr(6);
        while (!digits.empty() && (digits.back() == ' ' || digits.back() == '\t')) {
            digits.remove_suffix(1);
        }
        if (!ParseHexNumber(digits, v, 8)) {
            return Fail("bad dword value");
        }
        value.type = kRegDword;
        value.data = {static_cast<std::uint8_t>(v), static_cast<std::uint8_t>(v >> 8),
                      static_cast<std::uint8_t>(v >> 16), static_cast<std::uint8_t>(v >> 24)};
        return value;
    }
    std::string_view hex;
    if (s.starts_with("hex:")) {
        value.type = kRegBinary;
        hex = s.substr(4);
    } else if (s.starts_with("hex(")) {
        const auto close = s.find("):");
        if (close == std::string_view::npos || !ParseHexNumber(s.substr(4, close - 4), value.type, 8)) {
            return Fail("bad hex type");
        }
        hex = s.substr(close + 2);
    } else {
        return Fail("unknown value form");
    }
    auto bytes = ParseHexBytes(hex);
    if (!bytes) {
        return Fail(bytes.reason());
    }
    value.data = std::move(*bytes);
    return value;
}

// The reader's states, one line at a time.
enum class ReadState { Header, Preamble, Key };

class Reader {
public:
    Reader(std::shared_ptr<const std::string> text, std::string_view fileName)
        : m_text(std::move(text)), m_fileName(fileName) {}

    Result<Hive> Run() {
        m_hive.source = m_text;
        const std::string_view all(*m_text);
        std::size_t pos = 0;
        while (pos < all.size()) {
            const std::size_t start = pos;
            std::size_t end = all.find('\n', pos);
            pos = end == std::string_view::npos ? all.size() : end + 1;
            ++m_lineNumber;
            Status status = Line(start, pos);
            if (!status) {
                return Fail(m_fileName + ":" + std::to_string(m_lineNumber) + ": " + status.reason());
            }
        }
        if (m_state == ReadState::Header) {
            return Fail(m_fileName + ": empty file, not a Wine registry");
        }
        if (m_continuation) {
            return Fail(m_fileName + ":" + std::to_string(m_lineNumber) +
                        ": the file ends inside a continued value");
        }
        if (m_state == ReadState::Preamble) {
            m_hive.preamble = std::string(Text(0, m_pendingStart == npos ? all.size() : m_pendingStart));
        }
        FinishKey(m_pendingStart == npos ? all.size() : m_pendingStart);
        if (m_pendingStart != npos) {
            m_hive.trailer = std::string(all.substr(m_pendingStart));
        }
        return std::move(m_hive);
    }

private:
    static constexpr std::size_t npos = std::string_view::npos;

    std::string_view Text(std::size_t from, std::size_t to) const {
        return std::string_view(*m_text).substr(from, to - from);
    }

    Status Line(std::size_t start, std::size_t next) {
        const std::string_view raw = Text(start, next);
        std::string_view line = raw;
        if (!line.empty() && line.back() == '\n') {
            line.remove_suffix(1);
        }
        line = StripCr(line);

        // A value continued over several lines: join them.
        if (m_continuation) {
            if (TrimLeft(line).empty()) {
                return Fail("a continued value goes on with an empty line");
            }
            m_joined.append(TrimLeft(line));
            if (!m_joined.empty() && m_joined.back() == '\\') {
                m_joined.pop_back();
                return {};
            }
            m_continuation = false;
            return FinishValue(m_joined, next);
        }

        switch (m_state) {
            case ReadState::Header:
                return OnHeader(line);
            case ReadState::Preamble:
                return OnPreamble(line, start);
            case ReadState::Key:
                return OnKeyLine(line, start, next);
        }
        return {};
    }

    Status OnHeader(std::string_view line) {
        if (line != kWineRegistryHeader) {
            return Fail("not a Wine registry file: the first line must be \"" +
                        std::string(kWineRegistryHeader) + "\"");
        }
        m_state = ReadState::Preamble;
        return {};
    }

    // Everything before the first key belongs to the preamble, but for the
    // blank lines and comments right before it, which lead the first key.
    Status OnPreamble(std::string_view line, std::size_t start) {
        if (!line.empty() && line.front() == '[') {
            m_hive.preamble = std::string(Text(0, m_pendingStart == npos ? start : m_pendingStart));
            m_state = ReadState::Key;
            return OnKeyLine(line, start, start);
        }
        if (line.front() == '"' || line.front() == '@') {
            return Fail("a value outside of any key");
        }
        if (IsBlankOrComment(line)) {
            if (m_pendingStart == npos) {
                m_pendingStart = start;
            }
        } else {
            m_pendingStart = npos;
        }
        return {};
    }

    Status OnKeyLine(std::string_view line, std::size_t start, std::size_t next) {
        if (IsBlankOrComment(line)) {
            if (m_pendingStart == npos) {
                m_pendingStart = start;
            }
            return {};
        }
        if (line.front() == '[') {
            const std::size_t leadStart = m_pendingStart == npos ? start : m_pendingStart;
            FinishKey(leadStart);
            m_pendingStart = npos;
            return StartKey(line, leadStart, start);
        }
        FlushPendingIntoKey(start);
        if (line.starts_with("#time=")) {
            std::uint64_t ticks = 0;
            if (ParseHexNumber(line.substr(6), ticks, 16)) {
                m_key->modified = ticks;
            } else {
                m_key->otherLines.emplace_back(line);
            }
            return {};
        }
        if (line.front() == '#') {
            m_key->metaLines.emplace_back(line);
            return {};
        }
        if (line.front() == '"' || line.front() == '@') {
            m_valueStart = start;
            if (line.back() == '\\' && LooksContinued(line)) {
                m_joined.assign(line.substr(0, line.size() - 1));
                m_continuation = true;
                return {};
            }
            return FinishValue(line, next);
        }
        m_key->otherLines.emplace_back(line);
        return {};
    }

    // A hex value ends its line with a backslash when it goes on; a string
    // value cannot (its closing quote comes last).
    static bool LooksContinued(std::string_view text) {
        const auto eq = text.find("=hex");
        return eq != std::string_view::npos;
    }

    Status FinishValue(std::string_view text, std::size_t next) {
        std::string name;
        if (text.front() == '@') {
            text.remove_prefix(1);
        } else {
            std::size_t consumed = 0;
            auto parsed = ReadEscapedUtf8(text.substr(1), '"', consumed);
            if (!parsed) {
                return Fail("value name: " + parsed.reason());
            }
            name = std::move(*parsed);
            text.remove_prefix(1 + consumed);
        }
        if (text.empty() || text.front() != '=') {
            return Fail("expected '=' after the value name");
        }
        auto value = ParseValueData(text.substr(1));
        if (!value) {
            return Fail("value \"" + name + "\": " + value.reason());
        }
        bool created = false;
        HiveValue& stored = m_key->SetValue(name, std::move(*value), &created);
        if (created) {
            stored.raw = Text(m_valueStart, next);
        } else {
            m_key->changed = true;  // a repeated value: the last one wins, as in Wine
        }
        return {};
    }

    void FlushPendingIntoKey(std::size_t upTo) {
        if (m_pendingStart == npos || m_key == nullptr) {
            m_pendingStart = npos;
            return;
        }
        std::string_view pending = Text(m_pendingStart, upTo);
        while (!pending.empty()) {
            auto nl = pending.find('\n');
            std::string_view one = pending.substr(0, nl);
            m_key->otherLines.emplace_back(StripCr(one));
            pending.remove_prefix(nl == std::string_view::npos ? pending.size() : nl + 1);
        }
        m_pendingStart = npos;
    }

    Status StartKey(std::string_view line, std::size_t leadStart, std::size_t headerStart) {
        std::size_t consumed = 0;
        auto path = ReadEscapedUtf8(line.substr(1), ']', consumed);
        if (!path) {
            return Fail("key name: " + path.reason());
        }
        std::string_view rest = TrimLeft(line.substr(1 + consumed));
        std::uint64_t modified = 0;
        if (!rest.empty()) {
            std::uint64_t seconds = 0;
            auto [ptr, ec] = std::from_chars(rest.data(), rest.data() + rest.size(), seconds);
            if (ec == std::errc()) {
                modified = seconds * kTicksPerSecond + kUnixEpochAsFileTime;
            }
            (void)ptr;
        }
        // Keys come mostly in tree order: start below the deepest key the
        // previous section's path shares with this one.
        std::vector<std::string_view>& parts = m_parts;
        parts.clear();
        std::string_view remaining = *path;
        while (!remaining.empty()) {
            const auto pos = remaining.find('\\');
            const std::string_view part = remaining.substr(0, pos);
            if (!part.empty()) {
                if (!KeyNameFits(part)) {
                    return Fail("a key name longer than " + std::to_string(kMaxKeyNameLength) +
                                " characters");
                }
                if (parts.size() == kMaxKeyDepth) {
                    return Fail("a key more than " + std::to_string(kMaxKeyDepth) + " levels deep");
                }
                parts.push_back(part);
            }
            remaining.remove_prefix(pos == std::string_view::npos ? remaining.size() : pos + 1);
        }
        std::size_t shared = 0;
        while (shared < parts.size() && shared < m_lastKeys.size() &&
               parts[shared] == m_lastKeys[shared]->name) {
            ++shared;
        }
        m_lastKeys.resize(shared);
        HiveKey* key = shared == 0 ? m_hive.root.get() : m_lastKeys[shared - 1];
        for (std::size_t i = shared; i < parts.size(); ++i) {
            bool created = false;
            key = &key->AddSubkey(parts[i], created);
            m_lastKeys.push_back(key);
        }
        if (key->hasSection) {
            key->changed = true;  // two sections for one key: written anew as one
        }
        key->hasSection = true;
        key->modified = modified;
        key->leading = Text(leadStart, headerStart);
        m_key = key;
        m_keyStart = leadStart;
        return {};
    }

    void FinishKey(std::size_t end) {
        if (m_key != nullptr && !m_key->changed) {
            m_key->rawSection = Text(m_keyStart, end);
        }
        m_key = nullptr;
    }

    std::shared_ptr<const std::string> m_text;
    std::string m_fileName;
    Hive m_hive;
    ReadState m_state = ReadState::Header;
    std::size_t m_lineNumber = 0;
    std::size_t m_pendingStart = npos;
    HiveKey* m_key = nullptr;
    std::size_t m_keyStart = 0;
    std::size_t m_valueStart = 0;
    bool m_continuation = false;
    std::string m_joined;
    // The keys on the previous section's path, root first.
    std::vector<HiveKey*> m_lastKeys;
    std::vector<std::string_view> m_parts;
};

std::string FormatHeader(const HiveKey& key) {
    std::string out = "[";
    out += EscapeRegistryString(Utf8ToUtf16(key.Path()), "[]");
    // EscapeRegistryString doubles the separators, as Wine's file has them.
    out += "] ";
    const std::uint64_t seconds =
        key.modified > kUnixEpochAsFileTime ? (key.modified - kUnixEpochAsFileTime) / kTicksPerSecond : 0;
    out += std::to_string(static_cast<std::uint32_t>(seconds));
    out += "\n#time=";
    AppendHex(out, key.modified >> 32, 1);
    AppendHex(out, key.modified & 0xFFFFFFFFULL, 8);
    out += '\n';
    return out;
}

bool NeedsSection(const HiveKey& key) {
    // Wine saves a key when it has values, or no subkeys, or a class or link;
    // other keys come back by themselves from their subkeys' paths.
    if (!key.values.empty() || key.subkeys.empty()) {
        return true;
    }
    return !key.metaLines.empty() || (key.hasSection && !key.otherLines.empty());
}

// Text kept from the file goes out as it came, but for a line end that the
// file's last line may lack and that what follows needs.
void AppendLines(std::string& out, std::string_view lines) {
    out += lines;
    if (!lines.empty() && lines.back() != '\n') {
        out += '\n';
    }
}

void WriteKey(const HiveKey& key, std::string& out) {
    if (key.hasSection && !key.changed) {
        AppendLines(out, key.rawSection);
    } else if ((key.hasSection || key.changed) && NeedsSection(key)) {
        if (key.hasSection) {
            out += key.leading;
        } else {
            out += '\n';
        }
        out += FormatHeader(key);
        for (const auto& meta : key.metaLines) {
            out += meta;
            out += '\n';
        }
        for (const auto& value : key.values) {
            if (!value.raw.empty()) {
                AppendLines(out, value.raw);
            } else {
                out += FormatRegistryValue(value.name, value.value);
            }
        }
        for (const auto& other : key.otherLines) {
            out += other;
            out += '\n';
        }
    }
    for (const auto& sub : key.subkeys) {
        WriteKey(*sub, out);
    }
}

}  // namespace

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
    Status status = UnescapeUnits(text, delimiter, consumed, [&](char16_t unit) { out.push_back(unit); });
    if (!status) {
        return Fail(status.reason());
    }
    return out;
}

std::string FormatRegistryValue(std::string_view name, const RegValue& value) {
    std::string out;
    if (name.empty()) {
        out = "@=";
    } else {
        out = "\"";
        out += EscapeRegistryString(Utf8ToUtf16(name), "\"\"");
        out += "\"=";
    }
    const auto& data = value.data;
    switch (value.type) {
        case kRegSz:
        case kRegExpandSz:
        case kRegMultiSz:
            // Only properly terminated strings are written as text.
            if (data.size() >= 2 && data.size() % 2 == 0 && data[data.size() - 1] == 0 &&
                data[data.size() - 2] == 0) {
                if (value.type != kRegSz) {
                    out += "str(";
                    AppendHex(out, value.type, 1);
                    out += "):";
                }
                std::u16string text;
                text.reserve(data.size() / 2 - 1);
                for (std::size_t i = 0; i + 2 < data.size(); i += 2) {
                    text.push_back(static_cast<char16_t>(data[i] | (data[i + 1] << 8)));
                }
                out += '"';
                out += EscapeRegistryString(text, "\"\"");
                out += "\"\n";
                return out;
            }
            break;
        case kRegDword:
            if (data.size() == 4) {
                out += "dword:";
                AppendHex(out,
                          static_cast<std::uint32_t>(data[0] | (data[1] << 8) | (data[2] << 16)) |
                              (static_cast<std::uint32_t>(data[3]) << 24),
                          8);
                out += '\n';
                return out;
            }
            break;
        default:
            break;
    }
    std::size_t count = out.size();
    if (value.type == kRegBinary) {
        out += "hex:";
        count += 4;
    } else {
        const std::size_t before = out.size();
        out += "hex(";
        AppendHex(out, value.type, 1);
        out += "):";
        count += out.size() - before;
    }
    static constexpr char kDigits[] = "0123456789abcdef";
    for (std::size_t i = 0; i < data.size(); ++i) {
        out += kDigits[data[i] >> 4];
        out += kDigits[data[i] & 0xF];
        count += 2;
        if (i + 1 < data.size()) {
            out += ',';
            if (++count > 76) {
                out += "\\\n  ";
                count = 2;
            }
        }
    }
    out += '\n';
    return out;
}

std::string NewHivePreamble(std::string_view relativeRoot, std::string_view arch) {
    std::string out(kWineRegistryHeader);
    out += "\n;; All keys relative to ";
    out += relativeRoot;
    out += "\n";
    if (!arch.empty()) {
        out += "\n#arch=";
        out += arch;
        out += "\n";
    }
    return out;
}

Result<Hive> ParseWineRegistry(std::shared_ptr<const std::string> text, std::string_view fileName) {
    return Reader(std::move(text), fileName).Run();
}

std::string SerializeWineRegistry(const Hive& hive) {
    std::string out;
    out.reserve(hive.source ? hive.source->size() + 4096 : 4096);
    AppendLines(out, hive.preamble);
    WriteKey(*hive.root, out);
    out += hive.trailer;
    return out;
}

}  // namespace glyphmoor
