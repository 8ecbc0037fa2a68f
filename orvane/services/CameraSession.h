#pragma once

#include <functional>
#include <memory>
#include <string>

#include "orvane/commons/Export.h"
#include "orvane/commons/virtual_enable_shared_from_this.h"
#include "orvane/notification/Notifier.h"
#include "orvane/services/CameraFrameEvent.h"
#include "orvane/services/CameraProvider.h"
#include "orvane/services/CameraRequest.h"
#include "orvane/services/RecordingRequest.h"
#include "orvane/services/ServiceCall.h"
#include "orvane/services/ServiceFailure.h"

namespace orvane::services {

// One use of a camera, which CameraService::start begins. Its pictures are sent to the listeners as
// CameraFrameEvents; native::NVideoCaptureView shows them. The camera is released by stop(), by a
// failure, or when nothing holds the session any more: neither the application nor a view.
//
// Each call returns at once. One callback follows on the main thread, never before the call has
// returned: the first one, or `failed` with the reason. No callback follows the destructor, so that
// the callbacks may refer to the object that owns the session. What they throw is logged. Main
// thread only.
class ORVANE_EXPORT CameraSession
    : public notification::Notifier<CameraSession>,
      public virtual commons::virtual_enable_shared_from_this<CameraSession> {
public:
    // What a call returns. It may be dropped.
    using Call = std::shared_ptr<ServiceCall>;

    // Completes the file of a recording.
    ~CameraSession() override;
    CameraSession(const CameraSession&) = delete;
    CameraSession& operator=(const CameraSession&) = delete;

    // Releases the camera, after the file of a recording is complete. Pending photos fail. May be
    // called from a callback.
    void stop();
    // Whether the session has neither been stopped nor failed.
    bool isRunning() const;
    // What the camera delivers; all zero until it has started.
    CameraFormat getFormat() const;

    // Passes the next picture as the bytes of a JPEG file, which Image::setContent takes.
    Call takePhoto(std::function<void(const std::string& bytes)> taken,
                   FailureCallback failed = {});

    // Records into a WebM file, with VP8 for the pictures and Opus for the sound, until
    // stopRecording() or stop(). `finished` is called when the file is complete. Fails if there is
    // a recording already, if the file cannot be written, and if a microphone is wanted and there
    // is none. A recording begins with the next picture. Cancelling the call ends the callbacks,
    // not the recording.
    Call record(const RecordingRequest& request, std::function<void()> finished = {},
                FailureCallback failed = {});
    // Completes the file of the recording. Does nothing without one.
    void stopRecording();
    // Whether record() has been called and the file is not complete yet.
    bool isRecording() const;

private:
    friend class CameraService;
    struct State;

    // The callbacks may be empty.
    CameraSession(std::function<void(const CameraFormat& format)> started, FailureCallback failed);
    void start(const std::shared_ptr<CameraProvider>& provider, const CameraRequest& request);
    void failLater(const ServiceFailure& failure);
    void started(const CameraFormat& format);
    void fail(const ServiceFailure& failure);
    void end();
    void send(const CameraFrame& frame);
    void recordingEnded(const Call& call, const CameraCapture::Outcome& outcome,
                        const std::function<void()>& finished);
    Call call(FailureCallback failed);

    std::unique_ptr<State> state_;
};

}  // namespace orvane::services
