#include "Drag.h"

namespace gallery {

using namespace orvane::display;
using State = events::TouchEventListenerState;

State Drag::operator()(const std::shared_ptr<DisplayObject>& object,
                       const events::TouchEvent& event) {
    using events::TouchEventPhase;
    if (event.phase == TouchEventPhase::Cancelled) {
        return State::Failed;
    }
    // The pointer moves on the screen, the object in its parent's coordinates.
    geometry::Matrix toParent;
    if (const auto parent = object->getParent()) {
        toParent = parent->getFullTransformation().inverse();
    }
    const auto from = toParent.mapPoint({0, 0});
    const auto delta = toParent.mapPoint(event.delta) - from;
    const geometry::Matrix& now = object->getTransformation();
    object->setMatrix(static_cast<float>(now.m00), static_cast<float>(now.m01),
                      static_cast<float>(now.m02 + delta.x), static_cast<float>(now.m10),
                      static_cast<float>(now.m11), static_cast<float>(now.m12 + delta.y));
    switch (event.phase) {
        case TouchEventPhase::Began:
            return State::Began;
        case TouchEventPhase::Ended:
            return State::Ended;
        default:
            return State::Changed;
    }
}

}  // namespace gallery
