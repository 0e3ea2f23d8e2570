#include "ui/changeicon/ChangeIconHistory.h"

#include "foundation/TextEncoding.h"
#include "foundation/modRegistry.h"

#include <algorithm>

namespace glyphmoor {

std::vector<std::string> ReadChangeIconHistory(RegistryStore& registry) {
    std::vector<std::string> files;
    for (std::size_t i = 0; i < kChangeIconsHistoryMax; ++i) {
        std::string file = GetRegString(registry, kChangeIconsPath, std::to_string(i));
        if (file == kRegError) {
            break;
        }
        files.push_back(std::move(file));
    }
    return files;
}

std::vector<std::string> WithFileOnTop(std::vector<std::string> history, std::string_view file) {
    std::erase_if(history, [&](const std::string& f) { return EqualsNoCase(f, file); });
    history.insert(history.begin(), std::string(file));
    if (history.size() > kChangeIconsHistoryMax) {
        history.resize(kChangeIconsHistoryMax);
    }
    return history;
}

void WriteChangeIconHistory(RegistryStore& registry, const std::vector<std::string>& history) {
    const std::size_t count = std::min(history.size(), kChangeIconsHistoryMax);
    for (std::size_t i = 0; i < count; ++i) {
        SetRegString(registry, kChangeIconsPath, std::to_string(i), history[i]);
    }
}

}  // namespace glyphmoor
