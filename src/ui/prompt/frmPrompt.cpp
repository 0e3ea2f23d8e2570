#include "ui/prompt/frmPrompt.h"
#include "ui/help/HelpWindow.h"

#include "prompts/SilentPrompt.h"
#include "ui/CentreForm.h"

#include <QCheckBox>
#include <QCursor>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <cmath>

namespace glyphmoor {

namespace {

constexpr double kTwipsPerInch = 1440.0;
// The dialog frame of Windows 95, 98 and NT 4.0, in pixels.
constexpr int kDialogFramePixels = 3;

QStyle::StandardPixmap StockIcon(std::int16_t iconId) {
    switch (static_cast<PromptIcon>(iconId)) {
        case PromptIcon::Stop:
            return QStyle::SP_MessageBoxCritical;
        case PromptIcon::Question:
            return QStyle::SP_MessageBoxQuestion;
        case PromptIcon::Exclamation:
            return QStyle::SP_MessageBoxWarning;
        case PromptIcon::Information:
            break;
    }
    return QStyle::SP_MessageBoxInformation;
}

}  // namespace

frmPrompt::frmPrompt(Prompt& prompt, const PromptRequest& request, QWidget* parent)
    : QDialog(parent), m_prompt(prompt) {
    setObjectName("frmPrompt");
    setWindowTitle("Glyphmoor");
    m_prompt.LoadDialog();

    const QScreen* screen = parent != nullptr ? parent->screen() : QGuiApplication::primaryScreen();
    if (screen != nullptr) {
        m_dpiX = screen->logicalDotsPerInchX();
        m_dpiY = screen->logicalDotsPerInchY();
    }
    LayOut(request);
    MakeControls(request);
    setFixedSize(PixelsAcross(m_layout.clientWidth), PixelsDown(m_layout.clientHeight));
    FocusSafeButton(request);
    // Centred now, and again when shown, once the frame's size is known.
    CentreForm(*this, parent != nullptr ? parent->window() : nullptr);
}

void frmPrompt::LayOut(const PromptRequest& request) {
    const auto twipsDown = [this](int pixels) {
        return static_cast<int>(std::lround(pixels * kTwipsPerInch / m_dpiY));
    };
    // The label grows downward to fit the text at its width.
    m_capMsg = new QLabel(this);
    m_capMsg->setObjectName("capMsg");
    m_capMsg->setTextFormat(Qt::PlainText);
    m_capMsg->setWordWrap(true);
    m_capMsg->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_capMsg->setText(QString::fromStdString(request.text));
    const int labelWidthPx =
        PixelsAcross(request.textWidth == 0 ? kPromptDefaultTextWidth : request.textWidth);
    const QRect textRect = m_capMsg->fontMetrics().boundingRect(QRect(0, 0, labelWidthPx, 1 << 20),
                                                                Qt::TextWordWrap, m_capMsg->text());
    PromptFrame frame;
    frame.captionHeight = twipsDown(style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this));
    frame.border = twipsDown(kDialogFramePixels);
    m_layout = LayoutPrompt(request, twipsDown(textRect.height()), frame);
    Place(m_capMsg, m_layout.label);
}

void frmPrompt::Place(QWidget* widget, const TwipsRect& rect) const {
    widget->setGeometry(PixelsAcross(rect.left), PixelsDown(rect.top), PixelsAcross(rect.width),
                        PixelsDown(rect.height));
}

void frmPrompt::MakeControls(const PromptRequest& request) {
    m_picIcon = new QLabel(this);
    m_picIcon->setObjectName("picIcon");
    Place(m_picIcon, m_layout.icon);
    m_picIcon->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    const int iconSize = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    m_picIcon->setPixmap(
        style()->standardIcon(StockIcon(request.iconId), nullptr, this).pixmap(iconSize, iconSize));

    // In the program's design order, which is also the order of the Tab key.
    for (int i = 2; i >= 0; --i) {
        auto* button =
            new QPushButton(QString::fromStdString(request.buttons[static_cast<std::size_t>(i)]), this);
        button->setObjectName(QString("Command(%1)").arg(i));
        button->setAutoDefault(true);
        Place(button, m_layout.buttons[static_cast<std::size_t>(i)]);
        button->setVisible(m_layout.buttonVisible[static_cast<std::size_t>(i)]);
        connect(button, &QPushButton::clicked, this, [this, i] { Press(i); });
        m_command[static_cast<std::size_t>(i)] = button;
    }

    m_check = new QCheckBox(this);
    m_check->setObjectName("Check");
    if (m_layout.checkVisible) {
        m_check->setText(QString::fromStdString(m_layout.checkCaption));
        Place(m_check, m_layout.check);
    }
    m_check->setVisible(m_layout.checkVisible);
}

// Enter presses the safe answer: the rightmost button that closes the dialog
// ("No", "Cancel"), never the leftmost, so that Enter cannot restart the
// computer or overwrite a file. That button has the focus and is the default.
void frmPrompt::FocusSafeButton(const PromptRequest& request) {
    if (const auto safe = SafeAnswer(request);
        safe && m_layout.buttonVisible[static_cast<std::size_t>(*safe)]) {
        QPushButton* button = m_command[static_cast<std::size_t>(*safe)];
        button->setDefault(true);
        button->setFocus();
    }
}

void frmPrompt::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!m_centred) {
        m_centred = true;
        CentreForm(*this, parentWidget() != nullptr ? parentWidget()->window() : nullptr);
    }
}

int frmPrompt::PixelsAcross(int twips) const {
    return static_cast<int>(std::lround(twips * m_dpiX / kTwipsPerInch));
}

int frmPrompt::PixelsDown(int twips) const {
    return static_cast<int>(std::lround(twips * m_dpiY / kTwipsPerInch));
}

void frmPrompt::Press(int index) {
    if (m_prompt.PressButton(index, m_check->isChecked())) {
        accept();
    }
}

void WindowPrompt::Show(const PromptRequest& request) {
    frmPrompt dialog(*this, request, m_parent);
    // A question asked during long work shows the ordinary pointer.
    QGuiApplication::setOverrideCursor(QCursor(Qt::ArrowCursor));
    dialog.exec();
    QGuiApplication::restoreOverrideCursor();
}

void WindowPrompt::ShowHelp(std::string_view keyword) {
    ShowHelpTopic(keyword, m_parent);
}

}  // namespace glyphmoor
