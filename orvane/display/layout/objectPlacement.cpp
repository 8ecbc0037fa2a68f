#include "orvane/display/layout/objectPlacement.h"

#include <algorithm>

#include "orvane/display/graphics/AttributedText.h"
#include "orvane/display/graphics/ClipContainer.h"
#include "orvane/display/graphics/Ellipse.h"
#include "orvane/display/graphics/Image.h"
#include "orvane/display/graphics/ListContainer.h"
#include "orvane/display/graphics/Rect.h"
#include "orvane/display/graphics/SizedObject.h"
#include "orvane/display/graphics/quartz/QuartzMultilineText.h"

namespace orvane::display::layout {

using Rect = geometry::Rect<double>;

namespace {

float number(double value) {
    return static_cast<float>(value);
}

void moveTo(DisplayObject& object, double x, double y) {
    object.setTranslate(number(x), number(y));
}

template <typename T>
void setBoundsAt(T& object, const Rect& rect) {
    object.setBounds({0, 0, rect.width, rect.height});
    moveTo(object, rect.x, rect.y);
}

// Fits into the middle of the rectangle.
void placeImage(graphics::Image& image, const Rect& rect) {
    const Rect picture = image.getBounds();
    if (!(picture.width > 0 && picture.height > 0)) {
        return;
    }
    const double scale = std::min(rect.width / picture.width, rect.height / picture.height);
    image.setMatrix(number(scale), 0, number(rect.x + (rect.width - scale * picture.width) / 2), 0,
                    number(scale), number(rect.y + (rect.height - scale * picture.height) / 2));
}

}  // namespace

bool isWrapped(DisplayObject& object) {
    return dynamic_cast<graphics::quartz::QuartzMultilineText*>(&object) != nullptr;
}

Rect boxOf(DisplayObject& object) {
    const bool isText = dynamic_cast<graphics::Text*>(&object) != nullptr;
    if (auto* const shape = dynamic_cast<graphics::Shape*>(&object); shape != nullptr && !isText) {
        return shape->getInnerBounds();
    }
    if (auto* const drawable =
            dynamic_cast<graphics::BoundedObject<graphics::Drawable>*>(&object)) {
        return drawable->getBounds();
    }
    if (auto* const group = dynamic_cast<graphics::BoundedObject<ContainerObject>*>(&object)) {
        return {{}, group->getBounds().size()};
    }
    if (auto* const control = dynamic_cast<graphics::BoundedObject<DisplayObject>*>(&object)) {
        return control->getBounds();
    }
    return object.getFullTransformation().inverse().mapRect(object.getFrame());
}

void placeObject(DisplayObject& object, const Rect& rect) {
    if (auto* const shape = dynamic_cast<graphics::Rect*>(&object)) {
        shape->set(0, 0, number(rect.width), number(rect.height));
        moveTo(object, rect.x, rect.y);
    } else if (auto* const ellipse = dynamic_cast<graphics::Ellipse*>(&object)) {
        ellipse->set(0, 0, number(rect.width), number(rect.height));
        moveTo(object, rect.x, rect.y);
    } else if (auto* const image = dynamic_cast<graphics::Image*>(&object)) {
        placeImage(*image, rect);
    } else if (auto* const list = dynamic_cast<graphics::ListContainer*>(&object)) {
        list->setBounds(rect);  // the rows begin at its corner
    } else if (auto* const clip = dynamic_cast<graphics::ClipContainer*>(&object)) {
        // The clip is in the parent's coordinates; the transformation moves the children.
        clip->setBounds(rect);
        moveTo(object, rect.x, rect.y);
    } else if (auto* const group = dynamic_cast<graphics::SizedContainer*>(&object)) {
        setBoundsAt(*group, rect);
    } else if (auto* const control = dynamic_cast<graphics::SizedObject<DisplayObject>*>(&object)) {
        setBoundsAt(*control, rect);
    } else {
        if (auto* const text = dynamic_cast<graphics::Text*>(&object);
            text != nullptr && isWrapped(object)) {
            text->setWidth(number(rect.width));
        }
        const Rect box = boxOf(object);
        moveTo(object, rect.x - box.x, rect.y - box.y);
    }
}

}  // namespace orvane::display::layout
