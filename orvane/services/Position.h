#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace orvane::services {

// Where the device is, as data.
struct Position {
    // Degrees in WGS 84, north and east positive.
    double latitude = 0;
    double longitude = 0;
    // The radius in meters around this point within which the device probably is.
    double accuracy = 0;
    // Meters above sea level.
    std::optional<double> altitude = {};
    // The direction of the movement, in degrees clockwise from north.
    std::optional<double> heading = {};
    // Meters per second.
    std::optional<double> speed = {};
    // How the position was found, in words of the service; may be empty.
    std::string description = {};
    // When the position was measured.
    std::chrono::system_clock::time_point time = {};
};

}  // namespace orvane::services
