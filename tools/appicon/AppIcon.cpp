// glyphmoor-app-icon DIR: draws the program's icon (the window's own picture)
// into DIR/NxN/apps/glyphmoor.png for each size desktops look for.
#include "ui/main/WindowPictures.h"

#include <QDir>
#include <QGuiApplication>

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: glyphmoor-app-icon DIR\n";
        return EXIT_FAILURE;
    }
    // Drawing needs no screen.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QString dir = QString::fromLocal8Bit(argv[1]);
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString folder = QStringLiteral("%1/%2x%2/apps").arg(dir).arg(size);
        const QImage image = glyphmoor::WindowPictureImage(glyphmoor::Picture::Desktop, size);
        if (!QDir().mkpath(folder) || !image.save(folder + QStringLiteral("/glyphmoor.png"))) {
            std::cerr << "glyphmoor-app-icon: cannot write " << folder.toStdString() << "/glyphmoor.png\n";
            return EXIT_FAILURE;
        }
    }
    return EXIT_SUCCESS;
}
