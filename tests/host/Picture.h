#pragma once

#include <png.h>

#include <cstdint>
#include <string>
#include <vector>

namespace orvane::tests {

// The pixels of a PNG file as 0xRRGGBBAA. Empty if the file cannot be read.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    static Picture read(const std::string& path) {
        png_image image = {};
        image.version = PNG_IMAGE_VERSION;
        if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
            return {};
        }
        // This order of bytes makes 0xRRGGBBAA on a little-endian machine.
        image.format = PNG_FORMAT_ABGR;
        Picture picture{static_cast<int>(image.width), static_cast<int>(image.height), {}};
        picture.pixels.resize(PNG_IMAGE_SIZE(image) / sizeof picture.pixels[0]);
        png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr);
        return picture;
    }

    std::uint32_t at(int x, int y) const {
        return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                         static_cast<std::size_t>(x));
    }
    friend bool operator==(const Picture&, const Picture&) = default;
};

}  // namespace orvane::tests
