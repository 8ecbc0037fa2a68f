#include "orvane/display/tree/ContainerObject.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "orvane/commons/reportMisuse.h"
#include "orvane/display/tree/ChildFrames.h"
#include "orvane/display/tree/DisplayLayer.h"
#include "orvane/display/tree/FrameCache.h"
#include "orvane/display/tree/LayerPlacement.h"
#include "orvane/display/tree/ParentVisibilityScope.h"

namespace orvane::display {

namespace {

using LayerPointer = std::shared_ptr<DisplayLayer>;

// Keeps the objects that are erased while containers paint alive until the outermost one has ended:
// painting borrows the objects of the tree.
class PaintScope {
public:
    PaintScope() { ++state().depth; }
    ~PaintScope() {
        if (--state().depth == 0 && !state().erased.empty()) {
            const auto released = std::exchange(state().erased, {});
        }
    }
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;

    static void keep(const std::shared_ptr<DisplayObject>& erased) {
        if (state().depth != 0) {
            state().erased.push_back(erased);
        }
    }

private:
    struct State {
        std::size_t depth = 0;
        std::vector<std::shared_ptr<DisplayObject>> erased;
    };
    static State& state() {
        static thread_local State ofThread;
        return ofThread;
    }
};

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
    const PaintScope painting;
    const ParentVisibilityScope scope(*this, isVisible());
    // This function recurses for every level of the tree and must use little stack. Painting may
    // erase children, which live on in the PaintScope.
    if (const auto* const touched = childFrames_ ? childFrames_->touching(rect) : nullptr) {
        for (DisplayObject* const child : *touched) {
            validateChild(*child, rect);
        }
    } else {
        const DisplayObject* before = nullptr;
        for (std::size_t i = 0; i < children().size();) {
            DisplayObject* const child = children()[i].get();
            validateChild(*child, rect);
            before = child->parentOrNull() == this ? child : before;
            i = indexAfter(before);
        }
    }
    DisplayObject::validate(rect);
}

bool ContainerObject::acceptsPointerAt(const geometry::Point<double>&) {
    return true;
}

std::vector<DisplayObject*> ContainerObject::childrenAt(
    const geometry::Point<double>& point) const {
    const Rect nowhere{point.x, point.y, 0, 0};
    if (const auto* const near = childFrames_ ? childFrames_->touching(nowhere) : nullptr) {
        return *near;
    }
    std::vector<DisplayObject*> all;
    all.reserve(children().size());
    for (const std::shared_ptr<DisplayObject>& child : children()) {
        all.push_back(child.get());
    }
    return all;
}

void ContainerObject::validateChild(DisplayObject& child, const Rect& rect) {
    // A layer validates the objects that it lists.
    if (child.layer_.expired() && child.parentOrNull() == this) {
        child.validate(rect);
    }
}

void ContainerObject::invalidate(bool mark) {
    resetFrame();
    const LayerPointer layer = getAscendingLayer();
    const ValidationLock lock(layer);  // a whole subtree costs one layer update
    if (layer) {
        if (mark) {
            layer->markDirty(commons::sharedFrom<DisplayObject>(*this));
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
    plainChildren_ = 0;  // the base erases each child as if it were the only one
    DisplayContainer<DisplayObject, ContainerObject>::clear();
}

auto ContainerObject::computeFrame() -> Rect {
    return FrameCache::unionOfChildren(*this);
}

bool ContainerObject::canStore(const std::shared_ptr<DisplayObject>& element) const {
    const char* fault = nullptr;
    if (!element) {
        fault = "nothing is stored: there is no object";
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

auto ContainerObject::takeFromFormerParent(Position position,
                                           const std::shared_ptr<DisplayObject>& element)
    -> Position {
    auto index = position - children().begin();
    // An erasure may call listeners, which may store the element again or erase others.
    while (const std::shared_ptr<ContainerObject> former = element->getParent()) {
        if (former.get() == this && element->getIndex() < static_cast<std::uint64_t>(index)) {
            --index;
        }
        former->erase(former->find(element));
    }
    return children().begin() + std::min(index, std::ssize(children()));
}

auto ContainerObject::store(Position position, const std::shared_ptr<DisplayObject>& child)
    -> Position {
    if (!canStore(child)) {
        return position;
    }
    const std::shared_ptr<DisplayObject> element = child;  // the argument may be one of children()
    const LayerPointer ascending = getAscendingLayer();
    const ValidationLock lock(ascending);
    position = takeFromFormerParent(position, element);
    const LayerPointer elementLayer = element->getLayer();

    const Position stored =
        DisplayContainer<DisplayObject, ContainerObject>::store(position, element);
    if (element->getIndex() <= plainChildren_) {
        ++plainChildren_;
    }
    if (element->hasLayers()) {
        countLayeredChild(*element, true);
    }
    if (element->leadsToAccessible_) {
        leadToAccessible();
    }
    LayerPlacement::indicesChanged(*this, element->getIndex());
    if (childFrames_) {
        childFrames_->add(*element);
    } else if (children().size() >= ChildFrames::kWorthwhile) {
        childFrames_ = std::make_unique<ChildFrames>(*this);
    }

    FrameCache::resetSubtree(*element);
    LayerPlacement::link(element, *this, ascending);
    if (elementLayer) {
        element->invalidate(true);
    }
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

    const auto index = static_cast<std::ptrdiff_t>(element->getIndex());
    LayerPlacement::unlink(element, ascending);
    resetFrame();
    if (element->parentOrNull() != this) {
        // A gesture in the element was cancelled, and its listener has erased the element.
        return children().begin() + std::min(index, std::ssize(children()));
    }
    if (childFrames_) {
        childFrames_->remove(*element);
    }
    if (element->hasLayers()) {
        countLayeredChild(*element, false);
    }
    if (element->getIndex() < plainChildren_) {
        --plainChildren_;
    }
    PaintScope::keep(element);
    // Found again: what runs above may have changed the children.
    const Position next = DisplayContainer<DisplayObject, ContainerObject>::erase(find(element));
    LayerPlacement::indicesChanged(*this, static_cast<std::uint64_t>(next - children().begin()));
    return next;
}

void ContainerObject::countLayeredChild(const DisplayObject& child, bool layered) {
    const DisplayObject* node = &child;
    for (ContainerObject* container = this; container != nullptr;
         container = container->parentOrNull()) {
        const bool hadLayers = container->hasLayers();
        if (layered) {
            ++container->layeredChildren_;
            container->plainChildren_ =
                std::min<std::size_t>(container->plainChildren_, node->getIndex());
        } else {
            --container->layeredChildren_;
        }
        if (container->hasLayers() == hadLayers) {
            return;
        }
        node = container;
    }
}

std::size_t ContainerObject::firstLayeredChild() const {
    if (layeredChildren_ == 0) {
        return children().size();
    }
    while (plainChildren_ < children().size() && !children()[plainChildren_]->hasLayers()) {
        ++plainChildren_;
    }
    return plainChildren_;
}

// The index at which a walk over the children continues. `before` is the last child visited that
// was still here after the visit: visits may erase children.
std::size_t ContainerObject::indexAfter(const DisplayObject* before) const {
    return before != nullptr && before->parentOrNull() == this ? before->getIndex() + 1 : 0;
}

bool ContainerObject::traverse(
    const std::function<bool(const std::shared_ptr<DisplayObject>&)>& visit) {
    if (visit(shared_from_this())) {
        return true;
    }
    std::shared_ptr<DisplayObject> before;
    for (std::size_t i = 0; i < children().size();) {
        std::shared_ptr<DisplayObject> child = children()[i];
        ContainerObject* const container = child->asContainer();
        if (container != nullptr ? container->traverse(visit) : visit(child)) {
            return true;
        }
        if (child->parentOrNull() == this) {
            before = std::move(child);
        }
        i = indexAfter(before.get());
    }
    return false;
}

}  // namespace orvane::display
