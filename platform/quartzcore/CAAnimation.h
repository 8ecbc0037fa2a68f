#pragma once

#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::platform {

class CALayer;
struct CALayerPresentation;

// What all animations of a layer share: when they run. A description only: CALayer::addAnimation
// takes a copy, and what it does at a time is a function of that time.
//
// All times are seconds; beginTime is a media time (CACurrentMediaTime). An animation has no effect
// before it begins and none after it has ended.
class ORVANE_EXPORT CAAnimation {
public:
    virtual ~CAAnimation() = default;

    // 0, the default: when it is added to the layer.
    void setBeginTime(double time) { beginTime_ = time; }
    double beginTime() const { return beginTime_; }
    // Of one pass. Not above zero: it is over as soon as it has begun.
    void setDuration(double seconds) { duration_ = seconds; }
    double duration() const { return duration_; }
    // Number of passes, fractions and infinity included; 0, negative numbers and NaN mean one.
    void setRepeatCount(float count) { repeatCount_ = count; }
    float repeatCount() const { return repeatCount_; }
    // True, the default: the layer drops it when it has ended. Otherwise it stays registered under
    // its key, without effect; for its transaction it has ended all the same.
    void setRemovedOnCompletion(bool removed) { removedOnCompletion_ = removed; }
    bool isRemovedOnCompletion() const { return removedOnCompletion_; }

    // The media time from which it has no effect any more; infinity for one that repeats for ever.
    double endTime() const;
    // How much of the current pass has gone by, from 0 up to but not including 1, at a time from
    // beginTime up to but not including endTime.
    double phase(double time) const;

    // Used by CALayer.
    virtual std::unique_ptr<CAAnimation> copy() const = 0;
    // Changes what `layer` shows in a pass's `phase`.
    virtual void apply(double phase, const CALayer& layer, CALayerPresentation& shown) const = 0;
    // Returns the second layer that the animation changes while it runs; null for none.
    virtual std::shared_ptr<CALayer> outgoingLayer() const { return nullptr; }
    // Changes what the second layer shows. `incoming` is the layer that the animation was added to.
    virtual void applyToOutgoing(double phase, const CALayer& incoming,
                                 CALayerPresentation& shown) const;

protected:
    CAAnimation() = default;
    CAAnimation(const CAAnimation&) = default;
    CAAnimation& operator=(const CAAnimation&) = default;

private:
    double beginTime_ = 0;
    double duration_ = 0;
    float repeatCount_ = 0;
    bool removedOnCompletion_ = true;
};

}  // namespace orvane::platform
