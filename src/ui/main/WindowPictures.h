// WindowPictures: the small pictures of the toolbar, the menus and the page
// bar, drawn in code so that they need no files: flat 16-colour shapes in the
// manner of the default machine's icons.
#pragma once

#include <QIcon>
#include <QImage>

#include <string_view>

namespace glyphmoor {

enum class Picture {
    Open,
    Save,
    Rebuild,
    Restore,
    Favorites,
    Web,
    Themes,
    Email,
    Help,
    About,
    Exit,
    WhatsThis,
    Settings,
    Cursors,
    Desktop,
    Folder,
    Drive,
    Tweak,
};

QIcon WindowPicture(Picture picture, int size = 24);

// The picture drawn at size × size pixels (the program's icon in its
// installed sizes), its shapes scaled rather than its pixels.
QImage WindowPictureImage(Picture picture, int size);

}  // namespace glyphmoor
