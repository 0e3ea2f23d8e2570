#include "ui/help/HelpWindow.h"

#include "foundation/InstallPaths.h"
#include "ui/help/HelpTopics.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <string>

namespace glyphmoor {

namespace {

class HelpKey final : public QObject {
public:
    HelpKey(QWidget& owner, std::function<std::string_view()> currentKey)
        : QObject(&owner), m_owner(owner), m_currentKey(std::move(currentKey)) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1 ||
            static_cast<QKeyEvent*>(event)->modifiers() != Qt::NoModifier) {
            return QObject::eventFilter(watched, event);
        }
        const QWidget* modal = QApplication::activeModalWidget();
        const std::string name = modal != nullptr ? modal->objectName().toStdString() : std::string();
        ShowHelpTopic(HelpTopicFile(name) ? std::string_view(name) : m_currentKey(), &m_owner);
        return true;
    }

private:
    QWidget& m_owner;
    std::function<std::string_view()> m_currentKey;
};

QPointer<HelpWindow>& OpenWindow() {
    static QPointer<HelpWindow> window;
    return window;
}

}  // namespace

HelpWindow::HelpWindow(QWidget* owner) : QWidget(owner, Qt::Window) {
    setObjectName(QStringLiteral("HelpWindow"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Glyphmoor Help"));
    m_browser = new QTextBrowser(this);
    m_browser->setObjectName(QStringLiteral("txtHelp"));
    m_browser->setOpenExternalLinks(true);
    m_browser->setSearchPaths({QString::fromStdString(HelpDir().string())});

    auto* contents = new QPushButton(QStringLiteral("&Contents"), this);
    contents->setObjectName(QStringLiteral("cmdContents"));
    auto* back = new QPushButton(QStringLiteral("&Back"), this);
    back->setObjectName(QStringLiteral("cmdBack"));
    back->setEnabled(false);
    auto* forward = new QPushButton(QStringLiteral("&Forward"), this);
    forward->setObjectName(QStringLiteral("cmdForward"));
    forward->setEnabled(false);
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("cmdClose"));
    connect(contents, &QPushButton::clicked, this, [this] { ShowFile(QStringLiteral("index.html")); });
    connect(back, &QPushButton::clicked, m_browser, &QTextBrowser::backward);
    connect(forward, &QPushButton::clicked, m_browser, &QTextBrowser::forward);
    connect(m_browser, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
    connect(m_browser, &QTextBrowser::forwardAvailable, forward, &QPushButton::setEnabled);
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    connect(m_browser, &QTextBrowser::sourceChanged, this,
            [this] { setWindowTitle(QStringLiteral("Glyphmoor Help - ") + m_browser->documentTitle()); });

    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {contents, back, forward}) {
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(m_browser, 1);
    resize(640, 520);
}

void HelpWindow::ShowFile(const QString& file) {
    m_browser->setSource(QUrl(file));
}

HelpWindow* ShowHelpTopic(std::string_view key, QWidget* owner) {
    QWidget* modal = QApplication::activeModalWidget();
    QWidget* parent = modal != nullptr ? modal : owner;
    QPointer<HelpWindow>& window = OpenWindow();
    if (window != nullptr && window->parentWidget() != parent) {
        delete window.data();
    }
    if (window == nullptr) {
        window = new HelpWindow(parent);
    }
    const std::string_view file = HelpTopicFile(key).value_or("index.html");
    window->ShowFile(QString::fromUtf8(file.data(), static_cast<qsizetype>(file.size())));
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

void InstallHelpKey(QWidget& owner, std::function<std::string_view()> currentKey) {
    qApp->installEventFilter(new HelpKey(owner, std::move(currentKey)));
}

}  // namespace glyphmoor
