#include "support/ScriptedPrompt.h"

namespace glyphmoor {

void ScriptedPrompt::Show(const PromptRequest& request) {
    m_shown.push_back(request);
    LoadDialog();
    while (!m_answers.empty()) {
        const PromptAnswer answer = m_answers.front();
        m_answers.pop_front();
        if (answer.kind == PromptAnswer::Kind::Escape) {
            return;
        }
        // A hidden button cannot be pressed; the answer is used up all the same.
        const bool visible = answer.index >= 0 && answer.index <= 2 &&
                             !request.buttons[static_cast<std::size_t>(answer.index)].empty();
        if (visible && PressButton(answer.index, answer.ticked)) {
            return;
        }
    }
    ++m_unanswered;
}

}  // namespace glyphmoor
