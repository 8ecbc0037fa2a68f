#pragma once

#include <memory>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGPath.h"
#include "platform/coregraphics/Outline.h"

namespace orvane::platform {

// The path that a canvas collects between two paint calls. Usually it is a single outline, which is
// kept as it is with its transformation, so that its masks are found again. Anything else is
// collected as segments in pixels.
class CurrentPath {
public:
    struct Shape {
        std::shared_ptr<const CGPath::Outline> outline;
        CGAffineTransform toPixels;
        bool isLasting;  // the owner of the outline may add it again
    };

    void moveTo(CGPoint p, const CGAffineTransform& ctm);
    void lineTo(CGPoint p, const CGAffineTransform& ctm);
    void add(std::shared_ptr<const CGPath::Outline> outline, const CGAffineTransform& ctm);

    // Returns the path and empties it.
    Shape take();

private:
    Segments& pieces();

    std::shared_ptr<const CGPath::Outline> single_;
    CGAffineTransform singleToPixels_;
    Segments pieces_;
};

}  // namespace orvane::platform
