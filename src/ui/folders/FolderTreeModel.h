// FolderTreeModel: the drives and folders of a machine as a tree model for
// `tvExplorer`.
//
// The drives are the top level. A folder's subfolders are listed the first
// time the view asks for them (when it is expanded) and an item's picture
// only when the view draws it, so a folder of thousands of subfolders opens
// at once and costs a picture only for the rows in sight. A folder that cannot
// be read is shown, without subfolders, and says why in its tool tip.
#pragma once

#include "folders/FolderItem.h"
#include "foundation/Environment.h"

#include <QAbstractItemModel>
#include <QIcon>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

class FolderTreeModel final : public QAbstractItemModel {
    Q_OBJECT
public:
    // The picture of an item, asked for when the item is first drawn.
    using PictureOf = std::function<QIcon(const FolderItem&)>;

    FolderTreeModel(const Environment& machine, PictureOf picture, QObject* parent = nullptr);
    ~FolderTreeModel() override;

    // Lists the machine's drives anew, every folder closed.
    void ShowDrives();

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    [[nodiscard]] bool hasChildren(const QModelIndex& parent = {}) const override;
    [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

    // The folder or drive at an index; nothing for the invisible root.
    [[nodiscard]] std::optional<FolderItem> ItemAt(const QModelIndex& index) const;
    // The drive with this letter ("C:\"), or the subfolder of `parent` with
    // this name compared without case, listing `parent` first; invalid when
    // there is none.
    QModelIndex Drive(std::string_view drivePath) const;
    QModelIndex Child(const QModelIndex& parent, std::string_view name);
    // Draws the item's picture anew the next time it is shown.
    void RefreshPicture(const QModelIndex& index);
    // How many pictures have been asked for so far.
    [[nodiscard]] int PicturesDrawn() const { return m_picturesDrawn; }

private:
    struct Node;
    [[nodiscard]] Node* NodeOf(const QModelIndex& index) const;

    const Environment& m_machine;
    PictureOf m_picture;
    std::unique_ptr<Node> m_root;
    mutable int m_picturesDrawn = 0;
};

}  // namespace glyphmoor
