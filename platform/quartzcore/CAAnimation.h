#pragma once

#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::platform {

class CACrossFade;
class CALayer;
struct CALayerPresentation;

// The base of all animations of a layer; it holds when they run. An animation is only a
// description: CALayer::addAnimation stores a copy, and the effect of the copy at a given time is a
// function of that time.
//
// All times are in seconds; beginTime is a media time (CACurrentMediaTime). An animation has no
// effect before it begins or after it has ended.
class ORVANE_EXPORT CAAnimation {
public:
    virtual ~CAAnimation() = default;

    // 0, the default, means the time at which the animation is added to a layer.
    void setBeginTime(double time) { beginTime_ = time; }
    double beginTime() const { return beginTime_; }
    // The duration of one pass. An animation whose duration is not greater than zero ends as soon
    // as it begins.
    void setDuration(double seconds) { duration_ = seconds; }
    double duration() const { return duration_; }
    // The number of passes, which may be fractional or infinite; 0, negative numbers and NaN
    // mean 1.
    void setRepeatCount(float count) { repeatCount_ = count; }
    float repeatCount() const { return repeatCount_; }
    // If true, the default, the layer drops the animation when it has ended. Otherwise the
    // animation stays registered under its key, without effect; its transaction completes anyway.
    void setRemovedOnCompletion(bool removed) { removedOnCompletion_ = removed; }
    bool isRemovedOnCompletion() const { return removedOnCompletion_; }

    // The media time at which the animation ends; infinity if it repeats forever.
    double endTime() const;
    // The elapsed fraction of the current pass, from 0 up to but not including 1, at a time from
    // beginTime up to but not including endTime.
    double phase(double time) const;

    // The rest is called by CALayer.
    virtual std::unique_ptr<CAAnimation> copy() const = 0;
    // Changes what `layer` shows at the elapsed fraction `phase` of a pass.
    virtual void apply(double phase, const CALayer& layer, CALayerPresentation& shown) const = 0;
    // Returns the second layer that the animation changes while it runs; null for none.
    virtual std::shared_ptr<CALayer> outgoingLayer() const { return nullptr; }
    // Changes what the second layer shows. `incoming` is the layer that the animation was added to.
    virtual void applyToOutgoing(double phase, const CALayer& incoming,
                                 CALayerPresentation& shown) const;
    // Returns the pairing of the two layers if the animation is a cross-fade that is being added to
    // `incoming`, otherwise null. The pairing then replaces the two functions above.
    virtual std::shared_ptr<CACrossFade> createCrossFade(CALayer& incoming) const;

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
