// ResourceId: a resource type or name, either a 16-bit number or a text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace glyphmoor {

struct ResourceId {
    bool isName = false;
    std::uint16_t number = 0;
    std::string name;  // UTF-8, when isName

    static ResourceId Number(std::uint16_t n) { return ResourceId{false, n, {}}; }
    static ResourceId Name(std::string text) { return ResourceId{true, 0, std::move(text)}; }
    // As FindResource reads a name: "#" and decimal digits is a number,
    // anything else a name.
    static ResourceId Parse(std::string_view text);

    // Numbers in decimal, names as they are.
    [[nodiscard]] std::string ToString() const;
    // Names compare without regard to case, as Windows finds resources.
    [[nodiscard]] bool Matches(const ResourceId& other) const;
    bool operator==(const ResourceId& other) const = default;
};

}  // namespace glyphmoor
