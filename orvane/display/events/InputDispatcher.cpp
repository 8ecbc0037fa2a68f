#include "orvane/display/events/InputDispatcher.h"

#include <algorithm>
#include <span>
#include <utility>

#include "orvane/commons/guardedCall.h"
#include "orvane/display/events/hitTest.h"
#include "orvane/display/tree/ContainerObject.h"

namespace orvane::display::events {

namespace {

using ObjectPointer = std::shared_ptr<DisplayObject>;

// Sends the event to the listeners of one object. Returns whether one has handled it; then the
// others of the object are not called.
template <typename Event>
bool send(const ObjectPointer& object, const Event& event) {
    for (const auto& listener : object->getListeners<Event>()) {
        bool handled = false;
        commons::guardedCall("exception of an input listener",
                             [&] { handled = (*listener)(object, event); });
        if (handled) {
            return true;
        }
    }
    return false;
}

// The object and its ancestors, the parent first.
std::vector<ObjectPointer> pathFrom(ObjectPointer object) {
    std::vector<ObjectPointer> path;
    for (; object; object = object->getParent()) {
        path.push_back(object);
    }
    return path;
}

// The event as an object gets it: inside scroll containers, locations are those in the content.
template <typename Event>
Event eventFor(const DisplayObject& object, const Event& event) {
    Event result = event;
    for (ObjectPointer scrolls = object.getScrollContainer(); scrolls;
         scrolls = scrolls->getScrollContainer()) {
        result.location = result.location + *scrolls->asContainer()->getScrollOffset();
    }
    return result;
}

// Sends the event to each object of a path until one handles it; returns that object, or null.
template <typename Event>
ObjectPointer sendAlong(std::span<const ObjectPointer> path, const Event& event) {
    const auto handler = std::ranges::find_if(path, [&event](const ObjectPointer& object) {
        return send(object, eventFor(*object, event));
    });
    return handler != path.end() ? *handler : nullptr;
}

template <typename Event>
bool listens(DisplayObject& object) {
    return object.hasListeners<Event>();
}

}  // namespace

bool InputDispatcher::key(const KeyEvent& event) const {
    const std::vector<ObjectPointer> path = pathFrom(focus());
    return std::ranges::any_of(
        path, [&event](const ObjectPointer& object) { return send(object, event); });
}

bool InputDispatcher::scroll(const ScrollEvent& event, const DisplayObject* within) const {
    const std::vector<ObjectPointer> path =
        pathFrom(hitTest(objects_, event.location, listens<ScrollEvent>));
    const auto end = std::ranges::find(path, within, &ObjectPointer::get);
    if (within != nullptr && end == path.end()) {
        return false;
    }
    const auto isScrollContainer = [](const ObjectPointer& object) {
        const ContainerObject* const container = object->asContainer();
        return container != nullptr && container->getScrollOffset() != nullptr;
    };
    auto begin = end;
    while (begin != path.begin() && (begin == end || !isScrollContainer(*begin))) {
        --begin;
    }
    return sendAlong(std::span(begin, end), event) != nullptr;
}

bool InputDispatcher::pointer(const PointerEvent& event) {
    if (const ObjectPointer captor = captor_.lock()) {
        if ((event.phase == PointerPhase::Up && event.button == heldButton_) ||
            event.phase == PointerPhase::Cancel) {
            captor_.reset();
        }
        send(captor, eventFor(*captor, event));
        return true;
    }
    if (event.phase == PointerPhase::Cancel) {
        return false;
    }
    const auto isTarget = [](DisplayObject& object) {
        return object.asContainer() == nullptr || listens<PointerEvent>(object);
    };
    const std::vector<ObjectPointer> path = pathFrom(hitTest(objects_, event.location, isTarget));
    hover(path, event);
    const ObjectPointer handler = sendAlong(path, event);
    if (handler && event.phase == PointerPhase::Down) {
        captor_ = handler;
        heldButton_ = event.button;
    }
    return handler != nullptr;
}

void InputDispatcher::pointerLeft() {
    hover({}, {});
}

void InputDispatcher::hover(const Objects& path, const PointerEvent& event) {
    std::vector<ObjectPointer> before;
    for (const std::weak_ptr<DisplayObject>& entry : hovered_) {
        if (ObjectPointer object = entry.lock()) {
            before.push_back(std::move(object));
        }
    }
    if (before == path) {
        return;
    }
    hovered_.assign(path.begin(), path.end());
    PointerEvent crossing = event;
    crossing.button = PointerButton::None;
    crossing.clickCount = 0;
    crossing.phase = PointerPhase::Leave;
    for (const ObjectPointer& object : before) {
        if (std::ranges::find(path, object) == path.end()) {
            send(object, eventFor(*object, crossing));
        }
    }
    crossing.phase = PointerPhase::Enter;
    for (std::size_t i = path.size(); i-- > 0;) {
        if (std::ranges::find(before, path[i]) == before.end()) {
            send(path[i], eventFor(*path[i], crossing));
        }
    }
}

bool InputDispatcher::drop(const DropEvent& event) {
    ObjectPointer target;
    if (event.phase != DropPhase::Left) {
        target = sendAlong(std::span<const ObjectPointer>(
                               pathFrom(hitTest(objects_, event.location, listens<DropEvent>))),
                           event);
    }
    const ObjectPointer before = dropTarget_.lock();
    if (before && before != target) {
        DropEvent left;
        left.phase = DropPhase::Left;
        send(before, left);
    }
    dropTarget_ = event.phase == DropPhase::Over ? target : nullptr;
    return target != nullptr;
}

bool InputDispatcher::setFocus(const ObjectPointer& object) {
    if (focus() == object) {
        return false;
    }
    focus_ = object;
    const auto tell = [](const ObjectPointer& changed, bool hasFocus) {
        for (const auto& listener : changed->getListeners<FocusEvent>()) {
            commons::guardedCall("exception of a focus listener",
                                 [&] { (*listener)(changed, FocusEvent{hasFocus}); });
        }
    };
    if (const ObjectPointer before = std::exchange(toldFocus_, {}).lock()) {
        tell(before, false);
    }
    // A listener may have given the focus to a third object.
    if (object && focus() == object) {
        toldFocus_ = object;
        tell(object, true);
    }
    return true;
}

Cursor InputDispatcher::cursor() const {
    const ObjectPointer captor = captor_.lock();
    ObjectPointer object =
        captor || hovered_.empty() ? captor : ObjectPointer(hovered_.front().lock());
    while (object && object->getCursor() == Cursor::Inherit) {
        object = object->getParent();
    }
    return object ? object->getCursor() : Cursor::Default;
}

}  // namespace orvane::display::events
