#include "orvane/inspector/Meter.h"

#include <string_view>
#include <utility>

#include "orvane/commons/Trace.h"
#include "platform/appkit/NSBackingStore.h"
#include "platform/appkit/NSView.h"
#include "platform/appkit/NSWindow.h"
#include "platform/coretext/cacheBytes.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "platform/raster/cacheBytes.h"

namespace orvane::inspector {

using commons::Trace;
using platform::CGRect;
using platform::NSView;

namespace {

// The frame that the calling thread measures: scopes of other threads and windows do not count.
thread_local Meter::Frame* t_frame = nullptr;

void addScope(const char* name, Trace::Clock::time_point start, Trace::Clock::time_point end) {
    if (t_frame == nullptr) {
        return;
    }
    const double time = std::chrono::duration<double, std::milli>(end - start).count();
    const std::string_view scope = name;
    if (scope == "update") {
        t_frame->update += time;
    } else if (scope == "paint") {
        t_frame->paint += time;
    } else if (scope == "present") {
        t_frame->present += time;
    }
}

std::size_t storedBytes(const NSView& view) {
    const auto* const store = view.backingStore();
    std::size_t bytes = store != nullptr
                            ? static_cast<std::size_t>(store->area().area()) * sizeof(std::uint32_t)
                            : 0;
    for (const auto& subview : view.subviews()) {
        bytes += storedBytes(*subview);
    }
    return bytes;
}

template <typename Sample>
void dropUntil(std::deque<Sample>& samples, double time) {
    while (!samples.empty() && samples.front().time < time) {
        samples.pop_front();
    }
}

}  // namespace

Meter::Meter(platform::NSWindow& window, std::function<bool(const NSView&)> isIgnored,
             std::function<void(const std::vector<CGRect>&)> painted)
    : window_(window), isIgnored_(std::move(isIgnored)), painted_(std::move(painted)) {
    Trace::setListener(&addScope);
    window_.setObserver(this);
}

Meter::~Meter() {
    window_.setObserver(nullptr);
    Trace::setListener(nullptr);
}

void Meter::sample(double now) {
    dropUntil(frames_, now - kSeconds);
    dropUntil(memory_, now - kSeconds);
    const NSView* const content = window_.contentView();
    memory_.push_back({now, content != nullptr ? storedBytes(*content) : 0,
                       platform::coverageCacheBytes() + platform::glyphCacheBytes()});
}

void Meter::willDisplay() {
    rects_.clear();
    counts_ = false;
    frames_.push_back({platform::CACurrentMediaTime()});
    t_frame = &frames_.back();
}

void Meter::didChangeView(NSView& view) {
    counts_ = counts_ || !isIgnored_(view);
}

void Meter::didPaintView(NSView& view, std::span<const platform::NSBackingRect> rects) {
    if (isIgnored_(view)) {
        return;
    }
    counts_ = true;
    const platform::CGAffineTransform toWindow = view.transformToWindow();
    const double scale = view.backingStore() != nullptr ? view.backingStore()->scale() : 1;
    for (const auto& rect : rects) {
        rects_.push_back(toWindow.apply(
            CGRect{{static_cast<double>(rect.left) / scale, static_cast<double>(rect.top) / scale},
                   {static_cast<double>(rect.width()) / scale,
                    static_cast<double>(rect.height()) / scale}}));
    }
}

void Meter::didDisplay() {
    t_frame = nullptr;
    // Two passes at the same time of a virtual clock are one frame.
    if (const std::size_t count = frames_.size();
        counts_ && count > 1 && frames_[count - 2].time == frames_.back().time) {
        const Frame again = frames_.back();
        frames_.pop_back();
        frames_.back().update += again.update;
        frames_.back().paint += again.paint;
        frames_.back().present += again.present;
    }
    if (!counts_) {
        frames_.pop_back();
    } else if (!rects_.empty()) {
        painted_(rects_);
    }
}

}  // namespace orvane::inspector
