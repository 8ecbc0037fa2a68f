#pragma once

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class NSView;

// Where a view is in its window, and what the window and the clips of the view and of its
// superviews leave of it. NSWindow computes it for views that have moved, from the outside in, to
// decide what is stored of them as pixels. A value; all of it is for one moment.
class NSExposure {
public:
    // The exposure of what is inside a view that is shown at `time`, in seconds of media time; of
    // the content of a window of this size for null.
    static NSExposure inside(const NSView* view, CGSize windowSize, double time);

    // The exposure of a subview, and of what is inside it. This one is that of what is inside its
    // superview.
    NSExposure ofSubview(const NSView& view, double time) const;
    NSExposure ofSubviewsOf(const NSView& view) const;

    // Maps the view's coordinates to the window's.
    const CGAffineTransform& toWindow() const { return toWindow_; }
    // What can be seen, in the window's coordinates: precise for clips that are parallel to the
    // window's edges, otherwise a box around it. Empty for nothing.
    const CGRect& visible() const { return visible_; }
    // How far the view is from what is visible, in points along the farther axis: 0 if some of it
    // is visible, infinite if nothing of its surroundings is.
    double distanceOf(const NSView& view) const;

private:
    CGAffineTransform toWindow_;
    CGRect visible_;
};

}  // namespace orvane::platform
