#pragma once

#include "orvane/display/geometry/Point.h"
#include "orvane/notification/Listener.h"

namespace orvane::display {

class DisplayObject;

namespace graphics {

// The steps of scrolling. Every Began is followed by an Ended.
enum class ScrollEventPhase {
    Began,    // the user, or an animated change of the offset, has set the content in motion
    Changed,  // the offset has changed, also by a change that is not animated
    Ended,    // the content is at rest, and neither the pointer nor fingers hold it
};

// Sent by a ScrollContainer on the main thread. Register a listener with
// container->addListener<ScrollEvent>(listener). It may change the container.
struct ScrollEvent {
    using listener_type = notification::Listener<DisplayObject, ScrollEvent, void>;

    ScrollEventPhase phase = ScrollEventPhase::Changed;
    geometry::Point<double> offset;  // in points
};

}  // namespace graphics
}  // namespace orvane::display
