#include "platform/corevideo/CVDisplay.h"

#include <utility>

#include "platform/corevideo/DisplayLinks.h"

namespace orvane::platform {

CVDisplay::CVDisplay(std::function<void()> requestRefresh)
    : requestRefresh_(std::move(requestRefresh)) {
    DisplayLinks::shared().addDisplay(*this);
}

CVDisplay::~CVDisplay() {
    DisplayLinks::shared().removeDisplay(*this);
}

bool CVDisplay::refresh(double time) {
    return DisplayLinks::shared().refreshByDisplay(*this, time);
}

}  // namespace orvane::platform
