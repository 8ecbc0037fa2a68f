#pragma once

#include <memory>

namespace orvane::platform {
class NSView;
}

namespace orvane::display::animation {

class Animation;

// An open transaction of the platform for one run of an animation; the destructor commits it. When
// every animation that was added inside it has ended, the completion calls Animation::onCompleted
// and removes the animation's key from the view's layer. The completion keeps the view and the
// animation alive. Main thread only.
class AnimationTransaction {
public:
    AnimationTransaction(const std::shared_ptr<platform::NSView>& handler,
                         const std::shared_ptr<Animation>& animation);
    ~AnimationTransaction();
    AnimationTransaction(const AnimationTransaction&) = delete;
    AnimationTransaction& operator=(const AnimationTransaction&) = delete;
};

}  // namespace orvane::display::animation
