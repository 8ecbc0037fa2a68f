#include "orvane/display/native/NativeLayer.h"

#include <utility>

#include "orvane/display/geometry/rounding.h"
#include "orvane/display/native/NGestureRecognizer.h"
#include "orvane/display/native/clipsOfLayer.h"
#include "orvane/display/tree/ContainerObject.h"
#include "orvane/thread/dispatch.h"
#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CALayer.h"

namespace orvane::display::native {

using events::TouchEventListenerState;
using platform::NSView;
using platform::NSWindowOrderingMode;

NativeLayer::NativeLayer() = default;

NativeLayer::~NativeLayer() {
    dispatch_ui([this] {
        eventHandler_.cancelGesture();
        // Others may still hold the view or the recognizer; these must not refer to this layer.
        if (gestureRecognizer_) {
            gestureRecognizer_->setLayer(nullptr);
        }
        if (layerHandler_) {
            layerHandler_->removeFromSuperviewWithoutNeedingDisplay();
        }
        gestureRecognizer_.reset();
        layerHandler_.reset();
    });
}

void NativeLayer::init() {
    dispatch_ui([this] {
        layerHandler_ = createLayerHandler();
        const std::shared_ptr<NSView> content = getLayerContentHandler();
        if (isNeedsGestureRecognizer() && content) {
            gestureRecognizer_ = std::make_shared<NGestureRecognizer>();
            gestureRecognizer_->setLayer(this);
            gestureRecognizer_->setDelegate(&NGestureRecognizer::sharedDelegate());
            content->addGestureRecognizer(gestureRecognizer_);
        }
    });
}

std::shared_ptr<NSView> NativeLayer::getAnimatableHandler() const {
    return getLayerHandler();
}

std::shared_ptr<NSView> NativeLayer::getSuperlayerHandler() const {
    const auto superlayer = std::dynamic_pointer_cast<NativeLayer>(getSuperlayer());
    return superlayer ? superlayer->getLayerContentHandler() : nullptr;
}

// ---- the view ----

void NativeLayer::validateLayer() {
    if (const std::shared_ptr<NSView> view = getLayerHandler()) {
        const std::shared_ptr<NativeLayer> self =
            commons::sharedFrom(*this);  // callbacks may remove it
        dispatch_ui([&] { placeHandler(*view); });
    }
}

void NativeLayer::placeHandler(NSView& view) {
    view.setHidden(isHidden());
    updateHandlerOpacity(view);
    const std::shared_ptr<NSView> superview = getSuperlayerHandler();
    if (!superview) {
        // A root layer: its view is a subview of the display's view.
        view.setFrame(platform::CGRect(geometry::toInt(getLayerFrame())));
        onHandlerFrameChanged();
    } else {
        updateHandlerFrame(view);
        updateHandlerClips(view);
        // The stacking order is set once, when the view enters the view tree, or moves from the
        // display's view to a superlayer's. The callback of the frame may have removed this layer.
        if (view.superview() != superview.get() && getSuperlayerHandler() == superview) {
            stackHandler(*superview);
        }
    }
    placeSublayerHandlers();
}

// An animation may have left the view with another opacity; it stays until the objects' opacity
// changes.
void NativeLayer::updateHandlerOpacity(NSView& view) {
    const std::shared_ptr<DisplayObject> owner = getOwner();
    std::shared_ptr<DisplayObject> object = owner ? owner : getObjectsParent();
    double opacity = 1;
    // The view of an object that owns a layer has the object's opacity already.
    while (object && (object == owner || !object->ownsLayer())) {
        opacity *= object->getOpacity();
        object = object->getParent();
    }
    if (std::exchange(placedOpacity_, opacity) != opacity) {
        view.layer()->setOpacity(opacity);
    }
}

void NativeLayer::updateHandlerFrame(NSView& view) {
    const Rect wanted = geometry::toInt(getSuperlayer()->convertRectFromScreen(getLayerFrame()));
    if (Rect(view.frame()).differs(wanted)) {
        view.setFrame(platform::CGRect(wanted));
        onHandlerFrameChanged();
    }
}

void NativeLayer::updateHandlerClips(NSView& view) {
    // The callback of the frame may have removed this layer.
    if (getSuperlayer()) {
        view.setClips(clipsOfLayer(*this));
    }
}

// The frames and clips of the sublayers' views are relative to this layer. When its origin has
// moved, they are set here: a move validates no clean sublayer, whose view would move along. A
// layer with an empty frame validates no sublayer at all, so what became hidden or empty is
// recorded here.
void NativeLayer::placeSublayerHandlers() {
    const Point origin = getLayerFrame().position();
    const bool isEmpty = getLayerFrame().isEmpty();
    if (std::exchange(placedOrigin_, origin) == origin && !isEmpty) {
        return;
    }
    for (std::size_t i = 0; i < getSublayers().size(); ++i) {
        const auto sublayer = std::dynamic_pointer_cast<NativeLayer>(getSublayers()[i]);
        const std::shared_ptr<NSView> view = sublayer ? sublayer->getLayerHandler() : nullptr;
        if (view && view->superview() != nullptr) {
            sublayer->updateHandlerFrame(*view);
            sublayer->updateHandlerClips(*view);
            if (isEmpty) {
                view->setHidden(sublayer->isHidden());
                sublayer->placeSublayerHandlers();
            }
        }
    }
}

namespace {

platform::CALayer* handlerLayerOf(DisplayLayer& layer) {
    const auto* const native = dynamic_cast<NativeLayer*>(&layer);
    const std::shared_ptr<NSView> handler = native != nullptr ? native->getLayerHandler() : nullptr;
    return handler ? handler->layer() : nullptr;
}

}  // namespace

void NativeLayer::stackHandler(NSView& superview) {
    const std::shared_ptr<NSView> view = getLayerHandler();
    const std::shared_ptr<DisplayLayer> below = prev();
    const std::shared_ptr<DisplayLayer> above = next();
    if (below) {
        if (const auto native = std::dynamic_pointer_cast<NativeLayer>(below)) {
            superview.addSubview(view, NSWindowOrderingMode::Above,
                                 native->getLayerHandler().get());
        }
    } else if (!above) {
        superview.addSubview(view);
    } else if (const auto native = std::dynamic_pointer_cast<NativeLayer>(above)) {
        superview.addSubview(view, NSWindowOrderingMode::Below, native->getLayerHandler().get());
    }

    auto z = static_cast<double>(getIndex());
    if (view->layer() != nullptr) {
        view->layer()->setZPosition(z);
    }
    const std::vector<std::shared_ptr<DisplayLayer>>& siblings = getSuperlayer()->getSublayers();
    const auto index = static_cast<std::size_t>(getIndex());
    // After removals, earlier siblings have z positions above their indices, and possibly above
    // this view's. They are lowered to their indices, as far as necessary.
    double lowest = z;
    for (std::size_t i = index; i-- > 0;) {
        if (platform::CALayer* const layer = handlerLayerOf(*siblings[i])) {
            if (layer->zPosition() < lowest) {
                break;
            }
            lowest = static_cast<double>(i);
            layer->setZPosition(lowest);
        }
    }
    // When many views enter at once, none of the later siblings' views has entered yet, and each
    // will set its own position.
    if (below && view->superview() != nullptr && superview.subviews().back() == view) {
        return;
    }
    for (std::size_t i = index + 1; i < siblings.size(); ++i) {
        if (platform::CALayer* const layer = handlerLayerOf(*siblings[i])) {
            layer->setZPosition(++z);
        }
    }
}

void NativeLayer::validateContent(bool) {
    // A control paints itself; validating its object only records the frame.
    for (const std::weak_ptr<DisplayObject>& entry : getObjects()) {
        if (const std::shared_ptr<DisplayObject> object = entry.lock()) {
            object->validate({});
        }
    }
}

void NativeLayer::onRemoveFromSuperlayer() {
    if (const std::shared_ptr<NSView> view = getLayerHandler()) {
        dispatch_ui([&view] { view->removeFromSuperviewWithoutNeedingDisplay(); });
    }
}

// ---- touch ----

auto NativeLayer::convertPointToLayerHandler(const Point& point) -> Point {
    return convertPointFromScreen(point);
}

auto NativeLayer::convertPointFromLayerHandler(const Point& point) -> Point {
    return convertPointToScreen(point);
}

TouchEventListenerState NativeLayer::touchBegan(const Point& point) {
    if (touchDisabled_ || getObjects().empty()) {
        return TouchEventListenerState::Failed;
    }
    const std::shared_ptr<DisplayObject> first = getObjects().front().lock();
    if (!first) {
        return TouchEventListenerState::Failed;
    }
    // Held here and in the functions below: a listener may remove the last object from this layer.
    const std::shared_ptr<NativeLayer> self = commons::sharedFrom(*this);
    return eventHandler_.touchBegan(first, convertPointFromLayerHandler(point));
}

TouchEventListenerState NativeLayer::touchMoved(const Point& point) {
    const std::shared_ptr<NativeLayer> self = commons::sharedFrom(*this);
    return touchDisabled_ ? TouchEventListenerState::Failed
                          : eventHandler_.touchMoved(convertPointFromLayerHandler(point));
}

TouchEventListenerState NativeLayer::touchEnded(const Point& point) {
    const std::shared_ptr<NativeLayer> self = commons::sharedFrom(*this);
    return touchDisabled_ ? TouchEventListenerState::Failed
                          : eventHandler_.touchEnded(convertPointFromLayerHandler(point));
}

TouchEventListenerState NativeLayer::touchCancelled(const Point& point) {
    const std::shared_ptr<NativeLayer> self = commons::sharedFrom(*this);
    return touchDisabled_ ? TouchEventListenerState::Failed
                          : eventHandler_.touchCancelled(convertPointFromLayerHandler(point));
}

void NativeLayer::setTouchDisabled(bool disabled) {
    touchDisabled_ = disabled;
    if (disabled) {
        const std::shared_ptr<NativeLayer> self = commons::sharedFrom(*this);
        eventHandler_.cancelGesture();
    }
}

void NativeLayer::invokeTouchHandlerAction() {
    const std::shared_ptr<NativeLayer> self = commons::sharedFrom(*this);
    eventHandler_.invokeActiveListenerAction();
}

void NativeLayer::releaseTouch() {
    const std::shared_ptr<NativeLayer> self = commons::sharedFrom(*this);
    eventHandler_.releaseGesture();
}

}  // namespace orvane::display::native
