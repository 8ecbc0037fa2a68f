#include "orvane/display/animation/moveObjects.h"

#include <memory>

#include "orvane/display/geometry/Matrix.h"
#include "orvane/display/graphics/ClipContainer.h"
#include "orvane/display/tree/DisplayLayer.h"

namespace orvane::display::animation {

using geometry::Matrix;

namespace {

Matrix translation(double x, double y) {
    return {1, 0, x, 0, 1, y};
}

void move(DisplayObject& object, const Matrix& onScreen) {
    const std::shared_ptr<ContainerObject> parent = object.getParent();
    const Matrix toScreen = parent ? parent->getFullTransformation() : Matrix();
    const Matrix inParent = toScreen.inverse() * onScreen * toScreen;
    if (auto* const clip = dynamic_cast<graphics::ClipContainer*>(&object)) {
        // The clip does not follow the object's own transformation. Its middle does.
        const geometry::Rect<double> bounds = clip->getBounds();
        const geometry::Point<double> middle{bounds.x + bounds.width / 2,
                                             bounds.y + bounds.height / 2};
        clip->setBounds(bounds.movedBy(inParent.mapPoint(middle) - middle));
    }
    const Matrix m = inParent * object.getTransformation();
    const auto number = [](double value) { return static_cast<float>(value); };
    object.setMatrix(number(m.m00), number(m.m01), number(m.m02), number(m.m10), number(m.m11),
                     number(m.m12));
}

void moveObjectsOf(DisplayLayer& layer, const Matrix& onScreen) {
    // A copy: moving an object may sort the list.
    const DisplayLayer::Objects objects = layer.getObjects();
    for (const std::weak_ptr<DisplayObject>& entry : objects) {
        if (const std::shared_ptr<DisplayObject> object = entry.lock()) {
            move(*object, onScreen);
        }
    }
}

}  // namespace

void moveObjects(Animatable& target, const Matrix& change) {
    auto* const layer = dynamic_cast<DisplayLayer*>(&target);
    if (layer == nullptr) {
        return;
    }
    const geometry::Point<double> origin = layer->getLayerFrame().position();
    const Matrix onScreen =
        translation(origin.x, origin.y) * change * translation(-origin.x, -origin.y);
    const ValidationLock lock(commons::sharedFrom(*layer));
    if (!layer->isFake()) {
        moveObjectsOf(*layer, onScreen);
        return;
    }
    const DisplayLayer::Children wrapped = layer->getSublayers();
    for (const std::shared_ptr<DisplayLayer>& sublayer : wrapped) {
        moveObjectsOf(*sublayer, onScreen);
    }
}

}  // namespace orvane::display::animation
