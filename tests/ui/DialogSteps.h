// Steps of the Qt tests of dialogs: acting on a modal dialog as soon as it
// shows, and screenshots to $GLYPHMOOR_SCREENSHOT_DIR when it is set.
#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <QtTest>

#include <filesystem>

namespace glyphmoor::test {

// Runs `step` on the modal dialog of type T as soon as it is shown.
template <typename T, typename Step>
void WhenShown(Step step) {
    QTimer::singleShot(0, [step] {
        auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget());
        QVERIFY2(dialog != nullptr, "the dialog did not open");
        step(dialog);
    });
}

// Saves a picture of `widget` as NAME.png when $GLYPHMOOR_SCREENSHOT_DIR is set.
inline void Screenshot(QWidget& widget, const QString& name) {
    const QString dir = qEnvironmentVariable("GLYPHMOOR_SCREENSHOT_DIR");
    if (!dir.isEmpty()) {
        std::filesystem::create_directories(dir.toStdString());
        QVERIFY(widget.grab().save(dir + QStringLiteral("/") + name + QStringLiteral(".png")));
    }
}

}  // namespace glyphmoor::test
