#include "tests/host/Picture.h"

#include <png.h>

namespace orvane::tests {

Picture Picture::read(const std::string& path) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    Picture picture;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
        return picture;
    }
    image.format = PNG_FORMAT_RGBA;
    std::vector<std::uint8_t> bytes(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr) == 0) {
        return picture;
    }
    picture.width = static_cast<int>(image.width);
    picture.height = static_cast<int>(image.height);
    for (std::size_t i = 0; i < bytes.size(); i += 4) {
        picture.pixels.push_back(std::uint32_t{bytes[i]} << 24 | std::uint32_t{bytes[i + 1]} << 16 |
                                 std::uint32_t{bytes[i + 2]} << 8 | bytes[i + 3]);
    }
    return picture;
}

}  // namespace orvane::tests
