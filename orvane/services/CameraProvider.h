#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvane/services/Camera.h"
#include "orvane/services/ServiceFailure.h"

namespace orvane::services {

struct CameraFormat;
struct CameraFrame;
struct CameraRequest;
struct RecordingRequest;

// One use of a camera, from its creation to its destructor, which also completes a recording. The
// callbacks of all functions are called on the main thread, never before the function has returned,
// and not after the destructor. Main thread only.
class CameraCapture {
public:
    // What a use of a camera reports.
    struct Observer {
        // Called once, before the first picture.
        std::function<void(const CameraFormat& format)> started;
        // Called with the newest picture. Pictures that come while it runs, or before the main
        // thread comes to it, are skipped.
        std::function<void(const CameraFrame& frame)> frame;
        // Called once, when the camera cannot be used, or cannot be used any more.
        std::function<void(const ServiceFailure& failure)> failed;
    };
    // The result of a recording: nothing, or why there is none.
    using Outcome = std::optional<ServiceFailure>;

    virtual ~CameraCapture() = default;

    // Passes the next picture as the bytes of a JPEG file.
    virtual void takePhoto(
        std::function<void(const std::string& bytes, const Outcome& outcome)> taken) = 0;
    // Records into a file until stopRecording(); `ended` is called when the file is complete, or
    // when an error has ended the recording. Called while there is no other recording.
    virtual void record(const RecordingRequest& request,
                        std::function<void(const Outcome& outcome)> ended) = 0;
    // Completes the recording's file.
    virtual void stopRecording() = 0;
};

// The cameras behind CameraService: those of the desktop, or one that a test of an application
// derives from this class. The same rules as for CameraCapture hold.
class CameraProvider {
public:
    virtual ~CameraProvider() = default;

    // Finds the cameras and watches them from then on. `changed` is called with all cameras at
    // first and after each change; `failed` instead of the first call if cameras cannot be found.
    // Called once, before capture().
    virtual void open(std::function<void(const std::vector<Camera>& cameras)> changed,
                      FailureCallback failed) = 0;
    // Begins to use a camera. The result does not outlive the provider.
    virtual std::unique_ptr<CameraCapture> capture(const CameraRequest& request,
                                                   CameraCapture::Observer observer) = 0;
};

}  // namespace orvane::services
