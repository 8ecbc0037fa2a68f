#pragma once

#include <string>
#include <vector>

#include "orvane/notification/Listener.h"
#include "orvane/services/Camera.h"

namespace orvane::services {

class CameraService;

// Sent to the listeners of CameraService when cameras have been connected or removed.
struct CamerasChangedEvent {
    using listener_type = notification::Listener<CameraService, CamerasChangedEvent, void>;

    // The cameras that are new.
    std::vector<Camera> added = {};
    // The ids of those that are gone.
    std::vector<std::string> removed = {};
};

}  // namespace orvane::services
