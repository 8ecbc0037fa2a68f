#pragma once

#include <functional>
#include <memory>

namespace orvane::platform {
class NSView;
}

namespace orvane::display::animation {

class Animation;

// An open transaction of the platform for one run of an animation; the destructor commits it. When
// every animation that was added inside it has ended, it calls `completion`, which keeps alive what
// it captures. Main thread only.
class AnimationTransaction {
public:
    explicit AnimationTransaction(std::function<void()> completion);
    ~AnimationTransaction();
    AnimationTransaction(const AnimationTransaction&) = delete;
    AnimationTransaction& operator=(const AnimationTransaction&) = delete;
};

// The completion of a run: calls Animation::onCompleted, then removes the animation's key from the
// view's layer, even if the former throws.
void completeAndRemoveKey(const platform::NSView& handler,
                          const std::shared_ptr<Animation>& animation);

}  // namespace orvane::display::animation
