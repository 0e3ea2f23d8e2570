#include "ui/tweaks/TweaksPage.h"

#include "tweaks/TweakEditing.h"
#include "ui/main/WindowPictures.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTabBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace glyphmoor {

namespace {

constexpr int kImageSize = 16;
// Where a node keeps its key.
constexpr int kKeyRole = Qt::UserRole;

// The tree's image list: 1 a group, 2 a sub-group, 3 and 4 the boxes, 5 a value.
QIcon ImageIcon(int image, const QWidget* widget) {
    QStyle* style = widget->style();
    switch (image) {
        case kTweakImageGroup:
            return WindowPicture(Picture::Tweak, kImageSize);
        case kTweakImageSubGroup:
            return style->standardIcon(QStyle::SP_DirIcon);
        case kTweakImageValue:
            return style->standardIcon(QStyle::SP_FileDialogDetailedView);
        default:
            break;
    }
    QPixmap box(kImageSize, kImageSize);
    box.fill(Qt::transparent);
    QPainter painter(&box);
    QStyleOptionButton option;
    option.rect = QRect(1, 1, kImageSize - 2, kImageSize - 2);
    option.state = QStyle::State_Enabled | (image == kTweakImageOn ? QStyle::State_On : QStyle::State_Off);
    style->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, widget);
    return QIcon(box);
}

}  // namespace

TweaksPage::TweaksPage(MsgContext messages, TweakTree& tree, QWidget* parent)
    : QWidget(parent), m_messages(messages), m_tree(tree) {
    setObjectName(QStringLiteral("picContSub3"));
    m_tabShell = new QTabBar(this);
    m_tabShell->setObjectName(QStringLiteral("tabShell"));
    for (const char* tab : {"General", "Bootup", "Miscellaneous"}) {
        m_tabShell->addTab(QString::fromUtf8(tab));
    }
    m_tvTweak = new QTreeWidget(this);
    m_tvTweak->setObjectName(QStringLiteral("tvTweak"));
    m_tvTweak->setHeaderHidden(true);
    m_tvTweak->setIconSize(QSize(kImageSize, kImageSize));
    m_tvTweak->setContextMenuPolicy(Qt::DefaultContextMenu);
    m_tvTweak->viewport()->installEventFilter(this);
    m_tvTweak->installEventFilter(this);

    m_editor = new QWidget(this);
    m_txtTweak = new QLineEdit(m_editor);
    m_txtTweak->setObjectName(QStringLiteral("txtTweak"));
    m_txtTweak->setMaximumWidth(80);
    m_txtTweak->installEventFilter(this);
    m_scrTweak = new QScrollBar(Qt::Vertical, m_editor);
    m_scrTweak->setObjectName(QStringLiteral("scrTweak"));
    m_scrTweak->setRange(0, kTweakScrollMax);
    // Up raises the number, as a spin control does.
    m_scrTweak->setInvertedAppearance(true);
    m_scrTweak->setInvertedControls(true);
    m_scrTweak->setFixedHeight(m_txtTweak->sizeHint().height());
    m_lblTweak = new QLabel(m_editor);
    m_lblTweak->setObjectName(QStringLiteral("lblTweak"));
    auto* editorRow = new QHBoxLayout(m_editor);
    editorRow->setContentsMargins(0, 0, 0, 0);
    editorRow->addWidget(m_txtTweak);
    editorRow->addWidget(m_scrTweak);
    editorRow->addWidget(m_lblTweak);
    editorRow->addStretch(1);
    m_editor->hide();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tabShell);
    layout->addWidget(m_tvTweak, 1);
    layout->addWidget(m_editor);

    connect(m_tvTweak, &QTreeWidget::currentItemChanged, this, [this] { NodeSelected(); });
    connect(m_scrTweak, &QScrollBar::valueChanged, this, &TweaksPage::ScrollChanged);
    connect(m_txtTweak, &QLineEdit::textEdited, this, &TweaksPage::TextTyped);
    // The tabs lead to the parts of the tree: the settings, the boot options, the rest.
    connect(m_tabShell, &QTabBar::currentChanged, this, [this](int tab) {
        static const std::array<const char*, 3> firsts = {"General", "Boot", "Options"};
        if (QTreeWidgetItem* item = ItemOf(firsts.at(static_cast<std::size_t>(tab)))) {
            m_tvTweak->scrollToItem(item, QAbstractItemView::PositionAtTop);
        }
    });
}

void TweaksPage::EnsureLoaded(const DisplayCaps& caps) {
    if (m_tree.Loaded() && m_tvTweak->topLevelItemCount() > 0) {
        return;
    }
    m_tree.Build(caps);
    m_messages.state.tweaksLoaded = true;
    Fill();
}

void TweaksPage::Fill() {
    m_tvTweak->clear();
    std::map<std::string, QTreeWidgetItem*> items;
    for (const TweakNode& node : m_tree.Nodes()) {
        const auto parent = items.find(node.parent);
        auto* item =
            parent == items.end() ? new QTreeWidgetItem(m_tvTweak) : new QTreeWidgetItem(parent->second);
        item->setText(0, QString::fromStdString(node.text));
        item->setData(0, kKeyRole, QString::fromStdString(node.key));
        if (node.row != nullptr && !node.row->help.empty()) {
            item->setData(
                0, Qt::WhatsThisRole,
                QString::fromUtf8(node.row->help.data(), static_cast<qsizetype>(node.row->help.size())));
        }
        ShowState(item, node);
        items[node.key] = item;
    }
    m_tvTweak->expandAll();
}

void TweaksPage::ShowState(QTreeWidgetItem* item, const TweakNode& node) {
    item->setIcon(0, ImageIcon(node.image, m_tvTweak));
    item->setData(0, Qt::AccessibleDescriptionRole,
                  node.image == kTweakImageOn    ? QStringLiteral("on")
                  : node.image == kTweakImageOff ? QStringLiteral("off")
                                                 : QString());
}

void TweaksPage::Refresh() {
    for (const TweakNode& node : m_tree.Nodes()) {
        if (QTreeWidgetItem* item = ItemOf(node.key)) {
            ShowState(item, node);
        }
    }
    NodeSelected();
}

QTreeWidgetItem* TweaksPage::ItemOf(const std::string& key) const {
    const QString wanted = QString::fromStdString(key);
    for (QTreeWidgetItemIterator it(m_tvTweak); *it != nullptr; ++it) {
        if ((*it)->data(0, kKeyRole).toString() == wanted) {
            return *it;
        }
    }
    return nullptr;
}

std::string TweaksPage::SelectedKey() const {
    const QTreeWidgetItem* item = m_tvTweak->currentItem();
    return item != nullptr ? item->data(0, kKeyRole).toString().toStdString() : std::string();
}

void TweaksPage::Toggle(QTreeWidgetItem* item) {
    if (item == nullptr) {
        return;
    }
    const std::string key = item->data(0, kKeyRole).toString().toStdString();
    const ToggleOutcome outcome = ToggleTweak(m_tree, m_messages, key);
    if (outcome == ToggleOutcome::TurnedOn || outcome == ToggleOutcome::TurnedOff) {
        ShowState(item, *m_tree.Find(key));
        emit changed();
    }
}

void TweaksPage::ToggleSelected() {
    Toggle(m_tvTweak->currentItem());
}

void TweaksPage::EditSelected() {
    if (m_editor->isVisible()) {
        m_txtTweak->setFocus();
        m_txtTweak->selectAll();
    }
}

void TweaksPage::ExpandSelected(bool expand) {
    if (QTreeWidgetItem* item = m_tvTweak->currentItem()) {
        item->setExpanded(expand);
    }
}

void TweaksPage::ExpandAll(bool expand) {
    expand ? m_tvTweak->expandAll() : m_tvTweak->collapseAll();
}

QString TweaksPage::SelectedHelp() const {
    const QTreeWidgetItem* item = m_tvTweak->currentItem();
    return item != nullptr ? item->data(0, Qt::WhatsThisRole).toString() : QString();
}

void TweaksPage::NodeSelected() {
    const TweakNode* node = m_tree.Find(SelectedKey());
    if (node == nullptr || node->kind != TweakKind::Value || node->row == nullptr) {
        m_editor->hide();
        return;
    }
    const QSignalBlocker blockScroll(m_scrTweak);
    m_txtTweak->setText(QString::fromStdString(node->pending));
    m_scrTweak->setValue(LeadingNumber(node->pending));
    m_lblTweak->setText(
        QString::fromUtf8(node->row->unit.data(), static_cast<qsizetype>(node->row->unit.size())));
    m_editor->show();
    // The editor takes room from the tree: the item stays in sight.
    m_tvTweak->scrollToItem(m_tvTweak->currentItem());
}

void TweaksPage::ScrollChanged(int value) {
    const auto edit = ScrollTweakValue(m_tree, m_messages.state, SelectedKey(), value);
    if (!edit) {
        return;
    }
    if (edit->beeped) {
        QApplication::beep();
        const QSignalBlocker blockScroll(m_scrTweak);
        m_scrTweak->setValue(edit->scrollValue);
    }
    m_txtTweak->setText(QString::fromStdString(edit->text));
    m_txtTweak->selectAll();
    emit changed();
}

void TweaksPage::TextTyped(const QString& text) {
    const auto edit = TypeTweakValue(m_tree, m_messages.state, SelectedKey(), text.toStdString());
    if (!edit) {
        return;
    }
    const QSignalBlocker blockScroll(m_scrTweak);
    m_scrTweak->setValue(edit->scrollValue);
    if (edit->beeped) {
        QApplication::beep();
        m_txtTweak->setText(QString::fromStdString(edit->text));
        m_txtTweak->selectAll();
    }
    emit changed();
}

bool TweaksPage::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_txtTweak && event->type() == QEvent::FocusIn) {
        QMetaObject::invokeMethod(m_txtTweak, &QLineEdit::selectAll, Qt::QueuedConnection);
    } else if (watched == m_tvTweak && event->type() == QEvent::KeyPress &&
               static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space) {
        ToggleSelected();
        return true;
    } else if (watched == m_tvTweak->viewport() && event->type() == QEvent::MouseButtonPress) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const QPoint at = mouse->position().toPoint();
        QTreeWidgetItem* item = m_tvTweak->itemAt(at);
        if (mouse->button() == Qt::RightButton) {
            if (item != nullptr) {
                m_tvTweak->setCurrentItem(item);
            }
            emit popupRequested(m_tvTweak->viewport()->mapToGlobal(at));
            return true;
        }
        // A click on the node's picture toggles it.
        const QRect rect = m_tvTweak->visualItemRect(item);
        if (item != nullptr && mouse->button() == Qt::LeftButton && at.x() < rect.left() + kImageSize + 4) {
            m_tvTweak->setCurrentItem(item);
            Toggle(item);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace glyphmoor
