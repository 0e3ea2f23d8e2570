#include "ui/icons/IconsPage.h"

#include "ui/BusyPointer.h"
#include "ui/MachineFilePicker.h"
#include "ui/changeicon/frmChangeIcon.h"
#include "ui/icons/frmRename.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

namespace glyphmoor {

namespace {

// Whether a list item's entry could be drawn from its file.
constexpr int kDrawnRole = Qt::UserRole + 1;

constexpr int kCursorsGroup = static_cast<int>(GroupNumber::Cursors);
constexpr int kListIconSize = 32;

QPixmap Blank() {
    QPixmap blank(kListIconSize, kListIconSize);
    blank.fill(Qt::transparent);
    return blank;
}

}  // namespace

IconsPage::IconsPage(MsgContext messages, const Environment& machine, IconCatalogue& catalogue,
                     IconNameMarks& names, QWidget* parent)
    : QWidget(parent),
      m_messages(messages),
      m_machine(machine),
      m_catalogue(catalogue),
      m_state(messages.state),
      m_names(names),
      m_pictures(machine) {
    setObjectName(QStringLiteral("picContSub1"));
    m_tabIcons = new QTabBar(this);
    m_tabIcons->setObjectName(QStringLiteral("tabIcons"));
    m_stack = new QStackedWidget(this);
    for (int number = 1; number <= kIconGroupCount; ++number) {
        m_tabIcons->addTab(QString::fromUtf8(kGroupNames.at(static_cast<std::size_t>(number - 1)).data()));
        auto* list = new QListWidget(m_stack);
        list->setObjectName(QStringLiteral("lstbxIcons"));
        list->setProperty("Index", number);
        list->setIconSize(QSize(kListIconSize, kListIconSize));
        list->setUniformItemSizes(true);
        m_stack->addWidget(list);
        m_lists.at(static_cast<std::size_t>(number - 1)) = list;
        connect(list, &QListWidget::currentRowChanged, this, [this](int) { SelectEntry(); });
        connect(list, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem*) { ChangeSelected(); });
        m_catalogue.Group(number).SetRefreshHandler([this, number](const IconGroup&) { FillList(number); });
    }
    m_lblPath = new QLabel(this);
    m_lblPath->setObjectName(QStringLiteral("lblPath"));
    m_lblPath->setMinimumWidth(100);
    m_cmdChange = new QPushButton(QStringLiteral("&Change..."), this);
    m_cmdChange->setObjectName(QStringLiteral("cmdChange"));
    m_cmdDefault = new QPushButton(QStringLiteral("&Default Icon"), this);
    m_cmdDefault->setObjectName(QStringLiteral("cmdDefault"));
    m_cmdRename = new QPushButton(QStringLiteral("Re&name..."), this);
    m_cmdRename->setObjectName(QStringLiteral("cmdRename"));
    for (QPushButton* button : {m_cmdChange, m_cmdDefault, m_cmdRename}) {
        button->setEnabled(false);
    }

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_lblPath, 1);
    buttons->addWidget(m_cmdChange);
    buttons->addWidget(m_cmdDefault);
    buttons->addWidget(m_cmdRename);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tabIcons);
    layout->addWidget(m_stack, 1);
    layout->addLayout(buttons);

    connect(m_tabIcons, &QTabBar::currentChanged, this, [this](int tab) {
        m_stack->setCurrentIndex(tab);
        m_stack->currentWidget()->setFocus();
        SelectEntry();
    });
    connect(m_cmdChange, &QPushButton::clicked, this, &IconsPage::ChangeSelected);
    connect(m_cmdDefault, &QPushButton::clicked, this, &IconsPage::RestoreSelected);
    connect(m_cmdRename, &QPushButton::clicked, this, &IconsPage::RenameSelected);
    m_pickCursor = [this](const std::string& current) { return PickCursorWithDialog(current); };
}

void IconsPage::EnsureLoaded() {
    if (m_catalogue.Built() && m_catalogue.CursorsBuilt()) {
        return;
    }
    const BusyPointer busy;
    bool built = false;
    if (!m_catalogue.Built()) {
        m_catalogue.DetectShellIcons();
        built = true;
    }
    if (!m_catalogue.CursorsBuilt()) {
        m_catalogue.BuildCursorCatalogue();
        built = true;
    }
    if (built) {
        RefreshAll();
    }
}

void IconsPage::RefreshAll() {
    m_pictures.Clear();
    for (int number = 1; number <= kIconGroupCount; ++number) {
        FillList(number);
    }
    SelectEntry();
}

void IconsPage::FillList(int number) {
    QListWidget* list = List(number);
    const int row = std::max(list->currentRow(), 0);
    const QSignalBlocker quiet(list);
    list->clear();
    for (const SystemIconEntry& e : m_catalogue.Group(number).Entries()) {
        QImage picture = m_pictures.Picture(e.currentFile, e.currentIndex, number == kCursorsGroup);
        auto* item = new QListWidgetItem(QIcon(picture.isNull() ? Blank() : QPixmap::fromImage(picture)),
                                         QString::fromStdString(e.displayName), list);
        item->setData(Qt::UserRole, QString::fromStdString(std::string(e.Key())));
        item->setData(kDrawnRole, !picture.isNull());
    }
    if (list->count() > 0) {
        list->setCurrentRow(std::min(row, list->count() - 1));
    }
    if (number == ActiveGroup()) {
        SelectEntry();
    }
}

void IconsPage::ShowGroup(int number) {
    m_tabIcons->setCurrentIndex(number - 1);
}

int IconsPage::ActiveGroup() const {
    return m_tabIcons->currentIndex() + 1;
}

std::optional<std::size_t> IconsPage::SelectedPosition() const {
    const int row = List(ActiveGroup())->currentRow();
    if (row < 0 || static_cast<std::size_t>(row) >= m_catalogue.Group(ActiveGroup()).Count()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(row);
}

void IconsPage::SelectEntry() {
    const auto position = SelectedPosition();
    if (!position) {
        m_pathText.clear();
        m_lblPath->clear();
        for (QPushButton* button : {m_cmdChange, m_cmdDefault, m_cmdRename}) {
            button->setEnabled(false);
        }
        return;
    }
    const SystemIconEntry& entry = m_catalogue.Group(ActiveGroup()).At(*position);
    const QListWidgetItem* item = List(ActiveGroup())->item(static_cast<int>(*position));
    m_pathText = PathLabelText(ActiveGroup(), entry, item == nullptr || item->data(kDrawnRole).toBool());
    m_lblPath->setProperty("fullText", QString::fromStdString(m_pathText));
    // Long paths are shortened in the middle to fit the label.
    m_lblPath->setText(m_lblPath->fontMetrics().elidedText(QString::fromStdString(m_pathText),
                                                           Qt::ElideMiddle, m_lblPath->width()));
    m_lblPath->setToolTip(QString::fromStdString(m_pathText));
    const EntryButtons buttons = ButtonsFor(entry);
    m_cmdChange->setEnabled(true);
    m_cmdDefault->setEnabled(buttons.restoreDefault);
    m_cmdRename->setEnabled(buttons.rename);
}

void IconsPage::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    SelectEntry();
}

void IconsPage::ChangeSelected() {
    const auto position = SelectedPosition();
    if (!position) {
        return;
    }
    const int group = ActiveGroup();
    const SystemIconEntry& entry = m_catalogue.Group(group).At(*position);
    IconLocation chosen;
    if (group == kCursorsGroup) {
        const auto file = m_pickCursor(entry.currentFile);
        if (!file) {
            return;
        }
        chosen = {*file, 0};
    } else {
        const IconLocation start = StartingLocation(entry, m_messages.app.sysDir);
        frmChangeIcon dialog(m_messages.registry, m_machine, window());
        std::string file = start.file;
        int index = start.index;
        if (!dialog.Open(file, index)) {
            return;
        }
        chosen = {file, index};
    }
    if (ChangeIcon(m_catalogue, m_state, group, *position, chosen)) {
        FillList(group);
        emit changed();
    }
}

void IconsPage::RestoreSelected() {
    const auto position = SelectedPosition();
    if (position && RestoreIcon(m_catalogue, m_state, ActiveGroup(), *position, m_pathText)) {
        FillList(ActiveGroup());
        emit changed();
    }
}

void IconsPage::RenameSelected() {
    const auto position = SelectedPosition();
    if (!position || !IsRenamable(m_catalogue.Group(ActiveGroup()).At(*position))) {
        return;
    }
    frmRename dialog(m_catalogue, m_messages, m_names, ActiveGroup(), *position, window());
    dialog.exec();
    if (dialog.Renamed()) {
        FillList(ActiveGroup());
        emit changed();
    }
}

std::optional<std::string> IconsPage::PickCursorWithDialog(const std::string& current) {
    return PickMachineFile(
        window(), m_machine, QString::fromUtf8(kBrowseCursorsTitle.data()), m_machine.HostPath(current),
        QStringLiteral("Cursor Files (*.cur *.ani);;Standard Cursors (*.cur);;Animated Cursors (*.ani)"));
}

}  // namespace glyphmoor
