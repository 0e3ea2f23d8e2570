// ProfileFile: an INI-layout ("profile") file held as its bytes, read and
// edited exactly as the ANSI profile functions of Windows read and edit it.
//
// Every byte sequence is a valid profile file: there is nothing to reject, so
// Parse gives a file, never a failure. The bytes are kept as they are; an edit
// changes only the line it concerns (or adds lines) and leaves every other
// byte of the file alone: comments, blank lines, line ends, other sections,
// even bytes that are not text.
//
// How the bytes are seen (as GetPrivateProfileStringA sees them; the rules
// were checked against Wine's profile functions and the results its tests
// record for Windows):
//   - A line ends at "\r\n", "\n" or a lone "\r", so CRLF, LF and CR-only
//     files read the same. A UTF-8 byte-order mark at the start is skipped.
//   - Blanks are the bytes 0x09 to 0x0D, 0x1A (the DOS end-of-file mark) and
//     0x20. Each line is trimmed of them at both ends; an empty line is blank.
//   - A line that starts with "[" and contains a "]" is a section header; the
//     name is what lies between the "[" and the last "]", trimmed. Text after
//     the "]" is ignored. A "[" line without "]" is an ordinary line.
//   - Any other line is an entry. With an "=" the name is the text before the
//     first "=", trimmed at its end, and the value the text after it, trimmed
//     at its start (the line's end is already trimmed). Without an "=" the
//     whole line is the name and the entry has no value: it is not listed as
//     a key and reads as missing.
//   - Entries whose name starts with ";" are comments: they are never listed.
//   - Lines before the first header belong to a section without a name.
//   - A NUL byte ends a name or value, as it ends a C string.
//   - Names are compared without regard to case (ASCII, Latin-1 and the
//     Windows-1252 letters). Only the first section of a name is searched,
//     and in it only the first entry of a name counts.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

class ProfileFile {
public:
    enum class LineKind { Blank, Section, Entry };

    struct Line {
        LineKind kind = LineKind::Blank;
        std::size_t begin = 0;             // offset of the line's first byte
        std::size_t contentEnd = 0;        // offset just past the line's text
        std::size_t end = 0;               // offset just past its line end (== contentEnd when it has none)
        std::string name;                  // section or entry name as the functions see it
        std::optional<std::string> value;  // an entry's value, when the line has an "="
    };

    struct Section {
        std::string name;
        std::optional<std::size_t> header;  // index of the header line; none for the leading part
        std::size_t firstLine = 0;          // first line after the header
        std::size_t endLine = 0;            // one past the section's last line
    };

    ProfileFile();
    static ProfileFile Parse(std::string_view bytes);

    [[nodiscard]] const std::string& Bytes() const { return m_bytes; }
    [[nodiscard]] const std::vector<Line>& Lines() const { return m_lines; }
    // The leading part (name "", maybe without lines) first, then one per header.
    [[nodiscard]] const std::vector<Section>& Sections() const { return m_sections; }

    // The first section whose name equals `name` once blanks are trimmed from
    // both ends of `name` (the lookup of a value read or write).
    [[nodiscard]] const Section* FindSectionTrimmed(std::string_view name) const;
    // The first section whose name equals `name` as given (the lookup of a key
    // list or a deletion).
    [[nodiscard]] const Section* FindSectionExact(std::string_view name) const;
    // The first entry named `key` (trimmed) in the first section named `section` (trimmed).
    [[nodiscard]] const Line* FindEntry(std::string_view section, std::string_view key) const;

    // The writes of WritePrivateProfileStringA. Each returns true when it
    // changed the bytes.
    //
    // SetValue: the value loses its leading blanks. An existing entry's line
    // becomes "name=value" (the name as the file spells it) and keeps its line
    // end; nothing is written when the value is already the same (compared
    // with case). A new entry goes after the last non-blank line of its
    // section, named as given less its leading blanks. A new section goes at
    // the end of the file, as "[section]" and the entry. New lines end like the
    // file's first line, or with "\r\n" in a file that has no line end yet; a
    // last line without a line end is given one before anything is added after it.
    bool SetValue(std::string_view section, std::string_view key, std::string_view value);
    // Removes the first entry named exactly `key` in a section named exactly
    // `section`, looking on into later sections of that name.
    bool DeleteKey(std::string_view section, std::string_view key);
    // Removes the first section named exactly `section`: its header and lines.
    bool DeleteSection(std::string_view section);

    // The line end new lines get.
    [[nodiscard]] std::string_view NewLine() const;

private:
    void Reparse();
    void Splice(std::size_t offset, std::size_t length, std::string_view replacement);

    std::string m_bytes;
    std::vector<Line> m_lines;
    std::vector<Section> m_sections;
};

// A text argument as the profile functions see it: up to its first NUL, where
// a C string ends.
std::string_view ProfileArgument(std::string_view text);
// Blanks as the profile functions see them.
bool IsProfileBlank(char c);
std::string_view TrimProfileBlanks(std::string_view text);
// Compares names of a profile file (Windows-1252 bytes) without regard to case.
bool ProfileNamesEqual(std::string_view a, std::string_view b);

}  // namespace glyphmoor
