#include "orvane/display/animation/Animatable.h"

#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CALayer.h"

namespace orvane::display::animation {

void Animatable::removeAnimation(const std::string& key) {
    const std::shared_ptr<platform::NSView> handler = getAnimatableHandler();
    if (handler && handler->layer() != nullptr) {
        handler->layer()->removeAnimationForKey(key);
    }
}

}  // namespace orvane::display::animation
