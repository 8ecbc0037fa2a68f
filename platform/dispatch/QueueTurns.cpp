#include "platform/dispatch/QueueTurns.h"

namespace orvane::platform {

bool QueueTurns::mayBegin(TimePoint now) {
    if (state_ == State::Running && now >= end_) {
        // The loop did something else when the turn ran out, such as showing a frame.
        state_ = State::Paused;
        end_ += kPause;
    }
    if (state_ == State::None || (state_ == State::Paused && now >= end_)) {
        state_ = State::Running;
        end_ = now + kTurn;
    }
    return state_ == State::Running;
}

bool QueueTurns::mayContinue(TimePoint now) {
    if (now >= end_) {
        state_ = State::Paused;
        end_ = now + kPause;
    }
    return state_ == State::Running;
}

QueueTurns::TimePoint QueueTurns::endOfPause() const {
    return state_ == State::Paused ? end_ : TimePoint{};
}

}  // namespace orvane::platform
