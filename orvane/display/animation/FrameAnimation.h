#pragma once

#include <functional>
#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "orvane/display/animation/Animation.h"

namespace orvane::display::animation {

class FrameAnimationDelegate;

// Calls the application once for each refresh of the display with how much of the pass has gone by,
// from 0 up to 1. The last call of a run is exactly 1, and the completion callback follows it.
// Calls begin when the delay has passed.
//
// The callback is called on the main thread, must be set before run(), and keeps its state from
// frame to frame. Delay, duration and repeat count must not change during a run. A run needs a
// duration above zero and no target. One with a repeat count below 1 is endless: it cannot be
// stopped, Animatable::removeAnimation does not reach it, and the animation, with what its callback
// holds, stays until the process ends.
class ORVANE_EXPORT FrameAnimation : public virtual Animation {
public:
    using FrameCallback = std::function<void(float phase)>;

    explicit FrameAnimation(const std::string& key, const FrameCallback& callback = {})
        : Animation(key), frameCallback_(std::make_shared<FrameCallback>(callback)) {}
    ~FrameAnimation() override;

    // An empty one fails at the first frame. A callback may set another for the frames to come.
    void setFrameCallback(const FrameCallback& callback) {
        frameCallback_ = std::make_shared<FrameCallback>(callback);
    }

    std::shared_ptr<platform::CAAnimation> createNativeAnimation() override;
    void run() override;

private:
    friend class FrameAnimationDelegate;

    void callFrameCallback(float phase) const;

    std::shared_ptr<FrameCallback> frameCallback_;  // never null; shared with a call under way
};

}  // namespace orvane::display::animation
