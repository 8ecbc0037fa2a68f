#include "orvane/display/animation/Animation.h"

#include "orvane/display/animation/Animatable.h"

namespace orvane::display::animation {

Animation::Animation(const std::string& key)
    : completionCallback_(std::make_shared<CompletionCallback>()), key_(key) {}

Animation::~Animation() = default;

void Animation::setCompletionCallback(const CompletionCallback& callback) {
    auto former = std::make_shared<CompletionCallback>(callback);
    // The previous callback is destroyed after the swap: what it owns may look at this animation.
    completionCallback_.swap(former);
}

void Animation::onCompleted() {
    const std::shared_ptr<CompletionCallback> callback = completionCallback_;
    if (*callback) {
        (*callback)();
    }
}

void Animation::stop(StopAt) {}

std::shared_ptr<platform::NSView> Animation::getAnimatableHandler() const {
    return animatable_ ? animatable_->getAnimatableHandler() : nullptr;
}

}  // namespace orvane::display::animation
