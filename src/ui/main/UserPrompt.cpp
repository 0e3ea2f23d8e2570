#include "ui/main/UserPrompt.h"

#include <QMessageBox>
#include <QPushButton>

namespace glyphmoor {

int MessageBoxPrompt::Ask(std::string_view text, const std::vector<std::string>& buttons, AskIcon icon) {
    QMessageBox box(m_parent);
    box.setWindowTitle(QStringLiteral("Glyphmoor"));
    box.setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    switch (icon) {
        case AskIcon::Stop:
            box.setIcon(QMessageBox::Critical);
            break;
        case AskIcon::Question:
            box.setIcon(QMessageBox::Question);
            break;
        case AskIcon::Exclamation:
            box.setIcon(QMessageBox::Warning);
            break;
        case AskIcon::Information:
            box.setIcon(QMessageBox::Information);
            break;
        case AskIcon::None:
            break;
    }
    // Added left to right: the last index is the leftmost button.
    std::vector<QPushButton*> pushed(buttons.size(), nullptr);
    for (std::size_t i = buttons.size(); i-- > 0;) {
        pushed[i] = box.addButton(QString::fromStdString(buttons[i]), QMessageBox::ActionRole);
    }
    box.exec();
    for (std::size_t i = 0; i < pushed.size(); ++i) {
        if (box.clickedButton() == pushed[i]) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

}  // namespace glyphmoor
