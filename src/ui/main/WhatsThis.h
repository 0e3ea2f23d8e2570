// WhatsThis: the text What's This? shows for each control of the main
// window and each of its commands, by the control's name or the command's key.
#pragma once

#include <QString>

#include <string_view>

class QWidget;

namespace glyphmoor {

// The text for a control's name or a command's key ("cmdApply",
// "mnuTools(4)"); empty for a name without one.
QString WhatsThisText(std::string_view name);

// Gives every named control under `window` its text.
void SetWhatsThisTexts(QWidget& window);

}  // namespace glyphmoor
