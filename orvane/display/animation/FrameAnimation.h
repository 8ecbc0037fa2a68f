#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/display/animation/Animation.h"

namespace orvane::display::animation {

class FrameAnimationDelegate;

// Calls a function of the application at each refresh of the display with the phase of the pass,
// from 0 up to 1. The phase of the last call of a run is exactly 1; the completion callback follows
// it. The calls begin when the delay has passed.
//
// When the function throws, the exception is logged and the run continues. When it throws in the
// last call, the completion callback follows all the same, because the application may wait for it.
//
// The function is called on the main thread, must be set before run(), and keeps its state from
// frame to frame. A run needs a duration above zero and no target. Changes to delay, duration and
// repeat count apply from the next run on.
//
// A run with a repeat count below 1 is endless. Animatable::removeAnimation does not reach it:
// until stop() is called, the animation and everything that its function holds stay alive.
class ORVANE_EXPORT FrameAnimation : public virtual Animation {
public:
    // Receives the phase of the pass, 0 to 1.
    using FrameCallback = std::function<void(float phase)>;

    // `key` names the animation; a frame animation is not registered under it. `callback` is called
    // at each frame.
    explicit FrameAnimation(const std::string& key, const FrameCallback& callback = {})
        : Animation(key), frameCallback_(std::make_shared<FrameCallback>(callback)) {}
    ~FrameAnimation() override;

    // Sets the function that is called at each frame. It may be called from that function, for the
    // frames that follow. An empty function throws std::bad_function_call at the first frame, which
    // is logged.
    void setFrameCallback(const FrameCallback& callback) {
        frameCallback_ = std::make_shared<FrameCallback>(callback);
    }

    // Returns null: a frame animation does not run on a layer.
    std::shared_ptr<platform::CAAnimation> createNativeAnimation() override;
    // Starts a run with a display link of its own. Does nothing unless the duration is above zero.
    void run() override;
    // Ends all runs with the next frame: with StopAt::End the function is called with 1 once more,
    // with StopAt::Presentation not at all. The completion callback follows once for each run. May
    // be called from the function.
    void stop(StopAt where) override;

private:
    friend class FrameAnimationDelegate;

    void callFrameCallback(float phase) const;

    std::shared_ptr<FrameCallback> frameCallback_;  // never null; shared with a call under way
    std::vector<std::weak_ptr<FrameAnimationDelegate>> runs_;
};

}  // namespace orvane::display::animation
