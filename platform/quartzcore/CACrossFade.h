#pragma once

#include <memory>

#include "platform/quartzcore/CATransition.h"

namespace orvane::platform {

class CALayer;
struct CALayerPresentation;

// One running cross-fade of a layer over another: it pairs the two when the transition is added.
// Owned by both layers while it runs. Main thread only.
//
// A fade that is added while its outgoing layer takes part in another fade replaces the mixture
// that is visible at that time: the fades form a chain, and the last one is its top. The mixture of
// the top is `progress` of its incoming layer and the rest of the mixture below; so the shares of
// all layers of a chain add up to 1, and nothing jumps when a fade is added to it.
class CACrossFade : public std::enable_shared_from_this<CACrossFade> {
public:
    // Without an outgoing layer, the incoming layer fades in over what is behind it.
    CACrossFade(const CATransition& transition, CALayer& incoming,
                const std::shared_ptr<CALayer>& outgoing);

    // Puts this fade on top of the chain in which its outgoing layer takes part, if any.
    void placeAbove(const std::shared_ptr<CACrossFade>& fade);

    // Applies the share of one of the chain's layers at a media time, and its neighbors in it.
    // Takes time proportional to the number of fades in the chain.
    void apply(const CALayer& layer, double time, CALayerPresentation& shown);

private:
    const CACrossFade* top() const;
    bool isRunning(double time) const;

    const CATransition transition_;
    std::weak_ptr<CALayer> incoming_;
    std::weak_ptr<CALayer> outgoing_;
    std::weak_ptr<CACrossFade> below_;
    std::weak_ptr<CACrossFade> above_;
};

}  // namespace orvane::platform
