#pragma once

#include <memory>
#include <vector>

#include "orvane/display/events/DropEvent.h"
#include "orvane/display/events/KeyEvent.h"
#include "orvane/display/events/PointerEvent.h"
#include "orvane/display/tree/Cursor.h"

namespace orvane::display {

class DisplayObject;

namespace events {

// Delivers the keys, pointer and scroll events of one display to the listeners of its objects;
// KeyEvent.h and PointerEvent.h say to which. The root view calls it. A listener that throws is
// logged, and counts as one that has not handled the event. Listeners may change the tree. Main
// thread.
class InputDispatcher {
public:
    using Objects = std::vector<std::shared_ptr<DisplayObject>>;

    // The top-level objects, the last one on top; borrowed, and must outlive the dispatcher.
    explicit InputDispatcher(const Objects& objects) : objects_(objects) {}

    // Returns whether a listener has handled the event.
    bool key(const KeyEvent& event) const;
    // The same. Only objects inside the scroll container `within` are called, and only those that
    // are not inside another scroll container in it, which was called before; for null, the objects
    // that are in no scroll container.
    bool scroll(const ScrollEvent& event, const DisplayObject* within) const;
    // The same for Move, Down and Up; Enter and Leave follow from them.
    bool pointer(const PointerEvent& event);
    // The pointer left the display.
    void pointerLeft();

    // Delivers a drag from another program. Returns whether an object takes it.
    bool drop(const DropEvent& event);

    // Remembers which object has the focus, or that none has, and notifies both objects. Returns
    // whether another object has it now.
    bool setFocus(const std::shared_ptr<DisplayObject>& object);
    // Null for none, also when the object was destroyed.
    std::shared_ptr<DisplayObject> focus() const { return focus_.lock(); }

    // The shape for the pointer where it is.
    Cursor cursor() const;

private:
    // Sends Leave and Enter events for what is between the last location and this one. `path` is
    // the object at the location and its ancestors.
    void hover(const Objects& path, const PointerEvent& event);

    const Objects& objects_;
    std::weak_ptr<DisplayObject> focus_;
    std::weak_ptr<DisplayObject> toldFocus_;  // the object that was told that it has the focus
    // The objects that the pointer has entered, the innermost first.
    std::vector<std::weak_ptr<DisplayObject>> hovered_;
    // The object that handled the press of a button that is still held down.
    std::weak_ptr<DisplayObject> captor_;
    PointerButton heldButton_ = PointerButton::None;
    std::weak_ptr<DisplayObject> dropTarget_;  // would take the drag that is over it
};

}  // namespace events
}  // namespace orvane::display
