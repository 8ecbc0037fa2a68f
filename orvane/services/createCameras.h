#pragma once

#include "orvane/commons/Export.h"

namespace orvane::services {
class CameraProvider;
}

extern "C" {
// Creates the access to the desktop's cameras. Exported by liborvane-camera.so, which is a library
// of its own because it needs GStreamer. The caller owns the result.
ORVANE_EXPORT orvane::services::CameraProvider* orvane_create_cameras();
}
