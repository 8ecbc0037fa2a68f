#pragma once

#include <string>

namespace orvane::tests {

// Cameras and microphones of the test, which GStreamer's monitors find as they find those of the
// desktop. Main thread only.
namespace cameras {

// What a device does when it is used.
enum class Kind {
    Red,        // a red picture, in a format that must be converted
    Faulty,     // fails with the code of `error`
    Missing,    // a device file that does not exist
    Text,       // a device that has no pictures
    Microphone  // a sound
};

struct Device {
    std::string name;
    Kind kind = Kind::Red;
    // A GstResourceError, and what the system says about it.
    int error = 0;
    std::string details = {};
};

// Initializes GStreamer and registers the devices' provider.
void install();
// Connects a device.
void connect(const Device& device);
// Removes a device, or all of them.
void disconnect(const std::string& name);
void disconnectAll();
// How many sources of devices exist.
int sourcesInUse();

}  // namespace cameras

}  // namespace orvane::tests
