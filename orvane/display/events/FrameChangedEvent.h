#pragma once

#include "orvane/display/geometry/Size.h"
#include "orvane/notification/Listener.h"

namespace orvane::display {

class Display;

// The display has a new size, in points.
struct FrameChangedEvent {
    using listener_type = notification::Listener<Display, FrameChangedEvent, void>;

    geometry::Size<double> frame;
};

}  // namespace orvane::display
