#pragma once

#include <gst/app/gstappsrc.h>

#include <atomic>
#include <functional>
#include <optional>
#include <utility>

#include "orvane/services/ServiceFailure.h"
#include "orvane/services/camera/GstHandles.h"

namespace orvane::services {

struct CameraFormat;
struct RecordingRequest;

// Writes pictures, and the sound of a microphone, into a WebM file: a pipeline of its own, which
// gets the pictures from that of the camera. Used on the control thread, except for push().
class Recorder {
public:
    // Called once on the control thread: the file is complete, or why it is not.
    using Ended = std::function<void(const std::optional<ServiceFailure>& failure)>;

    explicit Recorder(Ended ended) : ended_(std::move(ended)) {}
    // After finish() only; any thread.
    ~Recorder() = default;
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    // Begins. The microphone is null for none.
    void start(const RecordingRequest& request, const CameraFormat& format, GstDevice* microphone);
    // Adds a picture. `base` is the base time of the pipeline that it comes from. If the encoder is
    // too slow, pictures are skipped. The thread of the pictures.
    void push(GstSample* sample, GstClockTime base);
    // Completes the file, which `ended` reports.
    void stop();
    // Completes the file, waits for that, and releases everything. `ended` is not called any more.
    void finish();

private:
    std::optional<ServiceFailure> build(const RecordingRequest& request, const CameraFormat& format,
                                        GstDevice* microphone);
    void sendEnd();
    void received(GstMessage* message);
    void end(const std::optional<ServiceFailure>& failure);
    void release();

    Ended ended_;
    GstRef<GstElement> pipeline_;
    GstRef<GstAppSrc> pictures_;
    GstRef<GstElement> sound_;
    GSource* deadline_ = nullptr;
    bool hasEnded_ = false;
    std::atomic<bool> isPlaying_ = false;
    std::atomic<bool> hasPictures_ = false;
};

}  // namespace orvane::services
