// CentreForm: the program's one routine that places a form before it shows:
// centred over the window it belongs to, or on the screen when it has none.
#pragma once

class QWidget;

namespace glyphmoor {

void CentreForm(QWidget& form, const QWidget* over);

}  // namespace glyphmoor
