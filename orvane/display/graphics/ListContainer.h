#pragma once

#include <cstddef>
#include <functional>
#include <memory>

#include "orvane/display/graphics/ScrollContainer.h"

namespace orvane::display::graphics {

// A scroll container with rows, one below the other, that are made when they come into view. A list
// of a million rows has as many objects as one that fits on the screen. Set the heights, the
// function that makes rows, and the number of rows, then report every change of the rows after it
// was made.
//
// Rows are numbered from zero. A row is any display object; the list is its container and sets its
// transformation, so that the row's origin is at the left edge of the bounds and at the top of the
// row. The application adds nothing else to the list, and sets no content size.
//
// Heights are in the list's own coordinates, as everything in a row; where a group around the list
// scales it, offsets on the screen are so many times larger.
//
// What is visible keeps its place when rows above it are inserted, removed or get other heights.
//
// A number of a row that does not exist is refused with a line in the log. The functions are called
// on the application's thread; the list calls the application's functions on the main thread.
class ORVANE_EXPORT ListContainer : public virtual ScrollContainer {
public:
    // Makes a row that comes into view. `recycled` is an object of this list that is not in view
    // any more, or null: the function changes it and returns it, or returns another object, and
    // then the list releases the recycled one. With null the row is empty.
    using RowFunction = std::function<std::shared_ptr<DisplayObject>(
        std::size_t row, const std::shared_ptr<DisplayObject>& recycled)>;
    // Returns the height of a row, in the list's coordinates. It must not change until it is
    // reported.
    using HeightFunction = std::function<double(std::size_t row)>;

    // Sets the function, and makes the visible rows again.
    virtual void setRowFunction(RowFunction function) = 0;
    // Makes all rows equally high, at least one point; 48 at first.
    virtual void setRowHeight(double height) = 0;
    // Gives each row its own height, at least one point. The list calls the function for all rows
    // once, and keeps one sum for 256 of them.
    virtual void setRowHeights(HeightFunction function) = 0;

    // Replaces all rows.
    virtual void setRowCount(std::size_t count) = 0;
    // The number of rows.
    virtual std::size_t getRowCount() const = 0;
    // New rows are before the row with this number, or at the end.
    virtual void insertRows(std::size_t row, std::size_t count) = 0;
    // These rows are gone; the rows after them have their numbers now.
    virtual void removeRows(std::size_t row, std::size_t count) = 0;
    // The rows look different, or have other heights.
    virtual void reloadRows(std::size_t row, std::size_t count) = 0;

    // The object of a row; null for one that is not in view.
    virtual std::shared_ptr<DisplayObject> getRow(std::size_t row) const = 0;
    // The distance from the top of the content to the top of a row, in points.
    virtual double getRowOffset(std::size_t row) const = 0;
    // The row at a distance from the top of the content; the nearest one if there is none, and zero
    // for an empty list.
    virtual std::size_t getRowAt(double offset) const = 0;
    // Scrolls as little as necessary to show a row.
    virtual void scrollToRow(std::size_t row, Motion motion = Motion::Animated) = 0;
};

}  // namespace orvane::display::graphics
