// frmPrompt: the program's message dialog, and WindowPrompt, the prompt of
// the window, which shows each message in a new frmPrompt, modally.
//
// The dialog lays itself out by LayoutPrompt's rules, in twips turned into
// pixels at the screen's resolution (15 twips a pixel at 96 dpi). Its
// controls are named as the program names them: picIcon, Command(0) to
// Command(2) (Command(0) the rightmost), Check and capMsg. The focus starts
// on the leftmost visible button, which Enter presses while the focus is not
// on another button. Escape and the close box close it without an answer.
#pragma once

#include "prompts/Prompt.h"
#include "ui/prompt/PromptLayout.h"

#include <QDialog>
#include <array>

class QCheckBox;
class QLabel;
class QPushButton;

namespace glyphmoor {

class frmPrompt final : public QDialog {
    Q_OBJECT

public:
    // Loads the dialog for one request of the prompt (its PromptResult
    // becomes 4) and places it centred over parent.
    frmPrompt(Prompt& prompt, const PromptRequest& request, QWidget* parent = nullptr);

    // The layout, in twips, that the dialog was given.
    [[nodiscard]] const PromptLayout& Layout() const { return m_layout; }
    // Twips in pixels of this screen, across and down.
    [[nodiscard]] int PixelsAcross(int twips) const;
    [[nodiscard]] int PixelsDown(int twips) const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    // The label, measured, and the layout of the whole dialog.
    void LayOut(const PromptRequest& request);
    // The icon, the three buttons and the check box, where the layout puts them.
    void MakeControls(const PromptRequest& request);
    void FocusSafeButton(const PromptRequest& request);
    void Place(QWidget* widget, const TwipsRect& rect) const;
    void Press(int index);

    Prompt& m_prompt;
    PromptLayout m_layout;
    double m_dpiX = 96.0;
    double m_dpiY = 96.0;
    QLabel* m_picIcon = nullptr;
    std::array<QPushButton*, 3> m_command{};
    QCheckBox* m_check = nullptr;
    QLabel* m_capMsg = nullptr;
    bool m_centred = false;
};

class WindowPrompt final : public Prompt {
public:
    // Dialogs are centred over parent (the main window), or on the screen.
    WindowPrompt(System& system, std::string helpFile, QWidget* parent = nullptr)
        : Prompt(system, std::move(helpFile)), m_parent(parent) {}

protected:
    void Show(const PromptRequest& request) override;
    // The program's own help, beside the message.
    void ShowHelp(std::string_view keyword) override;

private:
    QWidget* m_parent;
};

}  // namespace glyphmoor
