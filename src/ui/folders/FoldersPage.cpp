#include "ui/folders/FoldersPage.h"

#include "folders/FolderListing.h"
#include "foundation/TextEncoding.h"
#include "icons/IconEditing.h"
#include "ui/BusyPointer.h"
#include "ui/changeicon/frmChangeIcon.h"
#include "ui/folders/FolderTreeModel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTabBar>
#include <QTreeView>
#include <QVBoxLayout>

namespace glyphmoor {

namespace {

constexpr int kTreeIconSize = 16;
constexpr int kPreviewSize = 32;
// shell32.dll's closed folder and hard drive, where the catalogue has no row.
constexpr int kShellClosedFolder = 3;
constexpr int kShellHardDrive = 8;

}  // namespace

FoldersPage::FoldersPage(MsgContext messages, Machine& machine, IconCatalogue& catalogue, QWidget* parent)
    : QWidget(parent),
      m_messages(messages),
      m_machine(machine),
      m_catalogue(catalogue),
      m_pictures(machine.Env()),
      m_model(new FolderTreeModel(
          machine.Env(), [this](const FolderItem& item) { return PictureOf(item, kTreeIconSize); }, this)) {
    setObjectName(QStringLiteral("picContSub2"));
    m_tabFolders = new QTabBar(this);
    m_tabFolders->setObjectName(QStringLiteral("tabFolders"));
    m_tabFolders->addTab(QStringLiteral("Folders"));
    m_tvExplorer = new QTreeView(this);
    m_tvExplorer->setObjectName(QStringLiteral("tvExplorer"));
    m_tvExplorer->setHeaderHidden(true);
    m_tvExplorer->setUniformRowHeights(true);
    m_tvExplorer->setIconSize(QSize(kTreeIconSize, kTreeIconSize));
    m_tvExplorer->setModel(m_model);
    m_imgFolder = new QLabel(this);
    m_imgFolder->setObjectName(QStringLiteral("imgFolder"));
    m_imgFolder->setFixedSize(kPreviewSize + 4, kPreviewSize + 4);
    m_lblFolder = new QLabel(this);
    m_lblFolder->setObjectName(QStringLiteral("lblFolder"));
    m_lblFolder->setMinimumWidth(100);
    m_lblFolder->setTextFormat(Qt::PlainText);
    m_cmdChangeF = new QPushButton(QStringLiteral("&Change..."), this);
    m_cmdChangeF->setObjectName(QStringLiteral("cmdChangeF"));
    m_cmdDefaultF = new QPushButton(QStringLiteral("&Default Icon"), this);
    m_cmdDefaultF->setObjectName(QStringLiteral("cmdDefaultF"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_imgFolder);
    buttons->addWidget(m_lblFolder, 1);
    buttons->addWidget(m_cmdChangeF);
    buttons->addWidget(m_cmdDefaultF);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tabFolders);
    layout->addWidget(m_tvExplorer, 1);
    layout->addLayout(buttons);

    connect(m_tvExplorer->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { SelectionChanged(); });
    connect(m_cmdChangeF, &QPushButton::clicked, this, &FoldersPage::ChangeSelected);
    connect(m_cmdDefaultF, &QPushButton::clicked, this, &FoldersPage::RestoreSelected);
    SelectionChanged();
}

void FoldersPage::EnsureLoaded() {
    if (m_loaded) {
        return;
    }
    m_loaded = true;
    const BusyPointer busy;
    if (!m_catalogue.Built()) {
        m_catalogue.DetectShellIcons();
    }
    m_model->ShowDrives();
    if (m_model->rowCount() > 0) {
        m_tvExplorer->setCurrentIndex(m_model->index(0, 0));
    }
}

IconLocation FoldersPage::DefaultLocation(const FolderItem& item) const {
    const bool drive = item.kind == FolderItemKind::Drive;
    const IconGroup& group = m_catalogue.Group(drive ? GroupNumber::DriveIcons : GroupNumber::FolderIcons);
    if (const SystemIconEntry* entry = group.Find(drive ? "Hard Drive" : "Closed Folder")) {
        return StartingLocation(*entry, m_messages.app.sysDir);
    }
    return {m_messages.app.sysDir + "\\shell32.dll", drive ? kShellHardDrive : kShellClosedFolder};
}

QIcon FoldersPage::PictureOf(const FolderItem& item, int size) {
    if (const auto own = ReadFolderIcon(m_machine.Env(), item)) {
        const QImage image = m_pictures.Picture(IconFileInItem(item, own->file), own->index, false, size);
        if (!image.isNull()) {
            return QIcon(QPixmap::fromImage(image));
        }
    }
    const IconLocation fallback = DefaultLocation(item);
    const QImage image = m_pictures.Picture(fallback.file, fallback.index, false, size);
    return image.isNull() ? QIcon() : QIcon(QPixmap::fromImage(image));
}

std::optional<FolderItem> FoldersPage::SelectedItem() const {
    return m_model->ItemAt(m_tvExplorer->currentIndex());
}

void FoldersPage::SelectionChanged() {
    const auto item = SelectedItem();
    m_cmdChangeF->setEnabled(item.has_value());
    m_cmdDefaultF->setEnabled(item.has_value());
    if (!item) {
        m_lblFolder->clear();
        m_imgFolder->clear();
        return;
    }
    const auto own = ReadFolderIcon(m_machine.Env(), *item);
    const std::string icon = own ? own->Text() : std::string(kWindowsDefaultIcon);
    m_lblFolder->setText(QString::fromStdString(item->path + "\n" + icon));
    m_imgFolder->setPixmap(PictureOf(*item, kPreviewSize).pixmap(kPreviewSize, kPreviewSize));
}

void FoldersPage::Refresh(const QModelIndex& index) {
    m_model->RefreshPicture(index);
    SelectionChanged();
}

void FoldersPage::ChangeSelected() {
    const QModelIndex index = m_tvExplorer->currentIndex();
    const auto item = m_model->ItemAt(index);
    if (!item) {
        return;
    }
    const auto own = ReadFolderIcon(m_machine.Env(), *item);
    IconLocation start =
        own ? IconLocation{IconFileInItem(*item, own->file), own->index} : DefaultLocation(*item);
    frmChangeIcon dialog(m_messages.registry, m_machine.Env(), window());
    if (!dialog.Open(start.file, start.index)) {
        return;
    }
    // Failures are not reported: the tree shows what the files then hold.
    static_cast<void>(SetFolderIcon(m_machine, *item, start));
    Refresh(index);
}

void FoldersPage::RestoreSelected() {
    const QModelIndex index = m_tvExplorer->currentIndex();
    const auto item = m_model->ItemAt(index);
    if (!item) {
        MsgSelectCustomisedItem(m_messages);
        return;
    }
    if (RestoreFolderIcon(m_messages, m_machine, *item) == FolderRestore::Restored) {
        Refresh(index);
    }
}

void FoldersPage::ShowFolder(const std::string& windowsPath) {
    EnsureLoaded();
    const auto asked = FolderItemOf(windowsPath);
    if (!asked) {
        emit notice(QStringLiteral("\"%1\" is not a folder of this machine.")
                        .arg(QString::fromStdString(windowsPath)));
        return;
    }
    const FolderItem nearest = NearestExistingItem(m_machine.Env(), *asked);
    // Down from the drive, each folder opened on the way; the deepest one found is selected.
    QModelIndex found;
    std::string shown;
    for (const FolderItem& step : PathFromRoot(nearest)) {
        QModelIndex next;
        if (!found.isValid()) {
            next = m_model->Drive(step.path);
        } else {
            m_tvExplorer->expand(found);
            next = m_model->Child(found, step.path.substr(step.path.rfind('\\') + 1));
        }
        if (!next.isValid()) {
            break;
        }
        found = next;
        shown = m_model->ItemAt(found)->path;
    }
    if (found.isValid()) {
        m_tvExplorer->setCurrentIndex(found);
        m_tvExplorer->scrollTo(found);
    }
    const QString askedText = QString::fromStdString(asked->path);
    if (shown.empty()) {
        emit notice(QStringLiteral("The folder %1 is on no drive of this machine.").arg(askedText));
    } else if (!EqualsNoCase(shown, asked->path)) {
        emit notice(
            QStringLiteral("The folder %1 does not exist on this machine; the nearest folder above it, "
                           "%2, is shown instead.")
                .arg(askedText, QString::fromStdString(shown)));
    }
}

}  // namespace glyphmoor
