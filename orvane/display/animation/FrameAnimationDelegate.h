#pragma once

#include <cstdint>
#include <memory>

namespace orvane::platform {
class CVDisplayLink;
struct CVTimeStamp;
}  // namespace orvane::platform

namespace orvane::display::animation {

class FrameAnimation;

// One run of a frame animation, which it keeps alive: turns the ticks of a display link into
// phases. All times are seconds since the first tick.
//
// tick belongs to the link's thread and render to the main thread; the other operations only read
// the animation's timing, which stands still during a run.
class FrameAnimationDelegate {
public:
    explicit FrameAnimationDelegate(std::shared_ptr<FrameAnimation> frameAnimation);

    // The output callback of the link; 0 always. Has the frame rendered on the main thread, and
    // waits for it. At the end of the run both references are let go, the delegate's on the main
    // thread; after that, as with a null delegate, it does nothing.
    static int tick(platform::CVDisplayLink& link, const platform::CVTimeStamp& outputTime,
                    std::shared_ptr<FrameAnimationDelegate>& delegate);

    // Calls the application, unless the delay has not passed: with the phase, or with 1 when the
    // run is over and then the animation's completion. What they throw comes out here.
    void render(float time) const;

    // The share of the pass that has gone by.
    float animationTime(float time) const;
    // The number of passes that have gone by, fraction included; below zero during the delay.
    float durationTime(float time) const;
    // Never for a repeat count below 1: unlike a value animation's, a zero repeats for ever.
    bool isStopAnimation(float time) const;

    // The first tick's time, in nanoseconds; 0 before it.
    std::uint64_t startTimestamp() const { return startTimestamp_; }
    void setStartTimestamp(std::uint64_t timestamp) { startTimestamp_ = timestamp; }

private:
    // render, with what it throws logged: the run goes on, and so does the link's thread.
    void renderLogged(float time) const noexcept;

    std::shared_ptr<FrameAnimation> frameAnimation_;
    std::uint64_t startTimestamp_ = 0;
};

}  // namespace orvane::display::animation
