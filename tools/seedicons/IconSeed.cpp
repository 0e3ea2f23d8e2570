// Makes the icon libraries and pointer files of the built-in default machine
// (Windows 98, C:\WINDOWS and C:\WINDOWS\SYSTEM) from the pictures of this
// folder, so that every default the icon catalogue names has a picture at its
// index. Run by the build: glyphmoor-seed-icons OUTPUT_DIR, where OUTPUT_DIR
// is laid out like a machine folder (drive_c/...).
#include "Pictures.h"

#include "iconfiles/IconImage.h"
#include "iconfiles/IconLibraryWriter.h"
#include "iconfiles/cFileIcon.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace glyphmoor::seed {

namespace {

// One library: its path under the machine folder and the picture at each
// icon index; indices not listed get the "unused" picture.
struct Library {
    const char* path;
    std::map<int, const char*> icons;
};

// The catalogue's defaults on a Windows 98 machine (the desktop-update shell
// without Internet Explorer 4.71). shell32.dll also carries the Windows 95
// indices (46, 47, 58, 59, 60, 73) and the 4.71 ones that do not clash (50,
// 62), so a machine whose registry says otherwise still finds pictures.
const std::vector<Library>& Libraries() {
    static const std::vector<Library> kLibraries = {
        {"drive_c/WINDOWS/SYSTEM/shell32.dll",
         {{0, "blank-page"},
          {1, "text-page"},
          {2, "dos-window"},
          {3, "folder"},
          {4, "open-folder"},
          {5, "floppy-525"},
          {6, "floppy-35"},
          {7, "removable-drive"},
          {8, "hard-drive"},
          {9, "net-drive"},
          {10, "net-drive-offline"},
          {11, "cd-drive"},
          {12, "ram-drive"},
          {13, "entire-network"},
          {15, "net-computer"},
          {17, "network"},
          {18, "workgroup"},
          {19, "programs"},
          {20, "documents"},
          {21, "settings"},
          {22, "find"},
          {23, "help"},
          {24, "run"},
          {25, "suspend"},
          {27, "shut-down"},
          {28, "sharing-overlay"},
          {29, "shortcut-overlay"},
          {31, "bin"},
          {32, "bin-full"},
          {33, "dial-up"},
          {34, "desktop"},
          {35, "control-panel"},
          {36, "program-group"},
          {37, "printers"},
          {40, "audio-cd"},
          {42, "users"},
          {43, "favorites"},
          {44, "log-off"},
          {46, "control-panel"},
          {47, "printers"},
          {50, "control-panel"},
          {51, "control-panel"},
          {52, "printers"},
          {58, "ini-document"},
          {59, "text-document"},
          {60, "batch-file"},
          {62, "ini-document"},
          {63, "ini-document"},
          {64, "text-document"},
          {65, "batch-file"},
          {73, "users"},
          {79, "favorites"}}},
        {"drive_c/WINDOWS/explorer.exe", {{0, "computer"}}},
        {"drive_c/WINDOWS/mplayer.exe", {{0, "media-clip"}}},
        {"drive_c/WINDOWS/sndrec32.exe", {{0, "sound-recorder"}}},
        {"drive_c/WINDOWS/SYSTEM/mydocs.dll", {{0, "my-documents"}}},
        {"drive_c/WINDOWS/SYSTEM/mshtml.dll", {{0, "internet"}, {1, "html-document"}, {8, "image-document"}}},
        {"drive_c/WINDOWS/SYSTEM/cool.dll", {{30, "in-box"}}},
        {"drive_c/WINDOWS/SYSTEM/mapi32.dll", {{3, "in-box"}}},
        {"drive_c/WINDOWS/SYSTEM/syncui.dll", {{0, "briefcase"}}},
        {"drive_c/WINDOWS/SYSTEM/shdocvw.dll", {{36, "history"}}},
        {"drive_c/WINDOWS/SYSTEM/cachevu.dll", {{0, "history"}}},
        {"drive_c/WINDOWS/SYSTEM/occache.dll", {{0, "activex-cache"}}},
        {"drive_c/WINDOWS/SYSTEM/webcheck.dll", {{0, "subscriptions"}}},
        {"drive_c/WINDOWS/SYSTEM/mstask.dll", {{0, "scheduled-tasks"}}},
        {"drive_c/WINDOWS/SYSTEM/quartz.dll",
         {{0, "video-clip"}, {3, "movie-clip"}, {4, "wave-sound"}, {8, "midi"}}},
        {"drive_c/Program Files/Accessories/Mspaint.exe", {{0, "paint"}, {1, "bitmap-document"}}},
        {"drive_c/Program Files/Accessories/Wordpad.exe",
         {{0, "wordpad"}, {1, "rich-text"}, {2, "write-document"}}},
    };
    return kLibraries;
}

RgbaImage Draw(Picture picture, int size) {
    Canvas canvas(size);
    picture(canvas);
    return canvas.Image();
}

void AddImage(cFileIcon& icon, const RgbaImage& pixels, int bits) {
    auto data = EncodeIconImage(pixels, bits);
    if (!data) {
        throw std::runtime_error(data.reason());
    }
    IconDirEntry entry;
    entry.width = entry.height = static_cast<std::uint8_t>(pixels.width);
    entry.colourCount = bits == 4 ? 16 : 0;
    entry.planes = 1;
    entry.bitCount = static_cast<std::uint16_t>(bits);
    icon.AddImage(entry, std::move(*data));
}

// 16-colour images at 32 and 16 pixels for 16-colour displays, then full
// colour with alpha at 48, 32 and 16.
cFileIcon MakeIcon(Picture picture) {
    cFileIcon icon;
    for (int size : {32, 16}) {
        AddImage(icon, Draw(picture, size), 4);
    }
    for (int size : {48, 32, 16}) {
        AddImage(icon, Draw(picture, size), 32);
    }
    return icon;
}

// A pointer in black and white: dark pixels black, light ones white.
CursorImage MakePointer(const PointerPicture& pointer) {
    RgbaImage pixels = Draw(pointer.draw, 32);
    for (std::size_t i = 0; i < pixels.pixels.size(); i += 4) {
        std::uint8_t* p = pixels.pixels.data() + i;
        const int light = p[0] + p[1] + p[2];
        const std::uint8_t v = light >= 3 * 128 ? 255 : 0;
        p[0] = p[1] = p[2] = v;
    }
    auto dib = EncodeIconImage(pixels, 1);
    if (!dib) {
        throw std::runtime_error(dib.reason());
    }
    CursorImage c;
    c.hotspotX = static_cast<std::uint16_t>(pointer.hotX);
    c.hotspotY = static_cast<std::uint16_t>(pointer.hotY);
    c.width = c.height = 32;
    c.bitCount = 1;
    c.dib = std::move(*dib);
    return c;
}

void Write(const std::filesystem::path& file, const std::vector<std::byte>& bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!out) {
        throw std::runtime_error("cannot write " + file.string());
    }
}

void Generate(const std::filesystem::path& out) {
    std::map<std::string, cFileIcon> cache;
    auto icon = [&](const std::string& name) -> const cFileIcon& {
        auto it = cache.find(name);
        if (it == cache.end()) {
            it = cache.emplace(name, MakeIcon(PictureNamed(name))).first;
        }
        return it->second;
    };
    for (const Library& library : Libraries()) {
        const int count = library.icons.rbegin()->first + 1;
        std::vector<cFileIcon> icons(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            const auto it = library.icons.find(i);
            icon(it == library.icons.end() ? "unused" : it->second)
                .CloneTo(icons[static_cast<std::size_t>(i)]);
        }
        Write(out / library.path, BuildResourceOnlyPe(IconLibraryResources(icons, {}), {}));
    }

    // The program's own file: its icon, and the standard pointers 1 to 15
    // as pointer groups with those ids. The same pointers as .cur files.
    std::vector<LibraryCursor> cursors;
    std::uint16_t id = 1;
    for (const PointerPicture& pointer : StandardPointers()) {
        CursorImage image = MakePointer(pointer);
        Write(out / "drive_c/WINDOWS/Cursors" / (std::string(pointer.name) + ".cur"),
              BuildCursorFile({image}));
        cursors.push_back({id++, {std::move(image)}});
    }
    std::vector<cFileIcon> programIcons(1);
    icon("program").CloneTo(programIcons[0]);
    Write(out / "drive_c/Program Files/Glyphmoor/Glyphmoor.exe",
          BuildResourceOnlyPe(IconLibraryResources(programIcons, cursors), {false, false}));

    // blank.ico: an icon with nothing in it, for hiding an icon.
    RgbaImage clear;
    for (int size : {32, 16}) {
        clear.width = clear.height = size;
        clear.pixels.assign(static_cast<std::size_t>(size * size * 4), 0);
        cFileIcon& blank = cache["blank"];
        AddImage(blank, clear, 4);
    }
    if (!cache["blank"].SaveIcon(out / "drive_c/Program Files/Glyphmoor/blank.ico")) {
        throw std::runtime_error("cannot write blank.ico");
    }
}

}  // namespace

}  // namespace glyphmoor::seed

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: glyphmoor-seed-icons OUTPUT_DIR\n");
        return 2;
    }
    try {
        glyphmoor::seed::Generate(argv[1]);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "glyphmoor-seed-icons: %s\n", e.what());
        return 1;
    }
    return 0;
}
