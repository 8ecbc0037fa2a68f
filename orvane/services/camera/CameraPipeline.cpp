#include "orvane/services/camera/CameraPipeline.h"

#include <gst/video/video.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "orvane/services/RecordingRequest.h"
#include "orvane/services/camera/ElementChain.h"
#include "orvane/services/camera/Recorder.h"
#include "orvane/services/camera/chooseMode.h"
#include "orvane/services/camera/failureFrom.h"
#include "platform/dispatch/dispatch.h"

namespace orvane::services {

using Reason = ServiceFailure::Reason;

namespace {

// The words of a CameraFrame, as GStreamer names them by the order of their bytes.
constexpr bool kIsLittle = std::endian::native == std::endian::little;
constexpr const char* kFormat = kIsLittle ? "BGRA" : "ARGB";
// The same without alpha, which an encoder of JPEG takes as it is. Other formats would be converted
// to a range of colors that is not that of JPEG.
constexpr const char* kOpaqueFormat = kIsLittle ? "BGRx" : "xRGB";

// How long it may take to encode a photo.
constexpr GstClockTime kPhotoPatience = 8 * GST_SECOND;

// A buffer that is mapped for reading, and held, for as long as this exists.
struct MappedFrame {
    GstVideoFrame frame;

    explicit MappedFrame(const GstVideoFrame& mapped) : frame(mapped) {}
    ~MappedFrame() { gst_video_frame_unmap(&frame); }
    MappedFrame(const MappedFrame&) = delete;
    MappedFrame& operator=(const MappedFrame&) = delete;
};

// Returns the picture of a sample in the sample's memory, which is copied only if there are gaps
// between its rows. Without pixels if the sample has none.
CameraFrame frameOf(GstSample* sample) {
    GstVideoInfo info;
    GstVideoFrame mapped;
    const GstCaps* const caps = gst_sample_get_caps(sample);
    GstBuffer* const buffer = gst_sample_get_buffer(sample);
    if (caps == nullptr || buffer == nullptr || gst_video_info_from_caps(&info, caps) == FALSE ||
        gst_video_frame_map(&mapped, &info, buffer, GST_MAP_READ) == FALSE) {
        return {};
    }
    const auto holder = std::make_shared<const MappedFrame>(mapped);
    const auto* const pixels =
        static_cast<const std::uint32_t*>(GST_VIDEO_FRAME_PLANE_DATA(&holder->frame, 0));
    const int width = GST_VIDEO_FRAME_WIDTH(&holder->frame);
    const int height = GST_VIDEO_FRAME_HEIGHT(&holder->frame);
    const auto columns = static_cast<std::size_t>(width);
    const auto rows = static_cast<std::size_t>(height);
    const auto stride =
        static_cast<std::size_t>(GST_VIDEO_FRAME_PLANE_STRIDE(&holder->frame, 0)) / sizeof *pixels;
    if (stride == columns) {
        return {width, height, {holder, pixels}};
    }
    const std::shared_ptr<std::uint32_t[]> copy(new std::uint32_t[columns * rows]);
    for (std::size_t row = 0; row < rows; ++row) {
        std::ranges::copy(std::span(pixels + row * stride, columns), &copy[row * columns]);
    }
    return {width, height, copy};
}

struct Photo {
    std::string bytes = {};
    CameraCapture::Outcome outcome = {};
};

Photo encode(const CameraFrame& frame) {
    const GstCapsRef opaque(gst_caps_new_simple(
        "video/x-raw", "format", G_TYPE_STRING, kOpaqueFormat, "width", G_TYPE_INT, frame.width,
        "height", G_TYPE_INT, frame.height, "framerate", GST_TYPE_FRACTION, 0, 1, nullptr));
    const gsize size =
        sizeof(std::uint32_t) * static_cast<gsize>(frame.width) * static_cast<gsize>(frame.height);
    // GStreamer does not write to this memory.
    GstBuffer* const buffer = gst_buffer_new_wrapped_full(
        GST_MEMORY_FLAG_READONLY, const_cast<std::uint32_t*>(frame.pixels.get()), size, 0, size,
        new CameraFrame(frame), [](gpointer held) { delete static_cast<CameraFrame*>(held); });
    const GstSampleRef picture(gst_sample_new(buffer, opaque.get(), nullptr, nullptr));
    gst_buffer_unref(buffer);
    const GstCapsRef jpeg(gst_caps_new_empty_simple("image/jpeg"));
    GError* error = nullptr;
    const GstSampleRef file(
        gst_video_convert_sample(picture.get(), jpeg.get(), kPhotoPatience, &error));
    Photo photo;
    if (GstMapInfo map;
        file && gst_buffer_map(gst_sample_get_buffer(file.get()), &map, GST_MAP_READ) != FALSE) {
        photo.bytes.assign(reinterpret_cast<const char*>(map.data), map.size);
        gst_buffer_unmap(gst_sample_get_buffer(file.get()), &map);
    } else {
        photo.outcome = {Reason::Failed, error != nullptr ? error->message : "there is no JPEG"};
    }
    g_clear_error(&error);
    return photo;
}

}  // namespace

CameraPipeline::CameraPipeline(std::weak_ptr<CaptureEvents> events,
                               platform::NewestOnMain<CameraFrame>::Sender frames)
    : events_(std::move(events)), frames_(std::move(frames)) {}

CameraPipeline::~CameraPipeline() {
    stop();
}

// Calls with the events on the main thread, unless the capture is gone by then.
template <typename Call>
void CameraPipeline::post(Call call) const {
    platform::dispatchMainAsync([events = events_, call = std::move(call)] {
        if (const auto held = events.lock()) {
            call(*held);
        }
    });
}

void CameraPipeline::start(GstDevice* device, const CameraRequest& request) {
    const GstCapsRef modes(gst_device_get_caps(device));
    const GstCapsRef mode = modes ? chooseMode(modes.get(), request) : nullptr;
    if (!mode) {
        fail({Reason::Failed, "the camera has no pictures of a known format"});
        return;
    }
    pipeline_.reset(GST_ELEMENT(gst_object_ref_sink(gst_pipeline_new("camera"))));
    const GstRef<GstClock> clock(gst_system_clock_obtain());
    gst_pipeline_use_clock(GST_PIPELINE(pipeline_.get()), clock.get());

    const GstStructure* const chosen = gst_caps_get_structure(mode.get(), 0);
    gst_structure_get_int(chosen, "width", &mode_.width);
    gst_structure_get_int(chosen, "height", &mode_.height);
    if (int numerator = 0, denominator = 1;
        gst_structure_get_fraction(chosen, "framerate", &numerator, &denominator) != FALSE) {
        gst_util_fraction_to_double(numerator, denominator, &mode_.rate);
    }
    ElementChain chain(pipeline_.get());
    chain.add(gst_device_create_element(device, nullptr));
    if (GstElement* const filter = chain.add("capsfilter")) {
        g_object_set(filter, "caps", mode.get(), nullptr);
    }
    if (gst_structure_has_name(chosen, "image/jpeg") != FALSE) {
        chain.add("jpegdec");
    }
    chain.add("videoconvert");
    GstElement* const sink = chain.add("appsink");
    if (chain.failure()) {
        fail(*chain.failure());
        return;
    }
    const GstCapsRef shown(
        gst_caps_new_simple("video/x-raw", "format", G_TYPE_STRING, kFormat, nullptr));
    // Pictures are shown when they come. What comes while the last one is handled is skipped.
    g_object_set(sink, "caps", shown.get(), "sync", FALSE, "max-buffers", 1U, "drop", TRUE,
                 "enable-last-sample", FALSE, nullptr);
    GstAppSinkCallbacks callbacks{};
    callbacks.new_sample = [](GstAppSink* from, gpointer self) {
        return static_cast<CameraPipeline*>(self)->received(from);
    };
    gst_app_sink_set_callbacks(GST_APP_SINK(sink), &callbacks, this, nullptr);

    const GstRef<GstBus> bus(gst_element_get_bus(pipeline_.get()));
    gst_bus_add_watch(
        bus.get(),
        [](GstBus*, GstMessage* message, gpointer self) -> gboolean {
            if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
                static_cast<CameraPipeline*>(self)->fail(failureFrom(message));
            } else if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS) {
                static_cast<CameraPipeline*>(self)->fail(
                    {Reason::Failed, "the camera delivers no more pictures"});
            }
            return G_SOURCE_CONTINUE;
        },
        this);
    if (const auto failure = play(pipeline_.get())) {
        fail(*failure);
    }
}

void CameraPipeline::fail(const ServiceFailure& failure) {
    if (std::exchange(hasFailed_, true)) {
        return;
    }
    release();
    post([failure](const CaptureEvents& events) { events.observer.failed(failure); });
}

GstFlowReturn CameraPipeline::received(GstAppSink* sink) {
    const GstSampleRef sample(gst_app_sink_pull_sample(sink));
    const CameraFrame frame = sample ? frameOf(sample.get()) : CameraFrame{};
    if (frame.pixels == nullptr) {
        return GST_FLOW_OK;
    }
    if (!std::exchange(hasStarted_, true)) {
        const CameraFormat format{frame.width, frame.height, mode_.rate};
        post([format](const CaptureEvents& events) { events.observer.started(format); });
    }
    frames_.send(frame);

    std::vector<int> photos;
    std::shared_ptr<Recorder> recorder;
    {
        const std::scoped_lock lock(mutex_);
        photos.swap(photos_);
        recorder = recorder_;
    }
    for (const int number : photos) {
        platform::dispatchBackgroundAsync([frame, number, events = events_] {
            const Photo photo = encode(frame);
            platform::dispatchMainAsync([number, events, photo] {
                const auto held = events.lock();
                if (!held) {
                    return;
                }
                if (const auto taken = held->photos.extract(number)) {
                    taken.mapped()(photo.bytes, photo.outcome);
                }
            });
        });
    }
    if (recorder) {
        recorder->push(sample.get(), gst_element_get_base_time(pipeline_.get()));
    }
    return GST_FLOW_OK;
}

void CameraPipeline::takePhoto(int number) {
    const std::scoped_lock lock(mutex_);
    photos_.push_back(number);
}

void CameraPipeline::record(const RecordingRequest& request, GstDevice* microphone) {
    if (hasFailed_) {
        recordingEnded(ServiceFailure{Reason::Failed, "the camera is not in use"});
        return;
    }
    const auto recorder = std::make_shared<Recorder>(
        [this](const CameraCapture::Outcome& outcome) { recordingEnded(outcome); });
    recorder->start(request, mode_, microphone);
    const std::scoped_lock lock(mutex_);
    recorder_ = recorder;
}

void CameraPipeline::stopRecording() {
    if (recorder_) {
        recorder_->stop();
    }
}

void CameraPipeline::recordingEnded(const CameraCapture::Outcome& outcome) {
    post([outcome](CaptureEvents& events) {
        if (const auto recorded = std::exchange(events.recorded, {})) {
            recorded(outcome);
        }
    });
}

// Ends the thread of the pictures.
void CameraPipeline::release() {
    if (pipeline_) {
        const GstRef<GstBus> bus(gst_element_get_bus(pipeline_.get()));
        gst_bus_remove_watch(bus.get());
        gst_element_set_state(pipeline_.get(), GST_STATE_NULL);
    }
}

void CameraPipeline::stop() {
    hasFailed_ = true;  // nothing more to report
    if (recorder_) {
        recorder_->finish();
    }
    release();
    recorder_.reset();
}

}  // namespace orvane::services
