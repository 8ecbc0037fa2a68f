#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "orvane/commons/virtual_enable_shared_from_this.h"

namespace orvane::platform {
class CAAnimation;
class NSView;
}  // namespace orvane::platform

namespace orvane::display::animation {

class Animatable;

// Where an animation stops.
enum class StopAt {
    // At what is shown at this moment.
    Presentation,
    // At its last key frame.
    End,
};

// The description of an animation: a key, a target, its timing and a callback for its end. run()
// starts it. It may be run again; every run ends with one call of the callback.
//
// An animation is always held by a std::shared_ptr. While it runs, the platform keeps the
// description alive, and the description keeps its target alive. Main thread only; callbacks are
// called on the main thread, too. Nothing here reports an error: without a target, or with a target
// that has no view, run() does nothing and no callback follows.
//
//     auto turn = std::make_shared<ValueAnimation>("turn", AttributeName::Rotation,
//                                                  std::vector<float>{0, 6.2832F});
//     turn->setAnimatable(object->extractAnimationLayer());
//     turn->setDuration(2);
//     turn->run();
class ORVANE_EXPORT Animation : public commons::virtual_enable_shared_from_this<Animation> {
public:
    // A function that is called at the end of a run.
    using CompletionCallback = std::function<void()>;

    // `key` is the name under which the animation runs on its target. Running an animation ends
    // another one with the same key on the same target, and Animatable::removeAnimation(key)
    // cancels it.
    explicit Animation(const std::string& key);
    ~Animation() override;
    Animation(const Animation&) = delete;
    Animation& operator=(const Animation&) = delete;

    // Starts the animation.
    virtual void run() = 0;
    // Returns the platform's object for one run, which begins `delay` seconds from now; null for a
    // kind of animation that has none. Called by run(); it may change the target's layer.
    virtual std::shared_ptr<platform::CAAnimation> createNativeAnimation() = 0;
    // Called at the end of a run, on the main thread; calls the completion callback, if there is
    // one.
    virtual void onCompleted();

    // Ends the run that is in progress, without a jump: what it animates stays at what is shown at
    // this moment, or goes to the end. The completion callback follows with the next frame. Another
    // run may be started at once. Does nothing if none is in progress, and in this base. The
    // derived classes say what stays.
    virtual void stop(StopAt where);

    // The time from run() to the start, in seconds.
    void setDelay(float seconds) { delay_ = seconds; }
    // The time from run() to the start, in seconds. 0 at first.
    float getDelay() const { return delay_; }
    // The time of one pass, in seconds.
    void setDuration(float seconds) { duration_ = seconds; }
    // The time of one pass, in seconds. 0 at first.
    float getDuration() const { return duration_; }
    // The number of passes. The kinds of animations define what zero and negative numbers mean.
    void setRepeatCount(std::int32_t count) { repeatCount_ = count; }
    // The number of passes. 1 at first.
    std::int32_t getRepeatCount() const { return repeatCount_; }

    // Sets the function that is called once for each run, when the run has ended, has been
    // replaced, stopped or cancelled. It may start other animations, but not one with the same key
    // on the same target: the run that has this key when the function returns is removed.
    void setCompletionCallback(const CompletionCallback& callback);
    // The function that was set; empty when there is none.
    const CompletionCallback& getCompletionCallback() const { return *completionCallback_; }

    // Sets the target: a layer, usually the one that DisplayObject::extractAnimationLayer()
    // returns. The animation shares it.
    void setAnimatable(const std::shared_ptr<Animatable>& animatable) { animatable_ = animatable; }
    // The target; null when none is set.
    std::shared_ptr<Animatable> getAnimatable() const { return animatable_; }

    // The name under which the animation runs on its target.
    const std::string& getKey() const { return key_; }

protected:
    // The view of the target; null when the target or its view is missing.
    std::shared_ptr<platform::NSView> getAnimatableHandler() const;

private:
    float delay_ = 0;
    float duration_ = 0;
    std::int32_t repeatCount_ = 1;
    // Never null. Shared with a call in progress, so that a callback may set another one.
    std::shared_ptr<CompletionCallback> completionCallback_;
    std::shared_ptr<Animatable> animatable_;
    std::string key_;
};

}  // namespace orvane::display::animation
