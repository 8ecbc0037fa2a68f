#pragma once

#include <list>
#include <memory>
#include <utility>
#include <vector>

#include "orvane/display/events/TouchEvent.h"

namespace orvane::display::events {

// Touch dispatch of one native layer. At touch-down it collects the listeners of the objects under
// the finger, in pre-order; then it offers each event of the gesture to the first of them until it
// gives up, or claims the touch and is the only one left.
//
// Main thread. An event that a listener causes while it is being told one is not delivered.
class DisplayEventHandler {
public:
    using Point = geometry::Point<double>;

    // `root` is the first object of the layer. Locations are in screen coordinates.
    TouchEventListenerState touchBegan(const std::shared_ptr<DisplayObject>& root,
                                       const Point& location);
    TouchEventListenerState touchMoved(const Point& location);
    TouchEventListenerState touchEnded(const Point& location);
    TouchEventListenerState touchCancelled(const Point& location);

    // The action of the listener that the gesture belongs to, if there is one.
    void invokeActiveListenerAction();

    // The gesture is over and its action sent: lets go of its objects, one of which may own the
    // layer that this belongs to.
    void releaseGesture();

private:
    using Candidate =
        std::pair<std::shared_ptr<DisplayObject>, std::shared_ptr<TouchEventListener>>;

    void collectListeners(const std::shared_ptr<DisplayObject>& root, const Point& location);
    TouchEventListenerState notify(const Point& location, TouchEventPhase phase);

    Point startLocation_;
    Point lastLocation_;
    std::list<Candidate> listeners_;  // the head is the active one
    std::vector<TouchEvent> events_;  // of this gesture
    bool notifying_ = false;
    bool releasing_ = false;  // when the listener that is being told has answered
};

}  // namespace orvane::display::events
