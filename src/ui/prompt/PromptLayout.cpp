#include "ui/prompt/PromptLayout.h"

namespace glyphmoor {

PromptLayout LayoutPrompt(const PromptRequest& request, int textHeight, const PromptFrame& frame) {
    PromptLayout layout;
    const int labelWidth = request.textWidth == 0 ? kPromptDefaultTextWidth : request.textWidth;
    const int labelHeight = textHeight <= kPromptMinLabelHeight ? kPromptMinLabelHeight : textHeight;
    layout.label = {kPromptLabelLeft, kPromptLabelTop, labelWidth, labelHeight};
    layout.dialogHeight = labelHeight + 950 + frame.captionHeight;
    layout.dialogWidth = labelWidth + 1000;

    const bool hasCheck = !request.checkText.empty();
    layout.checkVisible = hasCheck;
    if (hasCheck) {
        layout.check = {layout.label.left, labelHeight + 300, labelWidth, kPromptCheckHeight};
        layout.checkCaption = "&" + request.checkText;
    }
    for (std::size_t i = 0; i < 3; ++i) {
        TwipsRect& button = layout.buttons[i];
        button.left = i == 0 ? layout.dialogWidth - 1325 : layout.buttons[i - 1].left - 1210;
        if (hasCheck) {
            button.top = layout.check.top + 450;
            layout.dialogHeight += 135;
        } else {
            button.top = labelHeight + 350;
        }
        button.width = kPromptButtonWidth;
        button.height = kPromptButtonHeight;
        layout.buttonVisible[i] = !request.buttons[i].empty();
    }
    layout.clientWidth = layout.dialogWidth - 2 * frame.border;
    layout.clientHeight = layout.dialogHeight - frame.captionHeight - 2 * frame.border;
    return layout;
}

}  // namespace glyphmoor
