#pragma once

#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "orvane/commons/virtual_enable_shared_from_this.h"

namespace orvane::platform {
class NSView;
}

namespace orvane::display::animation {

// What an animation can be run on. Every layer is one.
class ORVANE_EXPORT Animatable : public virtual commons::virtual_enable_shared_from_this_base {
public:
    // The platform view that carries the animation, or null while there is none.
    virtual std::shared_ptr<platform::NSView> getAnimatableHandler() const = 0;

    // Takes the animation registered under `key` off the target: the only way of cancelling one.
    // Nothing happens when there is none, or no handler.
    void removeAnimation(const std::string& key);
};

}  // namespace orvane::display::animation
