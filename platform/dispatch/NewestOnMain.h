#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "platform/dispatch/dispatch.h"

namespace orvane::platform {

// Passes values from any thread to a function on the main thread. Only the newest value is kept: a
// value that comes before the main thread has taken the last one replaces it, so that a fast sender
// never fills the main queue. Created and destroyed on the main thread; the function is not called
// after the destructor.
template <typename Value>
class NewestOnMain {
    struct State {
        std::mutex mutex;
        std::optional<Value> newest;         // guarded by the mutex
        std::function<void(Value)> receive;  // main thread only; empty after the destructor
    };

public:
    // Sends values. Copies refer to the same receiver; what is sent after its destructor is
    // dropped. Any thread.
    class Sender {
    public:
        void send(Value value) const {
            std::optional<Value> replaced(std::move(value));
            {
                const std::scoped_lock lock(state_->mutex);
                state_->newest.swap(replaced);
            }
            // A value that was there has a block on the main queue already.
            if (!replaced) {
                dispatchMainAsync([state = state_] { take(*state); });
            }
        }

    private:
        friend class NewestOnMain;
        explicit Sender(std::shared_ptr<State> state) : state_(std::move(state)) {}

        std::shared_ptr<State> state_;
    };

    explicit NewestOnMain(std::function<void(Value)> receive) : state_(std::make_shared<State>()) {
        state_->receive = std::move(receive);
    }
    ~NewestOnMain() { state_->receive = {}; }
    NewestOnMain(const NewestOnMain&) = delete;
    NewestOnMain& operator=(const NewestOnMain&) = delete;

    Sender sender() const { return Sender(state_); }

private:
    static void take(State& state) {
        std::optional<Value> value;
        {
            const std::scoped_lock lock(state.mutex);
            value.swap(state.newest);
        }
        if (const auto receive = state.receive) {  // a copy: it may destroy the receiver
            receive(std::move(*value));
        }
    }

    std::shared_ptr<State> state_;
};

}  // namespace orvane::platform
