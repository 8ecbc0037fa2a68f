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
    : frameAnimation_(std::move(frameAnimation)) {}

int FrameAnimationDelegate::tick(platform::CVDisplayLink& link,
                                 const platform::CVTimeStamp& outputTime,
                                 std::shared_ptr<FrameAnimationDelegate>& delegate) {
    if (!delegate) {
        return 0;
    }
    if (delegate->startTimestamp() == 0) {
        delegate->setStartTimestamp(outputTime.hostTime);
    }
    // Whole milliseconds: the grain of a frame animation's time.
    const std::uint64_t milliseconds = (outputTime.hostTime - delegate->startTimestamp()) / 1000000;
    const auto time = static_cast<float>(static_cast<double>(milliseconds) / 1000.0);
    thread::dispatch_main([&delegate, time] { delegate->renderLogged(time); });
    if (!delegate->isStopAnimation(time)) {
        return 0;
    }
    link.stop();
    link.release();
    // Behind the last render, and on the main thread: the animation and the application's callbacks
    // may go with it.
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
    if (time < frameAnimation_->getDelay()) {
        return;
    }
    if (!isStopAnimation(time)) {
        frameAnimation_->callFrameCallback(animationTime(time));
        return;
    }
    try {
        frameAnimation_->callFrameCallback(1.0F);
    } catch (...) {
        // The completion is due even so: the application may be waiting for it.
        frameAnimation_->onCompleted();
        throw;
    }
    frameAnimation_->onCompleted();
}

float FrameAnimationDelegate::animationTime(float time) const {
    const float passes = durationTime(time);
    return passes - std::floor(passes);
}

float FrameAnimationDelegate::durationTime(float time) const {
    return (time - frameAnimation_->getDelay()) / std::max(frameAnimation_->getDuration(), 1e-6F);
}

bool FrameAnimationDelegate::isStopAnimation(float time) const {
    return frameAnimation_->getRepeatCount() >= 1 &&
           durationTime(time) >= static_cast<float>(frameAnimation_->getRepeatCount());
}

}  // namespace orvane::display::animation
