// The prompt dialog's layout in twips.
#include "ui/prompt/PromptLayout.h"

#include <gtest/gtest.h>

namespace glyphmoor {
namespace {

PromptRequest LayoutRequest(std::array<std::string, 3> buttons, std::int16_t width = 4200,
                            std::string check = {}) {
    return {"Text", std::move(buttons), 32516, width, std::move(check)};
}

TEST(LayoutPrompt, ShortTextKeepsTheLabelAsTallAsTheIcon) {
    for (int textHeight : {0, 195, 495}) {
        const PromptLayout layout = LayoutPrompt(LayoutRequest({"OK", "", ""}), textHeight);
        EXPECT_EQ(layout.label, (TwipsRect{720, 120, 4200, 495})) << textHeight;
        EXPECT_EQ(layout.dialogHeight, 495 + 950 + 270);
        EXPECT_EQ(layout.buttons[0].top, 495 + 350);
        EXPECT_GT(layout.buttons[0].top, layout.icon.Bottom());
    }
    EXPECT_EQ(LayoutPrompt(LayoutRequest({"OK", "", ""}), 496).label.height, 496);
}

TEST(LayoutPrompt, ButtonsStandByIndexFromTheRight) {
    const PromptLayout layout = LayoutPrompt(LayoutRequest({"OK", "", ""}, 5000), 1200, {300, 45});
    EXPECT_EQ(layout.dialogWidth, 6000);
    EXPECT_EQ(layout.dialogHeight, 1200 + 950 + 300);
    EXPECT_EQ(layout.clientWidth, 6000 - 90);
    EXPECT_EQ(layout.clientHeight, 1200 + 950 - 90);
    EXPECT_EQ(layout.buttons[0], (TwipsRect{6000 - 1325, 1550, 1095, 375}));
    EXPECT_EQ(layout.buttons[1], (TwipsRect{6000 - 1325 - 1210, 1550, 1095, 375}));
    EXPECT_EQ(layout.buttons[2], (TwipsRect{6000 - 1325 - 2420, 1550, 1095, 375}));
    EXPECT_EQ(layout.buttonVisible, (std::array<bool, 3>{true, false, false}));
    EXPECT_FALSE(layout.checkVisible);
    // Every button stays inside the client area.
    EXPECT_LT(layout.buttons[0].Right(), layout.clientWidth);
    EXPECT_LT(layout.buttons[0].Bottom(), layout.clientHeight);
}

TEST(LayoutPrompt, HiddenButtonsLeaveTheOthersInPlace) {
    const PromptLayout all = LayoutPrompt(LayoutRequest({"Cancel", "No", "Yes"}), 600);
    const PromptLayout middleHidden = LayoutPrompt(LayoutRequest({"Cancel", "", "Yes"}), 600);
    EXPECT_EQ(all.buttons, middleHidden.buttons);
    EXPECT_EQ(middleHidden.buttonVisible, (std::array<bool, 3>{true, false, true}));
}

TEST(LayoutPrompt, CheckBoxGrowsTheDialogBy405) {
    const PromptLayout without = LayoutPrompt(LayoutRequest({"&Help", "OK", ""}, 4600), 1800);
    const PromptLayout with =
        LayoutPrompt(LayoutRequest({"&Help", "OK", ""}, 4600, "Do not show this dialog again"), 1800);
    EXPECT_EQ(with.dialogHeight - without.dialogHeight, 405);
    EXPECT_EQ(with.clientHeight - without.clientHeight, 405);
    EXPECT_TRUE(with.checkVisible);
    EXPECT_EQ(with.checkCaption, "&Do not show this dialog again");
    EXPECT_EQ(with.check.left, with.label.left);
    EXPECT_EQ(with.check.top, 1800 + 300);
    EXPECT_EQ(with.buttons[0].top, 1800 + 750);
    EXPECT_EQ(with.buttons[0].left, without.buttons[0].left);
    EXPECT_LT(with.check.Bottom(), with.buttons[0].top);
}

}  // namespace
}  // namespace glyphmoor
