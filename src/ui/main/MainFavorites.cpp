// The window's favourites: the Favorites menu made afresh from the favourites
// folder each time it opens, "&Add to Favorites..." with the Add Favorite
// dialog, and "&Organize Favorites..." opening the folder with the desktop's
// handler.
#include "foundation/DefaultMachine.h"
#include "foundation/ProgramFolder.h"
#include "themes/Favorites.h"
#include "ui/favorites/frmAddFav.h"
#include "ui/main/Main.h"
#include "ui/main/WindowPictures.h"
#include "ui/themes/ThemesPage.h"

#include <QMenu>
#include <QStatusBar>

#include <vector>

namespace glyphmoor {

void Main::BuildFavoritesMenu(QMenu* menu) {
    m_runAddFavorite = [](frmAddFav& dialog) { return dialog.exec(); };
    menu->setObjectName(QStringLiteral("mnuFav"));
    MenuItem(menu, QStringLiteral("mnuFav(0)"), QStringLiteral("&Organize Favorites..."))
        ->setIcon(WindowPicture(Picture::Favorites, 16));
    MenuItem(menu, QStringLiteral("mnuFav(1)"), QStringLiteral("&Add to Favorites..."))
        ->setIcon(WindowPicture(Picture::Favorites, 16));
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { RefreshFavoritesMenu(menu); });
}

void Main::RefreshFavoritesMenu(QMenu* menu) {
    // The two commands stay; everything after them is made anew.
    const QList<QAction*> actions = menu->actions();
    for (qsizetype i = 2; i < actions.size(); ++i) {
        menu->removeAction(actions[i]);
        actions[i]->deleteLater();
    }
    menu->addSeparator()->setObjectName(QStringLiteral("mnuFavSep"));
    std::vector<QMenu*> menus = {menu};
    for (const FavoriteItem& item : FavoritesMenu(m_app)) {
        menus.resize(static_cast<std::size_t>(item.depth) + 1);
        QMenu* in = menus.back();
        const QString caption = QString::fromStdString(item.caption);
        switch (item.kind) {
            case FavoriteItem::Kind::Folder: {
                QMenu* sub = in->addMenu(WindowPicture(Picture::Open, 16), caption);
                sub->menuAction()->setObjectName(QStringLiteral("Favorite folder"));
                menus.push_back(sub);
                break;
            }
            case FavoriteItem::Kind::Link: {
                QAction* action = in->addAction(caption);
                action->setObjectName(QStringLiteral("Favorite"));
                action->setData(QString::fromStdString(item.target));
                action->setToolTip(QString::fromStdString(item.target));
                const std::string target = item.target;
                connect(action, &QAction::triggered, this, [this, target] { OpenFavorite(target); });
                break;
            }
            case FavoriteItem::Kind::Empty:
                in->addAction(caption)->setEnabled(false);
                break;
        }
    }
}

void Main::OpenFavorite(const std::string& target) {
    if (target.empty()) {
        ShowThemeProblem("This favourite cannot be read, so Glyphmoor does not know which theme it opens.");
        return;
    }
    OpenTheme(target);
}

void Main::OrganizeFavorites() {
    if (Status made = m_machine.MakeProgramFolder(); !made.ok()) {
        ShowThemeProblem("Glyphmoor could not make its favourites folder: " + made.reason());
        return;
    }
    static_cast<void>(SaveMachine());
    OpenAddress(m_app.machine.HostPath(FavoritesFolder(m_app)).string());
}

void Main::AddToFavorites(bool selectedOnly) {
    const auto selected = m_themes->Selected();
    const std::string theme = selected ? selected->path : selectedOnly ? std::string() : m_state.currentTheme;
    if (theme.empty()) {
        MsgContext messages = Messages();
        MsgSelectThemeForFavorites(messages);
        return;
    }
    frmAddFav dialog(m_machine, *m_prompt, theme, this);
    if (m_runAddFavorite(dialog) != QDialog::Accepted) {
        static_cast<void>(SaveMachine());  // the folder may have been made
        return;
    }
    if (SaveMachine()) {
        statusBar()->showMessage(
            QStringLiteral("Added %1 to the Favorites menu").arg(QString::fromStdString(dialog.Made())),
            5000);
    }
}

}  // namespace glyphmoor
