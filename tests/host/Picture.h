#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orvane::tests {

// The pixels of a PNG file, one 0xRRGGBBAA a pixel; no pixels when it cannot be read.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    static Picture read(const std::string& path);

    std::uint32_t at(int x, int y) const {
        return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                         static_cast<std::size_t>(x));
    }
    friend bool operator==(const Picture&, const Picture&) = default;
};

}  // namespace orvane::tests
