#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "orvane/display/animation/Animation.h"

namespace orvane::platform {
class CVDisplayLink;
struct CVTimeStamp;
}  // namespace orvane::platform

namespace orvane::display::animation {

class FrameAnimation;

// One run of a frame animation: it turns the ticks of a display link into phases. It keeps the
// animation alive. All times are seconds since the first tick.
//
// The link calls tick, and tick calls render, on the main thread. The timing is copied
// when the run begins: the application may give the animation another timing and run it again from
// the completion callback, while the tick that ended this run is still in progress.
class FrameAnimationDelegate {
public:
    explicit FrameAnimationDelegate(std::shared_ptr<FrameAnimation> frameAnimation);

    // The output callback of the link; always returns 0. Renders the frame. At the end of the run
    // it releases the link and then the delegate. After that, and with a null delegate, it does
    // nothing.
    static int tick(platform::CVDisplayLink& link, const platform::CVTimeStamp& outputTime,
                    std::shared_ptr<FrameAnimationDelegate>& delegate);

    // Calls the application's function with the phase, unless the delay has not passed. When the
    // run is over it calls it with 1, unless it was stopped at what is shown, and then the
    // animation's completion. Exceptions of the
    // application reach the caller.
    void render(float time) const;

    // Makes the run over: the next render is the last one. Only the first call counts.
    void stop(StopAt where);

    // The part of the current pass that has passed, from 0 up to 1.
    float animationTime(float time) const;
    // The number of passes that have passed, with its fraction; below zero during the delay.
    float durationTime(float time) const;
    // Whether the run is over. Unless it is stopped, a run with a repeat count below 1 is never
    // over: unlike a value animation, a frame animation with a count of zero repeats forever.
    bool isStopAnimation(float time) const;

    // The time of the first tick, in nanoseconds; 0 before it.
    std::uint64_t startTimestamp() const { return startTimestamp_; }
    void setStartTimestamp(std::uint64_t timestamp) { startTimestamp_ = timestamp; }

private:
    // Calls render and logs what it throws: the run continues.
    void renderLogged(float time) const noexcept;

    std::shared_ptr<FrameAnimation> frameAnimation_;
    const float delay_;
    const float duration_;
    const std::int32_t repeatCount_;
    std::uint64_t startTimestamp_ = 0;
    std::optional<StopAt> stopped_;
};

}  // namespace orvane::display::animation
