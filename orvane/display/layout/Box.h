#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/display/animation/Easing.h"
#include "orvane/display/geometry/Rect.h"
#include "orvane/display/geometry/Size.h"

namespace orvane::display {

class Display;
class DisplayObject;

namespace graphics {
class Container;
}

namespace layout {

// The direction in which a box places its items, one after another: its main axis. The other one is
// its cross axis.
enum class Direction { Row, Column };

// Where the items of a line go when they leave space on the main axis: to one end, to the middle,
// or apart, with the space between them, around each, or evenly also at the ends.
enum class Justify { Start, Center, End, SpaceBetween, SpaceAround, SpaceEvenly };

// Where an item goes in its line on the cross axis. Stretch gives it the size of the line.
enum class Align { Start, Center, End, Stretch };

// The distances of the items from the edges of their box, in points.
struct Insets {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;

    // The same distance from each edge.
    static constexpr Insets all(double inset) { return {inset, inset, inset, inset}; }
};

// How a box places its items. Lengths are points.
struct BoxStyle {
    Direction direction = Direction::Row;
    // The distance between two items of a line.
    double gap = 0;
    Insets padding = {};
    Justify justify = Justify::Start;
    Align align = Align::Stretch;
    // Whether items that do not fit continue in another line, below or to the right.
    bool wraps = false;
    // The distance between two lines.
    double lineGap = 0;
};

// How one item of a box is sized. Lengths are points.
struct Item {
    static constexpr double kUnlimited = std::numeric_limits<double>::infinity();

    // The size; without one, the natural size of the object, see Box::add.
    std::optional<double> width = {};
    std::optional<double> height = {};
    double minWidth = 0;
    double maxWidth = kUnlimited;
    double minHeight = 0;
    double maxHeight = kUnlimited;
    // The item's part of the space that is left over in its line, in relation to the others. When
    // all parts together are less than 1, that fraction of the space is distributed.
    double grow = 0;
    // The item's part of what its line is too long, in relation to the others and weighted by its
    // size. 0 does not shrink.
    double shrink = 0;
    // Replaces the alignment of the box.
    std::optional<Align> align = {};
    // Replaces what the box does to the object: called with the item's rectangle in the coordinates
    // of the box's container, each time the box is laid out. For what draws itself to a size, such
    // as a chart.
    std::function<void(const geometry::Rect<double>& rect)> place = {};
};

// Places objects in rows and columns, and again when the size of what contains them changes. The
// rules are those of flexible boxes in style sheets.
//
//     const auto page = std::make_shared<layout::Box>(layout::BoxStyle{
//         .direction = layout::Direction::Column, .gap = 16, .padding = layout::Insets::all(24)});
//     page->add(title);
//     page->add(chart, {.grow = 1});
//     page->showOnDisplay();
//
// A box has a container of its own, to which it adds the objects. It sets their transformations
// and, if they have a size, their sizes. A box is an item of another box like an object. It is laid
// out when it is shown on the display, when the display's size changes, and when the application
// calls update() or layOut(): after it has changed items, styles or the content of texts, call
// update().
//
// An application holds the outermost box, which holds the others. The objects stay where they are
// when it is released. Lengths are points. Main thread.
class ORVANE_EXPORT Box : public std::enable_shared_from_this<Box> {
public:
    using Rect = geometry::Rect<double>;
    using Size = geometry::Size<double>;

    // Creates an empty box with its container.
    explicit Box(const BoxStyle& style = {});
    ~Box();
    Box(const Box&) = delete;
    Box& operator=(const Box&) = delete;

    // The container of the objects; its origin is the top left corner of the box.
    const std::shared_ptr<graphics::Container>& getContainer() const { return container_; }

    // Appends an object. Its natural size, unless the item has one:
    //
    // - a text of one line and an attributed text: the size of the text now
    // - a wrapped text: the width that it is given, and the height of the text at this width. In a
    //   row it needs a width or a part in growing.
    // - an image: the size of its picture, made smaller if that is wider than the space. It keeps
    //   its proportions: a width or a height of the item gives the other one.
    // - a rectangle, an ellipse, a clip container, a native control: the size it has when it is
    //   added. These take any size.
    // - other objects: the size of their outline or children. They keep their size.
    //
    // Null is ignored.
    void add(const std::shared_ptr<DisplayObject>& object, const Item& item = {});
    // Appends a box, whose natural size is that of its items. A box has one parent: one that is an
    // item already, and one that contains this box, is refused with a line in the log.
    void add(const std::shared_ptr<Box>& box, const Item& item = {});
    // Appends empty space, by default as much as there is.
    void addSpace(const Item& item = {.grow = 1});
    // Sets an object that is behind the items and takes the size of the box; null for none.
    void setBackground(const std::shared_ptr<DisplayObject>& object);

    // Replace the item of an object or box. Nothing happens if there is none:
    void setItem(const std::shared_ptr<DisplayObject>& object, const Item& item);
    void setItem(const std::shared_ptr<Box>& box, const Item& item);
    // Remove an object or box. Nothing happens if it is not here:
    void remove(const std::shared_ptr<DisplayObject>& object);
    void remove(const std::shared_ptr<Box>& box);
    // Removes everything but the background.
    void clear();

    // How the box places its items.
    const BoxStyle& getStyle() const { return style_; }
    // Replaces the style; it has an effect when the box is laid out again.
    void setStyle(const BoxStyle& style) { style_ = style; }

    // Lets the items glide to their new places when the box is laid out again, except those that
    // are new. A duration of 0 seconds, the default, moves them at once. What glides is a layer of
    // its own; see DisplayObject::extractAnimationLayer.
    void setMotion(float duration, const animation::Easing& easing = animation::Easing::easeOut());

    // Returns the size that the box takes within a width, with its padding.
    Size measure(double width = Item::kUnlimited);
    // Places the items. `rect` is in the coordinates of the parent of the box's container.
    void layOut(const Rect& rect);
    // Lays out the outermost box again, in its last rectangle. Nothing happens before the first
    // layOut.
    void update();
    // Adds the container to the display and lays out the box in the display's size, now and each
    // time it changes, for as long as the box exists.
    void showOnDisplay();

private:
    class DisplayListener;
    struct Entry;
    struct Line;

    bool isRow() const { return style_.direction == Direction::Row; }
    Entry* find(const void* content);
    void removeEntry(const void* content);
    Size sizeWithin(double width);
    void placeLine(const Line& line, const Size& inner, double across);
    void place(Entry& entry, const Rect& rect);
    void glide(const Entry& entry, const Rect& to) const;
    void forgetSizes();

    BoxStyle style_;
    std::shared_ptr<graphics::Container> container_;
    std::vector<Entry> entries_;
    std::shared_ptr<DisplayObject> background_;
    std::weak_ptr<Box> parent_;
    std::optional<Rect> rect_;
    std::optional<double> measuredWidth_;  // the width of `measured_`
    Size measured_;
    float motionDuration_ = 0;
    animation::Easing motionEasing_;
    std::shared_ptr<DisplayListener> displayListener_;
};

}  // namespace layout
}  // namespace orvane::display
