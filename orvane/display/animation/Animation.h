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

// The description of an animation: a key, a target, timing and a callback for its end. run() starts
// what it describes; run again, it starts again, and each run ends with a callback of its own.
//
// Held by std::shared_ptr always: what runs keeps the description, and with it the target, alive
// until it is over. Used on the main thread only, where the callbacks come in too. Nothing here
// reports an error: without a target, or on a target without a view, run() does nothing and no
// callback follows.
//
//     auto turn = std::make_shared<ValueAnimation>("turn", AttributeName::Rotation,
//                                                  std::vector<float>{0, 6.2832F});
//     turn->setAnimatable(object->extractAnimationLayer());
//     turn->setDuration(2);
//     turn->run();
class ORVANE_EXPORT Animation : public commons::virtual_enable_shared_from_this<Animation> {
public:
    using CompletionCallback = std::function<void()>;

    // The key is the name under which the animation is registered on its target: running one takes
    // another of the same key off, and Animatable::removeAnimation(key) cancels it.
    explicit Animation(const std::string& key);
    ~Animation() override;
    Animation(const Animation&) = delete;
    Animation& operator=(const Animation&) = delete;

    virtual void run() = 0;
    // The platform's object for one run, set to begin `delay` from now; null for a kind that has
    // none. For run(): making one may change the target's layer.
    virtual std::shared_ptr<platform::CAAnimation> createNativeAnimation() = 0;
    // Calls the completion callback, if there is one. The end of a run calls this.
    virtual void onCompleted();

    // From run() to the start, in seconds.
    void setDelay(float seconds) { delay_ = seconds; }
    float getDelay() const { return delay_; }
    // Of one pass, in seconds.
    void setDuration(float seconds) { duration_ = seconds; }
    float getDuration() const { return duration_; }
    // The number of passes. What zero and negative numbers mean is up to the kind.
    void setRepeatCount(std::int32_t count) { repeatCount_ = count; }
    std::int32_t getRepeatCount() const { return repeatCount_; }

    // Called once for each run, when it has ended by itself, been replaced or been cancelled. It
    // may start animations, but not one of this key on this target: whatever is registered under
    // the key when the callback returns is taken off.
    void setCompletionCallback(const CompletionCallback& callback);
    const CompletionCallback& getCompletionCallback() const { return *completionCallback_; }

    // What is animated; a layer, as a rule that of DisplayObject::extractAnimationLayer().
    void setAnimatable(const std::shared_ptr<Animatable>& animatable) { animatable_ = animatable; }
    std::shared_ptr<Animatable> getAnimatable() const { return animatable_; }

    const std::string& getKey() const { return key_; }

protected:
    // The view of the target; null when either is missing.
    std::shared_ptr<platform::NSView> getAnimatableHandler() const;

private:
    float delay_ = 0;
    float duration_ = 0;
    std::int32_t repeatCount_ = 1;
    // Never null. Shared with a call under way, so that a callback may set another.
    std::shared_ptr<CompletionCallback> completionCallback_;
    std::shared_ptr<Animatable> animatable_;
    std::string key_;
};

}  // namespace orvane::display::animation
