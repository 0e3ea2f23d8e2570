// BusyPointer: the busy pointer over every window of the program while long
// work runs (the first catalogue build, Apply, opening a large library). It
// shows when made and the previous pointer comes back when it goes; questions
// asked meanwhile show the ordinary pointer (frmPrompt).
#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace glyphmoor {

class BusyPointer {
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor)); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

}  // namespace glyphmoor
