// HelpWindow: the shipped help pages in a window of their own, with Contents,
// Back and Forward. One help window at a time; while a modal dialog is open
// it belongs to that dialog, so that it can be read and used beside it.
#pragma once

#include <QWidget>

#include <functional>
#include <string_view>

class QTextBrowser;

namespace glyphmoor {

class HelpWindow final : public QWidget {
    Q_OBJECT
public:
    explicit HelpWindow(QWidget* owner);

    // Shows the page with that file name ("icon-cache.html", an anchor allowed).
    void ShowFile(const QString& file);
    [[nodiscard]] QTextBrowser* Browser() const { return m_browser; }

private:
    QTextBrowser* m_browser = nullptr;
};

// Shows the topic with that key (HelpTopics.h) in the help window, over
// `owner` or the open modal dialog; a key without a topic shows the contents.
// Gives the window shown.
HelpWindow* ShowHelpTopic(std::string_view key, QWidget* owner);

// F1 anywhere in the program while `owner` lives: the topic of the open
// modal dialog when it has one (by its form's name), else `currentKey()`.
void InstallHelpKey(QWidget& owner, std::function<std::string_view()> currentKey);

}  // namespace glyphmoor
