#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/display/animation/Animation.h"
#include "orvane/display/animation/AttributeName.h"
#include "orvane/display/animation/Easing.h"
#include "orvane/display/geometry/Point.h"

namespace orvane::platform {
class CAKeyframeAnimation;
class CALayer;
}  // namespace orvane::platform

namespace orvane::display::animation {

// What remains of a run when it ends.
enum class EndState {
    // The layer is opaque and without a transformation: the application sets the state that follows
    // on the object itself.
    Restore,
    // What the last key frame shows. The object takes over the transformation, and the layer the
    // opacity.
    Keep,
};

// Animates one attribute of a layer through key frames, which are spread evenly over the duration
// and interpolated linearly unless set otherwise. Nothing is painted during the animation: the
// pixels of the layer are moved, rotated or faded. A negative repeat count repeats forever; zero
// means one pass.
//
// Unless setEndState says otherwise, the animated state does not outlive the run. At its end the
// layer's transformation is reset to the identity, an Opacity animation leaves the layer opaque
// even if it was not opaque before, and then the completion callback is called.
//
// Key frames are relative to the place of the object. After a run with EndState::Keep, and after
// stop(), the object is at another place, so the next run begins at 0 there.
class ORVANE_EXPORT ValueAnimation : public virtual Animation {
public:
    // `values` holds the numbers of all key frames in order; numbers at the end that do not make a
    // complete key frame are ignored. An animation without a complete key frame still runs for its
    // duration.
    ValueAnimation(const std::string& key, AttributeName attributeName,
                   const std::vector<float>& values);
    ~ValueAnimation() override;

    // The attribute that is animated.
    AttributeName getAttributeName() const { return attributeName_; }
    // The numbers of the key frames.
    const std::vector<float>& getValues() const { return values_; }

    // The horizontal position of the point about which the layer is rotated and scaled while the
    // animation runs, as a fraction of the layer's width: 0 is left, 1 is right. By default it is
    // the layer's own, the left edge.
    void setAnchorPointX(float x) { anchorPointX_ = x; }
    // The vertical position of that point, as a fraction of the layer's height: 0 is the top (the
    // default), 1 the bottom.
    void setAnchorPointY(float y) { anchorPointY_ = y; }

    // The pace of each pass. Linear at first.
    void setEasing(const Easing& easing) { easing_ = easing; }
    // Moves as if pulled by a spring: sets the easing, and the duration to the time in which the
    // spring settles. In a run of several key frames they are places on the way.
    void setSpring(const Spring& spring);
    // The pace from each key frame to the next: the first one belongs to the way from the first key
    // frame to the second. Missing ones are linear.
    void setKeyFrameEasings(const std::vector<Easing>& easings) { keyFrameEasings_ = easings; }
    // The time of each key frame as a fraction of the pass, ascending from 0 to 1. Times that are
    // not as many as the key frames, or not ascending, are reported in the log when the animation
    // runs, and the key frames are spread evenly.
    void setKeyTimes(const std::vector<float>& times) { keyTimes_ = times; }

    // What remains when a run has ended. EndState::Restore at first.
    //
    // With EndState::Keep, the object is transformed so that it stays where the last key frame
    // shows it. Its frame and its touches are there, and nothing jumps. A run that is cancelled, or
    // whose object leaves the display, ends there, too; call stop() before running another
    // animation with the same key. A clip container moves with its clip, but cannot keep a rotation
    // or scale of the clip; a native control is never rotated.
    void setEndState(EndState endState) { endState_ = endState; }
    // What remains when a run has ended.
    EndState getEndState() const { return endState_; }

    // Starts the animation on the target's layer. With EndState::Keep, a run of this animation that
    // is in progress goes to its end first.
    void run() override;
    // What is shown, or the last key frame, stays as with EndState::Keep.
    void stop(StopAt where) override;
    // Returns the platform's animation. Also sets the layer's anchor point and, for Translation and
    // Affine, its transformation to the last key frame; call it once for each run.
    std::shared_ptr<platform::CAAnimation> createNativeAnimation() override;
    // Restores the layer, then calls the completion callback.
    void onCompleted() override;

private:
    // One run, from run() until its completion.
    struct Run {
        std::shared_ptr<Animatable> target;
        bool isSettled = false;  // over, or stop() has decided what remains
    };

    void setKeyFrames(platform::CAKeyframeAnimation& animation, platform::CALayer& layer) const;
    void setPace(platform::CAKeyframeAnimation& animation) const;
    std::vector<float> lastKeyFrame() const;
    void placeAnchorPoint(const platform::NSView& handler);
    void restoreNativeLayer();
    void complete(const platform::NSView& handler, Run& run);
    // Makes the target's object show `keyFrame`, and resets the layer. An empty one changes nothing
    // about the object.
    void keep(Animatable& target, const std::vector<float>& keyFrame) const;

    AttributeName attributeName_;
    std::vector<float> values_;
    std::optional<float> anchorPointX_;
    std::optional<float> anchorPointY_;
    geometry::Point<double> savedPosition_;
    geometry::Point<double> savedAnchorPoint_;
    std::optional<Easing> easing_;
    std::vector<Easing> keyFrameEasings_;
    std::vector<float> keyTimes_;
    EndState endState_ = EndState::Restore;
    std::weak_ptr<Run> run_;  // the last one, while it is in progress
    bool isSettled_ = false;  // of the run that is completing
};

}  // namespace orvane::display::animation
