#pragma once

#include "orvane/display/graphics/SizedContainer.h"

namespace orvane::display::graphics {

// A group that clips its children to its bounds. The clip stands in the coordinates of the parent:
// the group's own transformation moves its children, never its clip and never its frame. An
// application scrolls or turns what is inside the window that way.
class ORVANE_EXPORT ClipContainer : public virtual SizedContainer {
public:
    // Moves the group to a layer of its own and wraps that in a fake layer, which keeps the clip in
    // force while the inner layer animates. Gives the wrapper, the same one each time; empty when
    // the group's layer has no superlayer to hold a wrapper.
    std::shared_ptr<DisplayLayer> extractAnimationLayer() override;

protected:
    geometry::Rect<double> computeFrame() override;
};

}  // namespace orvane::display::graphics
