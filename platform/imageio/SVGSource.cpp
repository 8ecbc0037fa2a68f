#include "platform/imageio/SVGSource.h"

#include <cstddef>
#include <optional>
#include <utility>

#include "platform/coregraphics/CGImage.h"
#include "platform/imageio/SVGHelper.h"
#include "platform/imageio/svg/pixelsOfDrawing.h"

namespace orvane::platform {

namespace {

constexpr std::size_t kLongestFile = std::size_t{16} << 20;

std::shared_ptr<const CGImage> imageOf(SVGRendering rendering) {
    return CGImage::createWithPixels(rendering.width, rendering.height,
                                     std::move(rendering.pixels));
}

}  // namespace

std::shared_ptr<SVGSource> SVGSource::create(std::span<const unsigned char> bytes) {
    auto rendering = bytes.size() <= kLongestFile ? renderSVG(bytes, 1) : std::nullopt;
    return rendering ? std::shared_ptr<SVGSource>(new SVGSource(bytes, std::move(*rendering)))
                     : nullptr;
}

SVGSource::SVGSource(std::span<const unsigned char> bytes, SVGRendering rendering)
    : bytes_(bytes.begin(), bytes.end()),
      size_(rendering.size),
      image_(imageOf(std::move(rendering))) {}

std::shared_ptr<const CGImage> SVGSource::image(double scale) {
    const SVGPixels present{image_->width(), image_->height()};
    if (bytes_.empty() || pixelsOfDrawing(size_.width, size_.height, scale) == present) {
        return image_;
    }
    if (auto rendering = renderSVG(bytes_, scale)) {
        image_ = imageOf(std::move(*rendering));
    } else {
        bytes_.clear();
    }
    return image_;
}

}  // namespace orvane::platform
