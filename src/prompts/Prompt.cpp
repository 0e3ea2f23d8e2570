#include "prompts/Prompt.h"

namespace glyphmoor {

namespace {

struct HelpKeyword {
    std::string_view start;  // the message's first ten characters
    std::string_view keyword;
};

constexpr std::array<HelpKeyword, 3> kHelpKeywords = {{
    {"Lumenvarde", "Icon Cache"},
    {"Hiding Net", "Hide, Network Neighborhood"},
    {"The progra", "Introduction, Explorer"},
}};

}  // namespace

std::optional<std::string_view> HelpKeywordFor(std::string_view messageText) {
    const std::string_view start = messageText.substr(0, 10);
    for (const auto& entry : kHelpKeywords) {
        if (start == entry.start) {
            return entry.keyword;
        }
    }
    return std::nullopt;
}

std::vector<std::string_view> HelpKeywords() {
    std::vector<std::string_view> keywords;
    for (const auto& entry : kHelpKeywords) {
        keywords.push_back(entry.keyword);
    }
    return keywords;
}

void Prompt::ShowHelp(std::string_view keyword) {
    m_system.OpenHelp(m_helpFile, kHelpPartialKey, keyword);
}

std::int16_t Prompt::ShowPrompt(std::string_view left, std::string_view middle, std::string_view right,
                                std::int16_t iconId, std::int16_t textWidth, std::string_view checkText) {
    m_promptButtons = {std::string(right), std::string(middle), std::string(left)};
    m_promptIconId = std::to_string(iconId);

    PromptRequest request;
    request.text = m_promptText;
    request.buttons = m_promptButtons;
    request.iconId = iconId;
    request.textWidth = textWidth == 0 ? kPromptDefaultTextWidth : textWidth;
    request.checkText = std::string(checkText);
    Show(request);
    return m_promptResult;
}

bool Prompt::PressButton(int index, bool ticked) {
    if (index < 0 || index > 2) {
        return false;
    }
    m_promptResult = static_cast<std::int16_t>(index);
    m_promptDontShowAgain = ticked;
    const std::string& caption = m_promptButtons[static_cast<std::size_t>(index)];
    if (caption == kSettingsCaption) {
        m_system.RunProgram(kDisplaySettingsCommand, kSwShowMinimized);
        return false;
    }
    if (caption == kHelpCaption) {
        if (auto keyword = HelpKeywordFor(m_promptText)) {
            ShowHelp(*keyword);
        }
        return false;
    }
    return true;
}

}  // namespace glyphmoor
