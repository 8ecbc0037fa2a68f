#pragma once

#include <memory>
#include <optional>

#include "orvane/display/layout/Box.h"
#include "orvane/display/layout/flexLengths.h"

namespace orvane::display::layout {

// One item of a box: an object, a box, or empty space. It knows how large it is; Box::Line decides
// how large it becomes, and Box where it is.
struct Box::Entry {
    std::shared_ptr<DisplayObject> object;
    std::shared_ptr<Box> box;
    Item item;
    bool isWrapped = false;                  // the object is a text that wraps
    std::optional<Size> sizeWhenAdded = {};  // of an object that takes sizes
    std::optional<Rect> placed = {};         // the last rectangle

    static Entry ofObject(const std::shared_ptr<DisplayObject>& object, const Item& item);

    // The address of the object or box; null for empty space.
    const void* content() const;
    // The object that the container of the box has for this item; null for empty space.
    std::shared_ptr<DisplayObject> shownObject() const;
    // The size of the object or box when it has this width. Gives a wrapped text the width.
    Size naturalSize(double width) const;
    // The width of the item in a column of this width.
    double widthInColumn(const BoxStyle& style, double width) const;
    // What the item wants on the main axis of a box whose inside has this width.
    FlexItem flexItem(const BoxStyle& style, double innerWidth) const;
    // The lengths that the item sets, or these, within the item's limits.
    double limitedWidth(double width) const;
    double limitedHeight(double height) const;
    Align alignIn(const BoxStyle& style) const { return item.align.value_or(style.align); }
};

}  // namespace orvane::display::layout
