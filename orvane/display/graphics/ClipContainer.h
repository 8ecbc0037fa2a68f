#pragma once

#include "orvane/display/graphics/SizedContainer.h"

namespace orvane::display::graphics {

// A group that clips its children to its bounds. The clip is in the parent's coordinates: the
// group's own transformation moves its children but neither its clip nor its frame. Applications
// use this to scroll or rotate the content behind a fixed window.
//
// Within one layer, touches go by frames: a touch on a part that is clipped away still reaches the
// object. An object with a layer of its own, such as a control, is not touched outside the clip.
class ORVANE_EXPORT ClipContainer : public virtual SizedContainer {
public:
    ClipContainer() { setClipsChildren(); }

    // Rounds the corners of the clip, also for what is on layers of its own inside. The radius is
    // in the parent's coordinates; at most half of the shorter side counts. 0 at first.
    void setCornerRadius(double radius);
    // The radius that was set.
    double getCornerRadius() const { return cornerRadius_; }
    // Pointer events under a rounded corner reach what is behind the group.
    bool acceptsPointerAt(const geometry::Point<double>& location) override;

    // Moves the group to a layer of its own and wraps that layer in a fake layer, which keeps the
    // clip in place while the inner layer is animated. Returns the wrapper, which is the same one
    // each time; null when the group's layer has no superlayer that could hold a wrapper.
    std::shared_ptr<DisplayLayer> extractAnimationLayer() override;

protected:
    geometry::Rect<double> computeFrame() override;

private:
    double cornerRadius_ = 0;
};

}  // namespace orvane::display::graphics
