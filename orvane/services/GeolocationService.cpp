#include "orvane/services/GeolocationService.h"

#include <memory>
#include <utility>

#include "orvane/commons/guardedCall.h"
#include "orvane/services/GeoClueClient.h"
#include "orvane/services/Position.h"
#include "orvane/services/families.h"
#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSLog.h"

namespace orvane::services {

namespace {

template <typename Callback, typename Result>
void callBack(const Callback& callback, const Result& result) {
    if (callback) {
        commons::guardedCall("exception of a callback for positions", [&] { callback(result); });
    }
}

}  // namespace

// One request for positions, from start() until it ends. A callback may stop the service, which
// drops its reference to the run: the code that calls a callback keeps a reference of its own
// meanwhile.
struct GeolocationService::Run {
    PositionCallback found;
    FailureCallback failed;
    bool isForOne = false;
    bool hasEnded = false;
    std::unique_ptr<GeoClueClient> client = {};

    void deliver(const Position& position) {
        if (isForOne) {
            end();
        }
        callBack(found, position);
    }
    void fail(const ServiceFailure& failure) {
        end();
        callBack(failed, failure);
    }

private:
    void end() {
        hasEnded = true;
        client.reset();
    }
};

GeolocationService::GeolocationService() = default;
GeolocationService::~GeolocationService() = default;

void GeolocationService::start(const GeolocationRequest& request, PositionCallback found,
                               FailureCallback failed) {
    start(request, std::make_shared<Run>(Run{std::move(found), std::move(failed)}));
}

void GeolocationService::startOnce(const GeolocationRequest& request, PositionCallback found,
                                   FailureCallback failed) {
    start(request, std::make_shared<Run>(Run{std::move(found), std::move(failed), true}));
}

void GeolocationService::start(const GeolocationRequest& request, std::shared_ptr<Run> run) {
    const std::weak_ptr<Run> weak = run;
    const auto fail = [weak](const ServiceFailure& failure) {
        if (const auto held = weak.lock()) {
            held->fail(failure);
        }
    };
    if (isFamilyDenied(Family::Geolocation)) {
        platform::NSLog("There is no position: the host denies geolocation");
        platform::dispatchMainAsync([fail] {
            fail({ServiceFailure::Reason::Denied, "the host denies geolocation"});
        });
    } else {
        run->client = std::make_unique<GeoClueClient>(
            request,
            [weak](const Position& position) {
                if (const auto held = weak.lock()) {
                    held->deliver(position);
                }
            },
            fail);
    }
    run_ = std::move(run);
}

void GeolocationService::stop() {
    run_.reset();
}

bool GeolocationService::isRunning() const {
    return run_ && !run_->hasEnded;
}

}  // namespace orvane::services
