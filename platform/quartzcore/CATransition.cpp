#include "platform/quartzcore/CATransition.h"

#include <algorithm>
#include <cmath>

#include "platform/quartzcore/CALayer.h"

namespace orvane::platform {

void CATransition::setOutgoingLayer(CALayer* layer) {
    outgoing_ = layer != nullptr ? layer->weak_from_this() : std::weak_ptr<CALayer>();
}

std::unique_ptr<CAAnimation> CATransition::copy() const {
    return std::make_unique<CATransition>(*this);
}

double CATransition::progress(double phase) const {
    const double progress = std::lerp(startProgress_, endProgress_, phase);
    return progress > 0 ? std::min(progress, 1.0) : 0.0;
}

double CATransition::side(double width) const {
    return subtype_ == CATransitionSubtype::FromRight ? width : -width;
}

void CATransition::apply(double phase, const CALayer& layer, CALayerPresentation& shown) const {
    if (type_ == CATransitionType::Push) {
        shown.position.x += side(layer.size().width) * (1 - progress(phase));
        return;
    }
    shown.opacity *= progress(phase);
    shown.fadesFrom = outgoing_.lock().get();
}

void CATransition::applyToOutgoing(double phase, const CALayer& incoming,
                                   CALayerPresentation& shown) const {
    if (type_ == CATransitionType::Push) {
        shown.position.x -= side(incoming.size().width) * progress(phase);
        return;
    }
    shown.opacity *= 1 - progress(phase);
}

}  // namespace orvane::platform
