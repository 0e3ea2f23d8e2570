// Icon files: the loader, then every image's decoder and a save.
#include "iconfiles/cFileIcon.h"

#include <cstddef>
#include <cstdint>
#include <span>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    glyphmoor::cFileIcon icon;
    if (icon.LoadIconFromMemory(std::as_bytes(std::span(data, size)))) {
        for (int i = 0; i < icon.ImageCount(); ++i) {
            (void)icon.DecodeImage(i);
        }
        (void)icon.PickImage(32, 8);
        (void)icon.ToBytes();
    }
    return 0;
}
