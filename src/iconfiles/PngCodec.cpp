// PNG-compressed icon images through libpng's simplified interface, which
// reports errors in the image structure instead of jumping out of the caller.
#include "iconfiles/IconImage.h"

#include <png.h>

#include <string>

namespace glyphmoor {

bool PngSupported() {
    return true;
}

Result<RgbaImage> DecodePng(std::span<const std::byte> data) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_memory(&png, data.data(), data.size()) == 0) {
        return Fail(std::string("the PNG image cannot be read: ") + png.message);
    }
    if (png.width == 0 || png.height == 0 || png.width > static_cast<png_uint_32>(kMaxDecodedSide) ||
        png.height > static_cast<png_uint_32>(kMaxDecodedSide)) {
        png_image_free(&png);
        return Fail("the PNG image is " + std::to_string(png.width) + " by " + std::to_string(png.height) +
                    " pixels, which is not a usable icon size");
    }
    png.format = PNG_FORMAT_RGBA;
    RgbaImage image;
    image.width = static_cast<int>(png.width);
    image.height = static_cast<int>(png.height);
    image.pixels.resize(PNG_IMAGE_SIZE(png));
    if (png_image_finish_read(&png, nullptr, image.pixels.data(), 0, nullptr) == 0) {
        const std::string message = png.message;
        png_image_free(&png);
        return Fail("the PNG image cannot be read: " + message);
    }
    return image;
}

Result<std::vector<std::byte>> EncodePng(const RgbaImage& image) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(image.width);
    png.height = static_cast<png_uint_32>(image.height);
    png.format = PNG_FORMAT_RGBA;
    png_alloc_size_t size = 0;
    if (png_image_write_to_memory(&png, nullptr, &size, 0, image.pixels.data(), 0, nullptr) == 0) {
        return Fail(std::string("the PNG image cannot be written: ") + png.message);
    }
    std::vector<std::byte> out(size);
    if (png_image_write_to_memory(&png, out.data(), &size, 0, image.pixels.data(), 0, nullptr) == 0) {
        return Fail(std::string("the PNG image cannot be written: ") + png.message);
    }
    out.resize(size);
    return out;
}

}  // namespace glyphmoor
