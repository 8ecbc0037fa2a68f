#include "host/Timer.h"

#include <glib.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane::host {

namespace {

unsigned int toMilliseconds(double seconds) {
    constexpr double kLongest = G_MAXUINT;
    return static_cast<unsigned int>(std::clamp(std::ceil(seconds * 1000), 0.0, kLongest));
}

}  // namespace

Timer::Timer(double seconds, std::function<void()> callback) : callback_(std::move(callback)) {
    source_ = g_timeout_add(
        toMilliseconds(seconds),
        [](void* self) -> gboolean {
            auto& timer = *static_cast<Timer*>(self);
            timer.source_ = 0;
            // The callback may destroy this timer.
            const auto call = std::move(timer.callback_);
            call();
            return G_SOURCE_REMOVE;
        },
        this);
}

Timer::~Timer() {
    if (source_ != 0) {
        g_source_remove(source_);
    }
}

}  // namespace orvane::host
