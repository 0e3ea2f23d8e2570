#include "ui/changeicon/frmChangeIcon.h"

#include "ui/BusyPointer.h"
#include "ui/MachineFilePicker.h"
#include "ui/changeicon/ChangeIconHistory.h"

#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

namespace glyphmoor {

namespace {

constexpr int kVisibleColumns = kGridVisibleWidth / kIconPitch;

int ColumnsFor(int count) {
    return (count + kIconsPerColumn - 1) / kIconsPerColumn;
}

QString Quoted(const std::string& file) {
    return QStringLiteral("\"") + QString::fromStdString(file) + QStringLiteral("\"");
}

}  // namespace

IconGrid::IconGrid(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("lstMain"));
    setFocusPolicy(Qt::StrongFocus);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
}

void IconGrid::SetSource(IconSource* source) {
    m_source = source;
    m_selected = -1;
    const int columns = std::max(ColumnsFor(Count()), kVisibleColumns);
    resize(columns * kIconPitch + kIconMargin, kGridHeight);
    update();
}

QPoint IconGrid::CellOrigin(int index) {
    const int column = index / kIconsPerColumn;
    const int row = index - kIconsPerColumn * column;
    return {kIconMargin + kIconPitch * column, kIconMargin + kIconPitch * row};
}

void IconGrid::PressAt(QPoint point) {
    const int column = point.x() / kIconPitch;
    const int row = point.y() / kIconPitch;
    if (point.x() < 0 || point.y() < 0 || row >= kIconsPerColumn) {
        return;
    }
    const int index = column * kIconsPerColumn + row;
    if (index < Count()) {
        Select(index);
    }
}

void IconGrid::Select(int index) {
    if (index < 0 || index >= Count()) {
        return;
    }
    m_selected = index;
    update();
    emit selectionChanged(index);
}

void IconGrid::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (m_source == nullptr) {
        return;
    }
    // Only the columns inside the area to paint are decoded and drawn.
    const QRect area = event->rect();
    const int firstColumn = std::max(0, (area.left() - kIconMargin) / kIconPitch);
    const int lastColumn = std::min(ColumnsFor(Count()) - 1, area.right() / kIconPitch);
    for (int column = firstColumn; column <= lastColumn; ++column) {
        for (int row = 0; row < kIconsPerColumn; ++row) {
            const int index = column * kIconsPerColumn + row;
            if (index >= Count()) {
                break;
            }
            const QImage image = m_source->Icon(index);
            if (!image.isNull()) {
                painter.drawImage(CellOrigin(index), image);
            }
        }
    }
    if (m_selected >= 0) {
        const QPoint at = CellOrigin(m_selected);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1, Qt::DotLine));
        painter.drawRect(at.x() - 2, at.y() - 2, 35, 35);
    }
}

void IconGrid::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        PressAt(event->position().toPoint());
    }
}

void IconGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    // The second press of a double click lands on the same cell as the first.
    PressAt(event->position().toPoint());
    emit activated();
}

frmChangeIcon::frmChangeIcon(RegistryStore& registry, const Environment& machine, QWidget* parent)
    : QDialog(parent), m_registry(registry), m_machine(machine) {
    setObjectName(QStringLiteral("frmChangeIcon"));
    setWindowTitle(QStringLiteral("Change Icon"));
    MakeControls();
    LayOutControls();
    ConnectControls();
}

void frmChangeIcon::MakeControls() {
    m_txtFilename = new QComboBox(this);
    m_txtFilename->setObjectName(QStringLiteral("txtFilename"));
    m_txtFilename->setEditable(true);
    m_txtFilename->setInsertPolicy(QComboBox::NoInsert);
    m_txtFilename->setMinimumContentsLength(32);
    for (const std::string& file : ReadChangeIconHistory(m_registry)) {
        m_txtFilename->addItem(QString::fromStdString(file));
    }
    m_cmdBrowse = new QPushButton(QStringLiteral("&Browse..."), this);
    m_cmdBrowse->setObjectName(QStringLiteral("cmdBrowse"));
    m_cmdBrowse->setAutoDefault(false);

    m_container = new QWidget(this);
    m_container->setObjectName(QStringLiteral("picContainer"));
    m_container->setFixedSize(kGridVisibleWidth, kGridHeight);
    m_lstMain = new IconGrid(m_container);
    m_scroll = new QScrollBar(Qt::Horizontal, this);
    m_scroll->setObjectName(QStringLiteral("Scroll"));
    m_scroll->setFixedWidth(kGridVisibleWidth);

    m_cmdOK = new QPushButton(QStringLiteral("OK"), this);
    m_cmdOK->setObjectName(QStringLiteral("cmdOK"));
    m_cmdOK->setDefault(true);
    m_cmdCancel = new QPushButton(QStringLiteral("Cancel"), this);
    m_cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
}

void frmChangeIcon::LayOutControls() {
    auto* fileLabel = new QLabel(QStringLiteral("&File name:"), this);
    fileLabel->setBuddy(m_txtFilename);
    auto* iconsLabel = new QLabel(QStringLiteral("&Current icon:"), this);
    iconsLabel->setBuddy(m_lstMain);
    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(m_txtFilename, 1);
    fileRow->addWidget(m_cmdBrowse);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_cmdOK);
    buttons->addWidget(m_cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fileLabel);
    layout->addLayout(fileRow);
    layout->addWidget(iconsLabel);
    layout->addWidget(m_container);
    layout->addWidget(m_scroll);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void frmChangeIcon::ConnectControls() {
    m_stockMessage = [this](const QString& text) {
        QMessageBox::warning(this, QStringLiteral("Change Icon"), text);
    };
    m_pickFile = [this] { return PickWithDialog(); };

    connect(m_scroll, &QScrollBar::valueChanged, this, [this](int value) { m_lstMain->move(-value, 0); });
    connect(m_lstMain, &IconGrid::selectionChanged, this,
            [this](int) { m_cmdOK->setEnabled(ChosenFile() == m_listedFile); });
    connect(m_lstMain, &IconGrid::activated, this, [this] {
        if (m_cmdOK->isEnabled()) {
            accept();
        }
    });
    connect(m_cmdBrowse, &QPushButton::clicked, this, &frmChangeIcon::Browse);
    connect(m_cmdOK, &QPushButton::clicked, this, &frmChangeIcon::accept);
    connect(m_cmdCancel, &QPushButton::clicked, this, &frmChangeIcon::reject);
    // A file typed by hand is listed on Enter, when the focus leaves the box
    // or after a pause in the typing; until then OK is off, since the list
    // belongs to another file. One taken from the history is listed at once.
    m_typingPause = new QTimer(this);
    m_typingPause->setSingleShot(true);
    m_typingPause->setInterval(kTypingPauseMs);
    connect(m_typingPause, &QTimer::timeout, this, [this] { ListTypedFile(false); });
    connect(m_txtFilename, &QComboBox::editTextChanged, this, [this](const QString& text) {
        if (text.toStdString() != m_listedFile) {
            m_cmdOK->setEnabled(false);
        }
    });
    connect(m_txtFilename->lineEdit(), &QLineEdit::textEdited, this, [this] { m_typingPause->start(); });
    m_txtFilename->lineEdit()->installEventFilter(this);
    connect(m_txtFilename->lineEdit(), &QLineEdit::returnPressed, this, [this] {
        m_scroll->setValue(0);
        ListIcons();
    });
    connect(m_txtFilename, &QComboBox::activated, this, [this](int) {
        m_scroll->setValue(0);
        ListIcons();
    });
}

frmChangeIcon::~frmChangeIcon() {
    // The box may lose the focus as the dialog goes: nothing is listed then.
    m_txtFilename->lineEdit()->removeEventFilter(this);
}

void frmChangeIcon::Prepare(const std::string& file, int index) {
    m_txtFilename->setEditText(QString::fromStdString(file));
    ListIcons();
    const int column = index / kIconsPerColumn;
    const int row = index - kIconsPerColumn * column;
    m_lstMain->PressAt(QPoint(kIconPitch * column, kIconPitch * row));
    if (m_lstMain->Selected() >= 0) {
        EnsureVisible(m_lstMain->Selected());
    }
}

bool frmChangeIcon::Open(std::string& file, int& index) {
    Prepare(file, index);
    if (exec() != QDialog::Accepted) {
        return false;
    }
    file = ChosenFile();
    index = ChosenIndex();
    return true;
}

std::string frmChangeIcon::ChosenFile() const {
    return m_txtFilename->currentText().toStdString();
}

int frmChangeIcon::ChosenIndex() const {
    return m_lstMain->Selected();
}

void frmChangeIcon::ListIcons() {
    List(true);
}

void frmChangeIcon::ListTypedFile(bool report) {
    if (ChosenFile() != m_listedFile) {
        m_scroll->setValue(0);
        List(report);
    }
}

void frmChangeIcon::List(bool report) {
    const std::string file = ChosenFile();
    m_typingPause->stop();
    m_listedFile = file;
    m_lstMain->SetSource(nullptr);
    m_cmdOK->setEnabled(false);
    {
        const BusyPointer busy;
        m_source = std::make_unique<IconSource>(m_machine.HostPath(file));
        if (m_source->Count() > 0) {
            ShowSource();
        }
    }
    // A pause in the typing lists quietly: the name may not be whole yet.
    if (!report) {
        return;
    }
    if (!m_source->Exists()) {
        m_stockMessage(QStringLiteral("File not found ") + Quoted(file));
    } else if (m_source->Count() == 0) {
        m_stockMessage(QStringLiteral("No Icons found in ") + Quoted(file) + QStringLiteral("."));
    }
}

void frmChangeIcon::ShowSource() {
    const int count = m_source->Count();
    const int hidden = std::max(0, ColumnsFor(count) * kIconPitch + kIconMargin - m_container->width());
    m_scroll->setEnabled(count > kVisibleColumns * kIconsPerColumn);
    m_scroll->setRange(0, m_scroll->isEnabled() ? hidden : 0);
    m_scroll->setSingleStep(kIconPitch);
    m_scroll->setPageStep(kVisibleColumns * kIconPitch);
    m_lstMain->SetSource(m_source.get());
    m_lstMain->move(-m_scroll->value(), 0);
    if (count == 1) {
        m_lstMain->Select(0);
        m_cmdOK->setFocus();
    }
}

void frmChangeIcon::Browse() {
    const auto file = m_pickFile();
    if (!file) {
        return;
    }
    m_txtFilename->setEditText(QString::fromStdString(*file));
    m_scroll->setValue(0);
    m_cmdOK->setEnabled(false);
    ListIcons();
}

std::optional<std::string> frmChangeIcon::PickWithDialog() {
    return PickMachineFile(
        this, m_machine, QStringLiteral("Browse"), m_machine.HostPath(ChosenFile()).parent_path(),
        QStringLiteral("Icon Files (*.exe *.dll *.icl *.ico);;Programs (*.exe);;Libraries (*.dll);;Icons "
                       "(*.ico);;All Files (*)"));
}

void frmChangeIcon::MoveSelection(int step) {
    const int from = std::max(m_lstMain->Selected(), 0);
    const int row = from % kIconsPerColumn;
    // Up and down stay within the column; left and right move by a column.
    if ((step == -1 && row == 0) || (step == 1 && row == kIconsPerColumn - 1)) {
        return;
    }
    const int to = from + step;
    if (to < 0 || to >= m_lstMain->Count()) {
        return;
    }
    m_lstMain->Select(to);
    EnsureVisible(to);
}

void frmChangeIcon::EnsureVisible(int index) {
    const int left = kIconPitch * (index / kIconsPerColumn);
    const int visible = m_container->width();
    if (left < m_scroll->value()) {
        m_scroll->setValue(left);
    } else if (left + kIconPitch > m_scroll->value() + visible) {
        m_scroll->setValue(left + kIconPitch - visible);
    }
}

bool frmChangeIcon::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_txtFilename->lineEdit() && event->type() == QEvent::FocusOut) {
        ListTypedFile(true);
    }
    return QDialog::eventFilter(watched, event);
}

void frmChangeIcon::keyPressEvent(QKeyEvent* event) {
    if (m_txtFilename->hasFocus() || m_lstMain->Count() == 0) {
        QDialog::keyPressEvent(event);
        return;
    }
    switch (event->key()) {
        case Qt::Key_Left:
            MoveSelection(-kIconsPerColumn);
            break;
        case Qt::Key_Right:
            MoveSelection(kIconsPerColumn);
            break;
        case Qt::Key_Up:
            MoveSelection(-1);
            break;
        case Qt::Key_Down:
            MoveSelection(1);
            break;
        default:
            QDialog::keyPressEvent(event);
            return;
    }
}

void frmChangeIcon::accept() {
    // A name typed but not yet listed is listed first: the index chosen in
    // another file's list is no answer for it.
    if (ChosenFile() != m_listedFile) {
        ListTypedFile(true);
        return;
    }
    if (m_lstMain->Selected() < 0) {
        return;
    }
    WriteChangeIconHistory(m_registry, WithFileOnTop(ReadChangeIconHistory(m_registry), ChosenFile()));
    QDialog::accept();
}

}  // namespace glyphmoor
