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

// What of a layer is animated, and what one key frame of it is. Lengths are points, angles radians.
enum class AttributeName : std::int32_t {
    TranslationX = 0,  // one number
    TranslationY = 1,  // one number
    Opacity = 2,       // one number, 0 to 1
    Translation = 3,   // x, y
    Rotation = 4,      // one number
    Affine = 5,        // a, b, c, d, tx, ty
};

// The platform's name of the attribute; empty for a value that is none of them.
ORVANE_EXPORT std::string getKeyPath(AttributeName attributeName);

// Leads one attribute of a layer through key frames, spread evenly over the duration and joined
// linearly. Nothing is painted anew meanwhile: the layer's pixels are moved, turned or faded.
//
// Nothing of the animated state outlives the run. When it ends the layer goes back to no transform
// at all, an Opacity animation leaves it opaque whatever it was before, and then the completion
// callback is called. A repeat count below zero repeats for ever, zero is one pass.
class ORVANE_EXPORT ValueAnimation : public virtual Animation {
public:
    // The key frames one after the other; numbers at the end that make no whole key frame are
    // ignored. Without one whole key frame it still runs its time.
    ValueAnimation(const std::string& key, AttributeName attributeName,
                   const std::vector<float>& values);
    ~ValueAnimation() override;

    AttributeName getAttributeName() const { return attributeName_; }
    const std::vector<float>& getValues() const { return values_; }

    // The point of the layer that it turns about and is scaled about while it runs, as a share of
    // its width and height, 0 to 1. Where none is set the layer's own holds, the top left.
    void setAnchorPointX(float x) { anchorPointX_ = x; }
    void setAnchorPointY(float y) { anchorPointY_ = y; }

    void run() override;
    // Writes the last key frame of a Translation or Affine to the target's layer, and the anchor
    // point: call it once for each run.
    std::shared_ptr<platform::CAAnimation> createNativeAnimation() override;
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
