#include "orvane/display/tree/DisplayLayer.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include "orvane/commons/Trace.h"
#include "orvane/commons/reportMisuse.h"
#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/FrameUnion.h"
#include "orvane/display/tree/LayerPlacement.h"

namespace orvane::display {

namespace {

// The drawing order of the objects on one layer: by index among their siblings, expired entries
// last. The rule ignores depth: objects of different parents compare by their positions in their
// own parents. The painting order of split layers depends on it.
std::uint64_t orderOf(const std::weak_ptr<DisplayObject>& entry) {
    const std::shared_ptr<DisplayObject> object = entry.lock();
    return object ? object->getIndex() : std::numeric_limits<std::uint64_t>::max();
}

void sortObjects(DisplayLayer::Objects& objects) {
    std::vector<std::pair<std::uint64_t, std::weak_ptr<DisplayObject>>> keyed;
    keyed.reserve(objects.size());
    for (std::weak_ptr<DisplayObject>& entry : objects) {
        const std::uint64_t order = orderOf(entry);
        keyed.emplace_back(order, std::move(entry));
    }
    const auto before = [](const auto& a, const auto& b) { return a.first < b.first; };
    if (!std::is_sorted(keyed.begin(), keyed.end(), before)) {
        std::sort(keyed.begin(), keyed.end(), before);
    }
    std::transform(keyed.begin(), keyed.end(), objects.begin(),
                   [](auto& entry) { return std::move(entry.second); });
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

void DisplayLayer::resetContent() {
    contentReset_ = true;
    resetLayerFrame();
    raiseDirty();
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
        const commons::TraceScope trace("validate");
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
        forgetSublayers();
        return;
    }
    const bool sizeChanged = frame.sizeDiffers(validFrame_);
    validateContent(std::exchange(contentReset_, false) || frame.differs(validFrame_));
    // By position: validation calls code of the application, which may add and remove sublayers.
    for (std::size_t i = 0; i < children().size();) {
        const std::shared_ptr<DisplayLayer> sublayer = children()[i];
        sublayer->validate(sizeChanged);  // a mere move does not force sublayers
        i = sublayer->parentOrNull() == this ? sublayer->getIndex() + 1 : i;
    }
    dirty_ = false;
    validFrame_ = frame;
}

// An empty layer does not validate its sublayers. They become clean, because a dirty layer does not
// report changes, and are validated as new ones when the layer has a size again.
void DisplayLayer::forgetSublayers() {
    for (const std::shared_ptr<DisplayLayer>& sublayer : children()) {
        if (sublayer->dirty_ || !sublayer->validFrame_.isEmpty()) {
            sublayer->dirty_ = false;
            sublayer->validFrame_ = {};
            sublayer->forgetSublayers();
        }
    }
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
    FrameUnion result;
    for (const std::weak_ptr<DisplayObject>& entry : objects_) {
        if (const std::shared_ptr<DisplayObject> object = entry.lock()) {
            result.add(object->getFrameWithEffects());
        }
    }
    for (const std::shared_ptr<DisplayLayer>& sublayer : children()) {
        if (sublayer->affectsParentFrame()) {
            result.add(sublayer->getLayerFrame());
        }
    }
    return result.rect();
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

bool DisplayLayer::isShown() const {
    const DisplayLayer* root = this;
    while (const DisplayLayer* const superlayer = root->parentOrNull()) {
        root = superlayer;
    }
    return root->display_ != nullptr;
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
    if (!object) {
        commons::reportMisuse("DisplayLayer::addObject", "nothing is added: there is no object");
        return;
    }
    const std::shared_ptr<DisplayLayer> self = commons::sharedFrom<DisplayLayer>(*this);
    if (const std::shared_ptr<DisplayLayer> former = object->getLayer()) {
        if (former == self) {
            return;
        }
        former->removeObject(object);
    }
    LayerPlacement::link(object, *this);
    object->setLayer(self);
    listObject(object);
    onAddObjectIntoRenderingTree(object);
}

void DisplayLayer::listObject(const std::shared_ptr<DisplayObject>& object) {
    if (objectsSorted_) {
        const auto isBefore = [](std::uint64_t order, const std::weak_ptr<DisplayObject>& entry) {
            return order < orderOf(entry);
        };
        objects_.insert(
            std::upper_bound(objects_.begin(), objects_.end(), object->getIndex(), isBefore),
            object);
    } else {
        objects_.push_back(object);
        sortObjects(objects_);
        objectsSorted_ = objects_.empty() || !objects_.back().expired();
    }
}

auto DisplayLayer::entryOf(const std::shared_ptr<DisplayObject>& object) const
    -> Objects::const_iterator {
    // Compared by ownership: locking each entry would cost more than the rest of a removal.
    return std::find_if(objects_.begin(), objects_.end(),
                        [&object](const std::weak_ptr<DisplayObject>& entry) {
                            return !entry.owner_before(object) && !object.owner_before(entry);
                        });
}

void DisplayLayer::removeObject(const std::shared_ptr<DisplayObject>& object) {
    auto listed = entryOf(object);
    if (!object || listed == objects_.end()) {
        return;
    }
    if (const ContainerObject* const container = object->asContainer()) {
        LayerPlacement::unlink(container->getLayersFromSubtree(), *this);
        listed = entryOf(object);
    }
    objects_.erase(listed);
    object->setLayer(nullptr);
    if (objects_.empty() && children().empty()) {
        removeFromParent();
    } else {
        onRemoveObjectFromRenderingTree(object);
    }
}

void DisplayLayer::clearObjects() {
    const ValidationLock lock(commons::sharedFrom<DisplayLayer>(*this));
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
    if (!canStore(sublayer)) {
        return position;
    }
    if (const std::shared_ptr<DisplayLayer> former = sublayer->getSuperlayer()) {
        if (former.get() == this) {
            return find(sublayer);
        }
        const std::shared_ptr<DisplayLayer> place =
            position != children().end() ? *position : nullptr;
        former->erase(former->find(sublayer));
        position = find(place);
    }
    const Position stored = DisplayContainer<DisplayLayer, DisplayLayer>::store(position, sublayer);
    sublayer->onAddToSuperlayer();
    sublayer->setDisplay(display_);
    raiseDirty();
    return stored;
}

bool DisplayLayer::canStore(const std::shared_ptr<DisplayLayer>& sublayer) {
    if (!sublayer || sublayer.get() == this ||
        (!sublayer->children().empty() && findChildOf(sublayer))) {
        commons::reportMisuse("DisplayLayer::store",
                              "nothing is stored: there is no layer or it is around this one");
        return false;
    }
    return true;
}

auto DisplayLayer::erase(Position position) -> Position {
    if (position == children().end()) {
        return position;
    }
    const std::shared_ptr<DisplayLayer> sublayer = *position;
    const Position next = DisplayContainer<DisplayLayer, DisplayLayer>::erase(position);
    sublayer->onRemoveFromSuperlayer();
    sublayer->setDisplay(nullptr);
    // A clean layer would not validate when it is stored again, and its view would stay away.
    sublayer->dirty_ = true;
    sublayer->layerFrameDirty_ = true;
    if (objects_.empty() && children().empty()) {
        removeFromParent();  // may empty the superlayer, which then leaves, too
    } else {
        raiseDirty();
    }
    return next;
}

}  // namespace orvane::display
