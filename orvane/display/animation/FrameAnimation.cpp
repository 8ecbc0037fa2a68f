#include "orvane/display/animation/FrameAnimation.h"

#include "orvane/display/animation/FrameAnimationDelegate.h"
#include "platform/corevideo/CVDisplayLink.h"
#include "platform/foundation/NSLog.h"

namespace orvane::display::animation {

using platform::CVDisplayLink;

FrameAnimation::~FrameAnimation() = default;

std::shared_ptr<platform::CAAnimation> FrameAnimation::createNativeAnimation() {
    return nullptr;
}

void FrameAnimation::run() {
    if (!(getDuration() > 0)) {
        return;
    }
    auto delegate = std::make_shared<FrameAnimationDelegate>(as<FrameAnimation>());
    std::erase_if(runs_, [](const auto& run) { return run.expired(); });
    runs_.push_back(delegate);
    CVDisplayLink link;
    if (const CVDisplayLink::Return error = CVDisplayLink::createWithMainDisplay(link)) {
        platform::NSLog("DisplayLink created with error:%d", error);
    }
    // The link's callback owns the link and the delegate; tick releases both. A null link accepts
    // all of these calls and does nothing.
    link.setOutputCallback(
        [delegate, owned = link](CVDisplayLink&, const auto& outputTime) mutable {
            return FrameAnimationDelegate::tick(owned, outputTime, delegate);
        });
    link.start();
}

void FrameAnimation::stop(StopAt where) {
    for (const std::weak_ptr<FrameAnimationDelegate>& entry : runs_) {
        if (const std::shared_ptr<FrameAnimationDelegate> run = entry.lock()) {
            run->stop(where);
        }
    }
}

void FrameAnimation::callFrameCallback(float phase) const {
    const std::shared_ptr<FrameCallback> callback = frameCallback_;
    (*callback)(phase);
}

}  // namespace orvane::display::animation
