// IconLocation: the text in which Windows keeps an icon reference, a file
// path, a comma and a decimal icon index ("C:\WINDOWS\SYSTEM\shell32.dll,3").
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace glyphmoor {

struct IconLocation {
    std::string file;
    std::int32_t index = 0;

    // The text as the registry and theme files hold it: file, comma, index.
    // An index of 0 is written too ("a.ico,0"), as the program compares and
    // writes locations in this one form.
    [[nodiscard]] std::string Text() const;

    friend bool operator==(const IconLocation&, const IconLocation&) = default;
};

// Splits an IconLocation text at its last comma: the text before it is the
// file, the text after it the index. A text without any comma is all file,
// with index 0, so "C:\x,y.dll,5" gives "C:\x,y.dll" and 5.
//
// The index is converted as the program's 32-bit conversion does: blanks
// around it, an optional sign and decimal digits. Anything else after the
// last comma (a letter, nothing at all, a number beyond 32 bits) cannot be
// converted, and the split fails: the catalogue then skips the row, as it
// skips any row that fails while being added.
std::optional<IconLocation> SplitIconLocation(std::string_view text);

}  // namespace glyphmoor
