#include "platform/appkit/NSBackingPolicy.h"

#include <algorithm>

#include "platform/appkit/NSBackingStore.h"

namespace orvane::platform {

namespace {

// A view is stored whole up to this multiple of the window's pixels, and at least up to this number
// of pixels.
constexpr double kWholeViewShare = 2;
constexpr double kWholeViewPixels = 512 * 512;
constexpr std::int64_t kLongestSide = 16384;
constexpr std::int64_t kLargestArea = std::int64_t{64} << 20;

// Expands a rectangle to whole tiles and adds one tile on each side.
NSBackingRect withMargin(const NSBackingRect& rect) {
    constexpr std::int64_t size = NSBackingStore::kTileSize;
    const NSBackingRect tiles = NSBackingStore::tilesAround(rect);
    return {(tiles.left - 1) * size, (tiles.top - 1) * size, (tiles.right + 1) * size,
            (tiles.bottom + 1) * size};
}

NSBackingRect cutToLimits(NSBackingRect rect) {
    rect.right = std::min(rect.right, rect.left + kLongestSide);
    rect.bottom = std::min(rect.bottom, rect.top + kLongestSide);
    if (rect.area() > kLargestArea) {
        rect.bottom = rect.top + kLargestArea / rect.width();
    }
    return rect;
}

}  // namespace

bool NSBackingPolicy::fitsWhole(CGSize viewSize, const NSBackingRect& whole) const {
    const double pixels = viewSize.width * viewSize.height * scale_ * scale_;
    const double windowPixels = windowSize_.width * windowSize_.height * scale_ * scale_;
    // The comparison is false if the size is not a number.
    return pixels <= std::max(windowPixels * kWholeViewShare, kWholeViewPixels) &&
           std::max(whole.width(), whole.height()) <= kLongestSide;
}

NSBackingRect NSBackingPolicy::areaToStore(CGSize viewSize, const CGRect& exposed,
                                           const NSBackingRect& stored) const {
    const NSBackingRect whole = NSBackingRect::around({{0, 0}, viewSize}, scale_);
    const NSBackingRect visible = isEmpty(exposed)
                                      ? NSBackingRect{}
                                      : NSBackingRect::around(exposed, scale_).intersection(whole);
    if (visible.isEmpty() && stored.isEmpty()) {
        return {};
    }
    if (fitsWhole(viewSize, whole)) {
        return whole;
    }
    if (visible.isEmpty()) {
        return {};
    }
    const NSBackingRect area = cutToLimits(withMargin(visible).intersection(whole));
    // The stored part is kept while it shows all that is visible and does not waste memory.
    const bool storedServes =
        stored.contains(visible) && whole.contains(stored) && stored.area() <= 2 * area.area();
    return storedServes ? stored : area;
}

}  // namespace orvane::platform
