#include "orvane/display/animation/AnimationTransaction.h"

#include <string>

#include "orvane/display/animation/Animation.h"
#include "orvane/thread/dispatch.h"
#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CALayer.h"
#include "platform/quartzcore/CATransaction.h"

namespace orvane::display::animation {

namespace {

// Takes a key off a layer at the end of a scope, however that ends: the animation's callback is
// application code, and what it throws goes on to the platform, which logs it.
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

AnimationTransaction::AnimationTransaction(const std::shared_ptr<platform::NSView>& handler,
                                           const std::shared_ptr<Animation>& animation) {
    platform::CATransaction::begin();
    platform::CATransaction::setCompletionBlock([handler, animation, key = animation->getKey()] {
        // First the application, then the key: a run that was replaced by another of its key ends
        // that one too, and the layer has been restored by then.
        const KeyRemoval removal(*handler->layer(), key);
        thread::dispatch_main([animation] { animation->onCompleted(); });
    });
}

AnimationTransaction::~AnimationTransaction() {
    platform::CATransaction::commit();
}

}  // namespace orvane::display::animation
