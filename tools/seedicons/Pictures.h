// The pictures of the default machine's icons and pointers, drawn by code.
#pragma once

#include "Canvas.h"

#include <string>
#include <vector>

namespace glyphmoor::seed {

using Picture = void (*)(Canvas&);

// Every picture by name ("folder", "hard-drive", ...).
struct NamedPicture {
    const char* name;
    Picture draw;
};
const std::vector<NamedPicture>& AllPictures();
Picture PictureNamed(const std::string& name);

// The standard pointers 1 to 15 of the Cursors group, in that order, drawn
// in pixels of a 32-pixel square (white shapes edged in black), with their
// hot spots.
struct PointerPicture {
    const char* name;
    int hotX;
    int hotY;
    Picture draw;
};
const std::vector<PointerPicture>& StandardPointers();

}  // namespace glyphmoor::seed
