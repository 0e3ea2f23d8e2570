// Writing resource-only executables: a PE file with one .rsrc section and no
// code, which Windows loads as data (LoadLibraryEx with
// LOAD_LIBRARY_AS_DATAFILE) and whose icons ExtractIcon finds. The build makes
// the default machine's icon libraries with it.
#pragma once

#include "iconfiles/ResourceId.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace glyphmoor {

class cFileIcon;

struct RawResource {
    ResourceId type;
    ResourceId name;
    std::vector<std::byte> data;
    std::uint16_t language = 0x0409;  // English (United States)
};

struct PeLayout {
    bool pe32Plus = false;  // a 64-bit (PE32+) file instead of a 32-bit one
    bool dll = true;        // a library rather than a program
};

// The resources are sorted as the format requires (named entries first, then
// ids in ascending order); the file carries no time stamp, so the same input
// gives the same bytes.
std::vector<std::byte> BuildResourceOnlyPe(const std::vector<RawResource>& resources, const PeLayout& layout);

// One pointer image: a device-independent bitmap as an icon image holds it
// (height doubled for the mask) and its hot spot.
struct CursorImage {
    std::uint16_t hotspotX = 0;
    std::uint16_t hotspotY = 0;
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    std::uint16_t bitCount = 0;
    std::vector<std::byte> dib;
};

struct LibraryCursor {
    std::uint16_t id = 0;  // the group's resource id
    std::vector<CursorImage> images;
};

// The resources of an icon library: icon group i (0-based) gets resource id
// i + 1, so that icon index i of the file is icons[i]; images and pointer
// images are numbered from 1 in order, an image that several groups show
// being stored once. Pointer groups keep their own ids.
std::vector<RawResource> IconLibraryResources(const std::vector<cFileIcon>& icons,
                                              const std::vector<LibraryCursor>& cursors);

// A pointer file (.cur): the icon file layout with type 2 and hot spots in
// place of planes and bit count.
std::vector<std::byte> BuildCursorFile(const std::vector<CursorImage>& images);

}  // namespace glyphmoor
