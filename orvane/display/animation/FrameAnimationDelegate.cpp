#include "orvane/display/animation/FrameAnimationDelegate.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "orvane/display/animation/FrameAnimation.h"
#include "orvane/thread/dispatch.h"
#include "platform/corevideo/CVDisplayLink.h"
#include "platform/foundation/NSLog.h"

namespace orvane::display::animation {

FrameAnimationDelegate::FrameAnimationDelegate(std::shared_ptr<FrameAnimation> frameAnimation)
    : frameAnimation_(std::move(frameAnimation)),
      delay_(frameAnimation_->getDelay()),
      duration_(frameAnimation_->getDuration()),
      repeatCount_(frameAnimation_->getRepeatCount()) {}

int FrameAnimationDelegate::tick(platform::CVDisplayLink& link,
                                 const platform::CVTimeStamp& outputTime,
                                 std::shared_ptr<FrameAnimationDelegate>& delegate) {
    if (!delegate) {
        return 0;
    }
    if (delegate->startTimestamp() == 0) {
        delegate->setStartTimestamp(outputTime.hostTime);
    }
    // The time of a frame animation has a resolution of one millisecond.
    const std::uint64_t milliseconds = (outputTime.hostTime - delegate->startTimestamp()) / 1000000;
    const auto time = static_cast<float>(static_cast<double>(milliseconds) / 1000.0);
    // Decided before the application's function is called: if that stops the run, the next frame
    // is the last one.
    const bool isLast = delegate->isStopAnimation(time);
    thread::dispatch_main([&delegate, time] { delegate->renderLogged(time); });
    if (!isLast) {
        return 0;
    }
    link.stop();
    link.release();
    // Released last: the animation and the application's callbacks may be destroyed with it.
    thread::dispatch_main([&delegate] { delegate.reset(); });
    return 0;
}

void FrameAnimationDelegate::renderLogged(float time) const noexcept {
    try {
        render(time);
    } catch (const std::exception& error) {
        platform::NSLog("A frame animation's callback failed: %s", error.what());
    } catch (...) {
        platform::NSLog("A frame animation's callback failed");
    }
}

void FrameAnimationDelegate::render(float time) const {
    if (time < delay_ && !stopped_) {
        return;
    }
    if (!isStopAnimation(time)) {
        frameAnimation_->callFrameCallback(animationTime(time));
        return;
    }
    try {
        if (stopped_ != StopAt::Presentation) {
            frameAnimation_->callFrameCallback(1.0F);
        }
    } catch (...) {
        // The completion is called all the same: the application may wait for it.
        frameAnimation_->onCompleted();
        throw;
    }
    frameAnimation_->onCompleted();
}

void FrameAnimationDelegate::stop(StopAt where) {
    if (!stopped_) {
        stopped_ = where;
    }
}

float FrameAnimationDelegate::animationTime(float time) const {
    const float passes = durationTime(time);
    return passes - std::floor(passes);
}

float FrameAnimationDelegate::durationTime(float time) const {
    return (time - delay_) / std::max(duration_, 1e-6F);
}

bool FrameAnimationDelegate::isStopAnimation(float time) const {
    return stopped_ ||
           (repeatCount_ >= 1 && durationTime(time) >= static_cast<float>(repeatCount_));
}

}  // namespace orvane::display::animation
