#include "folders/FolderListing.h"

#include "foundation/TextEncoding.h"

#include <algorithm>
#include <system_error>

namespace glyphmoor {

namespace fs = std::filesystem;

Result<std::vector<std::string>> ListSubfolders(const fs::path& folder) {
    std::error_code ec;
    // A folder the user may not read is an error with its reason, not an empty folder.
    fs::directory_iterator entries(folder, ec);
    if (ec) {
        return Fail("Cannot list " + folder.string() + ": " + ec.message());
    }
    std::vector<std::string> names;
    for (const fs::directory_iterator end; entries != end; entries.increment(ec)) {
        if (ec) {
            // The rest of the folder cannot be read; what was read is shown.
            break;
        }
        std::error_code kindError;
        if (entries->is_directory(kindError) && !kindError) {
            names.push_back(entries->path().filename().string());
        }
    }
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        const int order = CompareNoCase(a, b);
        return order < 0 || (order == 0 && a < b);
    });
    return names;
}

FolderItem NearestExistingItem(const Environment& env, const FolderItem& item) {
    FolderItem at = item;
    std::error_code ec;
    while (!fs::is_directory(env.HostPath(at.path), ec)) {
        const auto parent = ParentOf(at);
        if (!parent) {
            break;
        }
        at = *parent;
    }
    return at;
}

std::vector<FolderItem> PathFromRoot(const FolderItem& item) {
    std::vector<FolderItem> path{item};
    while (auto parent = ParentOf(path.back())) {
        path.push_back(*parent);
    }
    std::reverse(path.begin(), path.end());
    return path;
}

}  // namespace glyphmoor
