#pragma once

#include <orvane/orvane.h>

namespace gallery {

// Lets objects be moved about with the pointer. One serves any number of objects; they hold it
// weakly.
class Drag : public orvane::display::events::TouchEventListener {
public:
    orvane::display::events::TouchEventListenerState operator()(
        const std::shared_ptr<orvane::display::DisplayObject>& object,
        const orvane::display::events::TouchEvent& event) override;
};

}  // namespace gallery
