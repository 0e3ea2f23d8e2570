// What the profile read and write batteries share: one file text run over
// CRLF, LF and CR-only line ends.
#pragma once

#include "foundation/modProfile.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

namespace glyphmoor::test {

// Replaces each "\n" of a text by the line end under test.
inline std::string WithLineEnds(std::string_view text, std::string_view end) {
    std::string out;
    for (const char c : text) {
        if (c == '\n') {
            out += end;
        } else {
            out += c;
        }
    }
    return out;
}

inline OptionalText Optional(const std::optional<std::string>& s) {
    return s ? OptionalText(*s) : std::nullopt;
}

// The suite parameter: a line end, named in test names.
class LineEnds : public ::testing::TestWithParam<const char*> {};

inline auto AllLineEnds() {
    return ::testing::Values("\r\n", "\n", "\r");
}

inline std::string LineEndName(const ::testing::TestParamInfo<const char*>& info) {
    const std::string end = info.param;
    return end == "\r\n" ? "CRLF" : end == "\n" ? "LF" : "CR";
}

}  // namespace glyphmoor::test
