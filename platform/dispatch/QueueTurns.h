#pragma once

#include <chrono>

namespace orvane::platform {

// Shares the main thread between the main queue and the display's frames. The queue's work runs in
// turns that are ahead of frames. When a turn has used its time, the queue waits until the loop has
// given frames an opportunity, but not longer than the pause: so neither can keep the other from
// running. Time is a parameter. Not thread-safe.
class QueueTurns {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    // How long a turn may last before frames get an opportunity. Half a refresh at 60 Hz: work of
    // that length still lets the window show every frame. A turn that runs out in the middle of a
    // piece of work ends after it.
    static constexpr std::chrono::milliseconds kTurn{8};
    // How long the queue waits at most for frames to have had their opportunity.
    static constexpr std::chrono::milliseconds kPause{8};

    // Called when the loop reaches the queue. Returns whether work may run, and then begins a turn
    // or continues the one under way.
    bool mayBegin(TimePoint now);
    // Called after each piece of work. Returns whether the next one may run.
    bool mayContinue(TimePoint now);
    // Called when frames have had an opportunity: the next turn may begin at once.
    void framesHadOpportunity() { state_ = State::None; }

    // Returns when the pause ends, or a time in the past if there is none.
    [[nodiscard]] TimePoint endOfPause() const;

private:
    enum class State { None, Running, Paused };

    State state_ = State::None;
    TimePoint end_;  // of the turn, or of the pause
};

}  // namespace orvane::platform
