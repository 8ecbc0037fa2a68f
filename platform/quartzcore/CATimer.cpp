#include "platform/quartzcore/CATimer.h"

#include <utility>

#include "platform/quartzcore/CATimeline.h"
#include "platform/quartzcore/CATimerSchedule.h"

namespace orvane::platform {

CATimer::CATimer() = default;

CATimer::~CATimer() {
    stop();
}

void CATimer::start(double time, double period, std::function<void()> function) {
    stop();
    schedule_ = std::make_shared<Schedule>(Schedule{time, period, std::move(function)});
    CATimeline::instance().addTimer(schedule_);
}

void CATimer::stop() {
    if (const std::shared_ptr<Schedule> schedule = std::exchange(schedule_, nullptr)) {
        CATimeline::instance().removeTimer(schedule);
    }
}

bool CATimer::isRunning() const {
    return schedule_ && schedule_->isRunning;
}

}  // namespace orvane::platform
