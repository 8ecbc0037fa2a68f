#include <gst/app/gstappsink.h>
#include <gst/gst.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "orvane/display/native/DisplayView.h"
#include "orvane/orvane.h"
#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "tests/capture/TestCameras.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/waitFor.h"

// The desktop's cameras, with devices that the test connects.
namespace orvane::tests {
namespace {

using namespace services;
using cameras::Kind;
using Reason = ServiceFailure::Reason;

// Red, as it is after conversions and compression.
bool isRed(std::uint32_t pixel) {
    return (pixel >> 16 & 255) > 240 && (pixel >> 8 & 255) < 12 && (pixel & 255) < 12;
}

class DesktopCameras : public testing::Test {
protected:
    static void SetUpTestSuite() { cameras::install(); }
    // Every test ends with nothing in use.
    void TearDown() override {
        session.reset();
        service.reset();
        cameras::disconnectAll();
        EXPECT_EQ(cameras::sourcesInUse(), 0);
    }

    std::vector<std::string> names() {
        std::optional<std::vector<std::string>> result;
        service->list([&](const std::vector<Camera>& found) {
            result.emplace();
            for (const Camera& camera : found) {
                result->push_back(camera.name);
            }
        });
        waitFor([&] { return result.has_value(); });
        return *result;
    }
    // Starts the first camera.
    void start(const CameraRequest& request = {.width = 640, .height = 480}) {
        session = service->start(
            request, [this](const CameraFormat& given) { format = given; },
            [this](const ServiceFailure& given) { failure = given; });
    }
    void startRed() {
        cameras::connect({"Front"});
        waitFor([this] { return names() == std::vector<std::string>{"Front"}; });
        start();
        waitFor([this] { return format.has_value(); });
    }
    void record(const RecordingRequest& request) {
        session->record(
            request, [this] { isRecorded = true; },
            [this](const ServiceFailure& given) { failure = given; });
    }
    // Returns once the session has sent some more pictures to a recording that was asked for. What
    // is asked of cameras is done in order, so the recording has begun when a later session has
    // failed.
    void receivePictures(int wanted = 5) {
        bool hasFailed = false;
        const auto other = service->start({.camera = "none"}, {},
                                          [&](const ServiceFailure&) { hasFailed = true; });
        waitFor([&] { return hasFailed; });
        int count = 0;
        notification::Listeners listeners;
        listeners.add<CameraFrameEvent>(*session, [&](const auto&) { ++count; });
        waitFor([&] { return count >= wanted; });
    }

    std::shared_ptr<CameraService> service = std::make_shared<CameraService>(nullptr);
    std::shared_ptr<CameraSession> session;
    std::optional<CameraFormat> format;
    std::optional<ServiceFailure> failure;
    bool isRecorded = false;
    TemporaryFolder folder;
    const std::string path = folder.path() / "recording.webm";
};

// What a file contains, after it was decoded.
struct Recording {
    int pictures = 0;
    int redPictures = 0;
    int sounds = 0;
    bool hasDuration = false;
    bool isInOrder = true;
    GstClockTime begin = GST_CLOCK_TIME_NONE;
};

// Whether a file has the index that follows the last picture: the element Cues of Matroska.
bool hasIndex(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    return bytes.rfind("\x1C\x53\xBB\x6B") > bytes.size() / 2 &&
           bytes.rfind("\x1C\x53\xBB\x6B") != std::string::npos;
}

Recording decode(const std::string& path, bool withSound) {
    const std::string description =
        "filesrc location=" + path +
        " ! matroskademux name=file file.video_0 ! queue ! vp8dec ! "
        "videoconvert ! video/x-raw,format=BGRA ! appsink name=pictures sync=false " +
        (withSound ? "file.audio_0 ! queue ! opusdec ! appsink name=sounds sync=false" : "");
    GstElement* const pipeline = gst_parse_launch(description.c_str(), nullptr);
    const auto samplesOf = [pipeline](const char* name, const auto& receive) {
        GstElement* const sink = gst_bin_get_by_name(GST_BIN(pipeline), name);
        while (GstSample* const sample =
                   gst_app_sink_try_pull_sample(GST_APP_SINK(sink), 10 * GST_SECOND)) {
            receive(gst_sample_get_buffer(sample));
            gst_sample_unref(sample);
        }
        gst_object_unref(sink);
    };
    Recording result;
    // What the head of the file says, before anything else is read.
    gst_element_set_state(pipeline, GST_STATE_PAUSED);
    gst_element_get_state(pipeline, nullptr, nullptr, 10 * GST_SECOND);
    gint64 duration = 0;
    result.hasDuration =
        gst_element_query_duration(pipeline, GST_FORMAT_TIME, &duration) != FALSE && duration > 0;
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    GstClockTime last = 0;
    samplesOf("pictures", [&](GstBuffer* buffer) {
        ++result.pictures;
        std::uint32_t pixel = 0;
        gst_buffer_extract(buffer, gst_buffer_get_size(buffer) / 2, &pixel, sizeof pixel);
        result.redPictures += isRed(pixel) ? 1 : 0;
        result.begin = std::min(result.begin, GST_BUFFER_PTS(buffer));
        result.isInOrder = result.isInOrder && GST_BUFFER_PTS(buffer) >= last;
        last = GST_BUFFER_PTS(buffer);
    });
    if (withSound) {
        samplesOf("sounds", [&](GstBuffer*) { ++result.sounds; });
    }
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(pipeline);
    return result;
}

TEST_F(DesktopCameras, AreListedAndWatched) {
    EXPECT_EQ(names(), std::vector<std::string>{});
    std::vector<std::string> log;
    notification::Listeners listeners;
    listeners.add<CamerasChangedEvent>(*service, [&](const CamerasChangedEvent& event) {
        for (const Camera& camera : event.added) {
            log.push_back("added " + camera.name);
        }
        for (const std::string& id : event.removed) {
            log.push_back("removed " + id);
        }
    });
    cameras::connect({"Front"});
    cameras::connect({"Microphone", Kind::Microphone});
    cameras::connect({"Front"});
    waitFor([&] { return log.size() == 2; });
    EXPECT_EQ(names(), (std::vector<std::string>{"Front", "Front (2)"}));
    cameras::disconnect("Front");
    waitFor([&] { return log.size() == 4; });
    EXPECT_EQ(names(), std::vector<std::string>{});
    EXPECT_EQ(cameras::sourcesInUse(), 0) << "listing opens no camera";
}

TEST_F(DesktopCameras, APreviewShowsWhatTheCameraSeesUntilItStops) {
    startRed();
    EXPECT_EQ(format->width, 640);
    EXPECT_EQ(format->height, 480);
    EXPECT_EQ(format->rate, 30);

    platform::OffscreenWindow window({40, 40});
    auto display = display::Display::instance();
    window.setContentView(display->getView());
    const auto view = display::DisplayFactory::createVideoCaptureView();
    view->setBounds({0, 0, 40, 40});
    display->add(view);
    const auto color = [&] {
        window.display();
        return window.pixels()[20 * 40 + 20];
    };
    EXPECT_FALSE(isRed(color()));
    view->setSession(session);
    waitFor([&] { return isRed(color()); });

    // The view holds the session.
    session.reset();
    EXPECT_EQ(cameras::sourcesInUse(), 1);
    view->getSession()->stop();
    EXPECT_FALSE(isRed(color()));
    waitFor([] { return cameras::sourcesInUse() == 0; });
    EXPECT_FALSE(failure);
    display->removeAll();
    window.setContentView(nullptr);
    display.reset();
    display::Display::reset();
}

TEST_F(DesktopCameras, APhotoIsAJpegOfTheWholePicture) {
    cameras::connect({"Front"});
    start();
    std::vector<std::string> photos;
    // Before the first picture.
    for (int i = 0; i < 2; ++i) {
        session->takePhoto([&](const std::string& bytes) { photos.push_back(bytes); });
    }
    waitFor([&] { return photos.size() == 2; });
    for (const std::string& bytes : photos) {
        const auto image = platform::CGImage::createWithJPEGDataProvider(
            *platform::CGDataProvider::createWithData(commons::ByteArray::createFromArray(
                reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size())));
        ASSERT_TRUE(image);
        EXPECT_EQ(image->width(), 640);
        EXPECT_EQ(image->height(), 480);
        EXPECT_TRUE(isRed(image->pixels()[image->pixels().size() / 2]))
            << std::hex << image->pixels()[image->pixels().size() / 2];
    }
}

TEST_F(DesktopCameras, ARecordingIsCompleteHoweverItEnds) {
    const struct {
        const char* how;
        bool withSound;
        std::function<void()> end;
    } kCases[] = {
        {"stopRecording", false, [this] { session->stopRecording(); }},
        {"with sound", true, [this] { session->stopRecording(); }},
        {"stop", false, [this] { session->stop(); }},
        {"removed", false, [this] { cameras::disconnect("Front"); }},
    };
    for (const auto& row : kCases) {
        SCOPED_TRACE(row.how);
        format = {};
        failure = {};
        isRecorded = false;
        startRed();
        if (row.withSound) {
            cameras::connect({"Microphone", Kind::Microphone});
        }
        record({.path = path, .microphone = row.withSound});
        receivePictures(row.withSound ? 90 : 5);  // sound may be slow to begin
        row.end();
        waitFor([this] { return isRecorded; });
        const Recording recording = decode(path, row.withSound);
        EXPECT_GT(recording.pictures, 0);
        EXPECT_EQ(recording.redPictures, recording.pictures);
        EXPECT_EQ(recording.sounds > 0, row.withSound);
        EXPECT_TRUE(recording.hasDuration);
        EXPECT_TRUE(recording.isInOrder);
        EXPECT_LT(recording.begin, 10 * GST_SECOND);
        session.reset();
        cameras::disconnectAll();
        waitFor([this] { return names().empty(); });
    }
    // The destructor completes the file as well; nothing is called then.
    isRecorded = false;
    startRed();
    record({.path = path});
    receivePictures();
    session.reset();
    service.reset();  // waits
    EXPECT_FALSE(isRecorded);
    EXPECT_TRUE(hasIndex(path));
}

TEST_F(DesktopCameras, ReportWhyARecordingFails) {
    startRed();
    const std::pair<RecordingRequest, Reason> kCases[] = {
        {{.path = folder.path() / "missing" / "recording.webm"}, Reason::Failed},
        {{.path = ""}, Reason::Failed},
        {{.path = path, .microphone = true}, Reason::Unavailable},
    };
    for (const auto& [request, reason] : kCases) {
        failure = {};
        record(request);
        EXPECT_TRUE(session->isRecording());
        waitFor([this] { return failure.has_value(); });
        EXPECT_EQ(failure->reason, reason) << failure->message;
        EXPECT_FALSE(session->isRecording());
    }
    // One at a time.
    failure = {};
    record({.path = path});
    record({.path = path});
    waitFor([this] { return failure.has_value(); });
    EXPECT_EQ(failure->reason, Reason::Failed);
    EXPECT_TRUE(session->isRunning());
}

TEST_F(DesktopCameras, ReportWhyACameraCannotBeUsed) {
    const struct {
        cameras::Device device;
        CameraRequest request;
        Reason reason;
        const char* message;
    } kCases[] = {
        {{"Busy", Kind::Faulty, GST_RESOURCE_ERROR_BUSY}, {}, Reason::Failed, "another program"},
        {{"Taken", Kind::Faulty, GST_RESOURCE_ERROR_OPEN_READ_WRITE, g_strerror(EBUSY)},
         {},
         Reason::Failed,
         "another program"},
        {{"Protected", Kind::Faulty, GST_RESOURCE_ERROR_OPEN_READ_WRITE, g_strerror(EACCES)},
         {},
         Reason::Denied,
         "permission"},
        {{"Locked", Kind::Faulty, GST_RESOURCE_ERROR_NOT_AUTHORIZED}, {}, Reason::Denied, ""},
        {{"Gone", Kind::Missing}, {}, Reason::Unavailable, "no-such-camera"},
        {{"Teletext", Kind::Text}, {}, Reason::Failed, "format"},
        {{"Front"}, {.camera = "Back"}, Reason::Unavailable, "'Back'"},
        {{"Broken", Kind::Faulty, GST_RESOURCE_ERROR_SETTINGS}, {}, Reason::Failed, "device"},
    };
    for (const auto& row : kCases) {
        SCOPED_TRACE(row.device.name);
        cameras::connect(row.device);
        waitFor([this] { return names().size() == 1; });
        failure = {};
        start(row.request);
        EXPECT_FALSE(failure) << "never before the call has returned";
        waitFor([this] { return failure.has_value(); });
        EXPECT_EQ(failure->reason, row.reason) << failure->message;
        EXPECT_NE(failure->message.find(row.message), std::string::npos) << failure->message;
        EXPECT_FALSE(session->isRunning());
        cameras::disconnectAll();
        waitFor([this] { return names().empty(); });
    }
}

TEST_F(DesktopCameras, ARemovedCameraEndsItsSession) {
    startRed();
    waitFor([this] { return names().size() == 1; });
    int emptyFrames = 0;
    notification::Listeners listeners;
    listeners.add<CameraFrameEvent>(*session, [&](const CameraFrameEvent& event) {
        emptyFrames += event.frame.pixels == nullptr ? 1 : 0;
    });
    cameras::disconnect("Front");
    waitFor([this] { return failure.has_value(); });
    EXPECT_EQ(failure->reason, Reason::Unavailable);
    EXPECT_EQ(emptyFrames, 1);
}

TEST_F(DesktopCameras, MayBeStoppedAtAnyMoment) {
    cameras::connect({"Front"});
    for (int i = 0; i < 12; ++i) {
        SCOPED_TRACE(i);
        format = {};
        start({.width = 320, .height = 240, .rate = 60});
        if (i % 3 != 0) {
            waitFor([this] { return format.has_value(); });
        }
        if (i % 3 == 2) {
            session->takePhoto([](const std::string&) { ADD_FAILURE() << "after the end"; });
        }
        session.reset();
    }
    waitFor([] { return cameras::sourcesInUse() == 0; });
    EXPECT_FALSE(failure);
}

}  // namespace
}  // namespace orvane::tests
