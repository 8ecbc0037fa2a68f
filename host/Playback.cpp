#include "host/Playback.h"

#include <utility>

#include "host/EventScript.h"
#include "platform/appkit/NSWindow.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::host {

Playback::Playback(const EventScript& script, platform::NSWindow& window,
                   std::function<void()> onFinished)
    : events_(script.events()),
      window_(window),
      onFinished_(std::move(onFinished)),
      start_(platform::CACurrentMediaTime()) {
    waitForNext();
}

void Playback::advance() {
    for (const double now = platform::CACurrentMediaTime();
         next_ < events_.size() && start_ + events_[next_].timestamp <= now; ++next_) {
        platform::NSEvent event = events_[next_];
        event.timestamp = now;
        window_.sendEvent(event);
    }
    waitForNext();
}

void Playback::waitForNext() {
    if (next_ == events_.size()) {
        timer_.emplace(0, std::move(onFinished_));
        return;
    }
    const double due = start_ + events_[next_].timestamp;
    timer_.emplace(due - platform::CACurrentMediaTime(), [this] { advance(); });
}

}  // namespace orvane::host
