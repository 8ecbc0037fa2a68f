#include "orvane/display/animation/GroupAnimation.h"

#include "orvane/display/animation/AnimationTransaction.h"

namespace orvane::display::animation {

GroupAnimation::GroupAnimation(const std::string& key) : Animation(key) {}

GroupAnimation::~GroupAnimation() = default;

void GroupAnimation::add(const std::shared_ptr<Animation>& animation) {
    animations_.push_back(animation);
}

void GroupAnimation::run() {
    if (animations_.empty()) {
        return;
    }
    const std::shared_ptr<platform::NSView> handler = getAnimatableHandler();
    if (!handler) {
        return;
    }
    const AnimationTransaction transaction(
        [handler, self = shared_from_this()] { completeAndRemoveKey(*handler, self); });
    for (const std::shared_ptr<Animation>& animation : animations_) {
        if (animation) {
            animation->run();
        }
    }
}

void GroupAnimation::stop(StopAt where) {
    for (const std::shared_ptr<Animation>& animation : animations_) {
        if (animation) {
            animation->stop(where);
        }
    }
}

std::shared_ptr<platform::CAAnimation> GroupAnimation::createNativeAnimation() {
    return nullptr;
}

}  // namespace orvane::display::animation
