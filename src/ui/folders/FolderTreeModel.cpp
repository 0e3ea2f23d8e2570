#include "ui/folders/FolderTreeModel.h"

#include "folders/FolderListing.h"
#include "foundation/TextEncoding.h"

namespace glyphmoor {

struct FolderTreeModel::Node {
    FolderItem item;
    QString name;
    Node* parent = nullptr;
    int row = 0;
    std::vector<std::unique_ptr<Node>> children;
    bool listed = false;
    // Why the folder could not be listed; empty when it could.
    QString unreadable;
    std::optional<QIcon> picture;

    Node* Add(FolderItem childItem, QString childName) {
        auto child = std::make_unique<Node>();
        child->item = std::move(childItem);
        child->name = std::move(childName);
        child->parent = this;
        child->row = static_cast<int>(children.size());
        children.push_back(std::move(child));
        return children.back().get();
    }
};

FolderTreeModel::FolderTreeModel(const Environment& machine, PictureOf picture, QObject* parent)
    : QAbstractItemModel(parent),
      m_machine(machine),
      m_picture(std::move(picture)),
      m_root(std::make_unique<Node>()) {
    m_root->listed = true;
}

FolderTreeModel::~FolderTreeModel() = default;

void FolderTreeModel::ShowDrives() {
    beginResetModel();
    m_root = std::make_unique<Node>();
    m_root->listed = true;
    for (const std::string& drive : m_machine.Drives()) {
        if (auto item = FolderItemOf(drive)) {
            m_root->Add(*item, QString::fromStdString(drive));
        }
    }
    endResetModel();
}

FolderTreeModel::Node* FolderTreeModel::NodeOf(const QModelIndex& index) const {
    return index.isValid() ? static_cast<Node*>(index.internalPointer()) : m_root.get();
}

QModelIndex FolderTreeModel::index(int row, int column, const QModelIndex& parent) const {
    const Node* node = NodeOf(parent);
    if (column != 0 || row < 0 || row >= static_cast<int>(node->children.size())) {
        return {};
    }
    return createIndex(row, 0, node->children[static_cast<std::size_t>(row)].get());
}

QModelIndex FolderTreeModel::parent(const QModelIndex& child) const {
    const Node* node = NodeOf(child);
    if (!child.isValid() || node->parent == m_root.get()) {
        return {};
    }
    return createIndex(node->parent->row, 0, node->parent);
}

int FolderTreeModel::rowCount(const QModelIndex& parent) const {
    return static_cast<int>(NodeOf(parent)->children.size());
}

int FolderTreeModel::columnCount(const QModelIndex& /*parent*/) const {
    return 1;
}

QVariant FolderTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    Node* node = NodeOf(index);
    switch (role) {
        case Qt::DisplayRole:
            return node->name;
        case Qt::DecorationRole:
            if (!node->picture) {
                node->picture = m_picture(node->item);
                ++m_picturesDrawn;
            }
            return *node->picture;
        case Qt::ToolTipRole:
            return node->unreadable.isEmpty() ? QString::fromStdString(node->item.path) : node->unreadable;
        default:
            return {};
    }
}

bool FolderTreeModel::hasChildren(const QModelIndex& parent) const {
    const Node* node = NodeOf(parent);
    return !node->listed || !node->children.empty();
}

bool FolderTreeModel::canFetchMore(const QModelIndex& parent) const {
    return !NodeOf(parent)->listed;
}

void FolderTreeModel::fetchMore(const QModelIndex& parent) {
    Node* node = NodeOf(parent);
    if (node->listed) {
        return;
    }
    node->listed = true;
    const auto names = ListSubfolders(m_machine.HostPath(node->item.path));
    if (!names.ok()) {
        node->unreadable = QString::fromStdString(names.reason());
        // The expander goes: there is nothing to open.
        emit dataChanged(parent, parent);
        return;
    }
    if (names->empty()) {
        emit dataChanged(parent, parent);
        return;
    }
    beginInsertRows(parent, 0, static_cast<int>(names->size()) - 1);
    for (const std::string& name : *names) {
        node->Add(ChildOf(node->item, name), QString::fromStdString(name));
    }
    endInsertRows();
}

std::optional<FolderItem> FolderTreeModel::ItemAt(const QModelIndex& index) const {
    if (!index.isValid()) {
        return std::nullopt;
    }
    return NodeOf(index)->item;
}

QModelIndex FolderTreeModel::Drive(std::string_view drivePath) const {
    for (const auto& drive : m_root->children) {
        if (EqualsNoCase(drive->item.path, drivePath)) {
            return createIndex(drive->row, 0, drive.get());
        }
    }
    return {};
}

QModelIndex FolderTreeModel::Child(const QModelIndex& parent, std::string_view name) {
    if (canFetchMore(parent)) {
        fetchMore(parent);
    }
    const Node* node = NodeOf(parent);
    for (const auto& child : node->children) {
        if (EqualsNoCase(child->name.toStdString(), name)) {
            return createIndex(child->row, 0, child.get());
        }
    }
    return {};
}

void FolderTreeModel::RefreshPicture(const QModelIndex& index) {
    if (index.isValid()) {
        NodeOf(index)->picture.reset();
        emit dataChanged(index, index, {Qt::DecorationRole});
    }
}

}  // namespace glyphmoor
