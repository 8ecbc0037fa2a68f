#pragma once

#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/quartzcore/CATransform3D.h"

namespace orvane::platform {

class CAAnimation;

// The presentation of a view: where it stands, how it is transformed and blended. A view's layer
// has its anchor point at 0, 0, so its position is the view's origin unless it is set otherwise.
//
// Setters write model values. What is shown at a time comes from the model values and the
// animations running at that time; it is a function of a time that is passed in, so tests hold the
// clock. Main thread only.
class ORVANE_EXPORT CALayer {
public:
    CGPoint position() const { return position_; }
    void setPosition(CGPoint position);
    // Relative to the bounds, 0 to 1: the point that position places and transform turns about.
    CGPoint anchorPoint() const { return anchorPoint_; }
    void setAnchorPoint(CGPoint anchorPoint);
    const CATransform3D& transform() const { return transform_; }
    void setTransform(const CATransform3D& transform);
    // 0 to 1, of the layer and its sublayers as one group.
    double opacity() const { return opacity_; }
    void setOpacity(double opacity);
    // Order of drawing among siblings; equal ones keep their order.
    double zPosition() const { return zPosition_; }
    void setZPosition(double z);
    void setBackgroundColor(const CGColor& color);
    const CGColor& backgroundColor() const { return backgroundColor_; }
    bool isOpaque() const { return opaque_; }
    void setOpaque(bool opaque) { opaque_ = opaque; }

    // Registers a copy of the animation under a key; one of the same key is replaced.
    void addAnimation(const CAAnimation& animation, const std::string& key);
    void removeAnimationForKey(const std::string& key);

private:
    CGPoint position_;
    CGPoint anchorPoint_;
    CATransform3D transform_;
    double opacity_ = 1;
    double zPosition_ = 0;
    CGColor backgroundColor_{0, 0, 0, 0};
    bool opaque_ = false;
};

}  // namespace orvane::platform
