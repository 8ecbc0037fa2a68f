#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/quartzcore/CATransform3D.h"

namespace orvane::platform {

class CAAnimation;
class CALayer;

// What of a layer changed: a bit set.
enum CALayerChange : unsigned {
    kCALayerGeometryChanged = 1U << 0,  // position, anchor point, transform, size
    kCALayerOpacityChanged = 1U << 1,
    kCALayerZPositionChanged = 1U << 2,
    kCALayerBackgroundChanged = 1U << 3,
    kCALayerAnimationsChanged = 1U << 4,  // an animation was added or removed, began or ended
};

// Told by a layer at once of every change; the view whose layer it is. Main thread.
class ORVANE_EXPORT CALayerDelegate {
public:
    virtual ~CALayerDelegate() = default;
    virtual void layerDidChange(CALayer& layer, unsigned changes) = 0;
};

// What a layer shows at one time: its model values with the animations of that time applied.
struct CALayerPresentation {
    CGPoint position;
    CGPoint anchorPoint;
    CATransform3D transform;
    double opacity = 1;
    // During a cross-fade only: the layer that this one fades in over. A window that can draws the
    // two added together (each already has its share as its opacity) where this one stands, so
    // that nothing behind them shines through.
    CALayer* fadesFrom = nullptr;

    friend bool operator==(const CALayerPresentation&, const CALayerPresentation&) = default;
};

// The presentation of a view: where it stands, how it is transformed and blended. A view's layer
// has its anchor point at 0, 0, so its position is the view's origin unless it is set otherwise.
//
// Setters write model values. What is shown at a time comes from the model values and the
// animations running at that time; it is a function of a time that is passed in, so tests hold the
// clock. Main thread only.
class ORVANE_EXPORT CALayer : public std::enable_shared_from_this<CALayer> {
public:
    CALayer();
    // The animations that still run are removed, and so count as over for their transactions.
    ~CALayer();
    CALayer(const CALayer&) = delete;
    CALayer& operator=(const CALayer&) = delete;

    // ---- model values ----
    CGPoint position() const { return position_; }
    // In the superlayer's coordinates, points: where the anchor point lies.
    void setPosition(CGPoint position);
    // Relative to the bounds, 0 to 1: the point that position places and transform turns about.
    CGPoint anchorPoint() const { return anchorPoint_; }
    void setAnchorPoint(CGPoint anchorPoint);
    CGSize size() const { return size_; }
    void setSize(CGSize size);
    const CATransform3D& transform() const { return transform_; }
    void setTransform(const CATransform3D& transform);
    // 0 to 1, of the layer and its sublayers as one group.
    double opacity() const { return opacity_; }
    void setOpacity(double opacity);
    // Order of drawing among siblings; equal ones keep their order.
    double zPosition() const { return zPosition_; }
    void setZPosition(double z);
    // Drawn behind the contents, over the whole bounds.
    void setBackgroundColor(const CGColor& color);
    const CGColor& backgroundColor() const { return backgroundColor_; }
    bool isOpaque() const { return opaque_; }
    void setOpaque(bool opaque) { opaque_ = opaque; }

    // ---- animations ----
    // Registers a copy of the animation under a key; one of the same key is replaced. It belongs to
    // the transactions that are open on the calling thread.
    void addAnimation(const CAAnimation& animation, const std::string& key);
    void removeAnimationForKey(const std::string& key);
    void removeAllAnimations();
    // Whether one has an effect at a time, so that what is shown may change from frame to frame.
    bool isAnimating(double time) const;
    bool hasAnimations() const;

    // ---- what is shown ----
    // At a media time. Without animations, the model values.
    CALayerPresentation presentation(double time) const;
    // The mapping of a presentation of this layer: from the layer's own coordinates (origin at its
    // top left) to its superlayer's.
    CGAffineTransform affineTransform(const CALayerPresentation& shown) const;

    // Borrowed; it must outlive the layer or be taken back with null.
    void setDelegate(CALayerDelegate* delegate) { delegate_ = delegate; }

private:
    friend class CATimeline;
    struct Running;

    void changed(unsigned changes);
    // Takes an animation out of running_, and with a transition its other side.
    void removeRunning(std::size_t index);
    void stopOutgoing(const CAAnimation& transition);
    // The timeline's tick, from `last` to `time`: lets go of what is over, tells the delegate when
    // something began or ended, and answers when the next animation begins or ends. Takes the layer
    // off the timeline when nothing is left to run.
    double advanceAnimations(double last, double time);
    void leaveTimeline();

    CALayerDelegate* delegate_ = nullptr;
    CGPoint position_;
    CGPoint anchorPoint_;
    CGSize size_;
    CATransform3D transform_;
    double opacity_ = 1;
    double zPosition_ = 0;
    CGColor backgroundColor_{0, 0, 0, 0};
    bool opaque_ = false;
    std::vector<Running> running_;  // in order of adding: later ones apply on top
    static constexpr std::size_t notOnTimeline = static_cast<std::size_t>(-1);
    std::size_t timelineIndex_ = notOnTimeline;
};

}  // namespace orvane::platform
