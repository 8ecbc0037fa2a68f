#pragma once

#include <memory>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGPath.h"
#include "platform/coregraphics/Outline.h"

namespace orvane::platform {

// The path that a canvas is given between two paintings. Nearly always that is one outline added
// whole, which is kept as it is, with the transformation it was added through, so that its masks
// are found again. Anything more is gathered as segments in pixels.
class CurrentPath {
public:
    struct Shape {
        std::shared_ptr<const CGPath::Outline> outline;
        CGAffineTransform toPixels;
        bool isLasting;  // an outline that its owner may add again
    };

    void moveTo(CGPoint p, const CGAffineTransform& ctm);
    void lineTo(CGPoint p, const CGAffineTransform& ctm);
    void add(std::shared_ptr<const CGPath::Outline> outline, const CGAffineTransform& ctm);

    // The whole path; it is empty afterwards.
    Shape take();

private:
    Segments& pieces();

    std::shared_ptr<const CGPath::Outline> single_;
    CGAffineTransform singleToPixels_;
    Segments pieces_;
};

}  // namespace orvane::platform
