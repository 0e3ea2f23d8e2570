#include "cli/FavoriteCommands.h"

#include "cli/ThemeCommands.h"
#include "themes/Favorites.h"

#include <algorithm>
#include <map>
#include <optional>
#include <ostream>

namespace glyphmoor {

namespace {

// The options after the first argument ("--in FOLDER", "--name NAME"), each
// at most once and only those allowed; nothing when they are malformed.
std::optional<std::map<std::string, std::string>> Options(CommandArgs a,
                                                          std::initializer_list<std::string> allowed) {
    std::map<std::string, std::string> options;
    for (std::size_t i = 1; i < a.size(); i += 2) {
        const bool known = std::find(allowed.begin(), allowed.end(), a[i]) != allowed.end();
        if (!known || i + 1 >= a.size() || !options.emplace(a[i], a[i + 1]).second) {
            return std::nullopt;
        }
    }
    return options;
}

std::string_view KindName(FavoriteItem::Kind kind) {
    switch (kind) {
        case FavoriteItem::Kind::Folder:
            return "folder";
        case FavoriteItem::Kind::Link:
            return "link";
        case FavoriteItem::Kind::Empty:
            break;
    }
    return "empty";
}

int Finish(CliContext& c, const Result<std::string>& made) {
    if (!made.ok()) {
        c.err << "glyphmoor-cli: " << made.reason() << '\n';
        return kExitFailed;
    }
    if (!c.SaveMachine()) {
        return kExitFailed;
    }
    c.out << made.value() << '\n';
    return kExitOk;
}

}  // namespace

int Favorites(CliContext& c, CommandArgs /*a*/) {
    const AppEnvironment app = InitEnvironment(c.TheMachine().Env());
    for (const FavoriteItem& item : FavoritesMenu(app)) {
        c.out << item.depth << '\t' << KindName(item.kind) << '\t' << item.caption;
        if (item.kind == FavoriteItem::Kind::Link) {
            c.out << '\t' << item.target;
        }
        c.out << '\n';
    }
    return kExitOk;
}

int FavoritesAdd(CliContext& c, CommandArgs a) {
    const auto options = Options(a, {"--in", "--name"});
    if (!options) {
        return UsageError(c, "favorites add");
    }
    const auto theme = ThemePath(c, a[0]);
    if (!theme) {
        return kExitFailed;
    }
    const auto in = options->find("--in");
    const auto name = options->find("--name");
    return Finish(c, AddFavorite(c.TheMachine(), *theme, in == options->end() ? "" : in->second,
                                 name == options->end() ? "" : name->second));
}

int FavoritesNewFolder(CliContext& c, CommandArgs a) {
    const auto options = Options(a, {"--in"});
    if (!options) {
        return UsageError(c, "favorites new-folder");
    }
    const auto in = options->find("--in");
    return Finish(c, NewFavoritesFolder(c.TheMachine(), in == options->end() ? "" : in->second, a[0]));
}

}  // namespace glyphmoor
