#include "platform/raster/GroupPicture.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <utility>

#include "platform/coregraphics/imageLimits.h"
#include "platform/raster/BitmapSource.h"
#include "platform/raster/Blend.h"
#include "platform/raster/Mask.h"

namespace orvane::platform {

namespace {

// The memory of the pictures that exist, in bytes. Canvases are used on several threads.
std::atomic<std::size_t> usedMemory{0};
constexpr std::size_t kMemoryLimit = std::size_t{64} << 20;

int toPixel(double value) {
    constexpr double kRange = 1 << 20;
    return static_cast<int>(std::clamp(value, -kRange, kRange));
}

PixelRect grown(const PixelRect& rect, int margin) {
    return {rect.left - margin, rect.top - margin, rect.right + margin, rect.bottom + margin};
}

double scaleOf(const CGAffineTransform& t) {
    return std::sqrt(std::abs(t.determinant()));
}

// Pixels that become more transparent.
class FadedSource final : public PixelSource {
public:
    FadedSource(const BitmapSource& source, double opacity)
        : source_(source), factor_(static_cast<std::uint32_t>(std::lround(opacity * 255))) {}

    void fetch(const PixelRect& area, std::uint32_t* colors) const override {
        source_.fetch(area, colors);
        for (int y = 0; y < area.height(); ++y, colors += Mask::kSide) {
            for (int x = 0; x < area.width(); ++x) {
                colors[x] = scaled(colors[x], factor_);
            }
        }
    }

private:
    const BitmapSource& source_;
    std::uint32_t factor_;
};

}  // namespace

GroupLayout::GroupLayout(const CGRect& area, const CGGroupStyle& style,
                         const CGAffineTransform& ctm, const PixelRect& clip)
    : blur(style.blurRadius * scaleOf(style.transform.concat(ctm))),
      shadowBlur(style.shadow.radius * scaleOf(style.transform.concat(ctm))),
      hasShadow(style.shadow.color.alpha > 0) {
    if (!isFinite(area) || !ctm.isDrawable()) {
        return;
    }
    const CGRect pixels = ctm.apply(standardized(area));
    wanted = {toPixel(std::floor(pixels.origin.x)), toPixel(std::floor(pixels.origin.y)),
              toPixel(std::ceil(pixels.origin.x + pixels.size.width)),
              toPixel(std::ceil(pixels.origin.y + pixels.size.height))};
    int reach = blur.reach();
    if (hasShadow) {
        const CGAffineTransform t = style.transform.concat(ctm);
        const auto [width, height] = style.shadow.offset;
        const auto whole = [](double value) {
            constexpr double kFarthest = 4096;
            return static_cast<int>(
                std::lround(std::clamp(std::isnan(value) ? 0 : value, -kFarthest, kFarthest)));
        };
        shadowX = whole(t.a * width + t.c * height);
        shadowY = whole(t.b * width + t.d * height);
        reach += shadowBlur.reach() + std::max(std::abs(shadowX), std::abs(shadowY));
    }
    source = grown(wanted, reach);
    constexpr std::int64_t kLargest = std::int64_t{1} << 24;
    if (std::int64_t{source.width()} * source.height() > kLargest ||
        !isSensibleImageSize(source.width(), source.height())) {
        wanted = wanted.intersected(clip);
        source = grown(wanted, reach);
        isComplete = false;
    }
    if (wanted.isEmpty() || !isSensibleImageSize(source.width(), source.height())) {
        wanted = source = {};
    }
}

GroupPicture::GroupPicture(std::vector<std::uint32_t> pixels, const GroupLayout& layout,
                           const CGColor& shadowColor, const CGAffineTransform& toPixels)
    : pixels_(std::move(pixels)),
      wanted_(layout.wanted),
      source_(layout.source),
      toPixels_(toPixels) {
    usedMemory += pixels_.size() * sizeof(std::uint32_t);
    if (pixels_.empty()) {
        return;
    }
    layout.blur.apply(pixels_, source_.width(), source_.height());
    if (layout.hasShadow) {
        addShadow(layout, shadowColor);
    }
}

GroupPicture::~GroupPicture() {
    usedMemory -= pixels_.size() * sizeof(std::uint32_t);
}

bool GroupPicture::areTooMany() {
    return usedMemory > kMemoryLimit;
}

void GroupPicture::addShadow(const GroupLayout& layout, const CGColor& color) {
    const int width = source_.width();
    const int height = source_.height();
    std::vector<std::uint8_t> alpha(pixels_.size());
    const auto at = [width](int x, int y) {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(x);
    };
    for (int y = std::max(layout.shadowY, 0); y < height + std::min(layout.shadowY, 0); ++y) {
        for (int x = std::max(layout.shadowX, 0); x < width + std::min(layout.shadowX, 0); ++x) {
            alpha[at(x, y)] = static_cast<std::uint8_t>(
                pixels_[at(x - layout.shadowX, y - layout.shadowY)] >> 24);
        }
    }
    layout.shadowBlur.apply(alpha, width, height, 1);
    const std::uint32_t solid = premultiplied(color);
    for (std::size_t i = 0; i < pixels_.size(); ++i) {
        if (alpha[i] != 0) {
            pixels_[i] = over(pixels_[i], scaled(solid, alpha[i]));
        }
    }
}

void GroupPicture::draw(BitmapPainter& painter, int dx, int dy, double opacity,
                        const Clip& clip) const {
    const PixelRect area = clip.bounds.intersected(
        {wanted_.left + dx, wanted_.top + dy, wanted_.right + dx, wanted_.bottom + dy});
    if (area.isEmpty() || !(opacity > 0)) {
        return;
    }
    const int left = source_.left + dx;
    const int top = source_.top + dy;
    const std::ptrdiff_t stride = source_.width();
    if (opacity >= 1 && !BitmapPainter::isCutBy(clip, area)) {
        blendPicture(painter.bitmap(), area,
                     pixels_.data() + (area.top - top) * stride + (area.left - left), stride);
        return;
    }
    const BitmapSource source(pixels_.data(), stride, left, top);
    if (opacity >= 1) {
        painter.paint(source, {area, clip.shapes});
    } else {
        painter.paint(FadedSource(source, opacity), {area, clip.shapes});
    }
}

}  // namespace orvane::platform
