#pragma once

#include <optional>

#include "orvane/display/geometry/isInRoundedRect.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// A rectangle outside which a view and its subviews show nothing; see NSView::setClips. Where the
// transform is not drawable, or the rectangle not finite, they show nothing at all.
struct NSViewClip {
    CGRect rect;
    CGAffineTransform transform;  // from the coordinates of `rect` to those of the superview
    double cornerRadius = 0;      // in the coordinates of `rect`; at most half of its sides counts

    // The radius that the corners really have.
    double effectiveRadius() const {
        return display::geometry::cornerRadius(display::geometry::Rect<double>(standardized(rect)),
                                               cornerRadius);
    }
    // Whether a point in the superview's coordinates is inside.
    bool contains(CGPoint point) const {
        const std::optional<CGAffineTransform> inverse = transform.invert();
        using display::geometry::Rect;
        return inverse && display::geometry::isInRoundedRect(
                              Rect<double>(standardized(rect)), cornerRadius,
                              display::geometry::Point<double>(inverse->apply(point)));
    }

    friend bool operator==(const NSViewClip&, const NSViewClip&) = default;
};

}  // namespace orvane::platform
