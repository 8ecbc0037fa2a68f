#include "orvane/display/events/DisplayEventHandler.h"

#include <optional>
#include <utility>

#include "orvane/commons/ScopedFlag.h"
#include "orvane/commons/guardedCall.h"
#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/DisplayLayer.h"
#include "orvane/display/tree/ParentVisibilityScope.h"

namespace orvane::display::events {

namespace {

template <typename Call>
void callListener(const Call& call) {
    commons::guardedCall("exception of a touch listener", call);
}

// The visibility of objects that are visited in pre-order. It keeps the visibility of the
// containers on the path to the present object: if every object queried all its ancestors, a press
// on a chain of n containers would cost n squared.
class VisibilityInPreOrder {
public:
    // `first` is the object at which the visit begins.
    explicit VisibilityInPreOrder(DisplayObject& first) {
        for (const std::shared_ptr<DisplayObject>& node : first.getPathToRoot()) {
            of(*node);
        }
    }

    bool of(const DisplayObject& object) {
        const std::shared_ptr<ContainerObject> parent = object.getParent();
        while (!path_.empty() && path_.back().container != parent.get()) {
            path_.pop_back();
        }
        std::optional<DisplayObject::ParentVisibilityScope> scope;
        if (!path_.empty()) {
            scope.emplace(*parent, path_.back().visible);
        }
        const bool visible = object.isVisible();
        if (const ContainerObject* const container = object.asContainer()) {
            path_.push_back({container, visible});
        }
        return visible;
    }

private:
    struct Ancestor {
        const ContainerObject* container;
        bool visible;
    };
    std::vector<Ancestor> path_;
};

// The scroll container in whose content an object, or its layer, is; null for none.
std::shared_ptr<ContainerObject> scrolledBy(const std::shared_ptr<DisplayObject>& object) {
    const ContainerObject* const container = object->asContainer();
    return container != nullptr && container->getScrollOffset() != nullptr
               ? std::dynamic_pointer_cast<ContainerObject>(object)
               : object->getScrollContainer();
}

}  // namespace

TouchEventListenerState DisplayEventHandler::touchBegan(const std::shared_ptr<DisplayObject>& root,
                                                        const Point& location) {
    if (notifying_) {
        return TouchEventListenerState::Failed;
    }
    listeners_.clear();
    events_.clear();
    startLocation_ = lastLocation_ = location;
    collectListeners(root, location);
    {
        const commons::ScopedFlag notifying(notifying_);
        for (const Candidate& candidate : listeners_) {
            callListener([&] { candidate.second->reset(); });
        }
    }
    return notify(location, TouchEventPhase::Began);
}

TouchEventListenerState DisplayEventHandler::touchMoved(const Point& location) {
    return notify(location, TouchEventPhase::Moved);
}

TouchEventListenerState DisplayEventHandler::touchEnded(const Point& location) {
    return notify(location, TouchEventPhase::Ended);
}

TouchEventListenerState DisplayEventHandler::touchCancelled(const Point& location) {
    return notify(location, TouchEventPhase::Cancelled);
}

void DisplayEventHandler::invokeActiveListenerAction() {
    if (!listeners_.empty()) {
        // Held: the action may destroy the layer, and this handler with it.
        const std::shared_ptr<TouchEventListener> active = listeners_.front().second;
        callListener([&] { active->action(); });
    }
}

void DisplayEventHandler::cancelGesture() {
    if (notifying_) {
        cancelling_ = true;
        return;
    }
    if (open_) {
        touchCancelled(lastLocation_);
    }
    releaseGesture();
}

void DisplayEventHandler::releaseGesture() {
    open_ = false;
    releasing_ = notifying_;
    if (!notifying_) {
        events_.clear();
        listeners_.clear();
    }
}

void DisplayEventHandler::collectListeners(const std::shared_ptr<DisplayObject>& root,
                                           const Point& location) {
    const std::shared_ptr<DisplayLayer> layer = root->getAscendingLayer();
    // Inside a scroll container locations do not include its offset, so the touch cannot be at
    // anything outside it.
    const std::shared_ptr<ContainerObject> scrolled = scrolledBy(root);
    VisibilityInPreOrder visibility(*root);
    const auto visit = [&](const std::shared_ptr<DisplayObject>& object) {
        const std::shared_ptr<DisplayLayer> own = object->getLayer();
        if (own && own != layer) {
            return true;  // the objects from here on are on another surface
        }
        const bool isAt = object == scrolled || object->getFrame().contains(location);
        if (!visibility.of(*object) || !isAt) {
            return false;
        }
        for (const auto& each : object->getListeners<TouchEvent>()) {
            if (auto listener = std::dynamic_pointer_cast<TouchEventListener>(each)) {
                listeners_.emplace_back(object, std::move(listener));
            }
        }
        return false;
    };
    for (std::shared_ptr<DisplayObject> object = root; object;
         object = object->findNextInPreOrderTraversal()) {
        if (scrolled && object != scrolled && !object->findChildOf(scrolled)) {
            return;
        }
        ContainerObject* const container = object->asContainer();
        if (container != nullptr ? container->traverse(visit) : visit(object)) {
            return;
        }
    }
}

TouchEventListenerState DisplayEventHandler::notify(const Point& location, TouchEventPhase phase) {
    const TouchEventListenerState state = deliver(location, phase);
    if (!notifying_ && std::exchange(cancelling_, false)) {
        cancelGesture();
        return TouchEventListenerState::Failed;
    }
    return state;
}

TouchEventListenerState DisplayEventHandler::deliver(const Point& location, TouchEventPhase phase) {
    using State = TouchEventListenerState;
    if (notifying_) {
        return State::Failed;
    }
    const commons::ScopedFlag notifying(notifying_);
    events_.push_back({phase, location, startLocation_, location - lastLocation_,
                       std::chrono::system_clock::now()});
    State state = State::Failed;
    std::size_t cursor = events_.size() - 1;  // the first listener received the earlier events
    while (!listeners_.empty()) {
        const std::shared_ptr<DisplayObject>& object = listeners_.front().first;
        const std::shared_ptr<TouchEventListener>& listener = listeners_.front().second;
        state = State::Failed;  // the answer of a listener that throws
        callListener([&] { state = (*listener)(object, events_[cursor]); });
        if (state == State::Failed) {
            listeners_.pop_front();
            cursor = 0;
            continue;
        }
        ++cursor;
        if (cursor == events_.size()) {
            break;
        }
        if (state != State::Possible) {
            callListener(
                [&] { listener->action(); });  // the platform requests the action of the last event
        }
    }
    if (state != State::Possible) {
        events_.clear();
        if (!listeners_.empty()) {
            listeners_.erase(std::next(listeners_.begin()), listeners_.end());
        }
    }
    lastLocation_ = location;
    open_ = !listeners_.empty() && state != State::Ended && phase != TouchEventPhase::Ended &&
            phase != TouchEventPhase::Cancelled;
    if (std::exchange(releasing_, false)) {
        listeners_.clear();
        events_.clear();
    }
    return state;
}

}  // namespace orvane::display::events
