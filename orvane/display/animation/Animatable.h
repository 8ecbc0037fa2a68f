#pragma once

#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "orvane/commons/virtual_enable_shared_from_this.h"

namespace orvane::platform {
class NSView;
}

namespace orvane::display::animation {

// A target of animations. Every layer is one.
class ORVANE_EXPORT Animatable : public virtual commons::virtual_enable_shared_from_this_base {
public:
    // Returns the platform view whose layer is animated; null while there is none.
    virtual std::shared_ptr<platform::NSView> getAnimatableHandler() const = 0;

    // Cancels the animation that runs on this target under `key`: there is no other way to cancel
    // one. The animation's completion callback follows. Does nothing when no animation runs under
    // the key. Main thread.
    void removeAnimation(const std::string& key);
};

}  // namespace orvane::display::animation
