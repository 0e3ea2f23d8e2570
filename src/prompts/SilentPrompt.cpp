#include "prompts/SilentPrompt.h"

namespace glyphmoor {

std::optional<int> SafeAnswer(const PromptRequest& request) {
    for (int index = 0; index <= 2; ++index) {
        const std::string& caption = request.buttons[static_cast<std::size_t>(index)];
        if (!caption.empty() && caption != kHelpCaption && caption != kSettingsCaption) {
            return index;
        }
    }
    return std::nullopt;
}

void SilentPrompt::Show(const PromptRequest& request) {
    m_answered.push_back(request.text);
    LoadDialog();
    if (auto index = SafeAnswer(request)) {
        PressButton(*index, false);
    }
}

}  // namespace glyphmoor
