#include "platform/corevideo/CVDisplayLink.h"

#include "platform/corevideo/DisplayLinks.h"

namespace orvane::platform {

CVDisplayLink::Return CVDisplayLink::createWithMainDisplay(CVDisplayLink& link) {
    link.state_ = std::make_shared<DisplayLinkState>();
    return kCVReturnSuccess;
}

CVDisplayLink::Return CVDisplayLink::setOutputCallback(OutputCallback callback) {
    return state_ ? DisplayLinks::shared().setCallback(*state_, std::move(callback))
                  : kCVReturnInvalidArgument;
}

CVDisplayLink::Return CVDisplayLink::start() {
    return state_ ? DisplayLinks::shared().start(state_) : kCVReturnInvalidArgument;
}

CVDisplayLink::Return CVDisplayLink::stop() {
    return state_ ? DisplayLinks::shared().stop(state_) : kCVReturnInvalidArgument;
}

void CVDisplayLink::release() {
    state_.reset();
}

bool CVDisplayLink::isAnyRunning() {
    return DisplayLinks::shared().isAnyRunning();
}

}  // namespace orvane::platform
