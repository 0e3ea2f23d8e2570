// UserPrompt: how the window asks a question or gives a notice.
//
// Every question of the window goes through this one call, so that the
// program's message dialog can take its place in one spot, and tests can
// answer from a script. Buttons are numbered as the program numbers its
// answers: index 0 is the rightmost button.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class QWidget;

namespace glyphmoor {

enum class AskIcon { None, Stop, Question, Exclamation, Information };

class UserPrompt {
public:
    virtual ~UserPrompt() = default;
    UserPrompt() = default;
    UserPrompt(const UserPrompt&) = delete;
    UserPrompt& operator=(const UserPrompt&) = delete;

    // Shows `text` with the buttons (index 0 rightmost) and gives the index
    // of the one pressed, or -1 when the dialog was closed without one.
    virtual int Ask(std::string_view text, const std::vector<std::string>& buttons, AskIcon icon) = 0;
};

// The window's prompt: a modal message box over `parent`.
class MessageBoxPrompt final : public UserPrompt {
public:
    explicit MessageBoxPrompt(QWidget* parent) : m_parent(parent) {}
    int Ask(std::string_view text, const std::vector<std::string>& buttons, AskIcon icon) override;

private:
    QWidget* m_parent;
};

}  // namespace glyphmoor
