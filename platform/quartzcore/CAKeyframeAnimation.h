#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/quartzcore/CAAnimation.h"
#include "platform/quartzcore/CATransform3D.h"

namespace orvane::platform {

// Maps the elapsed fraction of a time, 0 to 1, to the fraction of the way, which may be outside
// that range. An empty function is linear.
using CAMediaTimingFunction = std::function<double(double elapsed)>;

// Animates one property of a layer through key frames, which are evenly spaced over a pass and
// interpolated linearly unless set otherwise.
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

    // The time of each key frame as a fraction of the pass. They must be as many as the values,
    // ascend, and be in the range 0 to 1, which the caller checks. Before the first one the first
    // key frame shows, after the last one the last. An empty list, the default, spaces the key
    // frames evenly.
    void setKeyTimes(std::vector<double> times) { keyTimes_ = std::move(times); }
    // The pace of the whole pass. If it leaves the range 0 to 1, the first or the last two key
    // frames are extrapolated.
    void setTimingFunction(CAMediaTimingFunction function) { timing_ = std::move(function); }
    // The pace between a key frame and the next one. Missing functions are linear.
    void setTimingFunctions(std::vector<CAMediaTimingFunction> functions) {
        segmentTimings_ = std::move(functions);
    }

    std::unique_ptr<CAAnimation> copy() const override;
    void apply(double phase, const CALayer& layer, CALayerPresentation& shown) const override;

private:
    enum class KeyPath { None, Opacity, Transform, TranslationX, TranslationY, Rotation };

    // A place among the key frames: between the one at `index` and the next one.
    struct Place {
        std::size_t index;
        double share;
    };
    // Requires at least two key frames.
    Place placeAt(double phase, std::size_t count) const;
    template <typename T, typename Interpolate>
    std::optional<T> valueAt(const std::vector<T>& values, double phase,
                             Interpolate interpolate) const;

    KeyPath keyPath_;
    std::vector<double> keyTimes_;
    CAMediaTimingFunction timing_;
    std::vector<CAMediaTimingFunction> segmentTimings_;
    std::variant<std::vector<double>, std::vector<CATransform3D>> values_;
};

}  // namespace orvane::platform
