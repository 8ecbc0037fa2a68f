#include "platform/quartzcore/CAKeyframeAnimation.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "platform/quartzcore/CALayer.h"

namespace orvane::platform {

CAKeyframeAnimation::CAKeyframeAnimation(const std::string& keyPath) : keyPath_(KeyPath::None) {
    static constexpr std::pair<std::string_view, KeyPath> paths[] = {
        {"opacity", KeyPath::Opacity},
        {"transform", KeyPath::Transform},
        {"transform.translation.x", KeyPath::TranslationX},
        {"transform.translation.y", KeyPath::TranslationY},
        {"transform.rotation", KeyPath::Rotation},
    };
    for (const auto& [name, path] : paths) {
        if (name == keyPath) {
            keyPath_ = path;
        }
    }
}

std::unique_ptr<CAAnimation> CAKeyframeAnimation::copy() const {
    return std::make_unique<CAKeyframeAnimation>(*this);
}

CAKeyframeAnimation::Place CAKeyframeAnimation::placeAt(double phase, std::size_t count) const {
    const double elapsed = timing_ ? timing_(phase) : phase;
    const std::size_t last = count - 2;
    Place place{0, 0};
    if (keyTimes_.size() == count) {
        // The last key frame that is not later, as far as there is one after it.
        const auto after = std::upper_bound(keyTimes_.begin() + 1, keyTimes_.end() - 1, elapsed);
        place.index = static_cast<std::size_t>(after - keyTimes_.begin()) - 1;
        const double begin = keyTimes_[place.index];
        const double length = keyTimes_[place.index + 1] - begin;
        place.share = length > 0 ? (elapsed - begin) / length : 1;
        // Outside the key times, the first or the last key frame shows: only what the timing
        // function adds is extrapolated.
        if (elapsed >= 0 && elapsed <= 1) {
            place.share = std::clamp(place.share, 0.0, 1.0);
        }
    } else {
        const double position = elapsed * static_cast<double>(count - 1);
        // Not a number becomes 0.
        place.index = position > 0
                          ? static_cast<std::size_t>(std::min(position, static_cast<double>(last)))
                          : 0;
        place.share = position - static_cast<double>(place.index);
    }
    const bool isInside = place.share >= 0 && place.share <= 1;
    if (isInside && place.index < segmentTimings_.size() && segmentTimings_[place.index]) {
        place.share = segmentTimings_[place.index](place.share);
    }
    return place;
}

// Returns the value at an elapsed fraction of the pass; nothing if there are no key frames.
template <typename T, typename Interpolate>
std::optional<T> CAKeyframeAnimation::valueAt(const std::vector<T>& values, double phase,
                                              Interpolate interpolate) const {
    if (values.empty()) {
        return std::nullopt;
    }
    if (values.size() == 1) {
        return values.front();
    }
    const Place place = placeAt(phase, values.size());
    return interpolate(values[place.index], values[place.index + 1], place.share);
}

void CAKeyframeAnimation::apply(double phase, const CALayer&, CALayerPresentation& shown) const {
    if (const auto* transforms = std::get_if<std::vector<CATransform3D>>(&values_)) {
        const auto value = valueAt(*transforms, phase, CATransform3D::interpolate);
        if (value && keyPath_ == KeyPath::Transform) {
            shown.transform = *value;
        }
        return;
    }
    const auto value =
        valueAt(std::get<std::vector<double>>(values_), phase,
                [](double a, double b, double share) { return std::lerp(a, b, share); });
    if (!value) {
        return;
    }
    switch (keyPath_) {
        case KeyPath::Opacity:
            shown.opacity = *value;
            break;
        case KeyPath::TranslationX:
            shown.transform = shown.transform.withTranslationX(*value);
            break;
        case KeyPath::TranslationY:
            shown.transform = shown.transform.withTranslationY(*value);
            break;
        case KeyPath::Rotation:
            shown.transform = shown.transform.withRotation(*value);
            break;
        case KeyPath::None:
        case KeyPath::Transform:
            break;
    }
}

}  // namespace orvane::platform
