#include "orvane/display/layout/BoxEntry.h"

#include <algorithm>
#include <cmath>

#include "orvane/display/graphics/Container.h"
#include "orvane/display/graphics/Ellipse.h"
#include "orvane/display/graphics/Image.h"
#include "orvane/display/graphics/Rect.h"
#include "orvane/display/graphics/SizedContainer.h"
#include "orvane/display/graphics/SizedObject.h"
#include "orvane/display/graphics/Text.h"
#include "orvane/display/layout/objectPlacement.h"

namespace orvane::display::layout {

namespace {

bool takesSizes(DisplayObject& object) {
    return dynamic_cast<graphics::Rect*>(&object) != nullptr ||
           dynamic_cast<graphics::Ellipse*>(&object) != nullptr ||
           dynamic_cast<graphics::SizedContainer*>(&object) != nullptr ||
           dynamic_cast<graphics::SizedObject<DisplayObject>*>(&object) != nullptr;
}

}  // namespace

Box::Entry Box::Entry::ofObject(const std::shared_ptr<DisplayObject>& object, const Item& item) {
    Entry entry{object, nullptr, item, layout::isWrapped(*object)};
    if (takesSizes(*object)) {
        entry.sizeWhenAdded = boxOf(*object).size();
    }
    return entry;
}

const void* Box::Entry::content() const {
    return box ? static_cast<const void*>(box.get()) : static_cast<const void*>(object.get());
}

std::shared_ptr<DisplayObject> Box::Entry::shownObject() const {
    return box ? std::shared_ptr<DisplayObject>(box->container_) : object;
}

Box::Size Box::Entry::naturalSize(double width) const {
    if (box) {
        return box->sizeWithin(width);
    }
    if (!object) {
        return {};
    }
    if (isWrapped) {
        if (!std::isfinite(width)) {
            return {};
        }
        auto& text = dynamic_cast<graphics::Text&>(*object);
        text.setWidth(static_cast<float>(width));
        return {width, text.getTextBounds().height};
    }
    const Size size = sizeWhenAdded ? *sizeWhenAdded : boxOf(*object).size();
    if (dynamic_cast<graphics::Image*>(object.get()) == nullptr ||
        !(size.width > 0 && size.height > 0)) {
        return size;
    }
    const double fitting =
        item.height ? size.width * *item.height / size.height : std::min(size.width, width);
    const double imageWidth = item.width.value_or(fitting);
    return {imageWidth, size.height * imageWidth / size.width};
}

double Box::Entry::widthInColumn(const BoxStyle& style, double width) const {
    const bool isStretched =
        alignIn(style) == Align::Stretch && !style.wraps && std::isfinite(width);
    return limitedWidth(isStretched ? width : std::min(naturalSize(width).width, width));
}

FlexItem Box::Entry::flexItem(const BoxStyle& style, double innerWidth) const {
    if (style.direction == Direction::Row) {
        // A wrapped text has no width of its own.
        const double natural = isWrapped || item.width ? 0 : naturalSize(innerWidth).width;
        return {item.width.value_or(natural), item.minWidth, item.maxWidth, item.grow, item.shrink};
    }
    const double base =
        item.height ? *item.height : naturalSize(widthInColumn(style, innerWidth)).height;
    return {base, item.minHeight, item.maxHeight, item.grow, item.shrink};
}

double Box::Entry::limitedWidth(double width) const {
    return std::max(std::min(item.width.value_or(width), item.maxWidth), item.minWidth);
}

double Box::Entry::limitedHeight(double height) const {
    return std::max(std::min(item.height.value_or(height), item.maxHeight), item.minHeight);
}

}  // namespace orvane::display::layout
