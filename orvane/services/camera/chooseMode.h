#pragma once

#include "orvane/services/camera/GstHandles.h"

namespace orvane::services {

struct CameraRequest;

// Returns the mode that is nearest to a request, of those that a camera has: fixed in size and
// rate. Null if no mode has pictures in main memory, raw or as JPEG.
GstCapsRef chooseMode(const GstCaps* modes, const CameraRequest& request);

}  // namespace orvane::services
