#include "ui/themes/ThemesPage.h"

#include "ui/BusyPointer.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QVBoxLayout>

namespace glyphmoor {

namespace {

constexpr int kPathRole = Qt::UserRole;
constexpr int kCaptionRole = Qt::UserRole + 1;
constexpr int kPictureSize = 32;

QPixmap Blank() {
    QPixmap blank(kPictureSize, kPictureSize);
    blank.fill(Qt::transparent);
    return blank;
}

}  // namespace

ThemesPage::ThemesPage(const AppEnvironment& app, QWidget* parent)
    : QWidget(parent), m_app(app), m_pictures(app.machine) {
    setObjectName(QStringLiteral("picContMain"));
    auto* tabThemes = new QTabBar(this);
    tabThemes->setObjectName(QStringLiteral("tabThemes"));
    tabThemes->addTab(QStringLiteral("Themes"));
    m_lvThemes = new QListWidget(this);
    m_lvThemes->setObjectName(QStringLiteral("lvThemes"));
    m_lvThemes->setContextMenuPolicy(Qt::CustomContextMenu);
    m_lvThemes->setResizeMode(QListView::Adjust);
    m_lvThemes->setMovement(QListView::Static);
    m_lvThemes->installEventFilter(this);
    m_lblPath = new QLabel(this);
    m_lblPath->setObjectName(QStringLiteral("lblPath"));
    m_lblPath->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_lblPath->setMinimumWidth(100);
    m_lblPath->hide();
    m_cmdOpen = new QPushButton(QStringLiteral("&Load Theme"), this);
    m_cmdOpen->setObjectName(QStringLiteral("cmdOpen"));
    m_cmdOpen->setEnabled(false);
    m_cmdRefresh = new QPushButton(QStringLiteral("&Refresh List"), this);
    m_cmdRefresh->setObjectName(QStringLiteral("cmdRefresh"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_lblPath, 1);
    buttons->addStretch(0);
    buttons->addWidget(m_cmdOpen);
    buttons->addWidget(m_cmdRefresh);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tabThemes);
    layout->addWidget(m_lvThemes, 1);
    layout->addLayout(buttons);

    connect(m_lvThemes, &QListWidget::itemClicked, this, [this](QListWidgetItem*) { ItemClicked(); });
    connect(m_lvThemes, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item != nullptr) {
            ItemClicked();
        }
    });
    connect(m_lvThemes, &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem* item) { emit openRequested(item->data(kPathRole).toString()); });
    connect(m_lvThemes, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { emit popupRequested(m_lvThemes->viewport()->mapToGlobal(at)); });
    connect(m_cmdOpen, &QPushButton::clicked, this, [this] {
        if (const auto theme = Selected()) {
            emit openRequested(QString::fromStdString(theme->path));
        }
    });
    connect(m_cmdRefresh, &QPushButton::clicked, this, &ThemesPage::Refresh);
    ApplyViewLayout();
}

void ThemesPage::EnsureLoaded() {
    if (!m_loaded) {
        Refresh();
    }
}

void ThemesPage::Refresh() {
    const BusyPointer busy;
    m_lvThemes->clear();
    m_pictures.Clear();
    m_lblPath->hide();
    m_lblPath->clear();
    m_cmdOpen->setEnabled(false);
    m_themes = ListThemeLibrary(m_app);
    for (const LibraryTheme& theme : m_themes) {
        QImage picture;
        if (const auto location = ThemeListPicture(m_app, theme.path)) {
            picture = m_pictures.Picture(location->file, location->index, false, kPictureSize);
        }
        auto* item =
            new QListWidgetItem(picture.isNull() ? QIcon(Blank()) : QIcon(QPixmap::fromImage(picture)),
                                QString::fromStdString(theme.caption));
        item->setData(kPathRole, QString::fromStdString(theme.path));
        item->setData(kCaptionRole, QString::fromStdString(theme.caption));
        item->setToolTip(QString::fromStdString(theme.path));
        m_lvThemes->addItem(item);
    }
    m_loaded = true;
    ApplyViewLayout();
}

void ThemesPage::SetView(View view) {
    m_view = view;
    ApplyViewLayout();
}

// Large icons: pictures at 32 pixels with the caption below, in a grid;
// small icons and the list: 16 pixels with the caption beside, across or
// down; details: a row per theme naming its file as well.
void ThemesPage::ApplyViewLayout() {
    const bool large = m_view == View::LargeIcons;
    m_lvThemes->setViewMode(large ? QListView::IconMode : QListView::ListMode);
    m_lvThemes->setIconSize(large ? QSize(kPictureSize, kPictureSize) : QSize(16, 16));
    m_lvThemes->setGridSize(large ? QSize(96, 72) : QSize());
    m_lvThemes->setWordWrap(large);
    m_lvThemes->setFlow(m_view == View::SmallIcons ? QListView::LeftToRight : QListView::TopToBottom);
    m_lvThemes->setWrapping(m_view != View::Details);
    if (large) {
        m_lvThemes->setFlow(QListView::LeftToRight);
    }
    m_lvThemes->setMovement(QListView::Static);
    for (int row = 0; row < m_lvThemes->count(); ++row) {
        QListWidgetItem* item = m_lvThemes->item(row);
        const QString caption = item->data(kCaptionRole).toString();
        item->setText(m_view == View::Details
                          ? QStringLiteral("%1    %2").arg(caption, item->data(kPathRole).toString())
                          : caption);
    }
}

std::optional<LibraryTheme> ThemesPage::Selected() const {
    const QListWidgetItem* item = m_lvThemes->currentItem();
    if (item == nullptr || m_lblPath->isHidden()) {
        return std::nullopt;
    }
    return LibraryTheme{item->data(kPathRole).toString().toStdString(),
                        item->data(kCaptionRole).toString().toStdString()};
}

void ThemesPage::ItemClicked() {
    const QListWidgetItem* item = m_lvThemes->currentItem();
    if (item == nullptr) {
        return;
    }
    m_lblPath->setText(item->data(kPathRole).toString());
    m_lblPath->show();
    m_cmdOpen->setEnabled(true);
}

bool ThemesPage::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_lvThemes && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        if (const auto theme = Selected()) {
            emit deleteRequested(QString::fromStdString(theme->caption), QString::fromStdString(theme->path));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace glyphmoor
