#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <vector>

#include "platform/appkit/NSWindowObserver.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {
class NSWindow;
}

namespace orvane::inspector {

// Measures the frames of a window: it takes the times from the scopes that the trace records, too,
// as far as they are in a display pass of this window. One per process. Main thread only.
class Meter final : public platform::NSWindowObserver {
public:
    static constexpr double kSeconds = 10;

    // The milliseconds of one frame.
    struct Frame {
        double time = 0;  // media time, in seconds
        double update = 0;
        double paint = 0;
        double present = 0;
    };
    // The bytes of one moment.
    struct Memory {
        double time = 0;
        std::size_t stores = 0;
        std::size_t caches = 0;
    };

    // `isIgnored` says which views do not count: a frame in which only they change is none.
    // `painted` is called after a frame with the areas that were painted, in the coordinates of the
    // window's content. The window is borrowed.
    Meter(platform::NSWindow& window, std::function<bool(const platform::NSView&)> isIgnored,
          std::function<void(const std::vector<platform::CGRect>&)> painted);
    ~Meter() override;
    Meter(const Meter&) = delete;
    Meter& operator=(const Meter&) = delete;

    // Adds the bytes of this moment, and forgets what is older than kSeconds.
    void sample(double now);

    // Of the last kSeconds, the latest at the end.
    const std::deque<Frame>& getFrames() const { return frames_; }
    const std::deque<Memory>& getMemory() const { return memory_; }

    void willDisplay() override;
    void didChangeView(platform::NSView& view) override;
    void didPaintView(platform::NSView& view,
                      std::span<const platform::NSBackingRect> rects) override;
    void didDisplay() override;

private:
    platform::NSWindow& window_;
    std::function<bool(const platform::NSView&)> isIgnored_;
    std::function<void(const std::vector<platform::CGRect>&)> painted_;
    std::deque<Frame> frames_;
    std::deque<Memory> memory_;
    std::vector<platform::CGRect> rects_;  // painted in this pass
    bool counts_ = false;                  // this pass is a frame
};

}  // namespace orvane::inspector
