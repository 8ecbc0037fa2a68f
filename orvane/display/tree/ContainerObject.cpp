#include "orvane/display/tree/ContainerObject.h"

#include <algorithm>

#include "orvane/commons/reportMisuse.h"
#include "orvane/display/tree/ChildFrames.h"
#include "orvane/display/tree/DisplayLayer.h"
#include "orvane/display/tree/LayerPlacement.h"
#include "orvane/display/tree/ParentVisibilityScope.h"

namespace orvane::display {

namespace {

using LayerPointer = std::shared_ptr<DisplayLayer>;

}  // namespace

ContainerObject::ContainerObject() {
    container_ = this;
}

ContainerObject::~ContainerObject() = default;

LayerList ContainerObject::getDescendingLayers() const {
    LayerList own = DisplayObject::getDescendingLayers();
    return own.empty() ? getLayersFromSubtree() : own;
}

LayerList ContainerObject::getLayersFromSubtree() const {
    return LayerPlacement::layersOf(*this);
}

void ContainerObject::validate(const Rect& rect) {
    const ParentVisibilityScope scope(*this, isVisible());
    const auto* const touched = childFrames_ ? childFrames_->touching(rect) : nullptr;
    const std::size_t count = touched != nullptr ? touched->size() : children().size();
    // By position: this function recurses for every level of the tree and must use little stack.
    for (std::size_t i = 0; i < count; ++i) {
        DisplayObject* const child = touched != nullptr ? (*touched)[i] : children()[i].get();
        if (child->layer_.expired()) {  // a layer validates the objects that it lists
            child->validate(rect);
        }
    }
    DisplayObject::validate(rect);
}

void ContainerObject::invalidate(bool mark) {
    resetFrame();
    const LayerPointer layer = getAscendingLayer();
    const ValidationLock lock(layer);  // a whole subtree costs one layer update
    if (layer) {
        if (mark) {
            layer->markDirty(shared_from_this());
        } else {
            layer->setDirty();
        }
    }
    for (const std::shared_ptr<DisplayObject>& child : children()) {
        child->invalidate(mark);
    }
}

void ContainerObject::clear() {
    const ValidationLock lock(getAscendingLayer());
    DisplayContainer<DisplayObject, ContainerObject>::clear();
}

auto ContainerObject::computeFrame() -> Rect {
    if (childFrames_) {
        return childFrames_->unionOfFrames();
    }
    Rect result;
    const bool visible = isVisible();
    const ParentVisibilityScope scope(*this, visible);
    for (const std::shared_ptr<DisplayObject>& child : children()) {
        // A hidden child does not count, but its frame is computed, too: resetting a frame that is
        // not known would not reach this container, and showing the child must reset its frame.
        const Rect& frame = child->getFrame();
        if (visible && child->isVisible()) {
            result.unite(frame);
        }
    }
    return result;
}

bool ContainerObject::canStore(const std::shared_ptr<DisplayObject>& element) const {
    const char* fault = nullptr;
    if (!element) {
        fault = "nothing is stored, there is no object";
    } else if (const ContainerObject* const container = element->asContainer()) {
        // Only this container, or a container with children, can be an ancestor.
        if (container == this || !container->children().empty()) {
            for (const ContainerObject* node = this; node != nullptr; node = node->parentOrNull()) {
                if (node == container) {
                    fault = "nothing is stored, the object is the container itself or around it";
                }
            }
        }
    }
    if (fault != nullptr) {
        commons::reportMisuse("ContainerObject::store", fault);
    }
    return fault == nullptr;
}

auto ContainerObject::store(Position position, const std::shared_ptr<DisplayObject>& element)
    -> Position {
    if (!canStore(element)) {
        return position;
    }
    const LayerPointer elementLayer = element->getLayer();
    const LayerPointer ascending = getAscendingLayer();
    const ValidationLock lock(ascending);

    const Position stored =
        DisplayContainer<DisplayObject, ContainerObject>::store(position, element);
    if (childFrames_) {
        childFrames_->add(*element);
    } else if (children().size() >= ChildFrames::kWorthwhile) {
        childFrames_ = std::make_unique<ChildFrames>(*this);
    }

    LayerPlacement::link(element, *this, ascending);
    if (elementLayer) {
        element->invalidate(true);
    }
    // Also for an element with a layer: its own frame may not be known yet, and then the reset that
    // invalidate does would not reach this container.
    resetFrame();
    return stored;
}

auto ContainerObject::erase(Position position) -> Position {
    if (position == children().end()) {
        return position;
    }
    const LayerPointer ascending = getAscendingLayer();
    const ValidationLock lock(ascending);
    const std::shared_ptr<DisplayObject> element = *position;

    LayerPlacement::unlink(element, ascending);
    resetFrame();
    if (childFrames_) {
        childFrames_->remove(*element);
    }
    return DisplayContainer<DisplayObject, ContainerObject>::erase(position);
}

bool ContainerObject::traverse(
    const std::function<bool(const std::shared_ptr<DisplayObject>&)>& visit) {
    if (visit(shared_from_this())) {
        return true;
    }
    for (const std::shared_ptr<DisplayObject>& child : children()) {
        ContainerObject* const container = child->asContainer();
        if (container != nullptr ? container->traverse(visit) : visit(child)) {
            return true;
        }
    }
    return false;
}

}  // namespace orvane::display
