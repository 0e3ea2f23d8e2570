#include "icons/IconLocation.h"

#include <charconv>
#include <limits>

namespace glyphmoor {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

std::optional<std::int32_t> ToIndex(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    std::int64_t value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size() ||
        value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(value);
}

}  // namespace

std::string IconLocation::Text() const {
    return file + "," + std::to_string(index);
}

std::optional<IconLocation> SplitIconLocation(std::string_view text) {
    const auto comma = text.rfind(',');
    if (comma == std::string_view::npos) {
        return IconLocation{std::string(text), 0};
    }
    const auto index = ToIndex(text.substr(comma + 1));
    if (!index) {
        return std::nullopt;
    }
    return IconLocation{std::string(text.substr(0, comma)), *index};
}

}  // namespace glyphmoor
