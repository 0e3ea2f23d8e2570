#include "foundation/ProfileFile.h"

#include <algorithm>

namespace glyphmoor {

namespace {

constexpr std::string_view kUtf8Bom = "\xEF\xBB\xBF";

std::string_view TrimStart(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && IsProfileBlank(text[i])) {
        ++i;
    }
    return text.substr(i);
}

std::string_view TrimEnd(std::string_view text) {
    std::size_t n = text.size();
    while (n > 0 && IsProfileBlank(text[n - 1])) {
        --n;
    }
    return text.substr(0, n);
}

// Folds a Windows-1252 byte to upper case.
unsigned char FoldAnsi(unsigned char c) {
    if (c >= 'a' && c <= 'z') {
        return static_cast<unsigned char>(c - 0x20);
    }
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) {
        return static_cast<unsigned char>(c - 0x20);
    }
    switch (c) {
        case 0x9A:
            return 0x8A;  // s with caron
        case 0x9C:
            return 0x8C;  // oe
        case 0x9E:
            return 0x8E;  // z with caron
        case 0xFF:
            return 0x9F;  // y with diaeresis
        default:
            return c;
    }
}

ProfileFile::Line ClassifyLine(std::string_view content) {
    ProfileFile::Line line;
    const std::string_view text = TrimProfileBlanks(content);
    if (text.empty()) {
        line.kind = ProfileFile::LineKind::Blank;
        return line;
    }
    if (text.front() == '[') {
        const auto close = text.rfind(']');
        if (close != std::string_view::npos) {
            line.kind = ProfileFile::LineKind::Section;
            line.name = std::string(ProfileArgument(TrimProfileBlanks(text.substr(1, close - 1))));
            return line;
        }
    }
    line.kind = ProfileFile::LineKind::Entry;
    const auto equals = text.find('=');
    if (equals == std::string_view::npos) {
        line.name = std::string(ProfileArgument(text));
    } else {
        line.name = std::string(ProfileArgument(TrimEnd(text.substr(0, equals))));
        line.value = std::string(ProfileArgument(TrimStart(text.substr(equals + 1))));
    }
    return line;
}

}  // namespace

std::string_view ProfileArgument(std::string_view text) {
    const auto nul = text.find('\0');
    return nul == std::string_view::npos ? text : text.substr(0, nul);
}

bool IsProfileBlank(char c) {
    const auto b = static_cast<unsigned char>(c);
    return (b >= 0x09 && b <= 0x0D) || b == 0x1A || b == 0x20;
}

std::string_view TrimProfileBlanks(std::string_view text) {
    return TrimEnd(TrimStart(text));
}

bool ProfileNamesEqual(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return FoldAnsi(static_cast<unsigned char>(x)) == FoldAnsi(static_cast<unsigned char>(y));
           });
}

ProfileFile::ProfileFile() {
    Reparse();
}

ProfileFile ProfileFile::Parse(std::string_view bytes) {
    ProfileFile file;
    file.m_bytes.assign(bytes);
    file.Reparse();
    return file;
}

void ProfileFile::Reparse() {
    m_lines.clear();
    m_sections.clear();
    const std::string_view bytes = m_bytes;
    std::size_t pos = bytes.starts_with(kUtf8Bom) ? kUtf8Bom.size() : 0;
    while (pos < bytes.size()) {
        const std::size_t begin = pos;
        std::size_t contentEnd = bytes.find_first_of("\r\n", pos);
        if (contentEnd == std::string_view::npos) {
            contentEnd = bytes.size();
        }
        std::size_t end = contentEnd;
        if (end < bytes.size()) {
            if (bytes[end] == '\r' && end + 1 < bytes.size() && bytes[end + 1] == '\n') {
                end += 2;
            } else {
                end += 1;
            }
        }
        Line line = ClassifyLine(bytes.substr(begin, contentEnd - begin));
        line.begin = begin;
        line.contentEnd = contentEnd;
        line.end = end;
        m_lines.push_back(std::move(line));
        pos = end;
    }

    Section current;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        if (m_lines[i].kind != LineKind::Section) {
            continue;
        }
        current.endLine = i;
        m_sections.push_back(std::move(current));
        current = Section{m_lines[i].name, i, i + 1, 0};
    }
    current.endLine = m_lines.size();
    m_sections.push_back(std::move(current));
}

const ProfileFile::Section* ProfileFile::FindSectionTrimmed(std::string_view name) const {
    const std::string_view wanted = TrimProfileBlanks(ProfileArgument(name));
    for (const auto& section : m_sections) {
        if (ProfileNamesEqual(section.name, wanted)) {
            return &section;
        }
    }
    return nullptr;
}

const ProfileFile::Section* ProfileFile::FindSectionExact(std::string_view name) const {
    const std::string_view wanted = ProfileArgument(name);
    for (const auto& section : m_sections) {
        if (ProfileNamesEqual(section.name, wanted)) {
            return &section;
        }
    }
    return nullptr;
}

const ProfileFile::Line* ProfileFile::FindEntry(std::string_view section, std::string_view key) const {
    const Section* found = FindSectionTrimmed(section);
    if (found == nullptr) {
        return nullptr;
    }
    const std::string_view wanted = TrimProfileBlanks(ProfileArgument(key));
    for (std::size_t i = found->firstLine; i < found->endLine; ++i) {
        const Line& line = m_lines[i];
        if (line.kind == LineKind::Entry && ProfileNamesEqual(line.name, wanted)) {
            return &line;
        }
    }
    return nullptr;
}

std::string_view ProfileFile::NewLine() const {
    for (const auto& line : m_lines) {
        if (line.end > line.contentEnd) {
            return std::string_view(m_bytes).substr(line.contentEnd, line.end - line.contentEnd);
        }
    }
    return "\r\n";
}

void ProfileFile::Splice(std::size_t offset, std::size_t length, std::string_view replacement) {
    m_bytes.replace(offset, length, replacement);
    Reparse();
}

bool ProfileFile::SetValue(std::string_view section, std::string_view key, std::string_view value) {
    const std::string_view sectionName = ProfileArgument(section);
    const std::string_view keyName = ProfileArgument(key);
    const std::string_view newValue = TrimStart(ProfileArgument(value));
    const std::string newLine(NewLine());

    const Section* found = FindSectionTrimmed(sectionName);
    if (found == nullptr) {
        std::string text;
        if (!m_lines.empty() && m_lines.back().end == m_lines.back().contentEnd) {
            text += newLine;
        }
        text.append("[").append(TrimStart(sectionName)).append("]").append(newLine);
        text.append(TrimStart(keyName)).append("=").append(newValue).append(newLine);
        Splice(m_bytes.size(), 0, text);
        return true;
    }

    const std::string_view wanted = TrimProfileBlanks(keyName);
    for (std::size_t i = found->firstLine; i < found->endLine; ++i) {
        const Line& line = m_lines[i];
        if (line.kind != LineKind::Entry || !ProfileNamesEqual(line.name, wanted)) {
            continue;
        }
        if (line.value && *line.value == newValue) {
            return false;
        }
        std::string text = line.name;
        text.append("=").append(newValue);
        Splice(line.begin, line.contentEnd - line.begin, text);
        return true;
    }

    std::optional<std::size_t> after;
    for (std::size_t i = found->endLine; i > found->firstLine; --i) {
        if (m_lines[i - 1].kind != LineKind::Blank) {
            after = i - 1;
            break;
        }
    }
    if (!after) {
        after = found->header;
    }
    std::string text(TrimStart(keyName));
    text.append("=").append(newValue).append(newLine);
    if (!after) {
        // The leading part of the file, with nothing in it but blank lines.
        Splice(m_bytes.starts_with(kUtf8Bom) ? kUtf8Bom.size() : 0, 0, text);
        return true;
    }
    const Line& line = m_lines[*after];
    if (line.end == line.contentEnd) {
        text.insert(0, newLine);
    }
    Splice(line.end, 0, text);
    return true;
}

bool ProfileFile::DeleteKey(std::string_view section, std::string_view key) {
    const std::string_view sectionName = ProfileArgument(section);
    const std::string_view keyName = ProfileArgument(key);
    for (const auto& candidate : m_sections) {
        if (!ProfileNamesEqual(candidate.name, sectionName)) {
            continue;
        }
        for (std::size_t i = candidate.firstLine; i < candidate.endLine; ++i) {
            const Line& line = m_lines[i];
            if (line.kind == LineKind::Entry && ProfileNamesEqual(line.name, keyName)) {
                Splice(line.begin, line.end - line.begin, {});
                return true;
            }
        }
    }
    return false;
}

bool ProfileFile::DeleteSection(std::string_view section) {
    const Section* found = FindSectionExact(section);
    if (found == nullptr) {
        return false;
    }
    const std::size_t first = found->header ? *found->header : found->firstLine;
    if (first >= found->endLine) {
        return false;
    }
    const std::size_t begin = m_lines[first].begin;
    const std::size_t end = m_lines[found->endLine - 1].end;
    Splice(begin, end - begin, {});
    return true;
}

}  // namespace glyphmoor
