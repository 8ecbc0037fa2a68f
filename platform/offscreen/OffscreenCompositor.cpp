#include "platform/offscreen/OffscreenCompositor.h"

#include <algorithm>

#include "platform/offscreen/OffscreenComposer.h"

namespace orvane::platform {

namespace {

// The number of pixels that are composed at once: 256 KiB of them.
constexpr std::int64_t kBandArea = 65536;

}  // namespace

void OffscreenCompositor::setImage(int width, int height, double scale) {
    scale_ = scale;
    image_ = OffscreenTarget::create({0, 0, width, height});
    damage_.setBounds(image_.area);
    layout_.setImage(image_.area, scale);
}

void OffscreenCompositor::add(NSView& view) {
    layout_.add(view);
}

void OffscreenCompositor::remove(NSView& view) {
    layout_.remove(view);
    damage_.forget(view);
}

void OffscreenCompositor::reorder(NSView& superview) {
    layout_.markSubviews(superview);
    damage_.addReordered(superview);
}

void OffscreenCompositor::painted(NSView& view, std::span<const NSBackingRect> rects) {
    damage_.addPainted(view, rects);
}

std::span<const NSBackingRect> OffscreenCompositor::compose(NSView* root, double time) {
    if (root != nullptr) {
        layout_.update(*root, time);
    }
    damage_.take(composed_, scale_);
    const OffscreenComposer composer(scale_, layout_.isFading());
    for (const NSBackingRect& rect : composed_) {
        // Bands that fit in the processor's cache while one view after the other is drawn on them.
        const std::int64_t height = std::max<std::int64_t>(kBandArea / rect.width(), 1);
        for (std::int64_t top = rect.top; top < rect.bottom; top += height) {
            composer.compose(image_, root,
                             {rect.left, top, rect.right, std::min(top + height, rect.bottom)});
        }
    }
    return composed_;
}

}  // namespace orvane::platform
