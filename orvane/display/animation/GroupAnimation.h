#pragma once

#include <list>
#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "orvane/display/animation/Animation.h"

namespace orvane::display::animation {

// Several animations under one completion: they are run together, and when those of them that
// animate a layer are over, so is the group. Their own callbacks are called as ever. A
// FrameAnimation in a group is started with the others but not waited for.
//
// The group needs a target with a view, though it animates nothing itself, and gives it to nobody:
// each animation must have its own. An empty group does nothing and never completes. Delay,
// duration and repeat count of the group mean nothing.
class ORVANE_EXPORT GroupAnimation : public virtual Animation {
public:
    explicit GroupAnimation(const std::string& key);
    ~GroupAnimation() override;

    // Shared from now on. The animations are run in the order in which they were added.
    void add(const std::shared_ptr<Animation>& animation);

    void run() override;
    std::shared_ptr<platform::CAAnimation> createNativeAnimation() override;

private:
    std::list<std::shared_ptr<Animation>> animations_;
};

}  // namespace orvane::display::animation
