#pragma once

#include <string>

namespace orvane::services {

// What an application asks of a camera, as data. The camera uses the nearest of its modes: first
// the size counts, then the rate.
struct CameraRequest {
    // The id of a Camera; empty for the first one.
    std::string camera = {};
    // The size of the pictures in pixels, from 1 to 16384.
    int width = 1280;
    int height = 720;
    // Pictures per second, more than 0 and at most 1000.
    double rate = 30;
};

// What a camera delivers, as data.
struct CameraFormat {
    // The size of the pictures in pixels.
    int width = 0;
    int height = 0;
    // Pictures per second as the camera declares it; 0 if the rate varies. In poor light, many
    // cameras deliver fewer.
    double rate = 0;
};

}  // namespace orvane::services
