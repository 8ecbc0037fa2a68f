#include "platform/quartzcore/CATransition.h"

#include <algorithm>
#include <cmath>

#include "platform/quartzcore/CACrossFade.h"
#include "platform/quartzcore/CALayer.h"

namespace orvane::platform {

void CATransition::setOutgoingLayer(CALayer* layer) {
    outgoing_ = layer != nullptr ? layer->weak_from_this() : std::weak_ptr<CALayer>();
}

std::unique_ptr<CAAnimation> CATransition::copy() const {
    return std::make_unique<CATransition>(*this);
}

std::shared_ptr<CACrossFade> CATransition::createCrossFade(CALayer& incoming) const {
    return type_ == CATransitionType::Fade
               ? std::make_shared<CACrossFade>(*this, incoming, outgoing_.lock())
               : nullptr;
}

double CATransition::progress(double phase) const {
    const double progress = std::lerp(startProgress_, endProgress_, phase);
    return progress > 0 ? std::min(progress, 1.0) : 0.0;
}

double CATransition::pushDistance(const CALayer& incoming) const {
    double width = incoming.superlayer() != nullptr ? incoming.superlayer()->size().width : 0;
    if (!(width > 0)) {
        double left = incoming.left();
        double right = left + incoming.size().width;
        if (const std::shared_ptr<CALayer> outgoing = outgoing_.lock()) {
            left = std::min(left, outgoing->left());
            right = std::max(right, outgoing->left() + outgoing->size().width);
        }
        width = right - left;
    }
    return subtype_ == CATransitionSubtype::FromRight ? -width : width;
}

// A fade is applied by its CACrossFade.
void CATransition::apply(double phase, const CALayer& layer, CALayerPresentation& shown) const {
    if (type_ == CATransitionType::Push) {
        shown.position.x -= pushDistance(layer) * (1 - progress(phase));
    }
}

void CATransition::applyToOutgoing(double phase, const CALayer& incoming,
                                   CALayerPresentation& shown) const {
    if (type_ == CATransitionType::Push) {
        shown.position.x += pushDistance(incoming) * progress(phase);
    }
}

}  // namespace orvane::platform
