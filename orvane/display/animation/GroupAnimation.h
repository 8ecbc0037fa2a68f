#pragma once

#include <list>
#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "orvane/display/animation/Animation.h"

namespace orvane::display::animation {

// Runs several animations with one completion. The group's completion callback follows when all of
// its animations that run on a layer have ended; their own callbacks are called as usual. A
// FrameAnimation in a group is started with the others, but the group does not wait for it.
//
// The group needs a target with a view, although it animates nothing itself, and does not pass it
// on: each animation needs a target of its own. An empty group does nothing and never completes.
// The group's own delay, duration and repeat count have no effect.
class ORVANE_EXPORT GroupAnimation : public virtual Animation {
public:
    // `key` names the group; see Animation.
    explicit GroupAnimation(const std::string& key);
    ~GroupAnimation() override;

    // Appends an animation, which the group shares. run() starts the animations in this order. A
    // null pointer is appended, too: a group of null pointers completes at once.
    void add(const std::shared_ptr<Animation>& animation);

    // Starts all animations.
    void run() override;
    // Stops every animation of the group; see their classes.
    void stop(StopAt where) override;
    // Returns null: a group has no animation of its own on the layer.
    std::shared_ptr<platform::CAAnimation> createNativeAnimation() override;

private:
    std::list<std::shared_ptr<Animation>> animations_;
};

}  // namespace orvane::display::animation
