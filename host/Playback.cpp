#include "host/Playback.h"

#include <utility>

#include "platform/appkit/NSWindow.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::host {

Playback::Playback(const EventScript& script, platform::NSWindow& window,
                   std::function<void()> onFinished)
    : steps_(script.steps()),
      window_(window),
      onFinished_(std::move(onFinished)),
      start_(platform::CACurrentMediaTime()) {
    waitForNext();
}

void Playback::advance() {
    for (const double now = platform::CACurrentMediaTime();
         next_ < steps_.size() && start_ + steps_[next_].seconds <= now; ++next_) {
        steps_[next_].perform(window_, now);
    }
    waitForNext();
}

void Playback::waitForNext() {
    if (next_ == steps_.size()) {
        timer_.emplace(0, std::move(onFinished_));
        return;
    }
    const double due = start_ + steps_[next_].seconds;
    timer_.emplace(due - platform::CACurrentMediaTime(), [this] { advance(); });
}

}  // namespace orvane::host
