#pragma once

#include <functional>
#include <memory>

#include "orvane/commons/Export.h"

namespace orvane::display::animation {

// Calls a function of the application once for each frame of the display until it is stopped: the
// loop of a game, or of a motion that follows its own rules. A FrameAnimation is for motions with a
// duration.
//
//     loop_.start([this](double seconds, double elapsed) { world_.advance(elapsed); });
//
// The function is called on the main thread, before the frame is painted. What it throws is logged,
// and the loop continues. The loop is a value of its owner: its destructor stops it. Main thread
// only.
class ORVANE_EXPORT FrameLoop {
public:
    // `seconds` is the time since the loop's first frame, `elapsed` the time since its previous
    // one; both are 0 in the first call.
    using Callback = std::function<void(double seconds, double elapsed)>;

    FrameLoop();
    // Stops the loop.
    ~FrameLoop();
    FrameLoop(const FrameLoop&) = delete;
    FrameLoop& operator=(const FrameLoop&) = delete;

    // Starts the loop with a function, in place of the one that it called before. The first call
    // comes with the next frame. An empty function only stops the loop.
    void start(Callback callback);
    // Stops the loop. No call follows. May be called from the function, which then returns normally
    // and is destroyed after it has returned. Does nothing if the loop does not run.
    void stop();
    // Whether the loop runs.
    bool isRunning() const { return run_ != nullptr; }

private:
    struct Run;

    std::shared_ptr<Run> run_;
};

}  // namespace orvane::display::animation
