#pragma once

#include "orvane/display/geometry/Size.h"
#include "orvane/notification/Listener.h"

namespace orvane::display {

class Display;

// Sent by a Display after its size changed; `frame` is the new size in points.
struct FrameChangedEvent {
    using listener_type = notification::Listener<Display, FrameChangedEvent, void>;

    geometry::Size<double> frame;
};

}  // namespace orvane::display
