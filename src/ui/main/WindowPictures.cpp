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

void Draw(QPainter& p, Picture picture) {
    p.setPen(QPen(Qt::black, 1));
    switch (picture) {
        case Picture::Open:
            FolderShape(p, true);
            break;
        case Picture::Folder:
            FolderShape(p, false);
            break;
        case Picture::Save:
            p.setBrush(kNavy);
            p.drawRect(3, 3, 18, 18);
            p.setBrush(Qt::white);
            p.drawRect(6, 3, 12, 7);
            p.setBrush(kGrey);
            p.drawRect(7, 14, 10, 7);
            break;
        case Picture::Rebuild:
        case Picture::Restore:
            Monitor(p);
            p.setPen(QPen(picture == Picture::Rebuild ? kYellow : Qt::white, 2));
            p.setBrush(Qt::NoBrush);
            p.drawArc(8, 6, 8, 8, 30 * 16, 300 * 16);
            break;
        case Picture::Desktop:
            Monitor(p);
            break;
        case Picture::Favorites: {
            QPainterPath star;
            star.moveTo(12, 2);
            star.lineTo(15, 9);
            star.lineTo(22, 9);
            star.lineTo(16, 14);
            star.lineTo(18, 21);
            star.lineTo(12, 17);
            star.lineTo(6, 21);
            star.lineTo(8, 14);
            star.lineTo(2, 9);
            star.lineTo(9, 9);
            star.closeSubpath();
            p.setBrush(kYellow);
            p.drawPath(star);
            break;
        }
        case Picture::Web:
            p.setBrush(kBlue);
            p.drawEllipse(3, 3, 18, 18);
            p.setBrush(kGreen);
            p.drawEllipse(6, 7, 7, 6);
            p.drawEllipse(13, 13, 5, 5);
            break;
        case Picture::Themes:
            p.setBrush(kTeal);
            p.drawRect(2, 2, 20, 20);
            p.setBrush(kYellow);
            p.drawEllipse(5, 5, 6, 6);
            p.setBrush(kGreen);
            p.drawPolygon(
                QPolygon({QPoint(2, 22), QPoint(10, 12), QPoint(16, 18), QPoint(22, 12), QPoint(22, 22)}));
            break;
        case Picture::Email:
            p.setBrush(Qt::white);
            p.drawRect(2, 6, 20, 13);
            p.drawPolyline(QPolygon({QPoint(2, 6), QPoint(12, 13), QPoint(22, 6)}));
            break;
        case Picture::Help:
        case Picture::WhatsThis:
            p.setBrush(picture == Picture::Help ? kNavy : kTeal);
            p.drawEllipse(2, 2, 20, 20);
            Letter(p, QStringLiteral("?"), Qt::white);
            break;
        case Picture::About:
            p.setBrush(kBlue);
            p.drawEllipse(2, 2, 20, 20);
            Letter(p, QStringLiteral("i"), Qt::white);
            break;
        case Picture::Exit:
            p.setBrush(kRed);
            p.drawRect(5, 2, 12, 20);
            p.setBrush(kYellow);
            p.drawEllipse(13, 11, 2, 2);
            break;
        case Picture::Settings:
        case Picture::Tweak:
            p.setBrush(kDarkGrey);
            p.drawEllipse(4, 4, 16, 16);
            p.setBrush(kGrey);
            p.drawEllipse(9, 9, 6, 6);
            break;
        case Picture::Cursors:
            p.setBrush(Qt::white);
            p.drawPolygon(QPolygon({QPoint(6, 2), QPoint(6, 19), QPoint(10, 15), QPoint(13, 22),
                                    QPoint(15, 21), QPoint(12, 14), QPoint(17, 14)}));
            break;
        case Picture::Drive:
            p.setBrush(kGrey);
            p.drawRect(2, 8, 20, 9);
            p.setBrush(kGreen);
            p.drawRect(17, 13, 2, 2);
            break;
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

}  // namespace glyphmoor
