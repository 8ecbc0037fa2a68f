#include "orvane/services/camera/Recorder.h"

#include <algorithm>
#include <string>
#include <thread>
#include <utility>

#include "orvane/services/CameraRequest.h"
#include "orvane/services/RecordingRequest.h"
#include "orvane/services/camera/ElementChain.h"
#include "orvane/services/camera/failureFrom.h"

namespace orvane::services {

using Reason = ServiceFailure::Reason;

namespace {

// How long it may take to complete a file, in seconds.
constexpr guint kPatience = 5;
// The pictures that wait for the encoder.
constexpr int kMostPictures = 4;

// A tenth of a bit for each pixel is enough for VP8 when little moves.
int bitRateFor(const CameraFormat& format) {
    const double rate = format.rate > 0 ? format.rate : 30;
    return static_cast<int>(
        std::clamp(double{1} * format.width * format.height * rate / 10, 100'000.0, 20'000'000.0));
}

void set(GstElement* element, const char* property, const std::string& value) {
    if (element != nullptr) {
        gst_util_set_object_arg(G_OBJECT(element), property, value.c_str());
    }
}

}  // namespace

void Recorder::start(const RecordingRequest& request, const CameraFormat& format,
                     GstDevice* microphone) {
    pipeline_.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("recording"))));
    std::optional<ServiceFailure> failure = build(request, format, microphone);
    if (!failure) {
        const GstRef<GstBus> bus(gst_element_get_bus(pipeline_.get()));
        gst_bus_add_watch(
            bus.get(),
            [](GstBus*, GstMessage* message, gpointer self) -> gboolean {
                static_cast<Recorder*>(self)->received(message);
                return G_SOURCE_CONTINUE;
            },
            this);
        failure = play(pipeline_.get());
    }
    if (failure) {
        end(failure);
    } else {
        isPlaying_ = true;
    }
}

std::optional<ServiceFailure> Recorder::build(const RecordingRequest& request,
                                              const CameraFormat& format, GstDevice* microphone) {
    // Both pipelines have this clock, so that the times of the pictures can be converted.
    const GstRef<GstClock> clock(gst_system_clock_obtain());
    gst_pipeline_use_clock(GST_PIPELINE(pipeline_.get()), clock.get());

    if (request.path.empty()) {
        return ServiceFailure{Reason::Failed, "a recording needs a file"};
    }
    ElementChain video(pipeline_.get());
    GstElement* const pictures = video.add("appsrc");
    set(pictures, "format", "time");
    set(pictures, "is-live", "true");
    set(pictures, "leaky-type", "downstream");
    set(pictures, "max-bytes", "0");
    set(pictures, "max-buffers", std::to_string(kMostPictures));
    video.add("videoconvert");
    GstElement* const encoder = video.add("vp8enc");
    // The fastest mode, in which a picture of 1280 x 720 takes less than the time between two.
    set(encoder, "deadline", "1");
    set(encoder, "cpu-used", "8");
    set(encoder, "threads",
        std::to_string(std::clamp(std::thread::hardware_concurrency(), 1U, 4U)));
    set(encoder, "keyframe-max-dist", "120");
    set(encoder, "target-bitrate",
        std::to_string(request.bitRate > 0 ? request.bitRate : bitRateFor(format)));
    video.add("queue");
    GstElement* const file = video.add("webmmux");
    GstElement* const sink = video.add("filesink");
    if (video.failure()) {
        return video.failure();
    }
    g_object_set(sink, "location", request.path.c_str(), nullptr);
    pictures_.reset(GST_APP_SRC(gst_object_ref(pictures)));
    if (!request.microphone) {
        return {};
    }
    if (microphone == nullptr) {
        return ServiceFailure{Reason::Unavailable, "there is no microphone"};
    }
    ElementChain audio(pipeline_.get());
    GstElement* const sound = audio.add(gst_device_create_element(microphone, nullptr));
    audio.add("queue");
    audio.add("audioconvert");
    audio.add("audioresample");
    audio.add("opusenc");
    audio.linkTo(file);
    if (sound != nullptr) {
        sound_.reset(GST_ELEMENT(gst_object_ref(sound)));
    }
    return audio.failure();
}

void Recorder::push(GstSample* sample, GstClockTime base) {
    GstBuffer* const picture = gst_sample_get_buffer(sample);
    if (!isPlaying_ || !GST_BUFFER_PTS_IS_VALID(picture)) {
        return;
    }
    const GstClockTime ownBase = gst_element_get_base_time(pipeline_.get());
    const GstClockTime time = base + GST_BUFFER_PTS(picture);
    if (time < ownBase) {
        return;
    }
    GstBuffer* const copy = gst_buffer_copy(picture);  // of the description; the pixels are shared
    GST_BUFFER_PTS(copy) = time - ownBase;
    GST_BUFFER_DTS(copy) = GST_CLOCK_TIME_NONE;
    gst_app_src_set_caps(pictures_.get(), gst_sample_get_caps(sample));
    gst_app_src_push_buffer(pictures_.get(), copy);
    hasPictures_ = true;
}

void Recorder::stop() {
    if (!isPlaying_.exchange(false)) {
        return;
    }
    if (!hasPictures_) {
        end(ServiceFailure{Reason::Failed, "no picture has been recorded"});
        return;
    }
    sendEnd();
    deadline_ = g_timeout_source_new_seconds(kPatience);
    g_source_set_callback(
        deadline_,
        [](gpointer self) {
            static_cast<Recorder*>(self)->end(
                ServiceFailure{Reason::TimedOut, "the file of the recording is not complete"});
            return G_SOURCE_REMOVE;
        },
        this, nullptr);
    g_source_attach(deadline_, g_main_context_get_thread_default());
}

void Recorder::sendEnd() {
    gst_app_src_end_of_stream(pictures_.get());
    if (sound_) {
        gst_element_send_event(sound_.get(), gst_event_new_eos());
    }
}

void Recorder::finish() {
    ended_ = {};
    if (!hasEnded_ && hasPictures_) {
        if (isPlaying_.exchange(false)) {
            sendEnd();
        }
        const GstRef<GstBus> bus(gst_element_get_bus(pipeline_.get()));
        const GstMessageRef last(gst_bus_timed_pop_filtered(
            bus.get(), kPatience * GST_SECOND,
            static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR)));
    }
    release();
}

void Recorder::received(GstMessage* message) {
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS) {
        end({});
    } else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        end(failureFrom(message));
    }
}

void Recorder::end(const std::optional<ServiceFailure>& failure) {
    hasEnded_ = true;
    release();
    if (const Ended ended = std::exchange(ended_, {})) {
        ended(failure);
    }
}

// The pipeline stays until the destructor: push() may be using it.
void Recorder::release() {
    isPlaying_ = false;
    if (deadline_ != nullptr) {
        g_source_destroy(deadline_);
        g_source_unref(std::exchange(deadline_, nullptr));
    }
    if (pipeline_) {
        const GstRef<GstBus> bus(gst_element_get_bus(pipeline_.get()));
        gst_bus_remove_watch(bus.get());
        gst_element_set_state(pipeline_.get(), GST_STATE_NULL);
    }
}

}  // namespace orvane::services
