#include "ui/about/frmAbout.h"

#include "foundation/PhysicalMemory.h"
#include "foundation/Version.h"
#include "ui/CentreForm.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include <string>

namespace glyphmoor {

namespace {

constexpr int kMailLabel = 5;
constexpr int kWebLabel = 6;

QString MemoryText(bool total) {
    const auto memory = ReadPhysicalMemory();
    if (!memory) {
        return QStringLiteral("unknown");
    }
    return QString::fromStdString(FormatKilobytes(total ? memory->totalBytes : memory->availableBytes));
}

QString Link(std::string_view address, std::string_view text) {
    return QStringLiteral("<a href=\"%1\">%2</a>")
        .arg(QString::fromUtf8(address.data(), static_cast<qsizetype>(address.size())),
             QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

}  // namespace

frmAbout::frmAbout(std::function<void(std::string_view)> open, QWidget* parent)
    : QDialog(parent), m_open(std::move(open)) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About Glyphmoor"));
    for (std::size_t i = 0; i < m_label.size(); ++i) {
        m_label[i] = new QLabel(this);
        m_label[i]->setObjectName(QStringLiteral("label(%1)").arg(i));
    }
    m_label[0]->setText(QStringLiteral("Glyphmoor 0.75"));
    QFont title = m_label[0]->font();
    title.setPointSizeF(title.pointSizeF() * 1.6);
    title.setBold(true);
    m_label[0]->setFont(title);
    const std::string_view version = ProgramVersion();
    const QStringList numbers =
        QString::fromUtf8(version.data(), static_cast<qsizetype>(version.size())).split(QLatin1Char('.'));
    m_label[1]->setText(QString::fromStdString(
        AboutVersionText(numbers.value(0).toUInt(), numbers.value(1).toUInt(), numbers.value(2).toUInt())));
    m_label[2]->setText(
        QStringLiteral("Changes the icons, pointers and shell settings of a Windows machine\n"
                       "or a Wine prefix."));
    m_label[3]->setText(MemoryText(true));
    m_label[4]->setText(MemoryText(false));
    m_label[5]->setText(Link("mailto:", kSupportMail));
    m_label[6]->setText(Link(kWebSite, kWebSite));
    for (int index : {kMailLabel, kWebLabel}) {
        QLabel* label = m_label.at(static_cast<std::size_t>(index));
        label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
        label->setCursor(Qt::PointingHandCursor);
        connect(label, &QLabel::linkActivated, this, [this, index] { LabelClicked(index); });
    }
    BuildLayout();

    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("Timer"));
    m_timer->setInterval(1000);
    connect(m_timer, &QTimer::timeout, this, &frmAbout::RefreshMemory);
    m_timer->start();
    CentreForm(*this, parent);
}

void frmAbout::BuildLayout() {
    auto* memory = new QGridLayout;
    memory->addWidget(new QLabel(QStringLiteral("Physical memory:"), this), 0, 0);
    memory->addWidget(m_label[3], 0, 1, Qt::AlignRight);
    memory->addWidget(new QLabel(QStringLiteral("Available memory:"), this), 1, 0);
    memory->addWidget(m_label[4], 1, 1, Qt::AlignRight);

    auto* cmdClose = new QPushButton(QStringLiteral("Close"), this);
    cmdClose->setObjectName(QStringLiteral("cmdClose"));
    cmdClose->setDefault(true);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdClose, QDialogButtonBox::AcceptRole);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_label[0]);
    layout->addWidget(m_label[1]);
    layout->addWidget(m_label[2]);
    layout->addSpacing(8);
    layout->addLayout(memory);
    layout->addSpacing(8);
    layout->addWidget(new QLabel(QStringLiteral("Support:"), this));
    layout->addWidget(m_label[5]);
    layout->addWidget(new QLabel(QStringLiteral("On the web:"), this));
    layout->addWidget(m_label[6]);
    layout->addWidget(buttons);
}

void frmAbout::RefreshMemory() {
    m_label[4]->setText(MemoryText(false));
}

void frmAbout::LabelClicked(int index) {
    if (index == kMailLabel) {
        m_open("mailto:" + std::string(kSupportMail));
    } else if (index == kWebLabel) {
        m_open(kWebSite);
    }
}

}  // namespace glyphmoor
