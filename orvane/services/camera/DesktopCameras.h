#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "orvane/services/CameraProvider.h"
#include "orvane/services/camera/ControlThread.h"

namespace orvane::services {

// The cameras that GStreamer finds: those of V4L2 and, with its plugin, of PipeWire. Everything
// that may wait is done on a thread of its own.
class DesktopCameras : public CameraProvider {
public:
    DesktopCameras();
    ~DesktopCameras() override;
    DesktopCameras(const DesktopCameras&) = delete;
    DesktopCameras& operator=(const DesktopCameras&) = delete;

    void open(std::function<void(const std::vector<Camera>& cameras)> changed,
              FailureCallback failed) override;
    std::unique_ptr<CameraCapture> capture(const CameraRequest& request,
                                           CameraCapture::Observer observer) override;

private:
    class Capture;
    struct Devices;

    // What open() reports to; main thread only.
    struct Events {
        std::function<void(const std::vector<Camera>& cameras)> changed;
        FailureCallback failed;
    };

    std::shared_ptr<Events> events_;
    std::shared_ptr<Devices> devices_;  // used on the control thread
    ControlThread thread_;
};

}  // namespace orvane::services
