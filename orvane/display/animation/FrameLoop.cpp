#include "orvane/display/animation/FrameLoop.h"

#include <exception>
#include <optional>
#include <utility>

#include "platform/corevideo/CVDisplayLink.h"
#include "platform/foundation/NSLog.h"

namespace orvane::display::animation {

using platform::CVDisplayLink;

struct FrameLoop::Run {
    Callback callback;
    CVDisplayLink link;
    std::optional<double> first;
    double previous = 0;

    void call(double time) noexcept {
        const double elapsed = first ? time - previous : 0;
        first = first.value_or(time);
        previous = time;
        try {
            callback(time - *first, elapsed);
        } catch (const std::exception& error) {
            platform::NSLog("A frame loop's function failed: %s", error.what());
        } catch (...) {
            platform::NSLog("A frame loop's function failed");
        }
    }
};

FrameLoop::FrameLoop() = default;

FrameLoop::~FrameLoop() {
    stop();
}

void FrameLoop::start(Callback callback) {
    stop();
    if (!callback) {
        return;
    }
    run_ = std::make_shared<Run>(Run{std::move(callback), {}, {}});
    CVDisplayLink::createWithMainDisplay(run_->link);
    // Weak: the run owns the link. The lock keeps the run alive during a call that stops it.
    run_->link.setOutputCallback(
        [weak = std::weak_ptr(run_)](CVDisplayLink&, const platform::CVTimeStamp& time) {
            if (const std::shared_ptr<Run> run = weak.lock()) {
                run->call(static_cast<double>(time.hostTime) * 1e-9);
            }
            return 0;
        });
    run_->link.start();
}

void FrameLoop::stop() {
    if (const std::shared_ptr<Run> run = std::exchange(run_, nullptr)) {
        run->link.stop();
    }
}

}  // namespace orvane::display::animation
