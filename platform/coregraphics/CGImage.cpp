#include "platform/coregraphics/CGImage.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/imageLimits.h"
#include "platform/coregraphics/premultiplied.h"
#include "platform/foundation/NSLog.h"

namespace orvane::platform {

void reportTooLarge(std::int64_t width, std::int64_t height) {
    NSLog(
        "An image of %lld x %lld pixels is too large: the limits are %lld pixels each way and %lld "
        "in all",
        static_cast<long long>(width), static_cast<long long>(height),
        static_cast<long long>(kLargestSide), static_cast<long long>(kMostPixels));
}

namespace {

// Returns the memory of a vector, which lives as long as the result.
std::shared_ptr<const std::uint32_t[]> shared(std::vector<std::uint32_t> pixels) {
    const auto owner = std::make_shared<const std::vector<std::uint32_t>>(std::move(pixels));
    return {owner, owner->data()};
}

}  // namespace

CGImage::CGImage(int width, int height, std::shared_ptr<const std::uint32_t[]> pixels)
    : width_(width),
      height_(height),
      size_{static_cast<double>(width), static_cast<double>(height)},
      isOpaque_(true),
      isTransient_(true),
      pixels_(std::move(pixels)) {}

CGImage::CGImage(int width, int height, std::vector<std::uint32_t> pixels)
    : width_(width),
      height_(height),
      size_{static_cast<double>(width), static_cast<double>(height)},
      isOpaque_(std::ranges::all_of(pixels, [](std::uint32_t p) { return p >> 24 == 255; })),
      pixels_(shared(std::move(pixels))) {}

std::shared_ptr<const CGImage> CGImage::createTransient(
    int width, int height, std::shared_ptr<const std::uint32_t[]> pixels) {
    if (!isSensibleImageSize(width, height) || pixels == nullptr) {
        return nullptr;
    }
    return std::shared_ptr<const CGImage>(new CGImage(width, height, std::move(pixels)));
}

std::shared_ptr<const CGImage> CGImage::createWithPixels(int width, int height,
                                                         std::vector<std::uint32_t> pixels) {
    if (!isSensibleImageSize(width, height) ||
        pixels.size() != static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
        return nullptr;
    }
    return std::shared_ptr<const CGImage>(new CGImage(width, height, std::move(pixels)));
}

std::shared_ptr<const CGImage> CGImage::createReduced(int width, int height,
                                                      std::vector<std::uint32_t> pixels,
                                                      const CGSize& size) {
    if (!isSensibleImageSize(width, height)) {
        return nullptr;
    }
    std::shared_ptr<CGImage> image(new CGImage(width, height, std::move(pixels)));
    image->size_ = size;
    return image;
}

std::shared_ptr<const CGImage> CGImage::createTinted(const CGColor& color) const {
    const auto byte = [](double component) {
        return static_cast<std::uint32_t>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
    };
    const std::uint32_t solid =
        premultiplied(byte(color.red), byte(color.green), byte(color.blue), byte(color.alpha));
    std::vector<std::uint32_t> tinted(pixels().size());
    std::ranges::transform(pixels(), tinted.begin(),
                           [solid](std::uint32_t pixel) { return scaled(solid, pixel >> 24); });
    return createReduced(width_, height_, std::move(tinted), size_);
}

std::shared_ptr<const CGImage> CGImage::create(std::ptrdiff_t width, std::ptrdiff_t height,
                                               std::ptrdiff_t bytesPerRow,
                                               const CGDataProvider& provider) {
    if (!isSensibleImageSize(width, height) || bytesPerRow < width * 4) {
        return nullptr;
    }
    const std::span<const unsigned char> bytes = provider.bytes();
    const auto columns = static_cast<std::size_t>(width);
    std::vector<std::uint32_t> pixels(columns * static_cast<std::size_t>(height));
    for (std::size_t y = 0; y < static_cast<std::size_t>(height); ++y) {
        const std::size_t start = y * static_cast<std::size_t>(bytesPerRow);
        if (start >= bytes.size()) {
            break;
        }
        const std::size_t whole = std::min(columns, (bytes.size() - start) / 4);
        for (std::size_t x = 0; x < whole; ++x) {
            const unsigned char* p = bytes.data() + start + x * 4;
            pixels[y * columns + x] = premultiplied(p[0], p[1], p[2], p[3]);
        }
    }
    return createWithPixels(static_cast<int>(width), static_cast<int>(height), std::move(pixels));
}

}  // namespace orvane::platform
