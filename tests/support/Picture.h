#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvane::tests {

// The pixels of an image, row by row from the top left.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    std::uint32_t at(int x, int y) const {
        return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                         static_cast<std::size_t>(x));
    }
    friend bool operator==(const Picture&, const Picture&) = default;
};

}  // namespace orvane::tests
