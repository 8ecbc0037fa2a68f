#pragma once

#include <memory>

#include "platform/quartzcore/CAAnimation.h"

namespace orvane::platform {

enum class CATransitionType { Fade, Push };
enum class CATransitionSubtype { FromRight, FromLeft };

// Brings a layer in: it fades in (the default), or slides in from a side.
//
// The platform keeps no picture of what was visible before. To replace one layer by another, the
// caller leaves the outgoing layer in place below the incoming one until the transition has ended,
// and names it with setOutgoingLayer: it then fades or slides out with the same motion. Without an
// outgoing layer, the layer comes in over what is behind it.
//
// A push travels by the width of the superlayer, which frames both layers; without a superlayer, by
// the width of the box around both.
class ORVANE_EXPORT CATransition : public CAAnimation {
public:
    void setType(CATransitionType type) { type_ = type; }
    void setSubtype(CATransitionSubtype subtype) { subtype_ = subtype; }
    // The part of the transition that is shown, from 0 to 1 each.
    void setStartProgress(double progress) { startProgress_ = progress; }
    void setEndProgress(double progress) { endProgress_ = progress; }
    // Not owned; the layer may be destroyed first. Null removes it.
    void setOutgoingLayer(CALayer* layer);

    // The part of the transition that is done at an elapsed fraction of the duration, from 0 to 1.
    double progress(double phase) const;

    std::unique_ptr<CAAnimation> copy() const override;
    void apply(double phase, const CALayer& layer, CALayerPresentation& shown) const override;
    std::shared_ptr<CALayer> outgoingLayer() const override { return outgoing_.lock(); }
    void applyToOutgoing(double phase, const CALayer& incoming,
                         CALayerPresentation& shown) const override;
    std::shared_ptr<CACrossFade> createCrossFade(CALayer& incoming) const override;

private:
    // The way from the incoming layer's first position to its last, along the x axis.
    double pushDistance(const CALayer& incoming) const;

    CATransitionType type_ = CATransitionType::Fade;
    CATransitionSubtype subtype_ = CATransitionSubtype::FromLeft;
    double startProgress_ = 0;
    double endProgress_ = 1;
    std::weak_ptr<CALayer> outgoing_;
};

}  // namespace orvane::platform
