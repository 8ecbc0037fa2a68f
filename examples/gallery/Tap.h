#pragma once

#include <orvane/orvane.h>

#include <functional>
#include <utility>

namespace gallery {

// Calls a function when an object is touched. Objects hold the listener weakly: keep it.
class Tap : public orvane::display::events::TouchEventListener {
public:
    explicit Tap(std::function<void()> touched) : touched_(std::move(touched)) {}

    orvane::display::events::TouchEventListenerState operator()(
        const std::shared_ptr<orvane::display::DisplayObject>&,
        const orvane::display::events::TouchEvent& event) override {
        using orvane::display::events::TouchEventListenerState;
        if (event.phase != orvane::display::events::TouchEventPhase::Began) {
            return TouchEventListenerState::Ended;
        }
        touched_();
        return TouchEventListenerState::Began;
    }

private:
    std::function<void()> touched_;
};

}  // namespace gallery
