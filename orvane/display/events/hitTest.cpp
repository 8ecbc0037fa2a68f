#include "orvane/display/events/hitTest.h"

#include <optional>

#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/ParentVisibilityScope.h"

namespace orvane::display::events {

namespace {

// A container on the path, and its children that were not tested yet, the topmost last.
struct Level {
    ContainerObject* container = nullptr;  // null for the roots
    std::vector<DisplayObject*> candidates;
    geometry::Point<double> location;  // in the coordinates of the candidates' frames
};

// The parent is known to be visible.
bool isVisibleAt(DisplayObject& object, const ContainerObject* parent,
                 const geometry::Point<double>& location) {
    std::optional<DisplayObject::ParentVisibilityScope> scope;
    if (parent != nullptr) {
        scope.emplace(*parent, true);
    }
    return object.isVisible() && object.getFrame().contains(location);
}

}  // namespace

std::shared_ptr<DisplayObject> hitTest(const std::vector<std::shared_ptr<DisplayObject>>& objects,
                                       const geometry::Point<double>& location,
                                       const std::function<bool(DisplayObject&)>& accepts) {
    // A stack of its own: a tree may be deeper than the call stack.
    std::vector<Level> path(1);
    path.back().location = location;
    for (const std::shared_ptr<DisplayObject>& object : objects) {
        path.back().candidates.push_back(object.get());
    }
    while (!path.empty()) {
        Level& level = path.back();
        DisplayObject* hit = nullptr;
        if (level.candidates.empty()) {
            hit = level.container;
            path.pop_back();
        } else {
            DisplayObject* const object = level.candidates.back();
            level.candidates.pop_back();
            geometry::Point<double> place = level.location;
            if (!isVisibleAt(*object, level.container, place)) {
                continue;
            }
            if (ContainerObject* const container = object->asContainer()) {
                if (!container->acceptsPointerAt(place)) {
                    continue;
                }
                if (const auto* const offset = container->getScrollOffset()) {
                    place = place + *offset;
                }
                path.push_back({container, container->childrenAt(place), place});
            } else {
                hit = object;
            }
        }
        if (hit != nullptr && accepts(*hit)) {
            return hit->shared_from_this();
        }
    }
    return nullptr;
}

}  // namespace orvane::display::events
