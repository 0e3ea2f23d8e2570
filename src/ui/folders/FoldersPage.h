// FoldersPage: the "Folders" page. The tree `tvExplorer` of the machine's
// drives and folders behind the tab strip `tabFolders`; the selected item's
// picture, path and icon; "&Change..." (`cmdChangeF`) gives it an icon of its
// own through the Change Icon dialog, "&Default Icon" (`cmdDefaultF`) takes
// it away. Both write at once, as the page always has: nothing waits for Apply.
#pragma once

#include "folders/FolderIcon.h"
#include "foundation/Machine.h"
#include "icons/IconCatalogue.h"
#include "prompts/modMsgbox.h"
#include "ui/icons/IconPictures.h"

#include <QWidget>

#include <optional>
#include <string>

class QLabel;
class QPushButton;
class QTabBar;
class QTreeView;

namespace glyphmoor {

class FolderTreeModel;

class FoldersPage final : public QWidget {
    Q_OBJECT
public:
    FoldersPage(MsgContext messages, Machine& machine, IconCatalogue& catalogue, QWidget* parent = nullptr);

    // Lists the drives the first time the page is shown; the catalogue (for
    // the pictures of folders and drives without icons of their own) is built
    // when it has not been.
    void EnsureLoaded();
    // Selects a folder, the tree opened down to it. A folder that does not
    // exist selects the nearest one above it that does, and the notice says so.
    void ShowFolder(const std::string& windowsPath);

    [[nodiscard]] std::optional<FolderItem> SelectedItem() const;
    [[nodiscard]] QTreeView* Tree() const { return m_tvExplorer; }
    [[nodiscard]] FolderTreeModel& Model() const { return *m_model; }

    void ChangeSelected();
    void RestoreSelected();

signals:
    // Something the user should know that is not a question (the window's status line shows it).
    void notice(const QString& text);

private:
    QIcon PictureOf(const FolderItem& item, int size);
    // Where the Change Icon dialog starts for an item without an icon of its
    // own, and what it is drawn with: the catalogue's "Closed Folder" or "Hard Drive".
    IconLocation DefaultLocation(const FolderItem& item) const;
    void SelectionChanged();
    void Refresh(const QModelIndex& index);

    MsgContext m_messages;
    Machine& m_machine;
    IconCatalogue& m_catalogue;
    IconPictureCache m_pictures;
    FolderTreeModel* m_model;
    QTabBar* m_tabFolders;
    QTreeView* m_tvExplorer;
    QLabel* m_imgFolder;
    QLabel* m_lblFolder;
    QPushButton* m_cmdChangeF;
    QPushButton* m_cmdDefaultF;
    bool m_loaded = false;
};

}  // namespace glyphmoor
