#include "foundation/PhysicalMemory.h"

#include <charconv>

namespace glyphmoor {

namespace {

// The figure of the line "NAME:   12345 kB" in bytes.
std::optional<std::uint64_t> MemInfoFigure(std::string_view text, std::string_view name) {
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t end = text.find('\n', at);
        if (end == std::string_view::npos) {
            end = text.size();
        }
        std::string_view line = text.substr(at, end - at);
        at = end + 1;
        if (!line.starts_with(name) || line.size() <= name.size() || line[name.size()] != ':') {
            continue;
        }
        line.remove_prefix(name.size() + 1);
        const std::size_t digits = line.find_first_not_of(' ');
        if (digits == std::string_view::npos) {
            return std::nullopt;
        }
        line.remove_prefix(digits);
        std::uint64_t kb = 0;
        const auto [rest, error] = std::from_chars(line.data(), line.data() + line.size(), kb);
        const std::string_view unit(rest, static_cast<std::size_t>(line.data() + line.size() - rest));
        if (error != std::errc() || unit != " kB" || kb > UINT64_MAX / 1024) {
            return std::nullopt;
        }
        return kb * 1024;
    }
    return std::nullopt;
}

}  // namespace

std::optional<PhysicalMemory> ParseMemInfo(std::string_view text) {
    const auto total = MemInfoFigure(text, "MemTotal");
    auto available = MemInfoFigure(text, "MemAvailable");
    if (!available) {
        available = MemInfoFigure(text, "MemFree");
    }
    if (!total || !available) {
        return std::nullopt;
    }
    return PhysicalMemory{*total, *available};
}

std::string FormatKilobytes(std::uint64_t bytes) {
    const std::string digits = std::to_string(bytes / 1024);
    std::string text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0) {
            text += ',';
        }
        text += digits[i];
    }
    return text + " Kb";
}

std::string AboutVersionText(unsigned major, unsigned minor, unsigned revision) {
    return "Version " + std::to_string(major) + ".0" + std::to_string(minor) + ".0" +
           std::to_string(revision);
}

}  // namespace glyphmoor
