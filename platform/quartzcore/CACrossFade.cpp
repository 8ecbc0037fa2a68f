#include "platform/quartzcore/CACrossFade.h"

#include "platform/quartzcore/CALayer.h"

namespace orvane::platform {

namespace {

// Finds a layer's neighbors and its share while the layers of a chain are visited from the top.
class Search {
public:
    Search(const CALayer& layer, CALayerPresentation& shown) : layer_(layer), shown_(shown) {}

    // A layer may occur several times, if a page fades back in before it has faded out. Its shares
    // are added; its position in the chain is the first one.
    void visit(CALayer& layer, double share, bool isFirst) {
        if (&layer == &layer_) {
            share_ += share;
        }
        if (!isFirst) {
            return;
        }
        if (&layer == &layer_) {
            shown_.fadesInto = previous_;
        } else if (previous_ == &layer_) {
            shown_.fadesFrom = &layer;
        }
        previous_ = &layer;
    }
    double share() const { return share_; }

private:
    const CALayer& layer_;
    CALayerPresentation& shown_;
    CALayer* previous_ = nullptr;
    double share_ = 0;
};

}  // namespace

CACrossFade::CACrossFade(const CATransition& transition, CALayer& incoming,
                         const std::shared_ptr<CALayer>& outgoing)
    : transition_(transition),
      incoming_(incoming.weak_from_this()),
      outgoing_(outgoing.get() != &incoming ? outgoing : nullptr) {}

void CACrossFade::placeAbove(const std::shared_ptr<CACrossFade>& fade) {
    std::shared_ptr<CACrossFade> topmost = fade;
    while (const std::shared_ptr<CACrossFade> above = topmost->above_.lock()) {
        topmost = above;
    }
    below_ = topmost;
    topmost->above_ = weak_from_this();
}

bool CACrossFade::isRunning(double time) const {
    return time >= transition_.beginTime() && time < transition_.endTime();
}

const CACrossFade* CACrossFade::top() const {
    const CACrossFade* fade = this;
    while (const std::shared_ptr<CACrossFade> above = fade->above_.lock()) {
        fade = above.get();
    }
    return fade;
}

void CACrossFade::apply(const CALayer& layer, double time, CALayerPresentation& shown) {
    Search search(layer, shown);
    double rest = 1;  // the share of everything below
    const CACrossFade* lowest = nullptr;
    for (const CACrossFade* fade = top(); fade != nullptr; fade = fade->below_.lock().get()) {
        if (!fade->isRunning(time)) {
            continue;
        }
        const double progress = fade->transition_.progress(fade->transition_.phase(time));
        if (const std::shared_ptr<CALayer> incoming = fade->incoming_.lock()) {
            search.visit(*incoming, rest * progress, incoming->fadeIn(time) == fade);
        }
        rest *= 1 - progress;
        lowest = fade;
    }
    const std::shared_ptr<CALayer> outgoing =
        lowest != nullptr ? lowest->outgoing_.lock() : nullptr;
    if (outgoing) {
        search.visit(*outgoing, rest, outgoing->fadeIn(time) == nullptr);
    }
    shown.opacity *= search.share();
}

}  // namespace orvane::platform
