// Prompt: the one message dialog of the program, as an interface.
//
// Every question and notice goes through ShowPrompt. The window shows it as
// frmPrompt; tests answer it from a script (ScriptedPrompt); "/a" and the
// command line answer it without showing anything (SilentPrompt). What a
// button press does (the result, the check box, "&Settings..." and "&Help"
// keeping the dialog open) is decided here, once, for all of them.
#pragma once

#include "foundation/System.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace glyphmoor {

// The stock icons a prompt shows, by their Windows ids (LoadIconA, no module).
enum class PromptIcon : std::int16_t {
    Stop = 32513,         // IDI_HAND: errors the user must fix
    Question = 32514,     // IDI_QUESTION: confirmations
    Exclamation = 32515,  // IDI_EXCLAMATION: warnings
    Information = 32516,  // IDI_ASTERISK: notices
};

// PromptResult when the dialog closed without a button.
inline constexpr std::int16_t kPromptNoButton = 4;
// The message label's width in twips when ShowPrompt is given 0.
inline constexpr std::int16_t kPromptDefaultTextWidth = 4200;

// The captions of the two buttons that act and leave the dialog open.
inline constexpr std::string_view kSettingsCaption = "&Settings...";
inline constexpr std::string_view kHelpCaption = "&Help";
// What "&Settings..." starts: the display control panel at its settings page.
inline constexpr std::string_view kDisplaySettingsCommand =
    "rundll32.exe shell32.dll,Control_RunDLL desk.cpl,,3";

// Everything one ShowPrompt call shows.
struct PromptRequest {
    std::string text;
    // Command(0) to Command(2): index 0 is the rightmost button, 2 the
    // leftmost; an empty caption hides that button.
    std::array<std::string, 3> buttons;
    std::int16_t iconId = 0;
    // Width of the message label in twips, never 0 (0 was made 4200).
    std::int16_t textWidth = kPromptDefaultTextWidth;
    // The check box's caption without its access-key mark; empty: no box.
    std::string checkText;

    friend bool operator==(const PromptRequest&, const PromptRequest&) = default;
};

// The help keyword a message's "&Help" button looks up: by the first ten
// characters of the message's text. Nothing for any other message, which is
// how the shell-notified notice behaves: its "&Help" opens nothing.
std::optional<std::string_view> HelpKeywordFor(std::string_view messageText);
// Every keyword HelpKeywordFor gives, for the help that must answer them.
std::vector<std::string_view> HelpKeywords();

class Prompt {
public:
    // The system seam and the help file serve "&Settings..." and "&Help".
    Prompt(System& system, std::string helpFile) : m_system(system), m_helpFile(std::move(helpFile)) {}
    virtual ~Prompt() = default;
    Prompt(const Prompt&) = delete;
    Prompt& operator=(const Prompt&) = delete;

    // The message the next ShowPrompt shows.
    void SetPromptText(std::string text) { m_promptText = std::move(text); }
    [[nodiscard]] const std::string& PromptText() const { return m_promptText; }

    // Shows PromptText modally with the captions left (Command(2)), middle
    // (Command(1)) and right (Command(0)), an icon id, a label width in twips
    // (0 means 4200) and the check box text (empty: no check box), and gives
    // PromptResult when the dialog has closed.
    std::int16_t ShowPrompt(std::string_view left, std::string_view middle, std::string_view right,
                            std::int16_t iconId, std::int16_t textWidth, std::string_view checkText);

    // The captions and icon of the last ShowPrompt, as the dialog reads them.
    [[nodiscard]] const std::array<std::string, 3>& PromptButtons() const { return m_promptButtons; }
    [[nodiscard]] const std::string& PromptIconId() const { return m_promptIconId; }
    // The index of the last button pressed; 4 when the dialog closed without one.
    [[nodiscard]] std::int16_t PromptResult() const { return m_promptResult; }
    // The check box at the last button press, of this message or an earlier one.
    [[nodiscard]] bool PromptDontShowAgain() const { return m_promptDontShowAgain; }

    // The dialog's events, for implementations. LoadDialog when the dialog
    // is created; PressButton when button `index` is pressed with the check
    // box in state `ticked`: true when the dialog is to close (false after
    // "&Settings..." and "&Help", which act and leave it open). Escape and
    // the close box close the dialog without an event: nothing changes.
    void LoadDialog() { m_promptResult = kPromptNoButton; }
    bool PressButton(int index, bool ticked);

protected:
    // Shows the dialog for the request and returns when it has closed. The
    // implementation calls LoadDialog first, then PressButton for each press.
    virtual void Show(const PromptRequest& request) = 0;
    // "&Help" on a message with a help keyword: the help file opened at the
    // keyword through the system (WinHelp). The window shows its own help.
    virtual void ShowHelp(std::string_view keyword);

private:
    System& m_system;
    std::string m_helpFile;
    std::string m_promptText;
    std::array<std::string, 3> m_promptButtons;
    std::string m_promptIconId;
    std::int16_t m_promptResult = kPromptNoButton;
    bool m_promptDontShowAgain = false;
};

}  // namespace glyphmoor
