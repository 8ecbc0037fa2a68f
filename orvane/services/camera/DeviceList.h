#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "orvane/services/Camera.h"
#include "orvane/services/ServiceFailure.h"
#include "orvane/services/camera/GstHandles.h"

namespace orvane::services {

// The cameras that GStreamer's device providers know, and the microphone. Used on one thread, whose
// main context watches for changes.
class DeviceList {
public:
    DeviceList() = default;
    ~DeviceList();
    DeviceList(const DeviceList&) = delete;
    DeviceList& operator=(const DeviceList&) = delete;

    // Finds the cameras, and calls `changed` after each change from then on.
    std::optional<ServiceFailure> open(std::function<void()> changed);

    const std::vector<Camera>& cameras() const { return cameras_; }
    // Borrows the device of the camera with an id, or of the first camera for an empty id. Null if
    // there is none.
    GstDevice* find(const std::string& id) const;
    // Returns the user's default microphone, or another one; null if there is none.
    static GstRef<GstDevice> microphone();

private:
    void update();

    GstRef<GstDeviceMonitor> monitor_;
    std::function<void()> changed_;
    std::vector<Camera> cameras_;
    std::vector<GstRef<GstDevice>> devices_;  // of the cameras, in the same order
};

}  // namespace orvane::services
