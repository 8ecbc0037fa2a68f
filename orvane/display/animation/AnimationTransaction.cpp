#include "orvane/display/animation/AnimationTransaction.h"

#include <string>
#include <utility>

#include "orvane/display/animation/Animation.h"
#include "orvane/thread/dispatch.h"
#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CALayer.h"
#include "platform/quartzcore/CATransaction.h"

namespace orvane::display::animation {

namespace {

// Removes a key from a layer at the end of a scope, also when the scope ends by an exception: the
// animation's callback is code of the application, and the platform logs what it throws.
class KeyRemoval {
public:
    KeyRemoval(platform::CALayer& layer, const std::string& key) : layer_(layer), key_(key) {}
    ~KeyRemoval() { layer_.removeAnimationForKey(key_); }
    KeyRemoval(const KeyRemoval&) = delete;
    KeyRemoval& operator=(const KeyRemoval&) = delete;

private:
    platform::CALayer& layer_;
    const std::string& key_;
};

}  // namespace

AnimationTransaction::AnimationTransaction(std::function<void()> completion) {
    platform::CATransaction::begin();
    platform::CATransaction::setCompletionBlock(std::move(completion));
}

AnimationTransaction::~AnimationTransaction() {
    platform::CATransaction::commit();
}

void completeAndRemoveKey(const platform::NSView& handler,
                          const std::shared_ptr<Animation>& animation) {
    // The application comes first, then the key: when this run was replaced by another one with the
    // same key, removing the key ends that one, too, and by then this run's layer is restored.
    const KeyRemoval removal(*handler.layer(), animation->getKey());
    thread::dispatch_main([animation] { animation->onCompleted(); });
}

}  // namespace orvane::display::animation
