#pragma once

#include <memory>

namespace orvane::platform {
class NSView;
}

namespace orvane::display::animation {

class Animation;

// A transaction of the platform for one run of an animation, open while this lives. When everything
// that was added in it is over, the animation is told and its key taken off the view's layer. It
// keeps view and animation alive until then. Main thread only.
class AnimationTransaction {
public:
    AnimationTransaction(const std::shared_ptr<platform::NSView>& handler,
                         const std::shared_ptr<Animation>& animation);
    ~AnimationTransaction();
    AnimationTransaction(const AnimationTransaction&) = delete;
    AnimationTransaction& operator=(const AnimationTransaction&) = delete;
};

}  // namespace orvane::display::animation
