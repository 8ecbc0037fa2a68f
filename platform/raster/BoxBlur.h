#pragma once

#include <cstdint>
#include <vector>

namespace orvane::platform {

// A Gaussian blur, approximated by three box filters in each direction, as the filter effects of
// SVG define it (https://www.w3.org/TR/filter-effects-1/#feGaussianBlurElement). What becomes of a
// pixel depends only on the pixels within the reach, so a part can be blurred without the rest.
class BoxBlur {
public:
    // `radius` is twice the standard deviation, in pixels. Limited to 1000; NaN is 0.
    explicit BoxBlur(double radius);

    bool isSharp() const { return size_ < 2; }
    // A pixel has no effect on pixels that are farther away, in either direction.
    int reach() const { return isSharp() ? 0 : (3 * size_ + 1) / 2; }
    // Blurs an image of `channels` bytes for each pixel, in packed rows; transparent around it.
    void apply(std::vector<std::uint8_t>& bytes, int width, int height, int channels) const;
    void apply(std::vector<std::uint32_t>& pixels, int width, int height) const;

private:
    void apply(std::uint8_t* bytes, int width, int height, int channels) const;

    int size_ = 0;  // of the first box
};

}  // namespace orvane::platform
