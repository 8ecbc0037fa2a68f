#include "platform/quartzcore/CAKeyframeAnimation.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/quartzcore/CALayer.h"

namespace orvane::platform {

namespace {

// Returns the value at an elapsed fraction of the pass; nothing if there are no key frames.
template <typename T, typename Interpolate>
std::optional<T> valueAt(const std::vector<T>& values, double phase, Interpolate interpolate) {
    if (values.empty()) {
        return std::nullopt;
    }
    const double place = phase * static_cast<double>(values.size() - 1);
    const auto index = static_cast<std::size_t>(place);
    if (index + 1 >= values.size()) {
        return values.back();
    }
    return interpolate(values[index], values[index + 1], place - static_cast<double>(index));
}

}  // namespace

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
