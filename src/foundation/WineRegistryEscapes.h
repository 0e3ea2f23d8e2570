// Wine's string escapes in its text registry: how names, key paths and texts
// are written and read back.
//
// Escapes: \a \b \e \f \n \r \t \v, \x with up to four hex digits, up to three
// octal digits, and a backslash before any other character standing for that
// character. Raw non-ASCII text is read as UTF-8.
#pragma once

#include "foundation/Result.h"
#include "foundation/TextEncoding.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace glyphmoor {

// delimiters are the two characters that get a backslash besides the backslash
// itself: "\"\"" in values, "[]" in key names.
std::string EscapeRegistryString(std::u16string_view text, std::string_view delimiters);
// Reads an escaped string up to an unescaped delimiter; consumed is set past
// the delimiter. Fails when the delimiter never comes.
Result<std::u16string> UnescapeRegistryString(std::string_view text, char delimiter, std::size_t& consumed);
// The same straight to UTF-8: a surrogate pair joins into one character, a
// lone surrogate becomes U+FFFD as in Utf16ToUtf8. Most names and texts hold
// neither escapes nor non-ASCII characters and are taken as they stand.
Result<std::string> ReadEscapedUtf8(std::string_view text, char delimiter, std::size_t& consumed);

// Where the first delimiter or backslash at or after from is; npos when none.
// (std::string_view::find_first_of asks memchr once for each character.)
std::size_t FindDelimiterOrEscape(std::string_view text, char delimiter, std::size_t from = 0);
// Whether an unescaped delimiter ends the text: what UnescapeUnits checks,
// without decoding anything.
bool EndsWithinText(std::string_view text, char delimiter);

// The unit an escape stands for; text[i] is the character after the
// backslash, and i moves past the escape.
char16_t DecodeEscape(std::string_view text, std::size_t& i);
// Where the UTF-8 sequence that starts at text[i] ends.
std::size_t Utf8SequenceEnd(std::string_view text, std::size_t i);

// Reads an escaped string up to an unescaped delimiter, handing each UTF-16
// unit to sink; consumed is set past the delimiter.
template <typename Sink>
Status UnescapeUnits(std::string_view text, char delimiter, std::size_t& consumed, Sink sink) {
    std::size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        if (c == delimiter) {
            consumed = i + 1;
            return {};
        }
        if (c == '\\') {
            if (++i >= text.size()) {
                break;
            }
            sink(DecodeEscape(text, i));
        } else if (static_cast<unsigned char>(c) < 0x80) {
            sink(static_cast<char16_t>(c));
            ++i;
        } else {
            const std::size_t end = Utf8SequenceEnd(text, i);
            for (char16_t unit : Utf8ToUtf16(text.substr(i, end - i))) {
                sink(unit);
            }
            i = end;
        }
    }
    return Fail(std::string("missing closing ") + delimiter);
}

}  // namespace glyphmoor
