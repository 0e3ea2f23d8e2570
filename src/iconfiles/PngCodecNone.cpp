// Builds without libpng: PNG-compressed icon images are refused with a reason.
#include "iconfiles/IconImage.h"

namespace glyphmoor {

bool PngSupported() {
    return false;
}

Result<RgbaImage> DecodePng(std::span<const std::byte>) {
    return Fail("PNG-compressed icon images are not in this build (it was made without libpng)");
}

Result<std::vector<std::byte>> EncodePng(const RgbaImage&) {
    return Fail("writing PNG files is not in this build (it was made without libpng)");
}

}  // namespace glyphmoor
