#include "foundation/WineRegistryText.h"

#include "foundation/Hex.h"
#include "foundation/WineRegistryEscapes.h"

#include <charconv>

namespace glyphmoor {

namespace {

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

// A string value's text up to its closing quote, as the registry keeps it:
// UTF-16LE with its NUL. Plain ASCII text is copied as it stands.
Result<RegValue> ParseStringData(std::string_view body, std::uint32_t type) {
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
        if (!line.empty() && (line.front() == '"' || line.front() == '@')) {
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

}  // namespace

Result<Hive> ParseWineRegistry(std::shared_ptr<const std::string> text, std::string_view fileName) {
    return Reader(std::move(text), fileName).Run();
}

}  // namespace glyphmoor
