#include "platform/raster/ImageSource.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "platform/raster/Mask.h"

namespace orvane::platform {

namespace {

// Averages as many of the image's pixels as fall into one pixel of the canvas.
bool setFilter(pixman_image_t* image, double perPixelX, double perPixelY) {
    constexpr double kReducing = 1.01;
    constexpr double kLargestKernel = 2048;
    if (perPixelX < kReducing && perPixelY < kReducing) {
        return pixman_image_set_filter(image, PIXMAN_FILTER_BILINEAR, nullptr, 0) != 0;
    }
    if (perPixelX > kLargestKernel || perPixelY > kLargestKernel) {
        return false;
    }
    const auto kernel = [](double perPixel) {
        return perPixel < kReducing ? PIXMAN_KERNEL_IMPULSE : PIXMAN_KERNEL_BOX;
    };
    constexpr int kPhaseBits = 4;
    int count = 0;
    pixman_fixed_t* const values = pixman_filter_create_separable_convolution(
        &count, pixman_double_to_fixed(std::max(perPixelX, 1.0)),
        pixman_double_to_fixed(std::max(perPixelY, 1.0)), PIXMAN_KERNEL_LINEAR,
        PIXMAN_KERNEL_LINEAR, kernel(perPixelX), kernel(perPixelY), kPhaseBits, kPhaseBits);
    if (values == nullptr) {
        return false;
    }
    const bool isSet =
        pixman_image_set_filter(image, PIXMAN_FILTER_SEPARABLE_CONVOLUTION, values, count) != 0;
    std::free(values);
    return isSet;
}

}  // namespace

ImageSource::ImageSource(const CGImage& image, const CGAffineTransform& t) {
    const double determinant = t.determinant();
    // The inverse, from the canvas's pixels to the image's. Its translation is relative to the
    // whole pixel at the image's corner, because Pixman's fixed-point numbers have a small range.
    const double a = t.d / determinant;
    const double b = -t.b / determinant;
    const double c = -t.c / determinant;
    const double d = t.a / determinant;
    constexpr double kLargest = 16384;
    constexpr double kFarthest = 1e6;
    if (std::max({std::abs(a), std::abs(b), std::abs(c), std::abs(d)}) > kLargest ||
        std::abs(t.tx) > kFarthest || std::abs(t.ty) > kFarthest) {
        return;
    }
    originX_ = static_cast<int>(std::floor(t.tx));
    originY_ = static_cast<int>(std::floor(t.ty));
    const auto fixed = [](double v) { return pixman_double_to_fixed(v); };
    const double restX = t.tx - originX_;
    const double restY = t.ty - originY_;
    const pixman_transform_t inverse{{{fixed(a), fixed(c), fixed(-(a * restX + c * restY))},
                                      {fixed(b), fixed(d), fixed(-(b * restX + d * restY))},
                                      {0, 0, pixman_fixed_1}}};
    PixmanImage source =
        wrapPixels(image.pixels().data(), image.width(), image.height(), image.width());
    if (source && pixman_image_set_transform(source.get(), &inverse) != 0 &&
        setFilter(source.get(), std::hypot(a, c), std::hypot(b, d))) {
        pixman_image_set_repeat(source.get(), PIXMAN_REPEAT_PAD);
        image_ = std::move(source);
    }
}

void ImageSource::fetch(const PixelRect& area, std::uint32_t* colors) const {
    const PixmanImage target = wrapPixels(colors, Mask::kSide, Mask::kSide, Mask::kSide);
    if (target) {
        pixman_image_composite32(PIXMAN_OP_SRC, image_.get(), nullptr, target.get(),
                                 area.left - originX_, area.top - originY_, 0, 0, 0, 0,
                                 area.width(), area.height());
    }
}

void paintImage(const Bitmap& bitmap, const CGImage& image, int left, int top,
                const PixelRect& clip) {
    const std::uint32_t* colors = image.pixels().data() +
                                  static_cast<std::ptrdiff_t>(clip.top - top) * image.width() +
                                  (clip.left - left);
    if (!image.isOpaque()) {
        blendPicture(bitmap, clip, colors, image.width());
        return;
    }
    for (int y = clip.top; y < clip.bottom; ++y, colors += image.width()) {
        std::copy_n(colors, clip.width(), bitmap.at(clip.left, y));
    }
}

}  // namespace orvane::platform
