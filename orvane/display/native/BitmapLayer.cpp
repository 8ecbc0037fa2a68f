#include "orvane/display/native/BitmapLayer.h"

#include <algorithm>
#include <unordered_set>

#include "orvane/display/native/BitmapView.h"
#include "orvane/display/native/CurrentCanvas.h"
#include "orvane/display/native/clipGuest.h"
#include "orvane/display/native/createLayer.h"
#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/LayerPlacement.h"
#include "orvane/display/tree/createBitmapLayer.h"
#include "orvane/thread/dispatch.h"
#include "platform/coregraphics/CGSavedState.h"

namespace orvane::display {

std::shared_ptr<DisplayLayer> createBitmapLayer() {
    return createLayer<native::BitmapLayer>();
}

namespace native {

BitmapLayer::~BitmapLayer() {
    if (const auto view = std::dynamic_pointer_cast<BitmapView>(getLayerHandler())) {
        dispatch_ui([&view] { view->setOrvaneLayer(nullptr); });
    }
}

std::shared_ptr<platform::NSView> BitmapLayer::createLayerHandler() {
    const auto view = std::make_shared<BitmapView>();
    view->setOrvaneLayer(this);
    view->setWantsLayer(true);
    view->setLayerContentsRedrawPolicy(
        platform::NSViewLayerContentsRedrawPolicy::OnSetNeedsDisplay);
    return view;
}

// ---- the split ----

namespace {

// Whether a sublayer shows something in `object`, and would follow it to another layer. Siblings
// may share a layer, and one of them may have moved into the next one since.
bool isInside(const std::shared_ptr<DisplayLayer>& sublayer, const DisplayObject& object) {
    const ContainerObject* const container = object.asContainer();
    const LayerList layers =
        container != nullptr ? LayerPlacement::layersOf(*container) : LayerList();
    return std::find(layers.begin(), layers.end(), sublayer) != layers.end();
}

}  // namespace

auto BitmapLayer::store(Position position, const std::shared_ptr<DisplayLayer>& sublayer)
    -> Position {
    const Position stored = DrawableLayer::store(position, sublayer);
    renderingTreeValid_ = false;
    return stored;
}

void BitmapLayer::onAddObjectIntoRenderingTree(const std::shared_ptr<DisplayObject>& object) {
    renderingTreeValid_ = false;
    DrawableLayer::onAddObjectIntoRenderingTree(object);
}

void BitmapLayer::validateLayer() {
    if (!renderingTreeValid_) {
        validateRenderingTree();
        renderingTreeValid_ = true;
    }
    DrawableLayer::validateLayer();
}

void BitmapLayer::validateRenderingTree() {
    std::erase_if(overlappingLayers_, [](const auto& entry) { return entry.second.expired(); });
    if (getSublayers().empty()) {
        return;  // without a sublayer no object is above one
    }
    const Objects objects = getObjects();  // the split removes objects from the list
    const std::shared_ptr<DisplayLayer> self = commons::sharedFrom<DisplayLayer>(*this);
    std::unordered_set<const DisplayObject*> examined;
    for (const std::weak_ptr<DisplayObject>& entry : objects) {
        const std::shared_ptr<DisplayObject> object = entry.lock();
        if (!object) {
            continue;
        }
        // The search need not pass a sibling for which it has found nothing.
        const std::shared_ptr<DisplayObject> before = object->prev();
        const bool isExamined = examined.contains(before.get());
        examined.insert(object.get());
        std::shared_ptr<DisplayLayer> nearest;
        if (isExamined) {
            LayerPlacement::NearestBelow below(self);
            below.pass(*before);
            nearest = below.of(*object);
        } else {
            nearest = object->findNearestSublayer(SearchDirection::Backward, false);
        }
        if (nearest && !isInside(nearest, *object)) {
            resolveOverlapping(nearest, object);
        } else if (const ContainerObject* const container = object->asContainer()) {
            splitChildren(*container);
        }
    }
}

std::shared_ptr<DisplayLayer> BitmapLayer::splitChildren(const ContainerObject& container) {
    if (!LayerPlacement::hasLayers(container)) {
        return nullptr;
    }
    const std::shared_ptr<DisplayLayer> self = commons::sharedFrom<DisplayLayer>(*this);
    LayerPlacement::NearestBelow below(self);
    for (std::size_t i = LayerPlacement::firstLayeredChild(container);
         i < container.getChildren().size(); ++i) {
        const std::shared_ptr<DisplayObject> child = container.getChildren()[i];
        const std::shared_ptr<DisplayLayer> childLayer = child->getLayer();
        const ContainerObject* const nested = child->asContainer();
        if (childLayer && childLayer != self) {
            below.pass(*child);
        } else if (const std::shared_ptr<DisplayLayer> nearest = below.of(*child);
                   nearest && !isInside(nearest, *child)) {
            resolveOverlapping(nearest, child);
            below.pass(*child);
        } else if (nested != nullptr && !childLayer) {
            below.passGuest(splitChildren(*nested));
        } else {
            if (nested != nullptr) {
                splitChildren(*nested);
            }
            below.pass(*child);
        }
    }
    return below.last();
}

void BitmapLayer::resolveOverlapping(const std::shared_ptr<DisplayLayer>& nearest,
                                     const std::shared_ptr<DisplayObject>& object) {
    // An object that is moved to the top from within its own gesture keeps the layer that receives
    // the gesture, and with it the gesture.
    std::weak_ptr<BitmapLayer>& last = overlappingLayers_[object.get()];
    std::shared_ptr<BitmapLayer> fresh = last.lock();
    if (!fresh || fresh->getSuperlayer() || !fresh->getObjects().empty()) {
        fresh = createLayer<BitmapLayer>();
        last = fresh;
    }
    if (object->getLayer() == commons::sharedFrom<DisplayLayer>(*this)) {
        removeObject(object);
    } else {
        // The object is inside a listed container and has no layer.
        LayerPlacement::unlink(object->getDescendingLayers(), *this);
        markDirty(object);
    }
    fresh->addObject(object);
    if (nearest != fresh) {
        store(find(nearest->next()), fresh);
    }
}

// ---- painting ----

void BitmapLayer::validateFrame(const Rect& rect) {
    const std::shared_ptr<platform::NSView> view = getLayerContentHandler();
    if (!view) {
        return;
    }
    const platform::CGRect damage(convertRectFromScreen(rect));
    dispatch_ui([&] { view->setNeedsDisplayInRect(damage); });
}

void BitmapLayer::drawToBuffer(const Rect& rect, void*) {
    platform::CGContext* const canvas = GetCurrentCanvas();
    if (canvas == nullptr) {
        return;
    }
    const Rect screen = convertRectToScreen(rect);
    const platform::CGSavedState state(*canvas);
    // Objects paint in screen coordinates; the canvas is in view coordinates.
    canvas->translateCTM(rect.x - screen.x, rect.y - screen.y);
    updateRect(screen);
}

void BitmapLayer::updateRect(const Rect& rect) {
    platform::CGContext& canvas = *GetCurrentCanvas();
    const ContainerObject* const common =
        getObjects().size() > 1 ? LayerPlacement::commonContainer(*this) : nullptr;
    for (std::size_t i = 0; i < getObjects().size(); ++i) {
        const std::shared_ptr<DisplayObject> object = getObjects()[i].lock();
        if (!object) {
            continue;
        }
        const Rect clip = computeDirtyRect(object, rect);
        if (clip.isEmpty()) {
            continue;
        }
        if (const std::shared_ptr<ContainerObject> parent = object->getParent()) {
            const platform::CGSavedState state(canvas);
            if (getObjects().size() > 1 && parent.get() != common) {
                clipGuest(canvas, *object, *this, common);
            }
            canvas.concatCTM(platform::CGAffineTransform(parent->getFullTransformation()));
            object->validate(clip);
        } else {
            // A top-level object is validated with the whole rectangle, without a transformation:
            // the layer is its own, and content that it paints outside its frame belongs to the
            // pass, too.
            object->validate(rect);
        }
    }
}

}  // namespace native
}  // namespace orvane::display
