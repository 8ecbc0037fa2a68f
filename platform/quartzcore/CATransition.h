#pragma once

#include <memory>

#include "platform/quartzcore/CAAnimation.h"

namespace orvane::platform {

enum class CATransitionType { Fade, Push };
enum class CATransitionSubtype { FromRight, FromLeft };

// Brings a layer in: it fades in (the default), or slides in from a side by its own width.
//
// The platform keeps no picture of what was shown before; whoever replaces one layer by another
// leaves the outgoing one in place below until the transition has ended, and names it here: it
// fades or slides out with the same motion. Without one the layer comes in over what is there.
class ORVANE_EXPORT CATransition : public CAAnimation {
public:
    void setType(CATransitionType type) { type_ = type; }
    void setSubtype(CATransitionSubtype subtype) { subtype_ = subtype; }
    // The part of the way that is travelled, 0 to 1.
    void setStartProgress(double progress) { startProgress_ = progress; }
    void setEndProgress(double progress) { endProgress_ = progress; }
    // Not owned, and no harm if it goes first. Null takes it back.
    void setOutgoingLayer(CALayer* layer);
    std::shared_ptr<CALayer> outgoingLayer() const override { return outgoing_.lock(); }

    std::unique_ptr<CAAnimation> copy() const override;
    void apply(double phase, const CALayer& layer, CALayerPresentation& shown) const override;
    void applyToOutgoing(double phase, const CALayer& incoming,
                         CALayerPresentation& shown) const override;

private:
    double progress(double phase) const;
    // Where a layer of the width stands at first, to the side of its place.
    double side(double width) const;

    CATransitionType type_ = CATransitionType::Fade;
    CATransitionSubtype subtype_ = CATransitionSubtype::FromLeft;
    double startProgress_ = 0;
    double endProgress_ = 1;
    std::weak_ptr<CALayer> outgoing_;
};

}  // namespace orvane::platform
