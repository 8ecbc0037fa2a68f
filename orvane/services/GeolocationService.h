#pragma once

#include <functional>
#include <memory>

#include "orvane/commons/Export.h"
#include "orvane/services/GeolocationRequest.h"
#include "orvane/services/Position.h"
#include "orvane/services/ServiceFailure.h"

namespace orvane::services {

// Tells where the device is: once, or each time it has moved. The positions are those of the
// system's location service (GeoClue), which asks the user for permission where the desktop does
// that, under the application id (Window::setApplicationId).
//
//     location_.start({.accuracy = PositionAccuracy::Street},
//                     [this](const Position& position) { show(position); },
//                     [this](const ServiceFailure& failure) { hide(failure.message); });
//
// start() connects to the service, and nothing does before. The callbacks are called on the main
// thread, never before start() has returned; what they throw is logged. A failure ends the run, is
// called once, and leaves one line in the log. The reason is Denied, Unavailable (no service, or
// none that finds positions), TimedOut or Failed.
//
// The destructor stops: the callbacks may refer to the object that owns the service. Main thread
// only.
class ORVANE_EXPORT GeolocationService {
public:
    // Called with each position.
    using PositionCallback = std::function<void(const Position& position)>;

    GeolocationService();
    ~GeolocationService();
    GeolocationService(const GeolocationService&) = delete;
    GeolocationService& operator=(const GeolocationService&) = delete;

    // Calls `found` with the position of the device, and again when it has moved, until the run is
    // stopped or fails. Replaces the run before. May be called from a callback.
    void start(const GeolocationRequest& request, PositionCallback found,
               FailureCallback failed = {});
    // The same for one position, which ends the run.
    void startOnce(const GeolocationRequest& request, PositionCallback found,
                   FailureCallback failed = {});
    // Ends the run; no call follows. May be called from a callback.
    void stop();
    // Whether a call may follow.
    bool isRunning() const;

private:
    struct Run;

    void start(const GeolocationRequest& request, std::shared_ptr<Run> run);

    std::shared_ptr<Run> run_;
};

}  // namespace orvane::services
