#pragma once

#include <optional>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// A rectangle outside which a view and its subviews show nothing; see NSView::setClips. Where the
// transform is not drawable, or the rectangle not finite, they show nothing at all.
struct NSViewClip {
    CGRect rect;
    CGAffineTransform transform;  // from the coordinates of `rect` to those of the superview

    // Whether a point in the superview's coordinates is inside.
    bool contains(CGPoint point) const {
        const std::optional<CGAffineTransform> inverse = transform.invert();
        return inverse && orvane::platform::contains(standardized(rect), inverse->apply(point));
    }

    friend bool operator==(const NSViewClip&, const NSViewClip&) = default;
};

}  // namespace orvane::platform
