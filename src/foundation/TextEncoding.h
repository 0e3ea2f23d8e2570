// Conversions between the program's UTF-8 text and the encodings Windows uses
// at its boundaries: UTF-16 (the registry, wide functions) and the ANSI code
// page Windows-1252 (one character a byte).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace glyphmoor {

// Invalid UTF-8 bytes become U+FFFD, one per byte.
std::u16string Utf8ToUtf16(std::string_view text);
// Unpaired surrogates become U+FFFD.
std::string Utf16ToUtf8(std::u16string_view text);

std::u32string Utf8ToCodePoints(std::string_view text);
std::string CodePointsToUtf8(std::u32string_view text);
void AppendUtf8(std::string& out, char32_t codePoint);

// The character a Windows-1252 byte stands for. Bytes the code page leaves
// undefined map to the control character of the same number, as Windows does.
char32_t AnsiToCodePoint(std::uint8_t byte);
// The Windows-1252 byte of a character, or '?' when the code page has none.
std::uint8_t CodePointToAnsi(char32_t codePoint);

// Little-endian UTF-16 bytes and back (an odd last byte is dropped).
std::string Utf16ToBytes(std::u16string_view text);
std::u16string BytesToUtf16(std::string_view bytes);

// Compares two texts as Windows and Wine compare names: without regard to
// case, letters folded to lower case (so '_' sorts before the letters). Only
// ASCII and Latin-1 letters are folded.
int CompareNoCase(std::string_view a, std::string_view b);
bool EqualsNoCase(std::string_view a, std::string_view b);
// ASCII letters lower-cased, every other byte as it is (so UTF-8 stays valid).
std::string LowerAscii(std::string_view text);
// True when `text` is longer than `end` and ends in it, without regard to case
// (a file name with that extension, say).
bool EndsWithNoCase(std::string_view text, std::string_view end);
char16_t FoldCase(char16_t c);

}  // namespace glyphmoor
