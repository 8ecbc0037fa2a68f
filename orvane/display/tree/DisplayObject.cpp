#include "orvane/display/tree/DisplayObject.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "orvane/commons/reportMisuse.h"
#include "orvane/display/tree/AccessibilityElement.h"
#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/DisplayLayer.h"
#include "orvane/display/tree/Effects.h"
#include "orvane/display/tree/FrameCache.h"
#include "orvane/display/tree/LayerPlacement.h"
#include "orvane/display/tree/ParentVisibilityScope.h"
#include "orvane/display/tree/createBitmapLayer.h"

namespace orvane::display {

using geometry::Matrix;

std::uint64_t DisplayObject::s_idCounter = 0;
float DisplayObject::s_paintedReach = 0;

DisplayObject::DisplayObject() : id_(s_idCounter++) {}

DisplayObject::~DisplayObject() {
    if (const std::shared_ptr<DisplayLayer> layer = getLayer()) {
        layer->objectsSorted_ = false;  // the list has an expired entry
    }
}

// ---- transformation ----

void DisplayObject::scale(float sx, float sy) {
    Matrix change;
    change.setScale(sx, sy);
    transformation_ = transformation_ * change;
    onTransformChanged();
}

void DisplayObject::translate(float tx, float ty) {
    Matrix change;
    change.setTranslate(tx, ty);
    transformation_ = transformation_ * change;
    onTransformChanged();
}

void DisplayObject::setScale(float sx, float sy) {
    transformation_.setScale(sx, sy);
    onTransformChanged();
}

void DisplayObject::setTranslate(float tx, float ty) {
    transformation_.setTranslate(tx, ty);
    onTransformChanged();
}

void DisplayObject::setMatrix(float a, float b, float c, float d, float e, float f) {
    transformation_ = Matrix(a, b, c, d, e, f);
    onTransformChanged();
}

void DisplayObject::applyMatrix(float a, float b, float c, float d, float e, float f) {
    transformation_ = transformation_ * Matrix(a, b, c, d, e, f);
    onTransformChanged();
}

void DisplayObject::onTransformChanged() {
    // A picture can be drawn at another place. The transformation of a clip container moves what
    // is in it, and not the container.
    const bool isMoved =
        effects_ && effects_->picture && !(container_ && container_->clipsChildren());
    const auto picture = isMoved ? effects_->picture : nullptr;
    invalidate(true);
    if (isMoved) {
        effects_->picture = picture;
        effects_->isMoved = true;
    }
}

Matrix DisplayObject::getFullTransformation() const {
    Matrix result;
    for (const DisplayObject* node = this; node != nullptr; node = node->parentOrNull()) {
        result = node->transformation_ * result;
    }
    return result;
}

auto DisplayObject::applyTransformToRect(const Rect& rect) const -> Rect {
    return getFullTransformation().mapRect(rect);
}

// ---- frame ----

auto DisplayObject::getFrame() -> const Rect& {
    return FrameCache::get(*this);
}

auto DisplayObject::getFrameOnScreen() -> Rect {
    Rect frame = getFrame();
    for (std::shared_ptr<ContainerObject> scrolls = getScrollContainer(); scrolls;
         scrolls = scrolls->getScrollContainer()) {
        const geometry::Point<double>& offset = *scrolls->getScrollOffset();
        frame = frame.movedBy({-offset.x, -offset.y}).intersection(scrolls->getFrame());
    }
    return frame;
}

std::shared_ptr<ContainerObject> DisplayObject::getScrollContainer() const {
    std::shared_ptr<ContainerObject> container = getParent();
    while (container && container->getScrollOffset() == nullptr) {
        container = container->getParent();
    }
    return container;
}

void DisplayObject::resetFrame() {
    FrameCache::reset(*this);
}

void DisplayObject::validate(const Rect&) {
    validFrame_ = getFrame();
    validInkMargin_ = {inkMargin_.x + s_paintedReach, inkMargin_.y + s_paintedReach, 0};
}

void DisplayObject::setInkMargin(const geometry::Size<double>& margin, const Matrix& toScreen) {
    // A NaN is no margin. Rounded up, because float has fewer digits.
    const auto cut = [](double extent) {
        constexpr float kReach = 1e9F;
        return std::min(static_cast<float>(std::max(0.0, extent) * 1.000001), kReach);
    };
    inkMargin_ = {
        cut(std::abs(toScreen.m00) * margin.width + std::abs(toScreen.m01) * margin.height),
        cut(std::abs(toScreen.m10) * margin.width + std::abs(toScreen.m11) * margin.height), 0};
}

// ---- effects ----

Effects& DisplayObject::requireEffects() {
    if (!effects_) {
        effects_ = std::make_unique<Effects>();
    }
    return *effects_;
}

void DisplayObject::setOpacity(double opacity) {
    const double limited = std::isnan(opacity) ? 1 : std::clamp(opacity, 0.0, 1.0);
    if (limited == getOpacity()) {
        return;
    }
    Effects& effects = requireEffects();
    effects.opacity = limited;
    if (limited < 1 && container_ != nullptr && container_->layeredChildren_ != 0 && !ownsLayer()) {
        extractIntoLayer(nullptr);
    }
    // The picture is drawn with the opacity, and does not contain it.
    const auto picture = effects.picture;
    invalidate(true);
    effects.picture = picture;
}

double DisplayObject::getOpacity() const {
    return effects_ ? effects_->opacity : 1;
}

Matrix DisplayObject::getEffectTransformation() const {
    return container_ != nullptr && container_->clipsChildren() ? Matrix() : transformation_;
}

double DisplayObject::getEffectReach() const {
    if (!effects_ || !effects_->reaches() ||
        (container_ != nullptr && container_->getScrollOffset())) {
        return 0;
    }
    const ContainerObject* const parent = parentOrNull();
    const Matrix t = parent != nullptr ? parent->getFullTransformation() * getEffectTransformation()
                                       : getEffectTransformation();
    const double scale = std::sqrt(std::abs(t.m00 * t.m11 - t.m01 * t.m10));
    // The filters of a blur reach 1.42 times the radius, and are rounded to pixels.
    const auto blurred = [scale](float radius) {
        return radius > 0 ? 1.5 * radius * scale + 4 : 0;
    };
    double reach = blurred(effects_->blur);
    if (effects_->hasShadow()) {
        const Shadow& shadow = effects_->shadow;
        reach += blurred(shadow.radius) + 2 +
                 std::max(std::abs(t.m00 * shadow.x + t.m01 * shadow.y),
                          std::abs(t.m10 * shadow.x + t.m11 * shadow.y));
    }
    constexpr double kFarthest = 8192;
    return std::isnan(reach) ? 0 : std::min(reach, kFarthest);
}

void DisplayObject::widenInkByEffects() {
    const auto reach = static_cast<float>(getEffectReach());
    inkMargin_.x += reach;
    inkMargin_.y += reach;
    inkMargin_.effects += reach;
}

auto DisplayObject::getSpreadInk() -> Rect {
    Rect spread = getInk();
    if (spread.isEmpty()) {
        return spread;
    }
    double reach = 0;
    for (const DisplayObject* node = parentOrNull(); node != nullptr; node = node->parentOrNull()) {
        reach += node->effects_ ? node->getEffectReach() : 0;
    }
    return {spread.x - reach, spread.y - reach, spread.width + 2 * reach,
            spread.height + 2 * reach};
}

auto DisplayObject::getFrameWithEffects() -> Rect {
    const Rect& frame = getFrame();
    // Views are at whole points: a layer that is not would show its objects moved by the rest.
    const float reach = std::ceil(inkMargin_.effects);
    return reach == 0 ? frame : withMargin(frame, {reach, reach, 0});
}

auto DisplayObject::convertRectToFrame(const Rect& rect) -> Rect {
    return rect.movedBy(getFrame().position()).normalized();
}

// ---- invalidation ----

void DisplayObject::invalidate(bool mark) {
    resetFrame();
    const std::shared_ptr<DisplayLayer> layer = getAscendingLayer();
    if (!layer) {
        return;
    }
    if (mark) {
        layer->markDirty(commons::sharedFrom(*this));
    } else {
        layer->setDirty();
    }
}

void DisplayObject::setVisible(bool visible) {
    if (visible_ != visible) {
        visible_ = visible;
        invalidate(true);
    }
}

bool DisplayObject::isVisible() const {
    if (!visible_) {
        return false;
    }
    const ContainerObject* const parent = parentOrNull();
    if (parent == nullptr) {
        return true;
    }
    return ParentVisibilityScope::caches(parent) ? ParentVisibilityScope::isParentVisible()
                                                 : parent->isVisible();
}

void DisplayObject::lockUpdate() {
    if (const std::shared_ptr<DisplayLayer> layer = getAscendingLayer()) {
        layer->lockValidation();
    }
}

void DisplayObject::unlockUpdate() {
    if (const std::shared_ptr<DisplayLayer> layer = getAscendingLayer()) {
        layer->unlockValidation();
    }
}

UpdateLock::UpdateLock(const std::shared_ptr<DisplayObject>& object)
    : layer_(object ? object->getAscendingLayer() : nullptr) {
    if (layer_) {
        layer_->lockValidation();
    }
}

UpdateLock::~UpdateLock() {
    if (layer_) {
        layer_->unlockValidation();
    }
}

// ---- layers ----

std::shared_ptr<DisplayLayer> DisplayObject::getAscendingLayer() const {
    if (std::shared_ptr<DisplayLayer> layer = layered_ ? getLayer() : nullptr) {
        return layer;
    }
    const ContainerObject* const parent = parentOrNull();
    return parent != nullptr ? parent->getAscendingLayer() : nullptr;
}

LayerList DisplayObject::getDescendingLayers() const {
    if (std::shared_ptr<DisplayLayer> layer = getLayer()) {
        return {std::move(layer)};
    }
    return {};
}

void DisplayObject::setLayer(const std::shared_ptr<DisplayLayer>& layer) {
    // The owned layer must not be destroyed before layer_ has its new value: its destructor may
    // read this object.
    const std::shared_ptr<DisplayLayer> left = ownsLayer() ? std::move(ownedLayer_) : nullptr;
    layer_ = layer;
    if (const bool layered = layer != nullptr; layered != layered_) {
        const bool hadLayers = hasLayers();
        layered_ = layered;
        ContainerObject* const parent = parentOrNull();
        if (parent != nullptr && hasLayers() != hadLayers) {
            parent->countLayeredChild(*this, layered);
        }
        // A picture of a container contains what has no layer of its own.
        for (DisplayObject* node = this; node != nullptr; node = node->parentOrNull()) {
            if (node->effects_) {
                node->effects_->changed();
            }
        }
    }
}

bool DisplayObject::hasLayers() const {
    return layered_ || (container_ != nullptr && container_->layeredChildren_ != 0);
}

bool DisplayObject::ownsLayer() const {
    const std::shared_ptr<DisplayLayer> layer = getLayer();
    return layer && layer == ownedLayer_;
}

void DisplayObject::ownLayer() {
    ownedLayer_ = getLayer();
}

void DisplayObject::removeFromLayer() {
    if (const std::shared_ptr<DisplayLayer> layer = getLayer()) {
        layer->removeObject(commons::sharedFrom(*this));
    }
}

std::shared_ptr<DisplayLayer> DisplayObject::extractAnimationLayer() {
    return extractIntoLayer(nullptr);
}

std::shared_ptr<DisplayLayer> DisplayObject::extractIntoLayer(
    const std::shared_ptr<DisplayLayer>& layer) {
    if (ownsLayer()) {
        return getLayer();
    }
    const std::shared_ptr<ContainerObject> parent = getParent();
    const std::shared_ptr<DisplayLayer> around = parent ? parent->getAscendingLayer() : nullptr;
    if (layer && around && (around == layer || around->findChildOf(layer))) {
        commons::reportMisuse("DisplayObject::extractIntoLayer",
                              "nothing is extracted: the layer shows the object's container");
        return nullptr;
    }
    const std::shared_ptr<DisplayLayer> result = layer ? layer : createBitmapLayer();
    const std::shared_ptr<DisplayObject> self = commons::sharedFrom(*this);
    if (!parent) {
        result->addObject(self);
        ownLayer();
        return result;
    }
    // The object is erased and stored again: the parent's store then handles an object with a layer
    // and links that layer into the layer tree at the place that the siblings dictate.
    const auto index = static_cast<std::ptrdiff_t>(getIndex());
    parent->erase(parent->find(self));
    result->addObject(self);
    ownLayer();
    // The erasure may have called listeners, which may have erased siblings.
    const auto& siblings = parent->getChildren();
    parent->store(siblings.begin() + std::min(index, std::ssize(siblings)), self);
    return result;
}

// ---- neighbors ----

std::shared_ptr<DisplayObject> DisplayObject::getSibling(SearchDirection direction) const {
    return direction == SearchDirection::Backward ? prev() : next();
}

std::shared_ptr<DisplayObject> DisplayObject::findNextInPreOrderTraversal() const {
    for (const DisplayObject* node = this; node != nullptr; node = node->parentOrNull()) {
        if (std::shared_ptr<DisplayObject> sibling = node->next()) {
            return sibling;
        }
    }
    return nullptr;
}

std::shared_ptr<DisplayLayer> DisplayObject::findNearestSublayer(SearchDirection direction,
                                                                 bool ascend) const {
    return LayerPlacement::nearestSublayer(*this, direction, ascend);
}

// ---- accessibility ----

std::shared_ptr<AccessibilityElement> DisplayObject::getAccessibilityElement() const {
    return accessibilityElement_;
}

std::shared_ptr<AccessibilityElement> DisplayObject::getOrCreateAccessibilityElement() {
    if (!accessibilityElement_) {
        accessibilityElement_ = std::make_shared<AccessibilityElement>();
        leadToAccessible();
    }
    return accessibilityElement_;
}

void DisplayObject::leadToAccessible() {
    for (DisplayObject* node = this; node != nullptr && !node->leadsToAccessible_;
         node = node->parentOrNull()) {
        node->leadsToAccessible_ = true;
    }
}

}  // namespace orvane::display
