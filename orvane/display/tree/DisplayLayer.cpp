#include "orvane/display/tree/DisplayLayer.h"

#include <algorithm>

#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/LayerPlacement.h"

namespace orvane::display {

namespace {

// The drawing order of the objects on one layer: by index among their siblings, expired entries
// last. The rule ignores depth: objects of different parents compare by their positions in their
// own parents. The painting order of split layers depends on it.
bool sort_objects(const std::weak_ptr<DisplayObject>& a, const std::weak_ptr<DisplayObject>& b) {
    const std::shared_ptr<DisplayObject> first = a.lock();
    if (!first) {
        return false;
    }
    const std::shared_ptr<DisplayObject> second = b.lock();
    return !second || first->getIndex() < second->getIndex();
}

}  // namespace

DisplayLayer::DisplayLayer() = default;

DisplayLayer::~DisplayLayer() = default;

// ---- dirtiness ----

void DisplayLayer::raiseDirty() {
    if (!dirty_) {
        dirty_ = true;
        layerFrameDirty_ = true;
        updateState();
    }
}

void DisplayLayer::markDirty(const std::shared_ptr<DisplayObject>&) {
    raiseDirty();
}

void DisplayLayer::setDirty() {
    raiseDirty();
}

void DisplayLayer::setHidden(bool hidden) {
    if (hidden_ != hidden) {
        hidden_ = hidden;
        raiseDirty();
    }
}

void DisplayLayer::unlockValidation() {
    if (validationLock_ != 0) {
        --validationLock_;
        updateState();
    }
}

void DisplayLayer::updateState() {
    if (!dirty_ || validationLock_ != 0) {
        return;
    }
    if (const std::shared_ptr<DisplayLayer> superlayer = getSuperlayer()) {
        superlayer->raiseDirty();
    } else if (display_) {
        validate(false);
    }
}

void DisplayLayer::validate(bool force) {
    if (!dirty_ && !force) {
        return;
    }
    validateLayer();
    const Rect frame = getLayerFrame();
    if (frame.isEmpty()) {
        dirty_ = false;
        validFrame_ = frame;
        return;
    }
    const bool sizeChanged = frame.sizeDiffers(validFrame_);
    validateContent(frame.differs(validFrame_));
    // By position: validation may split off layers, which become sublayers during this loop.
    for (std::size_t i = 0; i < children().size(); ++i) {
        const std::shared_ptr<DisplayLayer> sublayer = children()[i];
        sublayer->validate(sizeChanged);  // a mere move does not force sublayers
    }
    dirty_ = false;
    validFrame_ = frame;
}

// ---- frame ----

auto DisplayLayer::getLayerFrame() -> const Rect& {
    if (layerFrameDirty_) {
        layerFrame_ = computeLayerFrame();
        layerFrameDirty_ = false;
    }
    return layerFrame_;
}

void DisplayLayer::resetLayerFrame() {
    for (DisplayLayer* layer = this; layer != nullptr && !layer->layerFrameDirty_;
         layer = layer->parentOrNull()) {
        layer->layerFrameDirty_ = true;
    }
}

auto DisplayLayer::computeLayerFrame() -> Rect {
    Rect result;
    for (const std::weak_ptr<DisplayObject>& entry : objects_) {
        if (const std::shared_ptr<DisplayObject> object = entry.lock()) {
            result.unite(object->getFrame());
        }
    }
    for (const std::shared_ptr<DisplayLayer>& sublayer : children()) {
        if (sublayer->affectsParentFrame()) {
            result.unite(sublayer->getLayerFrame());
        }
    }
    return result;
}

auto DisplayLayer::convertPointToScreen(const Point& point) -> Point {
    return point + getLayerFrame().position();
}

auto DisplayLayer::convertPointFromScreen(const Point& point) -> Point {
    return point - getLayerFrame().position();
}

auto DisplayLayer::convertRectToScreen(const Rect& rect) -> Rect {
    return rect.movedBy(getLayerFrame().position()).normalized();
}

auto DisplayLayer::convertRectFromScreen(const Rect& rect) -> Rect {
    const Rect& frame = getLayerFrame();
    return rect.movedBy({-frame.x, -frame.y}).normalized();
}

bool DisplayLayer::isHidden() const {
    if (hidden_) {
        return true;
    }
    const bool objectShows = std::any_of(
        objects_.begin(), objects_.end(), [](const std::weak_ptr<DisplayObject>& entry) {
            const std::shared_ptr<DisplayObject> object = entry.lock();
            return object && object->isVisible();
        });
    return !objectShows &&
           std::all_of(children().begin(), children().end(),
                       [](const std::shared_ptr<DisplayLayer>& each) { return each->isHidden(); });
}

// ---- objects ----

void DisplayLayer::addObject(const std::shared_ptr<DisplayObject>& object) {
    LayerPlacement::link(object, *this);
    object->setLayer(as<DisplayLayer>());
    objects_.push_back(object);
    std::sort(objects_.begin(), objects_.end(), sort_objects);
    onAddObjectIntoRenderingTree(object);
}

void DisplayLayer::removeObject(const std::shared_ptr<DisplayObject>& object) {
    if (const ContainerObject* const container = object->asContainer()) {
        LayerPlacement::unlink(container->getLayersFromSubtree(), *this);
    }
    const auto listed = std::find_if(
        objects_.begin(), objects_.end(),
        [&object](const std::weak_ptr<DisplayObject>& entry) { return entry.lock() == object; });
    if (listed != objects_.end()) {
        objects_.erase(listed);
    }
    object->setLayer(nullptr);
    if (objects_.empty() && children().empty()) {
        removeFromParent();
    } else {
        onRemoveObjectFromRenderingTree(object);
    }
}

void DisplayLayer::clearObjects() {
    const ValidationLock lock(as<DisplayLayer>());
    while (!objects_.empty()) {
        if (const std::shared_ptr<DisplayObject> first = objects_.front().lock()) {
            removeObject(first);
        } else {
            objects_.erase(objects_.begin());
        }
    }
}

void DisplayLayer::onAddObjectIntoRenderingTree(const std::shared_ptr<DisplayObject>& object) {
    markDirty(object);
}

void DisplayLayer::onRemoveObjectFromRenderingTree(const std::shared_ptr<DisplayObject>& object) {
    markDirty(object);
}

std::shared_ptr<DisplayObject> DisplayLayer::getOwner() const {
    if (objects_.size() != 1) {
        return nullptr;
    }
    std::shared_ptr<DisplayObject> object = objects_.front().lock();
    return object && object->ownsLayer() ? object : nullptr;
}

std::shared_ptr<ContainerObject> DisplayLayer::getObjectsParent() const {
    for (const std::weak_ptr<DisplayObject>& entry : objects_) {
        if (const std::shared_ptr<DisplayObject> object = entry.lock()) {
            return object->getParent();
        }
    }
    return nullptr;
}

// ---- sublayers ----

auto DisplayLayer::store(Position position, const std::shared_ptr<DisplayLayer>& sublayer)
    -> Position {
    const Position stored = DisplayContainer<DisplayLayer, DisplayLayer>::store(position, sublayer);
    sublayer->onAddToSuperlayer();
    sublayer->setDisplay(display_);
    raiseDirty();
    return stored;
}

auto DisplayLayer::erase(Position position) -> Position {
    if (position == children().end()) {
        return position;
    }
    const std::shared_ptr<DisplayLayer> sublayer = *position;
    const Position next = DisplayContainer<DisplayLayer, DisplayLayer>::erase(position);
    sublayer->onRemoveFromSuperlayer();
    sublayer->setDisplay(nullptr);
    if (objects_.empty() && children().empty()) {
        removeFromParent();  // may empty the superlayer, which then leaves, too
    } else {
        raiseDirty();
    }
    return next;
}

}  // namespace orvane::display
