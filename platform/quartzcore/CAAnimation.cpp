#include "platform/quartzcore/CAAnimation.h"

#include <cmath>

#include "platform/quartzcore/CACrossFade.h"
#include "platform/quartzcore/CALayer.h"

namespace orvane::platform {

double CAAnimation::endTime() const {
    if (!(duration_ > 0)) {
        return beginTime_;
    }
    return beginTime_ + duration_ * (repeatCount_ > 0 ? static_cast<double>(repeatCount_) : 1.0);
}

double CAAnimation::phase(double time) const {
    const double elapsed = time - beginTime_;
    if (!(duration_ > 0) || !(elapsed > 0)) {
        return 0;
    }
    const double passes = elapsed / duration_;
    return passes - std::floor(passes);
}

void CAAnimation::applyToOutgoing(double, const CALayer&, CALayerPresentation&) const {}

std::shared_ptr<CACrossFade> CAAnimation::createCrossFade(CALayer&) const {
    return nullptr;
}

}  // namespace orvane::platform
