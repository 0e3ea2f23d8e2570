#include "folders/FolderItem.h"

#include "foundation/Environment.h"

#include <cctype>

namespace glyphmoor {

std::optional<FolderItem> FolderItemOf(std::string_view windowsPath) {
    if (!IsDriveLetterPath(windowsPath)) {
        return std::nullopt;
    }
    std::string path{static_cast<char>(std::toupper(static_cast<unsigned char>(windowsPath[0]))), ':'};
    const std::string_view rest = windowsPath.substr(2);
    if (!rest.empty() && rest.front() != '\\' && rest.front() != '/') {
        return std::nullopt;
    }
    for (const char c : rest) {
        const char separator = c == '/' ? '\\' : c;
        if (separator != '\\' || path.back() != '\\') {
            path += separator;
        }
    }
    if (path.size() > 3 && path.back() == '\\') {
        path.pop_back();
    }
    if (path.size() <= 3) {
        return FolderItem{path.substr(0, 2) + "\\", FolderItemKind::Drive};
    }
    return FolderItem{path, FolderItemKind::Folder};
}

FolderItem ChildOf(const FolderItem& parent, std::string_view name) {
    std::string path = parent.path;
    if (path.back() != '\\') {
        path += '\\';
    }
    path += name;
    return {path, FolderItemKind::Folder};
}

std::optional<FolderItem> ParentOf(const FolderItem& item) {
    if (item.kind == FolderItemKind::Drive) {
        return std::nullopt;
    }
    const auto slash = item.path.rfind('\\');
    return FolderItemOf(std::string_view(item.path).substr(0, slash));
}

std::string IconFileOf(const FolderItem& item) {
    return item.kind == FolderItemKind::Drive ? item.path + "autorun.inf" : item.path + "\\desktop.ini";
}

}  // namespace glyphmoor
