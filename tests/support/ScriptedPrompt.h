// ScriptedPrompt: a prompt that shows nothing and answers from a script, as a
// person at the dialog would: button presses (with the check box ticked or
// not) and Escape. It keeps every request it was shown, for tests.
#pragma once

#include "prompts/Prompt.h"

#include <cstddef>
#include <deque>
#include <initializer_list>
#include <vector>

namespace glyphmoor {

struct PromptAnswer {
    enum class Kind { Press, Escape };
    Kind kind = Kind::Escape;
    int index = 0;
    bool ticked = false;

    // Presses Command(index) with the check box ticked or not.
    static PromptAnswer Press(int index, bool ticked = false) { return {Kind::Press, index, ticked}; }
    // Escape, or the close box: the dialog closes, nothing else changes.
    static PromptAnswer Escape() { return {Kind::Escape, 0, false}; }
};

class ScriptedPrompt final : public Prompt {
public:
    ScriptedPrompt(System& system, std::string helpFile, std::initializer_list<PromptAnswer> answers = {})
        : Prompt(system, std::move(helpFile)), m_answers(answers) {}

    // Adds answers after those not used yet.
    void Answer(std::initializer_list<PromptAnswer> answers) { m_answers.insert(m_answers.end(), answers); }

    // Every request shown so far, in order.
    [[nodiscard]] const std::vector<PromptRequest>& Shown() const { return m_shown; }
    // Answers not used yet.
    [[nodiscard]] std::size_t AnswersLeft() const { return m_answers.size(); }
    // Dialogs still open when the script ran out; each was closed as by Escape.
    [[nodiscard]] std::size_t Unanswered() const { return m_unanswered; }

protected:
    void Show(const PromptRequest& request) override;

private:
    std::deque<PromptAnswer> m_answers;
    std::vector<PromptRequest> m_shown;
    std::size_t m_unanswered = 0;
};

}  // namespace glyphmoor
