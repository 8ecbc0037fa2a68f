#include "orvane/display/animation/Animatable.h"

#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CALayer.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::display::animation {

void Animatable::removeAnimation(const std::string& key) {
    const std::shared_ptr<platform::NSView> handler = getAnimatableHandler();
    if (handler && handler->layer() != nullptr) {
        handler->layer()->removeAnimationForKey(key);
    }
}

std::vector<float> Animatable::getPresentationValue(AttributeName attributeName) const {
    const std::shared_ptr<platform::NSView> handler = getAnimatableHandler();
    if (!handler || handler->layer() == nullptr) {
        return {};
    }
    const platform::CALayerPresentation shown =
        handler->layer()->presentation(platform::CACurrentMediaTime());
    const platform::CGAffineTransform t = shown.transform.affineTransform();
    const auto numbers = [](auto... number) {
        return std::vector<float>{static_cast<float>(number)...};
    };
    switch (attributeName) {
        case AttributeName::TranslationX:
            return numbers(t.tx);
        case AttributeName::TranslationY:
            return numbers(t.ty);
        case AttributeName::Opacity:
            return numbers(shown.opacity);
        case AttributeName::Translation:
            return numbers(t.tx, t.ty);
        case AttributeName::Rotation:
            return numbers(shown.transform.rotation());
        case AttributeName::Affine:
            return numbers(t.a, t.b, t.c, t.d, t.tx, t.ty);
    }
    return {};
}

}  // namespace orvane::display::animation
