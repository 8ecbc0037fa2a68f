#include "platform/raster/ImageSource.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <utility>

#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/floorDivide.h"
#include "platform/raster/Blend.h"
#include "platform/raster/Mask.h"
#include "platform/raster/places.h"

namespace orvane::platform {

namespace {

// Averages as many of the image's pixels as fall into one pixel of the canvas.
// The average of a mild reduction is left out for an image that is shown for a moment.
bool setFilter(pixman_image_t* image, double perPixelX, double perPixelY, bool isTransient) {
    const double reducing = isTransient ? 2.01 : 1.01;
    constexpr double kLargestKernel = 2048;
    if (perPixelX < reducing && perPixelY < reducing) {
        return pixman_image_set_filter(image, PIXMAN_FILTER_BILINEAR, nullptr, 0) != 0;
    }
    if (perPixelX > kLargestKernel || perPixelY > kLargestKernel) {
        return false;
    }
    const auto kernel = [reducing](double perPixel) {
        return perPixel < reducing ? PIXMAN_KERNEL_IMPULSE : PIXMAN_KERNEL_BOX;
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

ImageSource::ImageSource(const CGImage& image, const CGAffineTransform& toPixels)
    : toPixels_(toPixels) {
    toPixels_.tx = roundedTo(kPlacesPerPixel, toPixels.tx);
    toPixels_.ty = roundedTo(kPlacesPerPixel, toPixels.ty);
    constexpr double kLargest = 16384;
    constexpr double kFarthest = 1 << 30;
    const std::optional<CGAffineTransform> inverse = toPixels.invert();
    const CGRect box = toPixels_.apply(
        CGRect{{}, {static_cast<double>(image.width()), static_cast<double>(image.height())}});
    // False for NaN.
    const bool isNear = std::abs(box.origin.x) < kFarthest && std::abs(box.origin.y) < kFarthest;
    if (!inverse || !isNear || inverse->norm() > kLargest) {
        return;
    }
    left_ = static_cast<int>(std::floor(box.origin.x));
    top_ = static_cast<int>(std::floor(box.origin.y));
    fromPixels_ = inverse->linear();
    // Pixman's numbers are 16.16, less the support of the filter and one more pixel of the canvas.
    reach_ = 32766 - 2 * std::max(inverse->norm(), 1.0);
    PixmanImage source =
        wrapPixels(image.pixels().data(), image.width(), image.height(), image.width());
    if (source && setFilter(source.get(), std::hypot(inverse->a, inverse->c),
                            std::hypot(inverse->b, inverse->d), image.isTransient())) {
        pixman_image_set_repeat(source.get(), PIXMAN_REPEAT_PAD);
        image_ = std::move(source);
    }
}

void ImageSource::fetch(const PixelRect& area, std::uint32_t* colors) const {
    const PixmanImage target = wrapPixels(colors, Mask::kSide, Mask::kSide, Mask::kSide);
    const auto cellOf = [](int pixel, int origin) { return floorDivide(pixel - origin, kCell); };
    for (int row = cellOf(area.top, top_); row <= cellOf(area.bottom - 1, top_); ++row) {
        for (int column = cellOf(area.left, left_); column <= cellOf(area.right - 1, left_);
             ++column) {
            const PixelRect cell{left_ + column * kCell, top_ + row * kCell,
                                 left_ + (column + 1) * kCell, top_ + (row + 1) * kCell};
            fetchFromCell(cell, area.intersected(cell), target.get(), area, colors);
        }
    }
}

void ImageSource::fetchFromCell(const PixelRect& cell, const PixelRect& part,
                                pixman_image_t* target, const PixelRect& area,
                                std::uint32_t* colors) const {
    // The cell's corner in the image, and the part's box.
    const CGPoint corner =
        fromPixels_.apply(CGPoint{cell.left - toPixels_.tx, cell.top - toPixels_.ty});
    const CGRect box = fromPixels_.apply(
        CGRect{{part.left - toPixels_.tx, part.top - toPixels_.ty},
               {static_cast<double>(part.width()), static_cast<double>(part.height())}});
    const auto isReachable = [&](CGPoint p) {
        return std::abs(p.x) < reach_ && std::abs(p.y) < reach_;
    };
    const bool isInside =
        isReachable(corner) && isReachable(box.origin) &&
        isReachable({box.origin.x + box.size.width, box.origin.y + box.size.height});
    const auto fixed = [](double v) { return pixman_double_to_fixed(v); };
    const pixman_transform_t inverse{{{fixed(fromPixels_.a), fixed(fromPixels_.c), fixed(corner.x)},
                                      {fixed(fromPixels_.b), fixed(fromPixels_.d), fixed(corner.y)},
                                      {0, 0, pixman_fixed_1}}};
    const int x = part.left - area.left;
    const int y = part.top - area.top;
    if (isInside && target != nullptr && pixman_image_set_transform(image_.get(), &inverse) != 0) {
        pixman_image_composite32(PIXMAN_OP_SRC, image_.get(), nullptr, target,
                                 part.left - cell.left, part.top - cell.top, 0, 0, x, y,
                                 part.width(), part.height());
        return;
    }
    // Most of the part lies outside the image, where the coverage hides it.
    PixelRect halves[] = {part, part};
    if (part.width() > 1) {
        halves[0].right = halves[1].left = part.left + part.width() / 2;
    } else if (part.height() > 1) {
        halves[0].bottom = halves[1].top = part.top + part.height() / 2;
    } else {
        colors[y * Mask::kSide + x] = 0;
        return;
    }
    fetchFromCell(cell, halves[0], target, area, colors);
    fetchFromCell(cell, halves[1], target, area, colors);
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
