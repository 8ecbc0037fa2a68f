#include "orvane/services/CameraService.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "orvane/commons/guardedCall.h"
#include "orvane/services/createCameras.h"
#include "orvane/services/families.h"
#include "platform/dispatch/dispatch.h"
#include "platform/foundation/LibraryFunctions.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/runtimeLibrary.h"

namespace orvane::services {

using Reason = ServiceFailure::Reason;

namespace {

// How long it may take to find the cameras, in seconds.
constexpr double kPatience = 10;

const ServiceFailure kDenied{Reason::Denied, "the host denies cameras"};

std::shared_ptr<CameraProvider> createDesktopProvider() {
    const std::string path = platform::runtimeLibrary(ORVANE_CAMERA_LIBRARY);
    platform::LibraryFunctions functions(path.c_str(), "There are no cameras");
    decltype(&orvane_create_cameras) create = nullptr;
    functions.find(create, "orvane_create_cameras");
    return std::shared_ptr<CameraProvider>(functions.isComplete() ? create() : nullptr);
}

bool isSensible(const CameraRequest& request) {
    constexpr int kLargest = 16384;
    constexpr double kMostPerSecond = 1000;
    return request.width >= 1 && request.width <= kLargest && request.height >= 1 &&
           request.height <= kLargest && request.rate > 0 && request.rate <= kMostPerSecond;
}

std::shared_ptr<CameraService>& exclusiveInstance() {
    static std::shared_ptr<CameraService> instance;
    return instance;
}

}  // namespace

struct CameraService::State {
    std::shared_ptr<CameraProvider> provider;
    std::vector<Camera> cameras = {};
    bool isOpen = false;
    bool isReady = false;
    std::vector<std::function<void()>> waiting = {};
    // What begins after the destructor finds this expired.
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);
};

std::shared_ptr<CameraService> CameraService::instance() {
    if (!exclusiveInstance()) {
        exclusiveInstance() = std::make_shared<CameraService>(nullptr);
    }
    return exclusiveInstance();
}

void CameraService::reset() {
    exclusiveInstance().reset();
}

CameraService::CameraService(std::unique_ptr<CameraProvider> provider)
    : state_(std::make_unique<State>()) {
    state_->provider = std::move(provider);
}

CameraService::~CameraService() = default;

void CameraService::open() {
    if (std::exchange(state_->isOpen, true)) {
        return;
    }
    if (!state_->provider) {
        state_->provider = createDesktopProvider();
    }
    if (!state_->provider) {
        state_->isReady = true;
        return;
    }
    const std::weak_ptr<bool> alive = state_->alive;
    state_->provider->open(
        [this, alive](const std::vector<Camera>& cameras) {
            if (!alive.expired()) {
                camerasChanged(cameras);
            }
        },
        [this, alive](const ServiceFailure& failure) {
            if (!alive.expired()) {
                platform::NSLog("There are no cameras: %s", failure.message.c_str());
                camerasChanged({});
            }
        });
}

void CameraService::camerasChanged(std::vector<Camera> cameras) {
    const auto knows = [](const std::vector<Camera>& list, const Camera& camera) {
        return std::ranges::find(list, camera.id, &Camera::id) != list.end();
    };
    CamerasChangedEvent event;
    std::ranges::copy_if(cameras, std::back_inserter(event.added),
                         [&](const Camera& camera) { return !knows(state_->cameras, camera); });
    for (const Camera& camera : state_->cameras) {
        if (!knows(cameras, camera)) {
            event.removed.push_back(camera.id);
        }
    }
    state_->cameras = std::move(cameras);
    // The cameras of the beginning are no change.
    if (!std::exchange(state_->isReady, true)) {
        for (const auto& begin : std::exchange(state_->waiting, {})) {
            begin();
        }
    } else if (!event.added.empty() || !event.removed.empty()) {
        commons::guardedCall("exception of a listener for cameras", [&] { notify(event); });
    }
}

std::shared_ptr<ServiceCall> CameraService::list(
    std::function<void(const std::vector<Camera>& cameras)> found, FailureCallback failed) {
    const std::shared_ptr<ServiceCall> call(new ServiceCall(std::move(failed)));
    if (isFamilyDenied(Family::Camera)) {
        platform::dispatchMainAsync([call] { call->fail(kDenied); });
        return call;
    }
    open();
    auto finish = [this, call, found = std::move(found),
                   alive = std::weak_ptr<bool>(state_->alive)] {
        if (alive.expired()) {
            return;
        }
        call->finish([&, cameras = state_->cameras] {  // a copy: `found` may change the list
            if (found) {
                found(cameras);
            }
        });
    };
    if (state_->isReady) {
        platform::dispatchMainAsync(std::move(finish));
    } else {
        call->limit(kPatience);
        state_->waiting.push_back(std::move(finish));
    }
    return call;
}

std::shared_ptr<CameraSession> CameraService::start(
    const CameraRequest& request, std::function<void(const CameraFormat& format)> started,
    FailureCallback failed) {
    const std::shared_ptr<CameraSession> session(
        new CameraSession(std::move(started), std::move(failed)));
    if (isFamilyDenied(Family::Camera)) {
        session->failLater(kDenied);
        return session;
    }
    if (!isSensible(request)) {
        session->failLater({Reason::Failed, "the size or the rate of the pictures was refused"});
        return session;
    }
    open();
    if (state_->provider) {
        session->start(state_->provider, request);
    } else {
        session->failLater({Reason::Unavailable, "there are no cameras"});
    }
    return session;
}

}  // namespace orvane::services
