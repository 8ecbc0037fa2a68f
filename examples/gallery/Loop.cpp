#include "Loop.h"

#include <utility>

namespace gallery {

Loop::Loop(Container page, Make make) : page_(std::move(page)), make_(std::move(make)) {}

void Loop::start() {
    if (!isRunning_) {
        isRunning_ = true;
        runOnce();
    }
}

void Loop::runOnce() {
    const auto layer = page_->getLayer();
    const bool isStill = Look::instance().appearance().reducesMotion;
    if (!layer || !layer->getDisplay() || isStill) {
        isRunning_ = false;
        return;
    }
    // The key of a pass is removed from the layer after its callback: the next pass needs another.
    isOddPass_ = !isOddPass_;
    const auto scale = static_cast<float>(page_->getTransformation().m00);
    const auto animation = make_(isOddPass_ ? "odd pass" : "even pass", scale);
    animation->setCompletionCallback([weak = weak_from_this()] {
        if (const auto self = weak.lock()) {
            self->runOnce();
        }
    });
    animation->run();
}

}  // namespace gallery
