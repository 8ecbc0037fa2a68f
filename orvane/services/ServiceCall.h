#pragma once

#include <functional>
#include <memory>

#include "orvane/commons/Export.h"
#include "orvane/services/ServiceFailure.h"

namespace orvane::platform {
class CATimer;
}

namespace orvane::display::native {
class NWebView;
}

namespace orvane::services {

// A call of a service that may not have been answered yet. An application that does not want to
// cancel it need not keep it. Main thread only.
class ORVANE_EXPORT ServiceCall {
public:
    ~ServiceCall();
    ServiceCall(const ServiceCall&) = delete;
    ServiceCall& operator=(const ServiceCall&) = delete;

    // No callback of the call follows. What the service has begun to store is stored nevertheless.
    void cancel();
    // Whether a callback follows.
    bool isPending() const { return isPending_; }

private:
    friend class CameraService;
    friend class CameraSession;
    friend class ContactsService;
    friend class display::native::NWebView;

    // `failed` may be empty.
    explicit ServiceCall(FailureCallback failed);
    // Fails the call if it is still pending after `seconds` of the display's clock.
    void limit(double seconds);
    // Ends the call and runs `deliver`, unless it has ended already.
    void finish(const std::function<void()>& deliver);
    // Ends the call and calls its callback for failures, unless it has ended already.
    void fail(const ServiceFailure& failure);

    FailureCallback failed_;
    std::unique_ptr<platform::CATimer> deadline_;
    bool isPending_ = true;
};

}  // namespace orvane::services
