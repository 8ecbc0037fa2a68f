#include "orvane/services/camera/DesktopCameras.h"

#include <utility>

#include "orvane/services/RecordingRequest.h"
#include "orvane/services/camera/CameraPipeline.h"
#include "orvane/services/camera/CaptureEvents.h"
#include "orvane/services/camera/DeviceList.h"
#include "orvane/services/createCameras.h"
#include "platform/dispatch/NewestOnMain.h"
#include "platform/dispatch/dispatch.h"

namespace orvane::services {

using Reason = ServiceFailure::Reason;

// What the control thread works with.
struct DesktopCameras::Devices {
    // A pipeline, and the id of its camera.
    struct Use {
        std::string camera;
        std::weak_ptr<CameraPipeline> pipeline;
    };

    DeviceList list;
    std::vector<Use> uses;

    // Ends the pipelines of cameras that are gone.
    void endUses() {
        std::erase_if(uses, [this](const Use& use) {
            const auto pipeline = use.pipeline.lock();
            if (pipeline && list.find(use.camera) == nullptr) {
                pipeline->fail({Reason::Unavailable, "the camera has been removed"});
            }
            return !pipeline;
        });
    }

    void start(const std::shared_ptr<CameraPipeline>& pipeline, const CameraRequest& request) {
        GstDevice* const device = list.find(request.camera);
        if (device == nullptr) {
            pipeline->fail({Reason::Unavailable,
                            request.camera.empty()
                                ? "there is no camera"
                                : "there is no camera with the id '" + request.camera + "'"});
            return;
        }
        uses.push_back(
            {request.camera.empty() ? list.cameras().front().id : request.camera, pipeline});
        pipeline->start(device, request);
    }
};

class DesktopCameras::Capture final : public CameraCapture {
public:
    Capture(const DesktopCameras& cameras, const CameraRequest& request, Observer observer)
        : thread_(cameras.thread_),
          events_(std::make_shared<CaptureEvents>(CaptureEvents{std::move(observer)})),
          frames_([events = std::weak_ptr(events_)](const CameraFrame& frame) {
              if (const auto held = events.lock()) {
                  held->observer.frame(frame);
              }
          }),
          pipeline_(std::make_shared<CameraPipeline>(events_, frames_.sender())) {
        thread_.run([devices = cameras.devices_, pipeline = pipeline_, request] {
            devices->start(pipeline, request);
        });
    }
    // The last reference to the pipeline is released on the control thread.
    ~Capture() override {
        thread_.run([pipeline = std::exchange(pipeline_, {})] { pipeline->stop(); });
    }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;

    void takePhoto(
        std::function<void(const std::string& bytes, const Outcome& outcome)> taken) override {
        const int number = ++lastPhoto_;
        events_->photos.emplace(number, std::move(taken));
        thread_.run([pipeline = pipeline_, number] { pipeline->takePhoto(number); });
    }
    void record(const RecordingRequest& request,
                std::function<void(const Outcome& outcome)> ended) override {
        events_->recorded = std::move(ended);
        thread_.run([pipeline = pipeline_, request] {
            const GstRef<GstDevice> microphone =
                request.microphone ? DeviceList::microphone() : nullptr;
            pipeline->record(request, microphone.get());
        });
    }
    void stopRecording() override {
        thread_.run([pipeline = pipeline_] { pipeline->stopRecording(); });
    }

private:
    const ControlThread& thread_;
    const std::shared_ptr<CaptureEvents> events_;
    const platform::NewestOnMain<CameraFrame> frames_;
    std::shared_ptr<CameraPipeline> pipeline_;
    int lastPhoto_ = 0;
};

DesktopCameras::DesktopCameras()
    : events_(std::make_shared<Events>()), devices_(std::make_shared<Devices>()) {}

DesktopCameras::~DesktopCameras() {
    thread_.run([devices = std::exchange(devices_, {})] {});
}

void DesktopCameras::open(std::function<void(const std::vector<Camera>& cameras)> changed,
                          FailureCallback failed) {
    *events_ = {std::move(changed), std::move(failed)};
    // The list owns the function that it calls: no reference to itself.
    thread_.run([devices = std::weak_ptr(devices_), events = std::weak_ptr(events_)] {
        const auto held = devices.lock();
        if (!held) {
            return;
        }
        const auto report = [devices = held.get(), events] {
            devices->endUses();
            platform::dispatchMainAsync([events, cameras = devices->list.cameras()] {
                if (const auto observer = events.lock()) {
                    observer->changed(cameras);
                }
            });
        };
        if (const auto failure = held->list.open(report)) {
            platform::dispatchMainAsync([events, failure = *failure] {
                if (const auto observer = events.lock()) {
                    observer->failed(failure);
                }
            });
        }
    });
}

std::unique_ptr<CameraCapture> DesktopCameras::capture(const CameraRequest& request,
                                                       CameraCapture::Observer observer) {
    return std::make_unique<Capture>(*this, request, std::move(observer));
}

}  // namespace orvane::services

orvane::services::CameraProvider* orvane_create_cameras() {
    return new orvane::services::DesktopCameras();
}
