#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/quartzcore/CAAnimation.h"
#include "platform/quartzcore/CATransform3D.h"

namespace orvane::platform {

// Leads one property of a layer through key frames, spread evenly over a pass and joined linearly.
//
// Key paths: "opacity", "transform.translation.x", "transform.translation.y", "transform.rotation"
// (radians) with numbers, "transform" with transforms. The sub-paths of transform replace that one
// part of what the layer's transform is otherwise; the other parts stay. Transforms are joined by
// their parts (translation, rotation, scale, skew), so a rotation turns. Any other key path, and
// values of the wrong kind or none at all, change nothing, but the animation runs its time.
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
