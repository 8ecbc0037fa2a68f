#pragma once

#include <string>

namespace orvane::services {

// What CameraSession::record is to write, as data.
struct RecordingRequest {
    // The file, which is replaced if it exists. Its folder must exist.
    std::string path = {};
    // Whether the sound of the user's default microphone is recorded.
    bool microphone = false;
    // Bits per second of the pictures; 0 for a value that follows from their size and rate.
    int bitRate = 0;
};

}  // namespace orvane::services
