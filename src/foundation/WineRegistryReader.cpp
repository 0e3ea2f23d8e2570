#include "foundation/WineRegistryText.h"

#include "foundation/Hex.h"
#include "foundation/WineRegistryEscapes.h"
#include "foundation/WineRegistryValues.h"

#include <algorithm>
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

// The names on a key's path, empty ones left out, each within Windows' limits.
Status SplitKeyPath(std::string_view path, std::vector<std::string_view>& parts) {
    parts.clear();
    while (!path.empty()) {
        const auto pos = path.find('\\');
        const std::string_view part = path.substr(0, pos);
        if (!part.empty()) {
            if (!KeyNameFits(part)) {
                return Fail("a key name longer than " + std::to_string(kMaxKeyNameLength) + " characters");
            }
            if (parts.size() == kMaxKeyDepth) {
                return Fail("a key more than " + std::to_string(kMaxKeyDepth) + " levels deep");
            }
            parts.push_back(part);
        }
        path.remove_prefix(pos == std::string_view::npos ? path.size() : pos + 1);
    }
    return {};
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
                return OnPreamble(line, start, next);
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
    Status OnPreamble(std::string_view line, std::size_t start, std::size_t next) {
        if (!line.empty() && line.front() == '[') {
            m_hive.preamble = std::string(Text(0, m_pendingStart == npos ? start : m_pendingStart));
            m_state = ReadState::Key;
            return OnKeyLine(line, start, next);
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
            return StartKey(line, leadStart, start, next);
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

    // A value of a key whose values are still deferred is only checked;
    // the first one that is not plain, or out of Wine's order, has the key's
    // values read up to it and is read itself.
    Status FinishValue(std::string_view text, std::size_t next) {
        if (m_deferring) {
            if (ValueReads(text, m_name) && IsNewName(m_name)) {
                return {};
            }
            StopDeferring(m_valueStart);
        }
        auto parsed = ParseValueText(text);
        if (!parsed) {
            return Fail(parsed.reason());
        }
        bool created = false;
        HiveValue& stored = m_key->SetValue(parsed->name, std::move(parsed->value), &created);
        if (created) {
            stored.raw = Text(m_valueStart, next);
        } else {
            m_key->changed = true;  // a repeated value: the last one wins, as in Wine
        }
        return {};
    }

    // Records a deferred value's name; false when the key has it already (the
    // key is then read at once, which marks it to be written anew). Names in
    // Wine's order, as Wine writes them, cost one comparison each.
    bool IsNewName(const std::string& name) {
        constexpr std::size_t kMostUnordered = 64;
        const bool inOrder = m_inOrder && (m_names.empty() || CompareRegistryNames(m_names.back(), name) < 0);
        if (!inOrder) {
            if (m_names.size() >= kMostUnordered) {
                return false;
            }
            for (const auto& earlier : m_names) {
                if (CompareRegistryNames(earlier, name) == 0) {
                    return false;
                }
            }
        }
        m_inOrder = inOrder;
        m_names.push_back(name);
        return true;
    }

    void StopDeferring(std::size_t upTo) {
        if (!m_names.empty()) {
            m_key->unreadValues = Text(m_bodyStart, upTo);
            (void)m_key->Values();
        }
        m_deferring = false;
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

    Status StartKey(std::string_view line, std::size_t leadStart, std::size_t headerStart,
                    std::size_t bodyStart) {
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
        TRY(SplitKeyPath(*path, m_parts));
        const std::vector<std::string_view>& parts = m_parts;
        // Keys come mostly in tree order: start below the deepest key the
        // previous section's path shares with this one.
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
        // A key's values are deferred unless it had a section before: two
        // sections for one key are read at once and written anew as one.
        m_deferring = !key->hasSection;
        m_names.clear();
        m_inOrder = true;
        if (key->hasSection) {
            key->changed = true;
            (void)key->Values();
        }
        m_bodyStart = bodyStart;
        key->hasSection = true;
        key->modified = modified;
        key->leading = Text(leadStart, headerStart);
        m_key = key;
        m_keyStart = leadStart;
        return {};
    }

    void FinishKey(std::size_t end) {
        if (m_key != nullptr && m_deferring && !m_names.empty()) {
            m_key->unreadValues = Text(m_bodyStart, end);
        }
        m_deferring = false;
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
    // The values of the current key are only checked so far (HiveKey::unreadValues),
    // from m_bodyStart on; m_names are their names, m_inOrder whether in Wine's order.
    bool m_deferring = false;
    bool m_inOrder = true;
    std::size_t m_bodyStart = 0;
    std::vector<std::string> m_names;
    std::string m_name;
    // The keys on the previous section's path, root first.
    std::vector<HiveKey*> m_lastKeys;
    std::vector<std::string_view> m_parts;
};

}  // namespace

void ReadCheckedValues(std::string_view lines, HiveKey& key) {
    auto append = [&](std::string_view text, std::string_view raw) {
        if (auto parsed = ParseValueText(text)) {
            key.SetValue(parsed->name, std::move(parsed->value)).raw = raw;
        }
    };
    std::string joined;
    std::size_t valueStart = 0;
    bool continued = false;
    std::size_t pos = 0;
    while (pos < lines.size()) {
        const std::size_t start = pos;
        const auto end = lines.find('\n', pos);
        pos = end == std::string_view::npos ? lines.size() : end + 1;
        const std::string_view line =
            StripCr(lines.substr(start, (end == std::string_view::npos ? pos : end) - start));
        if (continued) {
            joined.append(TrimLeft(line));
            if (!joined.empty() && joined.back() == '\\') {
                joined.pop_back();
            } else {
                continued = false;
                append(joined, lines.substr(valueStart, pos - valueStart));
            }
        } else if (!line.empty() && (line.front() == '"' || line.front() == '@')) {
            valueStart = start;
            continued = line.back() == '\\' && LooksContinued(line);
            if (continued) {
                joined.assign(line.substr(0, line.size() - 1));
            } else {
                append(line, lines.substr(valueStart, pos - valueStart));
            }
        }
    }
}

Result<Hive> ParseWineRegistry(std::shared_ptr<const std::string> text, std::string_view fileName) {
    return Reader(std::move(text), fileName).Run();
}

}  // namespace glyphmoor
