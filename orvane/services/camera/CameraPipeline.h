#pragma once

#include <gst/app/gstappsink.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "orvane/services/CameraFrameEvent.h"
#include "orvane/services/CameraProvider.h"
#include "orvane/services/CameraRequest.h"
#include "orvane/services/camera/CaptureEvents.h"
#include "orvane/services/camera/GstHandles.h"
#include "platform/dispatch/NewestOnMain.h"

namespace orvane::services {

class Recorder;

// The pipeline of a camera in use. Each picture is sent to the main thread in the memory into which
// GStreamer has converted it, and to the recorder if there is one. Used on the control thread, on
// which it must be stopped and destroyed; the pictures come on a thread of GStreamer's.
class CameraPipeline {
public:
    CameraPipeline(std::weak_ptr<CaptureEvents> events,
                   platform::NewestOnMain<CameraFrame>::Sender frames);
    ~CameraPipeline();
    CameraPipeline(const CameraPipeline&) = delete;
    CameraPipeline& operator=(const CameraPipeline&) = delete;

    void start(GstDevice* device, const CameraRequest& request);
    // Reports a failure, the first time, and releases the camera.
    void fail(const ServiceFailure& failure);
    // Passes the next picture as a JPEG file, under this number.
    void takePhoto(int number);
    // Begins to record. The microphone is null for none.
    void record(const RecordingRequest& request, GstDevice* microphone);
    void stopRecording();
    // Releases the camera, after the file of a recording is complete.
    void stop();

private:
    template <typename Call>
    void post(Call call) const;
    GstFlowReturn received(GstAppSink* sink);
    void recordingEnded(const CameraCapture::Outcome& outcome);
    void release();

    const std::weak_ptr<CaptureEvents> events_;
    const platform::NewestOnMain<CameraFrame>::Sender frames_;
    GstRef<GstElement> pipeline_;
    CameraFormat mode_ = {};
    bool hasFailed_ = false;
    bool hasStarted_ = false;  // the thread of the pictures

    std::mutex mutex_;
    // Guarded by the mutex; replaced on the control thread only:
    std::vector<int> photos_;
    std::shared_ptr<Recorder> recorder_;
};

}  // namespace orvane::services
