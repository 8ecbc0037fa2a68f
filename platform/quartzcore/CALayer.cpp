#include "platform/quartzcore/CALayer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/quartzcore/CAAnimation.h"
#include "platform/quartzcore/CACrossFade.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "platform/quartzcore/CATimeline.h"
#include "platform/quartzcore/CATransactionGroup.h"

namespace orvane::platform {

// One registered animation.
struct CALayer::Running {
    std::string key;
    std::shared_ptr<const CAAnimation> animation;
    // Keeps its transactions open until it is over.
    std::shared_ptr<CATransactionGroup> group;
    // Shared by the two sides of a cross-fade; null for other animations.
    std::shared_ptr<CACrossFade> fade;
    // Set for the outgoing side of a transition, which has no key.
    bool isOutgoing = false;
    std::weak_ptr<CALayer> incoming = {};
    bool isOver = false;

    bool hasEffect(double time) const {
        return time >= animation->beginTime() && time < animation->endTime();
    }
};

CALayer::CALayer() = default;

CALayer::~CALayer() {
    delegate_ = nullptr;
    removeAllAnimations();
}

void CALayer::changed(unsigned changes) {
    if (delegate_ != nullptr) {
        delegate_->layerDidChange(*this, changes);
    }
}

void CALayer::setPosition(CGPoint position) {
    if (position_ != position) {
        position_ = position;
        changed(kCALayerGeometryChanged);
    }
}

void CALayer::setAnchorPoint(CGPoint anchorPoint) {
    if (anchorPoint_ != anchorPoint) {
        anchorPoint_ = anchorPoint;
        changed(kCALayerGeometryChanged);
    }
}

void CALayer::setSize(CGSize size) {
    if (size_ != size) {
        size_ = size;
        changed(kCALayerGeometryChanged);
    }
}

void CALayer::setTransform(const CATransform3D& transform) {
    if (transform_ != transform) {
        transform_ = transform;
        changed(kCALayerGeometryChanged);
    }
}

void CALayer::setOpacity(double opacity) {
    if (opacity_ != opacity) {
        opacity_ = opacity;
        changed(kCALayerOpacityChanged);
    }
}

void CALayer::setZPosition(double z) {
    if (zPosition_ != z) {
        zPosition_ = z;
        changed(kCALayerZPositionChanged);
    }
}

void CALayer::setBackgroundColor(const CGColor& color) {
    if (backgroundColor_ != color) {
        backgroundColor_ = color;
        changed(kCALayerBackgroundChanged);
    }
}

void CALayer::setMasksToBounds(bool masks) {
    if (masksToBounds_ != masks) {
        masksToBounds_ = masks;
        changed(kCALayerGeometryChanged);
    }
}

void CALayer::addAnimation(const CAAnimation& animation, const std::string& key) {
    removeAnimationForKey(key);
    std::shared_ptr<CAAnimation> copy = animation.copy();
    if (copy->beginTime() == 0) {
        copy->setBeginTime(CACurrentMediaTime());
    }
    const auto start = [&copy](CALayer& layer, Running running) {
        layer.running_.push_back(std::move(running));
        CATimeline& timeline = CATimeline::instance();
        if (layer.timelineIndex_ == kNotOnTimeline) {
            timeline.addLayer(layer);
        }
        timeline.animationAdded(copy->beginTime(), copy->endTime());
        layer.changed(kCALayerAnimationsChanged);
    };
    std::shared_ptr<CALayer> outgoing = copy->outgoingLayer();
    if (outgoing.get() == this) {
        outgoing.reset();
    }
    const std::shared_ptr<CACrossFade> fade = copy->createCrossFade(*this);
    const std::shared_ptr<CACrossFade> below = outgoing && fade ? outgoing->lastFade() : nullptr;
    if (below) {
        fade->placeAbove(below);
    }
    start(*this, {key, copy, CATransactionGroup::current(), fade});
    if (outgoing) {
        start(*outgoing, {{}, copy, nullptr, fade, true, weak_from_this()});
    }
}

void CALayer::removeAnimationForKey(const std::string& key) {
    const auto found = std::find_if(running_.begin(), running_.end(), [&key](const Running& r) {
        return !r.isOutgoing && r.key == key;
    });
    if (found != running_.end()) {
        removeRunning(static_cast<std::size_t>(found - running_.begin()));
        changed(kCALayerAnimationsChanged);
    }
}

void CALayer::removeAllAnimations() {
    if (running_.empty()) {
        return;
    }
    while (!running_.empty()) {
        removeRunning(running_.size() - 1);
    }
    changed(kCALayerAnimationsChanged);
}

void CALayer::removeRunning(std::size_t index) {
    // Removed from the list before it is destroyed, because that may complete transactions.
    const Running gone = std::move(running_[index]);
    running_.erase(running_.begin() + static_cast<std::ptrdiff_t>(index));
    if (!gone.isOutgoing) {
        stopOutgoing(*gone.animation);
    }
    if (std::all_of(running_.begin(), running_.end(), [](const Running& r) { return r.isOver; })) {
        leaveTimeline();
    }
}

void CALayer::stopOutgoing(const CAAnimation& animation) {
    const std::shared_ptr<CALayer> outgoing = animation.outgoingLayer();
    if (!outgoing) {
        return;
    }
    auto& others = outgoing->running_;
    const auto found = std::find_if(others.begin(), others.end(), [&animation](const Running& r) {
        return r.isOutgoing && r.animation.get() == &animation;
    });
    if (found != others.end()) {
        outgoing->removeRunning(static_cast<std::size_t>(found - others.begin()));
        outgoing->changed(kCALayerAnimationsChanged);
    }
}

void CALayer::leaveTimeline() {
    if (timelineIndex_ != kNotOnTimeline) {
        CATimeline::instance().removeLayer(*this);
        timelineIndex_ = kNotOnTimeline;
    }
}

double CALayer::advanceAnimations(double last, double time) {
    double next = std::numeric_limits<double>::infinity();
    bool somethingChanged = false;
    bool somethingRuns = false;
    for (Running& running : running_) {
        if (running.isOver) {
            continue;
        }
        const double begin = running.animation->beginTime();
        const double end = running.animation->endTime();
        // Written so that an animation is over if a time is NaN.
        if (!(time < end)) {
            running.isOver = true;
            running.group.reset();
            somethingChanged = true;
            continue;
        }
        somethingRuns = true;
        somethingChanged |= last < begin && begin <= time;
        next = std::min(next, time < begin ? begin : end);
    }
    // The two sides of a transition end at the same time; each layer drops its own.
    std::erase_if(running_, [](const Running& r) {
        return r.isOver && (r.isOutgoing || r.animation->isRemovedOnCompletion());
    });
    if (!somethingRuns) {
        leaveTimeline();
    }
    if (somethingChanged) {
        changed(kCALayerAnimationsChanged);
    }
    return next;
}

bool CALayer::hasAnimations() const {
    return !running_.empty();
}

bool CALayer::isAnimating(double time) const {
    return std::any_of(running_.begin(), running_.end(),
                       [time](const Running& r) { return r.hasEffect(time); });
}

const CACrossFade* CALayer::fadeIn(double time) const {
    for (std::size_t i = running_.size(); i-- > 0;) {
        if (running_[i].fade && !running_[i].isOutgoing && running_[i].hasEffect(time)) {
            return running_[i].fade.get();
        }
    }
    return nullptr;
}

std::shared_ptr<CACrossFade> CALayer::lastFade() const {
    for (std::size_t i = running_.size(); i-- > 0;) {
        if (running_[i].fade && !running_[i].isOver) {
            return running_[i].fade;
        }
    }
    return nullptr;
}

CALayerPresentation CALayer::presentation(double time) const {
    CALayerPresentation shown{position_, anchorPoint_, transform_, opacity_};
    CACrossFade* fade = nullptr;
    for (const Running& running : running_) {
        if (!running.hasEffect(time)) {
            continue;
        }
        const double phase = running.animation->phase(time);
        if (running.fade) {
            // The way in counts, if there are both: see CACrossFade.
            fade = fade == nullptr || !running.isOutgoing ? running.fade.get() : fade;
        } else if (!running.isOutgoing) {
            running.animation->apply(phase, *this, shown);
        } else if (const std::shared_ptr<CALayer> incoming = running.incoming.lock()) {
            running.animation->applyToOutgoing(phase, *incoming, shown);
        }
    }
    if (fade != nullptr) {
        fade->apply(*this, time, shown);
    }
    // NaN becomes 0.
    shown.opacity = shown.opacity > 0 ? std::min(shown.opacity, 1.0) : 0.0;
    return shown;
}

CGAffineTransform CALayer::affineTransform(const CALayerPresentation& shown) const {
    const double anchorX = shown.anchorPoint.x * size_.width;
    const double anchorY = shown.anchorPoint.y * size_.height;
    const CGAffineTransform t = shown.transform.affineTransform();
    // Moves the anchor to the origin, transforms, and moves the origin to the position.
    return {t.a,
            t.b,
            t.c,
            t.d,
            t.tx + shown.position.x - (t.a * anchorX + t.c * anchorY),
            t.ty + shown.position.y - (t.b * anchorX + t.d * anchorY)};
}

}  // namespace orvane::platform
