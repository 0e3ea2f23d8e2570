#include "foundation/modFunctions.h"

#include "foundation/HostFiles.h"
#include "foundation/TextEncoding.h"
#include "foundation/modMacros.h"

#include <algorithm>
#include <climits>
#include <system_error>

namespace glyphmoor {

std::string FileTitleOf(std::string_view text) {
    return std::string(text.substr(0, text.find('.')));
}

std::vector<DirectoryEntry> ListDirectory(const AppEnvironment& app, std::string_view directory) {
    struct Found {
        std::string name;
        std::uint32_t attributes;
    };
    std::vector<Found> found;
    std::error_code error;
    const std::filesystem::path folder = HostFileOf(app, directory);
    for (std::filesystem::directory_iterator it(folder, error), end; !error && it != end;
         it.increment(error)) {
        const auto attributes = ReadHostAttributes(it->path());
        if (attributes) {
            found.push_back({it->path().filename().string(), *attributes});
        }
    }
    std::sort(found.begin(), found.end(),
              [](const Found& a, const Found& b) { return CompareNoCase(a.name, b.name) < 0; });

    // An entry answers an enumeration when every one of its hidden, system and
    // directory bits is among those the enumeration asks for.
    const auto answers = [](std::uint32_t attributes, std::uint32_t mask) {
        return (attributes & (kAttrHidden | kAttrSystem | kAttrDirectory) & ~mask) == 0;
    };
    std::vector<DirectoryEntry> listing;
    for (const auto& entry : found) {
        if ((entry.attributes & kAttrDirectory) != 0 && answers(entry.attributes, kAttrDirectory)) {
            listing.push_back({entry.name, true});
        }
    }
    for (const auto& entry : found) {
        if (entry.name.find('.') == std::string::npos && answers(entry.attributes, kAttrSystem)) {
            listing.push_back({entry.name, false});
        }
    }
    return listing;
}

int LeadingNumber(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) {
        ++i;
    }
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        negative = text[i] == '-';
        ++i;
    }
    long long number = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        number = std::min<long long>(number * 10 + (text[i] - '0'), INT_MAX);
    }
    return static_cast<int>(negative ? -number : number);
}

}  // namespace glyphmoor
