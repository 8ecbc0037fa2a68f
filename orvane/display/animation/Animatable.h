#pragma once

#include <memory>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/commons/virtual_enable_shared_from_this.h"
#include "orvane/display/animation/AttributeName.h"

namespace orvane::platform {
class NSView;
}

namespace orvane::display::animation {

// A target of animations. Every layer is one.
class ORVANE_EXPORT Animatable : public virtual commons::virtual_enable_shared_from_this_base {
public:
    // Returns the platform view whose layer is animated; null while there is none.
    virtual std::shared_ptr<platform::NSView> getAnimatableHandler() const = 0;

    // The opacity of the target without animations, from 0 to 1. An animation of the opacity
    // returns to it.
    virtual double getRestingOpacity() const { return 1; }

    // Cancels the animation that runs on this target under `key`: there is no other way to cancel
    // one. The animation's completion callback follows. Does nothing when no animation runs under
    // the key. Main thread.
    void removeAnimation(const std::string& key);

    // Returns what the target shows of an attribute at this moment, with everything that runs on
    // it: the numbers of one key frame. A rotation is given from -pi to pi. Empty without a view,
    // and for a value that is not an attribute. Main thread.
    std::vector<float> getPresentationValue(AttributeName attributeName) const;
};

}  // namespace orvane::display::animation
