#include "orvane/runtime/Timer.h"

#include <algorithm>
#include <utility>

#include "platform/quartzcore/CAMediaTime.h"
#include "platform/quartzcore/CATimer.h"

namespace orvane {

namespace {

double seconds(unsigned milliseconds) {
    return static_cast<double>(milliseconds) / 1000;
}

}  // namespace

Timer::Timer() : timer_(std::make_unique<platform::CATimer>()) {}

Timer::~Timer() = default;

void Timer::start(unsigned period, std::function<void()> task) {
    stop();
    if (task) {
        const double length = seconds(std::max(period, 1U));
        timer_->start(platform::CACurrentMediaTime() + length, length, std::move(task));
    }
}

void Timer::startOnce(unsigned delay, std::function<void()> task) {
    stop();
    if (task) {
        timer_->start(platform::CACurrentMediaTime() + seconds(delay), 0, std::move(task));
    }
}

void Timer::stop() {
    timer_->stop();
}

bool Timer::isRunning() const {
    return timer_->isRunning();
}

}  // namespace orvane
