#pragma once

#include <orvane/orvane.h>

namespace gallery {

// Moves objects with the pointer. One listener serves any number of objects, which hold it weakly.
class Drag : public orvane::display::events::TouchEventListener {
public:
    orvane::display::events::TouchEventListenerState operator()(
        const std::shared_ptr<orvane::display::DisplayObject>& object,
        const orvane::display::events::TouchEvent& event) override;
};

}  // namespace gallery
