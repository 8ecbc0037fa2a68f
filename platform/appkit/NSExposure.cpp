#include "platform/appkit/NSExposure.h"

#include <algorithm>
#include <cmath>

#include "platform/appkit/NSView.h"

namespace orvane::platform {

namespace {

// Cuts off what is outside a clip.
CGRect cut(const CGRect& visible, const CGRect& clip, const CGAffineTransform& toWindow) {
    return isFinite(clip) && toWindow.isDrawable()
               ? intersection(visible, toWindow.apply(standardized(clip)))
               : CGRect{};
}

}  // namespace

NSExposure NSExposure::inside(const NSView* view, CGSize windowSize, double time) {
    if (view == nullptr) {
        NSExposure window;
        window.visible_ = {{0, 0}, windowSize};
        return window;
    }
    return inside(view->superview(), windowSize, time).ofSubview(*view, time).ofSubviewsOf(*view);
}

NSExposure NSExposure::ofSubview(const NSView& view, double time) const {
    NSExposure exposure;
    exposure.visible_ = visible_;
    for (const NSViewClip& clip : view.clips()) {
        exposure.visible_ = cut(exposure.visible_, clip.rect, clip.transform.concat(toWindow_));
    }
    const CALayer& layer = *view.layer();
    exposure.toWindow_ = layer.affineTransform(layer.presentation(time)).concat(toWindow_);
    return exposure;
}

NSExposure NSExposure::ofSubviewsOf(const NSView& view) const {
    NSExposure exposure = *this;
    if (view.clipsToBounds()) {
        exposure.visible_ = cut(visible_, view.bounds(), toWindow_);
    }
    return exposure;
}

double NSExposure::distanceOf(const NSView& view) const {
    if (isEmpty(visible_) || !toWindow_.isDrawable()) {
        return INFINITY;
    }
    const CGRect box = toWindow_.apply(standardized(view.bounds()));
    const auto gap = [](double from, double length, double otherFrom, double otherLength) {
        return std::max({from - otherFrom - otherLength, otherFrom - from - length, 0.0});
    };
    return std::max(gap(box.origin.x, box.size.width, visible_.origin.x, visible_.size.width),
                    gap(box.origin.y, box.size.height, visible_.origin.y, visible_.size.height));
}

}  // namespace orvane::platform
