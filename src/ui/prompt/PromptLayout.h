// PromptLayout: where frmPrompt puts its controls, in twips (1440 an inch,
// 15 a pixel on a 96-dpi screen), by the dialog's own sizing rules.
//
// The text's height is measured by whoever draws it; everything else follows
// from the request. Control positions are inside the dialog's client area, as
// the program places them; the dialog's width and height are its outer size,
// frame and caption bar included, as the program sizes the window.
#pragma once

#include "prompts/Prompt.h"

#include <array>
#include <string>

namespace glyphmoor {

struct TwipsRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] int Right() const { return left + width; }
    [[nodiscard]] int Bottom() const { return top + height; }
    friend bool operator==(const TwipsRect&, const TwipsRect&) = default;
};

// The picture box of the icon.
inline constexpr TwipsRect kPromptIconBox = {120, 120, 495, 495};
// The message label's top left corner, beside the icon.
inline constexpr int kPromptLabelLeft = 720;
inline constexpr int kPromptLabelTop = 120;
// The label is never shorter than the icon.
inline constexpr int kPromptMinLabelHeight = 495;
inline constexpr int kPromptButtonWidth = 1095;
inline constexpr int kPromptButtonHeight = 375;
inline constexpr int kPromptCheckHeight = 255;

// What the platform's window frame takes, in twips.
struct PromptFrame {
    // The caption bar: GetSystemMetrics(SM_CYCAPTION) pixels in twips.
    int captionHeight = 270;
    // One side of the dialog frame (3 pixels on Windows 95, 98 and NT 4.0).
    int border = 45;
};

struct PromptLayout {
    TwipsRect icon = kPromptIconBox;
    TwipsRect label;
    // Outer size, frame and caption bar included.
    int dialogWidth = 0;
    int dialogHeight = 0;
    // The client area the controls sit in.
    int clientWidth = 0;
    int clientHeight = 0;
    bool checkVisible = false;
    TwipsRect check;
    // "&" and the check text.
    std::string checkCaption;
    // By index: Command(0) is the rightmost.
    std::array<TwipsRect, 3> buttons;
    std::array<bool, 3> buttonVisible{};
};

// Lays the dialog out for a request whose text, word-wrapped at
// request.textWidth twips, needs textHeight twips.
//
// Each button keeps the place of its index whether the others show or not,
// so a one-button notice has its button at the far right. With a check box
// the dialog grows by 135 for each of the three buttons, 405 in all: more
// room than the box needs, kept as the program has always had it.
PromptLayout LayoutPrompt(const PromptRequest& request, int textHeight, const PromptFrame& frame = {});

}  // namespace glyphmoor
