#pragma once

#include <string>

namespace orvane::services {

// A camera of the device, as data.
struct Camera {
    // Identifies the camera for as long as it is connected, and usually beyond.
    std::string id = {};
    // What users call it, in UTF-8.
    std::string name = {};
};

}  // namespace orvane::services
