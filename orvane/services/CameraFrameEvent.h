#pragma once

#include <cstdint>
#include <memory>

#include "orvane/notification/Listener.h"

namespace orvane::services {

class CameraSession;

// A picture of a camera. Immutable and shared.
struct CameraFrame {
    // The size in pixels.
    int width = 0;
    int height = 0;
    // `width * height` words in rows without gaps, the top row first. A word is alpha, which is
    // 255, in bits 24 to 31, then red, green and blue. Null if there is no picture.
    std::shared_ptr<const std::uint32_t[]> pixels = {};
};

// Sent to the listeners of CameraSession for each new picture, and without a picture when the
// session has ended. A listener that takes longer than the time between two pictures misses
// pictures, and then gets the newest one.
struct CameraFrameEvent {
    using listener_type = notification::Listener<CameraSession, CameraFrameEvent, void>;

    CameraFrame frame = {};
};

}  // namespace orvane::services
