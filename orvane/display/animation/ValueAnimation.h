#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/display/animation/Animation.h"
#include "orvane/display/geometry/Point.h"

namespace orvane::platform {
class CAKeyframeAnimation;
class CALayer;
}  // namespace orvane::platform

namespace orvane::display::animation {

// The attribute of a layer that is animated, and the numbers of one key frame. Lengths are in
// points, angles in radians.
enum class AttributeName : std::int32_t {
    TranslationX = 0,  // one number
    TranslationY = 1,  // one number
    Opacity = 2,       // one number, 0 to 1
    Translation = 3,   // x, y
    Rotation = 4,      // one number
    Affine = 5,        // a, b, c, d, tx, ty
};

// Returns the platform's name of an attribute; an empty string for a value that is not an
// attribute.
ORVANE_EXPORT std::string getKeyPath(AttributeName attributeName);

// Animates one attribute of a layer through key frames, which are spread evenly over the duration
// and interpolated linearly. Nothing is painted during the animation: the pixels of the layer are
// moved, rotated or faded.
//
// The animated state does not outlive the run. At its end the layer's transformation is reset to
// the identity, an Opacity animation leaves the layer opaque even if it was not opaque before, and
// then the completion callback is called. A negative repeat count repeats forever; zero means one
// pass.
class ORVANE_EXPORT ValueAnimation : public virtual Animation {
public:
    // `values` holds the numbers of all key frames in order; numbers at the end that do not make a
    // complete key frame are ignored. An animation without a complete key frame still runs for its
    // duration.
    ValueAnimation(const std::string& key, AttributeName attributeName,
                   const std::vector<float>& values);
    ~ValueAnimation() override;

    // The attribute that is animated.
    AttributeName getAttributeName() const { return attributeName_; }
    // The numbers of the key frames.
    const std::vector<float>& getValues() const { return values_; }

    // The horizontal position of the point about which the layer is rotated and scaled while the
    // animation runs, as a fraction of the layer's width: 0 is left, 1 is right. By default it is
    // the layer's own, the left edge.
    void setAnchorPointX(float x) { anchorPointX_ = x; }
    // The vertical position of that point, as a fraction of the layer's height: 0 is the top (the
    // default), 1 the bottom.
    void setAnchorPointY(float y) { anchorPointY_ = y; }

    // Starts the animation on the target's layer.
    void run() override;
    // Returns the platform's animation. Also sets the layer's anchor point and, for Translation and
    // Affine, its transformation to the last key frame; call it once for each run.
    std::shared_ptr<platform::CAAnimation> createNativeAnimation() override;
    // Restores the layer, then calls the completion callback.
    void onCompleted() override;

private:
    void setKeyFrames(platform::CAKeyframeAnimation& animation, platform::CALayer& layer) const;
    void placeAnchorPoint(const platform::NSView& handler);
    void restoreNativeLayer();

    AttributeName attributeName_;
    std::vector<float> values_;
    std::optional<float> anchorPointX_;
    std::optional<float> anchorPointY_;
    geometry::Point<double> savedPosition_;
    geometry::Point<double> savedAnchorPoint_;
};

}  // namespace orvane::display::animation
