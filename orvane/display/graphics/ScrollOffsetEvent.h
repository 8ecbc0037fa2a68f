#pragma once

#include "orvane/display/geometry/Point.h"
#include "orvane/notification/Listener.h"

namespace orvane::display {

class DisplayObject;

namespace graphics {

// The steps of scrolling. Every Began is followed by an Ended.
enum class ScrollOffsetPhase {
    Began,    // the user, or an animated change of the offset, has set the content in motion
    Changed,  // the offset has changed, also by a change that is not animated
    Ended,    // the content is at rest, and neither the pointer nor fingers hold it
};

// Sent by a ScrollContainer on the main thread. Register a listener with
// container->addListener<ScrollOffsetEvent>(listener). It may change the container.
struct ScrollOffsetEvent {
    using listener_type = notification::Listener<DisplayObject, ScrollOffsetEvent, void>;

    ScrollOffsetPhase phase = ScrollOffsetPhase::Changed;
    geometry::Point<double> offset;  // in points
};

}  // namespace graphics
}  // namespace orvane::display
