#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/quartzcore/CAAnimation.h"
#include "platform/quartzcore/CATransform3D.h"

namespace orvane::platform {

// Animates one property of a layer through key frames, which are evenly spaced over a pass and
// interpolated linearly.
//
// The key paths "opacity", "transform.translation.x", "transform.translation.y" and
// "transform.rotation" (in radians) take numbers; "transform" takes transforms. The last three
// paths that take numbers replace one component of the layer's transform and keep the others.
// Transforms are interpolated by components (CATransform3D::interpolate), so a rotation stays a
// rotation. An animation with another key path, with values of the wrong type or without values
// runs for its duration and changes nothing.
class ORVANE_EXPORT CAKeyframeAnimation : public CAAnimation {
public:
    explicit CAKeyframeAnimation(const std::string& keyPath);

    void setValues(std::vector<double> values) { values_ = std::move(values); }
    void setValues(std::vector<CATransform3D> values) { values_ = std::move(values); }

    std::unique_ptr<CAAnimation> copy() const override;
    void apply(double phase, const CALayer& layer, CALayerPresentation& shown) const override;

private:
    enum class KeyPath { None, Opacity, Transform, TranslationX, TranslationY, Rotation };

    KeyPath keyPath_;
    std::variant<std::vector<double>, std::vector<CATransform3D>> values_;
};

}  // namespace orvane::platform
