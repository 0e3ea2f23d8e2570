#include "ui/CentreForm.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace glyphmoor {

void CentreForm(QWidget& form, const QWidget* over) {
    QRect area;
    if (over != nullptr && over->isWindow()) {
        area = over->frameGeometry();
    } else if (over != nullptr) {
        area = QRect(over->mapToGlobal(QPoint(0, 0)), over->size());
    } else if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        area = screen->availableGeometry();
    } else {
        return;
    }
    const QSize size = form.frameGeometry().size().expandedTo(form.size());
    form.move(area.x() + (area.width() - size.width()) / 2, area.y() + (area.height() - size.height()) / 2);
}

}  // namespace glyphmoor
