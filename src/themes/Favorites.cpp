#include "themes/Favorites.h"

#include "foundation/DefaultMachine.h"
#include "foundation/ProgramFolder.h"
#include "foundation/TextEncoding.h"
#include "themes/BundleCheck.h"
#include "themes/ShellLinkFile.h"
#include "themes/ThemeBundle.h"
#include "themes/ThemeFile.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace glyphmoor {

namespace {

namespace fs = std::filesystem;

// Deeper folders than this are not listed: a menu that deep is of no use.
constexpr int kMaxMenuDepth = 16;

std::string FileNameOf(std::string_view path) {
    const auto slash = path.rfind('\\');
    return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

Status CheckName(std::string_view name) {
    if (Status usable = CheckBundleEntryName(name); !usable.ok()) {
        return Fail("\"" + std::string(name) + "\" cannot be a name: it " + usable.reason());
    }
    return {};
}

struct Listing {
    std::vector<std::string> folders;
    std::vector<std::string> links;
};

// A folder's subfolders and links, each in name order; hidden and system
// entries (a desktop.ini) and links (symbolic ones) are passed over.
Listing ListFavorites(const fs::path& folder) {
    Listing listing;
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(folder, ec)) {
        const std::string name = entry.path().filename().string();
        std::error_code kind;
        if (name.starts_with('.') || entry.is_symlink(kind)) {
            continue;
        }
        if (entry.is_directory(kind)) {
            listing.folders.push_back(name);
        } else if (entry.is_regular_file(kind) && EndsWithNoCase(name, kLinkExtension)) {
            listing.links.push_back(name);
        }
    }
    const auto byName = [](const std::string& a, const std::string& b) { return CompareNoCase(a, b) < 0; };
    std::sort(listing.folders.begin(), listing.folders.end(), byName);
    std::sort(listing.links.begin(), listing.links.end(), byName);
    return listing;
}

void AddMenuItems(const AppEnvironment& app, const std::string& folder, int depth,
                  std::vector<FavoriteItem>& items) {
    const Listing listing = ListFavorites(app.machine.HostPath(folder));
    if (listing.folders.empty() && listing.links.empty()) {
        items.push_back({depth, FavoriteItem::Kind::Empty, std::string(kEmptyFavoritesCaption), "", ""});
        return;
    }
    for (const std::string& name : listing.folders) {
        const std::string path = folder + "\\" + name;
        items.push_back({depth, FavoriteItem::Kind::Folder, name, path, ""});
        if (depth + 1 < kMaxMenuDepth) {
            AddMenuItems(app, path, depth + 1, items);
        }
    }
    for (const std::string& name : listing.links) {
        const std::string path = folder + "\\" + name;
        const auto link = ReadShellLinkFile(app.machine, path);
        items.push_back({depth, FavoriteItem::Kind::Link, name.substr(0, name.size() - kLinkExtension.size()),
                         path, link.ok() ? link->target : std::string()});
    }
}

}  // namespace

std::string FavoritesFolder(const AppEnvironment& app) {
    return app.machine.ProgramDirectory() + "\\Favorites";
}

Result<std::string> FavoritesSubfolder(const AppEnvironment& app, std::string_view folder) {
    const std::string root = FavoritesFolder(app);
    std::string relative(folder);
    std::replace(relative.begin(), relative.end(), '/', '\\');
    if (relative.size() >= root.size() &&
        EqualsNoCase(std::string_view(relative).substr(0, root.size()), root) &&
        (relative.size() == root.size() || relative[root.size()] == '\\')) {
        relative.erase(0, root.size());
    } else if (IsDriveLetterPath(relative)) {
        return Fail(std::string(folder) + " is not in the favourites folder " + root);
    }
    std::string path = root;
    std::size_t start = 0;
    while (start < relative.size()) {
        const std::size_t end = std::min(relative.find('\\', start), relative.size());
        const std::string part = relative.substr(start, end - start);
        start = end + 1;
        if (part.empty() || part == ".") {
            continue;
        }
        if (part == "..") {
            return Fail(std::string(folder) + " climbs out of the favourites folder " + root);
        }
        path += "\\" + part;
    }
    std::error_code ec;
    if (!fs::is_directory(app.machine.HostPath(path), ec)) {
        return Fail("there is no folder " + path);
    }
    return path;
}

Result<std::string> FavoriteLinkPath(const AppEnvironment& app, std::string_view theme,
                                     std::string_view folder, std::string_view name) {
    const std::string inFolder = TRY(FavoritesSubfolder(app, folder));
    std::string linkName(name);
    if (linkName.empty()) {
        const std::string file = FileNameOf(theme);
        linkName = file.substr(0, file.rfind('.'));
    }
    TRY(CheckName(linkName + std::string(kLinkExtension)));
    return inFolder + "\\" + linkName + std::string(kLinkExtension);
}

Result<std::string> AddFavorite(Machine& machine, std::string_view theme, std::string_view folder,
                                std::string_view name, Replace replace) {
    std::error_code ec;
    const bool isTheme = EndsWithNoCase(theme, kThemeExtension) || IsBundlePath(theme);
    if (!isTheme || !fs::is_regular_file(machine.Env().HostPath(theme), ec)) {
        return Fail("there is no theme file " + std::string(theme) + "; nothing was made");
    }
    TRY(machine.MakeProgramFolder());
    const AppEnvironment app = InitEnvironment(machine.Env());
    const std::string link = TRY(FavoriteLinkPath(app, theme, folder, name));
    if (replace == Replace::No && fs::exists(machine.Env().HostPath(link), ec)) {
        return Fail("there is a favourite " + link + " already; nothing was made");
    }
    const std::string linkFolder = link.substr(0, link.rfind('\\'));
    TRY(CreateShellLink(machine.Env(), link,
                        ShellLink{std::string(theme), linkFolder, "", app.programFile, 0}));
    return link;
}

Result<std::string> NewFavoritesFolder(Machine& machine, std::string_view parent, std::string_view name) {
    TRY(machine.MakeProgramFolder());
    const AppEnvironment app = InitEnvironment(machine.Env());
    const std::string inFolder = TRY(FavoritesSubfolder(app, parent));
    TRY(CheckName(name));
    const std::string path = inFolder + "\\" + std::string(name);
    std::error_code ec;
    if (fs::exists(machine.Env().HostPath(path), ec)) {
        return Fail("there is a folder or file " + path + " already; nothing was made");
    }
    if (!fs::create_directory(machine.Env().HostPath(path), ec)) {
        return Fail("cannot make the folder " + path + ": " + ec.message());
    }
    return path;
}

std::vector<FavoriteItem> FavoritesMenu(const AppEnvironment& app) {
    std::vector<FavoriteItem> items;
    AddMenuItems(app, FavoritesFolder(app), 0, items);
    return items;
}

}  // namespace glyphmoor
