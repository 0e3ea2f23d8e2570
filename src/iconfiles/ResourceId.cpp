#include "iconfiles/ResourceId.h"

#include "foundation/TextEncoding.h"

namespace glyphmoor {

ResourceId ResourceId::Parse(std::string_view text) {
    if (text.size() >= 2 && text.size() <= 6 && text.front() == '#') {
        std::uint32_t n = 0;
        for (char c : text.substr(1)) {
            if (c < '0' || c > '9') {
                return Name(std::string(text));
            }
            n = n * 10 + static_cast<std::uint32_t>(c - '0');
        }
        if (n <= 0xffff) {
            return Number(static_cast<std::uint16_t>(n));
        }
    }
    return Name(std::string(text));
}

std::string ResourceId::ToString() const {
    return isName ? name : std::to_string(number);
}

bool ResourceId::Matches(const ResourceId& other) const {
    if (isName != other.isName) {
        return false;
    }
    return isName ? EqualsNoCase(name, other.name) : number == other.number;
}

}  // namespace glyphmoor
