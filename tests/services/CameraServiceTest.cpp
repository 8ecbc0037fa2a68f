#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "orvane/notification/Listeners.h"
#include "orvane/services/CameraProvider.h"
#include "orvane/services/CameraRequest.h"
#include "orvane/services/CameraService.h"
#include "orvane/services/RecordingRequest.h"
#include "orvane/services/families.h"
#include "platform/dispatch/dispatch.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace {

using namespace orvane::services;
using orvane::platform::CAVirtualClock;
using Reason = ServiceFailure::Reason;

// Cameras that do what the test says. What they have received outlives them.
struct Script {
    std::function<void(const std::vector<Camera>& cameras)> changed = {};
    CameraCapture::Observer capture = {};
    std::function<void(const std::string& bytes, const CameraCapture::Outcome& outcome)> photo = {};
    std::function<void(const CameraCapture::Outcome& outcome)> recording = {};
    std::vector<std::string> log = {};
};

class ScriptedCapture : public CameraCapture {
public:
    explicit ScriptedCapture(Script& script) : script_(script) {}
    ~ScriptedCapture() override { script_.log.emplace_back("release"); }
    ScriptedCapture(const ScriptedCapture&) = delete;
    ScriptedCapture& operator=(const ScriptedCapture&) = delete;

    void takePhoto(
        std::function<void(const std::string& bytes, const Outcome& outcome)> taken) override {
        script_.photo = std::move(taken);
    }
    void record(const RecordingRequest& request,
                std::function<void(const Outcome& outcome)> ended) override {
        script_.log.push_back("record " + request.path);
        script_.recording = std::move(ended);
    }
    void stopRecording() override { script_.log.emplace_back("complete"); }

private:
    Script& script_;
};

class ScriptedCameras : public CameraProvider {
public:
    explicit ScriptedCameras(Script& script) : script_(script) {}

    void open(std::function<void(const std::vector<Camera>& cameras)> changed,
              FailureCallback) override {
        script_.changed = std::move(changed);
    }
    std::unique_ptr<CameraCapture> capture(const CameraRequest& request,
                                           CameraCapture::Observer observer) override {
        script_.log.push_back("open " + request.camera);
        script_.capture = std::move(observer);
        return std::make_unique<ScriptedCapture>(script_);
    }

private:
    Script& script_;
};

class Cameras : public testing::Test {
protected:
    static void run() {
        while (orvane::platform::drainMainQueue()) {
        }
    }
    FailureCallback noteFailure() {
        return [this](const ServiceFailure& failure) { failures.push_back(failure.reason); };
    }
    void start(const CameraRequest& request = {.camera = "front"}) {
        session = service->start(
            request, [this](const CameraFormat&) { script.log.emplace_back("started"); },
            noteFailure());
    }

    CAVirtualClock clock;
    Script script;
    std::shared_ptr<CameraService> service =
        std::make_shared<CameraService>(std::make_unique<ScriptedCameras>(script));
    std::shared_ptr<CameraSession> session;
    std::vector<Reason> failures;
};

TEST_F(Cameras, AreListedWhenTheyAreKnown) {
    std::optional<std::size_t> count;
    const auto list = [&] {
        service->list([&](const std::vector<Camera>& cameras) { count = cameras.size(); },
                      noteFailure());
        run();
    };
    list();
    EXPECT_FALSE(count);
    script.changed({{"front", "Front"}});
    EXPECT_EQ(count, 1U);
    list();
    EXPECT_EQ(count, 1U);
}

TEST_F(Cameras, ThatAreNotFoundInTimeAreAFailure) {
    service->list({}, noteFailure());
    clock.advanceBy(11);
    run();
    EXPECT_EQ(failures, std::vector{Reason::TimedOut});
    // A call may not outlive the service.
    service->list([](const auto&) { ADD_FAILURE(); });
    service.reset();
    script.changed({});
}

TEST_F(Cameras, ASessionStartsOnceAndFailsOnce) {
    start();
    script.capture.started({640, 480, 30});
    clock.advanceBy(11);
    script.capture.failed({Reason::Failed, "unplugged"});
    script.capture.failed({Reason::Failed, "again"});
    script.capture.started({640, 480, 30});
    EXPECT_EQ(script.log, (std::vector<std::string>{"open front", "started", "release"}));
    EXPECT_EQ(failures, std::vector{Reason::Failed});
    EXPECT_EQ(session->getFormat().width, 640);
    EXPECT_FALSE(session->isRunning());
}

TEST_F(Cameras, ACameraWithoutPicturesTimesOut) {
    start();
    clock.advanceBy(11);
    EXPECT_EQ(failures, std::vector{Reason::TimedOut});
}

TEST_F(Cameras, AnEndedSessionFailsItsPhotosAndCompletesItsRecording) {
    start();
    bool isFinished = false;
    session->takePhoto({}, noteFailure());
    session->record(
        {.path = "film"}, [&] { isFinished = true; }, noteFailure());
    session->stop();
    EXPECT_EQ(failures, std::vector{Reason::Failed});
    EXPECT_TRUE(session->isRecording());
    EXPECT_EQ(script.log, (std::vector<std::string>{"open front", "record film", "complete"}));
    script.recording({});
    EXPECT_TRUE(isFinished);
    EXPECT_EQ(script.log.back(), "release");
    // Nothing can be begun any more.
    session->takePhoto({}, noteFailure());
    session->record({.path = "film"}, {}, noteFailure());
    EXPECT_EQ(failures.size(), 1U);
    run();
    EXPECT_EQ(failures.size(), 3U);
}

TEST_F(Cameras, NoCallbackFollowsTheSession) {
    start();
    const auto photo = session->takePhoto([](const auto&) { ADD_FAILURE(); }, noteFailure());
    session->record(
        {.path = "film"}, [] { ADD_FAILURE(); }, noteFailure());
    session.reset();
    EXPECT_EQ(script.log.back(), "release");
    script.capture.started({});
    script.capture.failed({});
    script.photo("late", {});
    script.recording({});
    clock.advanceBy(11);
    EXPECT_EQ(failures, std::vector<Reason>{});
    EXPECT_FALSE(photo->isPending());
}

TEST_F(Cameras, AListenerMayReleaseTheSession) {
    start();
    orvane::notification::Listeners listeners;
    int frames = 0;
    listeners.add<CameraFrameEvent>(*session, [&](const CameraFrameEvent&) {
        ++frames;
        session.reset();
    });
    const auto send = script.capture.frame;
    send({});
    send({});
    EXPECT_EQ(frames, 1);
    EXPECT_EQ(script.log.back(), "release");
}

TEST_F(Cameras, RequestsThatMakeNoSenseAreRefused) {
    const CameraRequest requests[] = {
        {.width = 0}, {.height = -1}, {.width = 100'000}, {.rate = 0}, {.rate = 1e9}};
    for (const CameraRequest& request : requests) {
        start(request);
        run();
    }
    EXPECT_EQ(failures, std::vector<Reason>(std::size(requests), Reason::Failed));
    EXPECT_EQ(script.log, std::vector<std::string>{});
}

TEST_F(Cameras, WithoutTheLibraryThereAreNone) {
    service = CameraService::instance();
    testing::internal::CaptureStderr();
    std::optional<std::size_t> count;
    for (int i = 0; i < 2; ++i) {
        service->list([&](const std::vector<Camera>& cameras) { count = cameras.size(); });
        EXPECT_FALSE(count) << "never before the call has returned";
        run();
        EXPECT_EQ(std::exchange(count, {}), 0U);
    }
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(log.find("There are no cameras"), log.rfind("There are no cameras"));
    EXPECT_NE(log.find("liborvane-camera.so"), std::string::npos) << log;
    start();
    run();
    EXPECT_EQ(failures, std::vector{Reason::Unavailable});
    CameraService::reset();
}

// Last: what a host denies is denied for the rest of the process.
TEST_F(Cameras, AHostThatDeniesThemKeepsThemClosed) {
    denyFamily(*familyNamed("camera"));
    service->list({}, noteFailure());
    start();
    run();
    EXPECT_EQ(failures, (std::vector{Reason::Denied, Reason::Denied}));
    EXPECT_FALSE(script.changed);
    EXPECT_EQ(script.log, std::vector<std::string>{});
}

}  // namespace
