#include "orvane/display/tree/FrameCache.h"

#include <algorithm>

#include "orvane/display/tree/ChildFrames.h"
#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/DisplayLayer.h"
#include "orvane/display/tree/Effects.h"
#include "orvane/display/tree/FrameUnion.h"
#include "orvane/display/tree/ParentVisibilityScope.h"

namespace orvane::display {

auto FrameCache::get(DisplayObject& object) -> const Rect& {
    if (object.frameReset_) {
        object.inkMargin_ = {};
        object.frame_ = object.computeFrame();
        if (object.effects_) {
            object.widenInkByEffects();
        }
        object.frameReset_ = false;
        // The ancestors of an object with frameKnownBelow_ have it, too.
        for (DisplayObject* node = &object; node != nullptr && !node->frameKnownBelow_;
             node = node->parentOrNull()) {
            node->frameKnownBelow_ = true;
        }
    }
    return object.frame_;
}

void FrameCache::reset(DisplayObject& object) {
    for (DisplayObject* node = &object; node != nullptr && !node->frameReset_;) {
        node->frameReset_ = true;
        if (node->effects_) {
            node->effects_->changed();
        }
        if (const std::shared_ptr<DisplayLayer> layer = node->getLayer()) {
            layer->resetLayerFrame();
        }
        ContainerObject* const parent = node->parentOrNull();
        if (parent != nullptr && parent->childFrames_) {
            parent->childFrames_->reset(*node);
        }
        node = parent;
    }
}

void FrameCache::resetSubtree(DisplayObject& object) {
    if (!object.frameKnownBelow_) {
        return;
    }
    object.frameKnownBelow_ = false;
    object.frameReset_ = true;
    if (object.effects_) {
        object.effects_->changed();
    }
    if (const std::shared_ptr<DisplayLayer> layer = object.getLayer()) {
        layer->resetContent();
    }
    if (ContainerObject* const container = object.asContainer()) {
        for (const std::shared_ptr<DisplayObject>& child : container->getChildren()) {
            resetSubtree(*child);
            if (container->childFrames_) {
                container->childFrames_->reset(*child);
            }
        }
    }
}

auto FrameCache::unionOfChildren(ContainerObject& container) -> Rect {
    const bool visible = container.isVisible();
    container.inkMargin_ = {};
    if (container.childFrames_) {
        const Rect all = container.childFrames_->unionOfFrames();
        container.inkMargin_ = container.childFrames_->inkMargin();
        return visible ? all : Rect();
    }
    FrameUnion result;
    const DisplayObject::ParentVisibilityScope scope(container, visible);
    for (const std::shared_ptr<DisplayObject>& child : container.getChildren()) {
        const Rect& frame = child->getFrame();
        if (visible && child->isVisible()) {
            result.add(frame);
            container.inkMargin_.widen(child->inkMargin_);
        }
    }
    const Rect all = result.rect();
    if (visible && container.inkMargin_.effects > 0) {
        container.inkMargin_ = marginAround(all, container);
    }
    return all;
}

auto FrameCache::marginAround(const Rect& all, const ContainerObject& container)
    -> DisplayObject::InkMargin {
    const auto beyond = [](double outer, double outerLength, double inner, double innerLength) {
        const double distance = std::max(inner - outer, outer + outerLength - inner - innerLength);
        return static_cast<float>(std::max(distance, 0.0));
    };
    DisplayObject::InkMargin margin;
    for (const std::shared_ptr<DisplayObject>& child : container.getChildren()) {
        if (!child->isVisible()) {
            continue;
        }
        DisplayObject::InkMargin added = child->inkMargin_;
        if (added.effects > 0) {
            const Rect ink = child->getInk();
            const Rect spread = child->getFrameWithEffects();
            added = {beyond(ink.x, ink.width, all.x, all.width),
                     beyond(ink.y, ink.height, all.y, all.height),
                     std::max(beyond(spread.x, spread.width, all.x, all.width),
                              beyond(spread.y, spread.height, all.y, all.height))};
        }
        margin.widen(added);
    }
    return margin;
}

}  // namespace orvane::display
