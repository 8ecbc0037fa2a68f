#include "orvane/services/CameraSession.h"

#include <utility>
#include <vector>

#include "orvane/commons/guardedCall.h"
#include "platform/dispatch/dispatch.h"
#include "platform/foundation/NSLog.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "platform/quartzcore/CATimer.h"

namespace orvane::services {

using Reason = ServiceFailure::Reason;

namespace {

// How long the first picture, and a photo, may take, in seconds.
constexpr double kPatience = 10;

const char* const kCallbackThrew = "exception of a callback for a camera";

}  // namespace

struct CameraSession::State {
    std::function<void(const CameraFormat& format)> started;
    FailureCallback failed;
    std::shared_ptr<CameraProvider> provider = {};
    std::unique_ptr<CameraCapture> capture = {};
    CameraFormat format = {};
    bool isRunning = true;
    bool isRecording = false;
    // Those of photos and of the recording, as far as the application or the capture hold them.
    std::vector<std::weak_ptr<ServiceCall>> calls = {};
    Call recording = {};
    platform::CATimer deadline = {};

    std::vector<Call> pendingCalls() const {
        std::vector<Call> pending;
        for (const auto& weak : calls) {
            if (const Call call = weak.lock(); call && call->isPending()) {
                pending.push_back(call);
            }
        }
        return pending;
    }
};

CameraSession::CameraSession(std::function<void(const CameraFormat& format)> started,
                             FailureCallback failed)
    : state_(new State{std::move(started), std::move(failed)}) {}

CameraSession::~CameraSession() {
    for (const Call& call : state_->pendingCalls()) {
        call->cancel();
    }
    state_->capture.reset();
}

void CameraSession::start(const std::shared_ptr<CameraProvider>& provider,
                          const CameraRequest& request) {
    const std::weak_ptr<CameraSession> weak = as<CameraSession>();
    state_->provider = provider;
    state_->deadline.start(platform::CACurrentMediaTime() + kPatience, 0, [weak] {
        if (const auto self = weak.lock()) {
            self->fail({Reason::TimedOut, "the camera delivers no picture"});
        }
    });
    state_->capture = provider->capture(request, {[weak](const CameraFormat& format) {
                                                      if (const auto self = weak.lock()) {
                                                          self->started(format);
                                                      }
                                                  },
                                                  [weak](const CameraFrame& frame) {
                                                      if (const auto self = weak.lock()) {
                                                          self->send(frame);
                                                      }
                                                  },
                                                  [weak](const ServiceFailure& failure) {
                                                      if (const auto self = weak.lock()) {
                                                          self->fail(failure);
                                                      }
                                                  }});
}

void CameraSession::failLater(const ServiceFailure& failure) {
    platform::dispatchMainAsync([weak = std::weak_ptr(as<CameraSession>()), failure] {
        if (const auto self = weak.lock()) {
            self->fail(failure);
        }
    });
}

void CameraSession::started(const CameraFormat& format) {
    if (!isRunning()) {
        return;
    }
    state_->deadline.stop();
    state_->format = format;
    if (const auto started = std::exchange(state_->started, {})) {
        commons::guardedCall(kCallbackThrew, [&] { started(format); });
    }
}

void CameraSession::send(const CameraFrame& frame) {
    if (isRunning()) {
        commons::guardedCall("exception of a listener for a camera",
                             [&] { notify(CameraFrameEvent{frame}); });
    }
}

void CameraSession::fail(const ServiceFailure& failure) {
    if (!isRunning()) {
        return;
    }
    platform::NSLog("A camera cannot be used: %s", failure.message.c_str());
    const FailureCallback failed = std::exchange(state_->failed, {});
    end();
    if (failed) {
        commons::guardedCall(kCallbackThrew, [&] { failed(failure); });
    }
}

void CameraSession::stop() {
    const auto self = as<CameraSession>();  // a callback may release the session
    if (isRunning()) {
        end();
    }
}

// Completes a recording: the capture lives until its file is complete.
void CameraSession::end() {
    send({});
    state_->isRunning = false;
    state_->deadline.stop();
    state_->started = {};
    state_->failed = {};
    if (state_->isRecording) {
        state_->capture->stopRecording();
    } else {
        state_->capture.reset();
    }
    for (const Call& call : state_->pendingCalls()) {
        if (call != state_->recording) {
            call->fail({Reason::Failed, "the use of the camera has ended"});
        }
    }
}

bool CameraSession::isRunning() const {
    return state_->isRunning;
}

CameraFormat CameraSession::getFormat() const {
    return state_->format;
}

CameraSession::Call CameraSession::call(FailureCallback failed) {
    const Call call(new ServiceCall(std::move(failed)));
    std::erase_if(state_->calls, [](const auto& weak) { return weak.expired(); });
    state_->calls.push_back(call);
    if (!isRunning() || !state_->capture) {
        platform::dispatchMainAsync([call] {
            call->fail({Reason::Failed, "the camera is not in use"});
        });
    }
    return call;
}

CameraSession::Call CameraSession::takePhoto(std::function<void(const std::string& bytes)> taken,
                                             FailureCallback failed) {
    const Call call = this->call(std::move(failed));
    if (isRunning() && state_->capture) {
        call->limit(kPatience);
        state_->capture->takePhoto(
            [call, taken = std::move(taken)](const std::string& bytes,
                                             const CameraCapture::Outcome& outcome) {
                if (outcome) {
                    call->fail(*outcome);
                } else {
                    call->finish([&] {
                        if (taken) {
                            taken(bytes);
                        }
                    });
                }
            });
    }
    return call;
}

CameraSession::Call CameraSession::record(const RecordingRequest& request,
                                          std::function<void()> finished, FailureCallback failed) {
    const Call call = this->call(std::move(failed));
    if (!isRunning() || !state_->capture) {
        return call;
    }
    if (isRecording()) {
        platform::dispatchMainAsync([call] {
            call->fail({Reason::Failed, "the camera is recording already"});
        });
        return call;
    }
    state_->isRecording = true;
    state_->recording = call;
    state_->capture->record(
        request, [weak = std::weak_ptr(as<CameraSession>()), call,
                  finished = std::move(finished)](const CameraCapture::Outcome& outcome) {
            if (const auto self = weak.lock()) {
                self->recordingEnded(call, outcome, finished);
            }
        });
    return call;
}

void CameraSession::recordingEnded(const Call& call, const CameraCapture::Outcome& outcome,
                                   const std::function<void()>& finished) {
    state_->isRecording = false;
    state_->recording = {};
    if (!isRunning()) {
        state_->capture.reset();
    }
    if (outcome) {
        call->fail(*outcome);
    } else {
        call->finish([&] {
            if (finished) {
                finished();
            }
        });
    }
}

void CameraSession::stopRecording() {
    if (isRecording()) {
        state_->capture->stopRecording();
    }
}

bool CameraSession::isRecording() const {
    return state_->isRecording;
}

}  // namespace orvane::services
