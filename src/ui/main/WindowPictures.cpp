#include "ui/main/WindowPictures.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace glyphmoor {

namespace {

// The sixteen-colour palette's colours the pictures use.
const QColor kNavy(0, 0, 128);
const QColor kTeal(0, 128, 128);
const QColor kYellow(255, 255, 0);
const QColor kOlive(128, 128, 0);
const QColor kGrey(192, 192, 192);
const QColor kDarkGrey(128, 128, 128);
const QColor kRed(128, 0, 0);
const QColor kGreen(0, 128, 0);
const QColor kBlue(0, 0, 255);

void FolderShape(QPainter& p, bool open) {
    p.setBrush(kOlive);
    p.drawRect(3, 7, 7, 3);
    p.setBrush(kYellow);
    if (open) {
        p.drawPolygon(QPolygon({QPoint(3, 10), QPoint(20, 10), QPoint(17, 20), QPoint(3, 20)}));
    } else {
        p.drawRect(3, 9, 18, 11);
    }
}

void Monitor(QPainter& p) {
    p.setBrush(kGrey);
    p.drawRect(3, 3, 18, 14);
    p.setBrush(kTeal);
    p.drawRect(5, 5, 14, 10);
    p.setBrush(kGrey);
    p.drawRect(8, 18, 8, 3);
}

void Letter(QPainter& p, const QString& text, const QColor& colour) {
    QFont font = p.font();
    font.setBold(true);
    font.setPixelSize(14);
    p.setFont(font);
    p.setPen(colour);
    p.drawText(QRect(0, 0, 24, 24), Qt::AlignCenter, text);
}

void Save(QPainter& p) {
    p.setBrush(kNavy);
    p.drawRect(3, 3, 18, 18);
    p.setBrush(Qt::white);
    p.drawRect(6, 3, 12, 7);
    p.setBrush(kGrey);
    p.drawRect(7, 14, 10, 7);
}

// The monitor with a round arrow: yellow for the rebuild, white for restoring.
void MonitorWithArrow(QPainter& p, const QColor& arrow) {
    Monitor(p);
    p.setPen(QPen(arrow, 2));
    p.setBrush(Qt::NoBrush);
    p.drawArc(8, 6, 8, 8, 30 * 16, 300 * 16);
}

void Star(QPainter& p) {
    QPainterPath star;
    star.moveTo(12, 2);
    for (const QPoint point : {QPoint(15, 9), QPoint(22, 9), QPoint(16, 14), QPoint(18, 21), QPoint(12, 17),
                               QPoint(6, 21), QPoint(8, 14), QPoint(2, 9), QPoint(9, 9)}) {
        star.lineTo(point);
    }
    star.closeSubpath();
    p.setBrush(kYellow);
    p.drawPath(star);
}

void Globe(QPainter& p) {
    p.setBrush(kBlue);
    p.drawEllipse(3, 3, 18, 18);
    p.setBrush(kGreen);
    p.drawEllipse(6, 7, 7, 6);
    p.drawEllipse(13, 13, 5, 5);
}

void Landscape(QPainter& p) {
    p.setBrush(kTeal);
    p.drawRect(2, 2, 20, 20);
    p.setBrush(kYellow);
    p.drawEllipse(5, 5, 6, 6);
    p.setBrush(kGreen);
    p.drawPolygon(QPolygon({QPoint(2, 22), QPoint(10, 12), QPoint(16, 18), QPoint(22, 12), QPoint(22, 22)}));
}

void Envelope(QPainter& p) {
    p.setBrush(Qt::white);
    p.drawRect(2, 6, 20, 13);
    p.drawPolyline(QPolygon({QPoint(2, 6), QPoint(12, 13), QPoint(22, 6)}));
}

// A coloured disc with a white letter: help, what's this, about.
void Badge(QPainter& p, const QColor& colour, const QString& letter) {
    p.setBrush(colour);
    p.drawEllipse(2, 2, 20, 20);
    Letter(p, letter, Qt::white);
}

void Door(QPainter& p) {
    p.setBrush(kRed);
    p.drawRect(5, 2, 12, 20);
    p.setBrush(kYellow);
    p.drawEllipse(13, 11, 2, 2);
}

void Gear(QPainter& p) {
    p.setBrush(kDarkGrey);
    p.drawEllipse(4, 4, 16, 16);
    p.setBrush(kGrey);
    p.drawEllipse(9, 9, 6, 6);
}

void Arrow(QPainter& p) {
    p.setBrush(Qt::white);
    p.drawPolygon(QPolygon({QPoint(6, 2), QPoint(6, 19), QPoint(10, 15), QPoint(13, 22), QPoint(15, 21),
                            QPoint(12, 14), QPoint(17, 14)}));
}

void Drive(QPainter& p) {
    p.setBrush(kGrey);
    p.drawRect(2, 8, 20, 9);
    p.setBrush(kGreen);
    p.drawRect(17, 13, 2, 2);
}

void Draw(QPainter& p, Picture picture) {
    p.setPen(QPen(Qt::black, 1));
    switch (picture) {
        case Picture::Open:
        case Picture::Folder:
            return FolderShape(p, picture == Picture::Open);
        case Picture::Save:
            return Save(p);
        case Picture::Rebuild:
            return MonitorWithArrow(p, kYellow);
        case Picture::Restore:
            return MonitorWithArrow(p, Qt::white);
        case Picture::Desktop:
            return Monitor(p);
        case Picture::Favorites:
            return Star(p);
        case Picture::Web:
            return Globe(p);
        case Picture::Themes:
            return Landscape(p);
        case Picture::Email:
            return Envelope(p);
        case Picture::Help:
            return Badge(p, kNavy, QStringLiteral("?"));
        case Picture::WhatsThis:
            return Badge(p, kTeal, QStringLiteral("?"));
        case Picture::About:
            return Badge(p, kBlue, QStringLiteral("i"));
        case Picture::Exit:
            return Door(p);
        case Picture::Settings:
        case Picture::Tweak:
            return Gear(p);
        case Picture::Cursors:
            return Arrow(p);
        case Picture::Drive:
            return Drive(p);
    }
}

}  // namespace

QIcon WindowPicture(Picture picture, int size) {
    QPixmap pixmap(24, 24);
    pixmap.fill(Qt::transparent);
    {
        QPainter painter(&pixmap);
        Draw(painter, picture);
    }
    return QIcon(size == 24 ? pixmap
                            : pixmap.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

QImage WindowPictureImage(Picture picture, int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, size > 24);
    painter.scale(size / 24.0, size / 24.0);
    Draw(painter, picture);
    return image;
}

}  // namespace glyphmoor
