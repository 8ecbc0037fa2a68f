#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/commons/virtual_enable_shared_from_this.h"
#include "orvane/notification/Notifier.h"
#include "orvane/services/Camera.h"
#include "orvane/services/CameraProvider.h"
#include "orvane/services/CameraRequest.h"
#include "orvane/services/CameraSession.h"
#include "orvane/services/CamerasChangedEvent.h"
#include "orvane/services/ServiceCall.h"
#include "orvane/services/ServiceFailure.h"

namespace orvane::services {

// The cameras of the device, through the library liborvane-camera.so (GStreamer). The first call
// opens the library and looks for cameras; from then on, the service sends a CamerasChangedEvent to
// its listeners when cameras are connected or removed. No camera is opened before start(). Without
// the library there are no cameras, and the log has one line.
//
// Each call returns at once. The callbacks follow on the main thread, never before the call has
// returned; what they throw is logged. Main thread only.
class ORVANE_EXPORT CameraService
    : public notification::Notifier<CameraService>,
      public virtual commons::virtual_enable_shared_from_this<CameraService> {
public:
    // Returns the service of the process, which the first call creates. Contacts nothing.
    static std::shared_ptr<CameraService> instance();
    // Releases the instance; the next instance() creates a new one. A host calls it at the end of a
    // session.
    static void reset();

    // For other cameras than the desktop's, for example of a test.
    explicit CameraService(std::unique_ptr<CameraProvider> provider);
    ~CameraService() override;
    CameraService(const CameraService&) = delete;
    CameraService& operator=(const CameraService&) = delete;

    // Passes the cameras that are connected, or none. A call that is not answered within 10 seconds
    // of the display's clock has TimedOut. It may be dropped.
    std::shared_ptr<ServiceCall> list(std::function<void(const std::vector<Camera>& cameras)> found,
                                      FailureCallback failed = {});

    // Begins to use a camera. Calls `started` before the first picture, or `failed` when the camera
    // cannot be used; also later, when it cannot be used any more, for example because it has been
    // removed. A failure ends the session and leaves one line in the log. Its reason is Denied,
    // Unavailable (there is no such camera), TimedOut (no picture within 10 seconds) or Failed, for
    // example when another program uses the camera. Never returns null.
    [[nodiscard]] std::shared_ptr<CameraSession> start(
        const CameraRequest& request, std::function<void(const CameraFormat& format)> started = {},
        FailureCallback failed = {});

private:
    struct State;

    void open();
    void camerasChanged(std::vector<Camera> cameras);

    std::unique_ptr<State> state_;
};

}  // namespace orvane::services
