#pragma once

#include <list>
#include <memory>
#include <utility>
#include <vector>

#include "orvane/display/events/TouchEvent.h"

namespace orvane::display::events {

// Dispatches the touches of one native layer, which owns it. At touch-down it collects the
// listeners of the visible objects under the touch, in pre-order. Each event of the gesture goes to
// the first listener. A listener that answers Failed is dropped, and the next one receives the
// gesture from its first event. A listener that claims the gesture (any answer but Possible and
// Failed) receives all further events, and the other listeners are dropped.
//
// A gesture is touchBegan, any number of touchMoved, then touchEnded or touchCancelled, then
// releaseGesture. Each returns the state that the platform's recognizer is to take: the answer of
// the last listener called, or Failed without one. Main thread. An event that a listener causes
// while it handles one is not delivered and returns Failed. A listener that throws is logged and
// counts as Failed.
class DisplayEventHandler {
public:
    using Point = geometry::Point<double>;

    // The steps of a gesture. `root` is the first object of the layer. Locations are in screen
    // coordinates, in points:
    TouchEventListenerState touchBegan(const std::shared_ptr<DisplayObject>& root,
                                       const Point& location);
    TouchEventListenerState touchMoved(const Point& location);
    TouchEventListenerState touchEnded(const Point& location);
    TouchEventListenerState touchCancelled(const Point& location);

    // Calls the action of the first listener, if there is one.
    void invokeActiveListenerAction();

    // Sends Cancelled, at the last location, to the listeners of a gesture that has not ended yet,
    // and releases the gesture. While a listener is called, this happens after it has returned.
    void cancelGesture();

    // Releases the objects and listeners of a gesture that is over. One of the objects may own the
    // layer that owns this handler.
    void releaseGesture();

private:
    using Candidate =
        std::pair<std::shared_ptr<DisplayObject>, std::shared_ptr<TouchEventListener>>;

    void collectListeners(const std::shared_ptr<DisplayObject>& root, const Point& location);
    TouchEventListenerState notify(const Point& location, TouchEventPhase phase);
    TouchEventListenerState deliver(const Point& location, TouchEventPhase phase);

    Point startLocation_;
    Point lastLocation_;
    std::list<Candidate> listeners_;  // the first is the active one
    std::vector<TouchEvent> events_;  // of the present gesture
    bool open_ = false;               // listeners wait for more events
    bool notifying_ = false;          // a listener is being called
    bool cancelling_ = false;         // cancel the gesture when that listener has returned
    bool releasing_ = false;          // release the gesture when that listener has returned
};

}  // namespace orvane::display::events
