#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "orvane/notification/Listener.h"

namespace orvane::notification {

// A listener that calls a function with each event.
template <typename Event, typename Base = typename Event::listener_type>
class FunctionListener;
// The same, for the listener type of the event.
template <typename Event, typename Sender, typename Result>
class FunctionListener<Event, Listener<Sender, Event, Result>> final
    : public Listener<Sender, Event, Result> {
public:
    // The function must not be empty.
    explicit FunctionListener(std::function<Result(const Event&)> function)
        : function_(std::move(function)) {}
    // Calls the function.
    Result operator()(const std::shared_ptr<Sender>&, const Event& event) override {
        return function_(event);
    }

private:
    std::function<Result(const Event&)> function_;
};

// Makes functions listen to events, for as long as it exists: notifiers hold listeners weakly. The
// functions must not outlive what they refer to, so make it a member next to that, declared last.
// Not for touch events, whose listeners have more functions (events::TouchEventListener).
class Listeners {
public:
    // Calls `function` with each event that `object` raises: for example
    // listeners.add<events::PointerEvent>(*button, [](const events::PointerEvent& event) { ... }).
    template <typename Event, typename Object, typename Function>
    void add(Object& object, Function function) {
        const auto listener = std::make_shared<FunctionListener<Event>>(std::move(function));
        object.template addListener<Event>(listener);
        listeners_.push_back(listener);
    }
    // Releases all functions. One that is being called lives until it returns.
    void clear() { listeners_.clear(); }

private:
    std::vector<std::shared_ptr<AbstractListener>> listeners_;
};

}  // namespace orvane::notification
