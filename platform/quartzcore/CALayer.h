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
class CACrossFade;
class CALayer;

// What changed about a layer: a set of bits.
enum CALayerChange : unsigned {
    kCALayerGeometryChanged = 1U << 0,  // position, anchor point, transform, size, masksToBounds
    kCALayerOpacityChanged = 1U << 1,
    kCALayerZPositionChanged = 1U << 2,
    kCALayerBackgroundChanged = 1U << 3,
    kCALayerAnimationsChanged = 1U << 4,  // an animation was added or removed, began or ended
};

// Implemented by the view that owns the layer; called synchronously on every change. Main thread.
class ORVANE_EXPORT CALayerDelegate {
public:
    virtual ~CALayerDelegate() = default;
    // `changes` are bits of CALayerChange.
    virtual void layerDidChange(CALayer& layer, unsigned changes) = 0;
};

// What a layer shows at a given time: its model values with the animations of that time applied.
struct CALayerPresentation {
    CGPoint position;
    CGPoint anchorPoint;
    CATransform3D transform;
    double opacity = 1;
    // During a cross-fade only: the layer that this one replaces, and the layer that replaces this
    // one. The opacity of each layer is its share of the picture. A window adds up the pictures of
    // all layers that are linked in this way, and draws the sum where the layer is that nothing
    // replaces, so that nothing behind the layers is visible through them. Borrowed.
    CALayer* fadesFrom = nullptr;
    CALayer* fadesInto = nullptr;

    friend bool operator==(const CALayerPresentation&, const CALayerPresentation&) = default;
};

// The presentation of a view: its place, transform and opacity. A view's layer has its anchor point
// at (0, 0), so its position is the view's origin unless either is changed.
//
// Setters write model values. What the layer shows at a given time is computed from the model
// values and the animations that run at that time; the time is a parameter. Main thread only.
class ORVANE_EXPORT CALayer : public std::enable_shared_from_this<CALayer> {
public:
    CALayer();
    // Removes the animations that still run, which completes them for their transactions.
    ~CALayer();
    CALayer(const CALayer&) = delete;
    CALayer& operator=(const CALayer&) = delete;

    // ---- model values ----
    // The place of the anchor point in the superlayer's coordinates, in points.
    CGPoint position() const { return position_; }
    void setPosition(CGPoint position);
    // The point that `position` places, and about which `transform` rotates and scales; relative to
    // the bounds, from 0 to 1.
    CGPoint anchorPoint() const { return anchorPoint_; }
    void setAnchorPoint(CGPoint anchorPoint);
    // The size of the bounds, in points.
    CGSize size() const { return size_; }
    void setSize(CGSize size);
    // The transform about the anchor point. The identity at first.
    const CATransform3D& transform() const { return transform_; }
    void setTransform(const CATransform3D& transform);
    // The opacity of the layer and its sublayers as one group, from 0 to 1.
    double opacity() const { return opacity_; }
    void setOpacity(double opacity);
    // The drawing order among siblings. Siblings with equal values keep their order.
    double zPosition() const { return zPosition_; }
    void setZPosition(double z);
    // A color that fills the bounds behind the contents.
    void setBackgroundColor(const CGColor& color);
    const CGColor& backgroundColor() const { return backgroundColor_; }
    // Whether the bounds cut off the sublayers. False at first.
    bool masksToBounds() const { return masksToBounds_; }
    void setMasksToBounds(bool masks);
    // Part of the interface of layers; nothing on this platform reads it.
    bool isOpaque() const { return opaque_; }
    void setOpaque(bool opaque) { opaque_ = opaque; }
    // The x coordinate of the left edge in the superlayer's coordinates, without the transform.
    double left() const { return position_.x - anchorPoint_.x * size_.width; }

    // ---- animations ----
    // Registers a copy of the animation under a key, in place of an animation with the same key.
    // The copy belongs to the transactions that are open on the calling thread.
    void addAnimation(const CAAnimation& animation, const std::string& key);
    // Remove an animation, or all, which completes them for their transactions. Nothing happens if
    // there is none:
    void removeAnimationForKey(const std::string& key);
    void removeAllAnimations();
    // Whether an animation has an effect at a media time, so that each frame may differ.
    bool isAnimating(double time) const;
    // Whether an animation is registered, also if it has not begun yet.
    bool hasAnimations() const;

    // ---- what is shown ----
    // What is shown at a media time. Without animations, the model values.
    CALayerPresentation presentation(double time) const;
    // Maps the layer's coordinates (origin at its top left) to the superlayer's, as `shown`.
    CGAffineTransform affineTransform(const CALayerPresentation& shown) const;

    // The fade by which this layer comes in at a media time; null for none.
    const CACrossFade* fadeIn(double time) const;

    // ---- for the view that owns the layer ----
    // Borrowed; must outlive the layer or be reset to null.
    void setDelegate(CALayerDelegate* delegate) { delegate_ = delegate; }
    CALayerDelegate* delegate() const { return delegate_; }
    // The layer of the superview; null for none. Borrowed.
    void setSuperlayer(const CALayer* superlayer) { superlayer_ = superlayer; }
    const CALayer* superlayer() const { return superlayer_; }

private:
    friend class CATimeline;
    struct Running;

    void changed(unsigned changes);
    // Removes an animation from running_, and its other side from the outgoing layer.
    void removeRunning(std::size_t index);
    void stopOutgoing(const CAAnimation& transition);
    // The last fade that was added and is not over, in which this layer takes part; null for none.
    std::shared_ptr<CACrossFade> lastFade() const;
    // Called by the timeline's tick, from `last` to `time`. Releases animations that are over,
    // notifies the delegate if an animation began or ended, and returns the time at which the next
    // one begins or ends. Removes the layer from the timeline if nothing is left to run.
    double advanceAnimations(double last, double time);
    void leaveTimeline();

    CALayerDelegate* delegate_ = nullptr;
    const CALayer* superlayer_ = nullptr;
    CGPoint position_;
    CGPoint anchorPoint_;
    CGSize size_;
    CATransform3D transform_;
    double opacity_ = 1;
    double zPosition_ = 0;
    CGColor backgroundColor_{0, 0, 0, 0};
    bool opaque_ = false;
    bool masksToBounds_ = false;
    std::vector<Running> running_;  // in the order in which they were added and are applied
    static constexpr std::size_t kNotOnTimeline = static_cast<std::size_t>(-1);
    std::size_t timelineIndex_ = kNotOnTimeline;
};

}  // namespace orvane::platform
