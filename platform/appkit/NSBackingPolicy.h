#pragma once

#include "platform/appkit/NSBackingRect.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// Decides which part of each view a window stores as pixels.
//
// A view of moderate size is stored whole from the moment it first becomes visible, so moving it
// never paints. Of a larger view, only the visible part is stored, with a margin that lets the view
// move a little before anything must be painted.
class NSBackingPolicy {
public:
    // `windowSize` is in points; `scale` is the number of pixels per point.
    NSBackingPolicy(CGSize windowSize, double scale) : windowSize_(windowSize), scale_(scale) {}

    // Returns the part of a view to store, in the view's pixels; empty if nothing is to be stored.
    // `exposed` is a box around what the window and the clips leave of the view, in the view's
    // points. `stored` is the part that is stored now; empty for none.
    NSBackingRect areaToStore(CGSize viewSize, const CGRect& exposed,
                              const NSBackingRect& stored) const;

private:
    bool fitsWhole(CGSize viewSize, const NSBackingRect& whole) const;

    CGSize windowSize_;
    double scale_;
};

}  // namespace orvane::platform
