#pragma once

#include <memory>

#include "orvane/display/graphics/ClipContainer.h"
#include "orvane/display/graphics/ScrollOffsetEvent.h"

namespace orvane::display::graphics {

// A clipping group on a layer of its own, whose children the user can scroll: with a wheel, a
// touchpad, the pointer, the keyboard and scroll bars.
//
// The children are the content. The content begins at the top left corner of the bounds, and a
// child that is left of it or above it cannot be reached. The offset is the distance from that
// corner to the part of the content that is visible; it is zero at first. What is outside the
// visible part is neither painted nor stored, and the pixels that stay visible are moved, not
// painted again.
//
// Scrolling moves no child: transformations and frames inside are as if the offset were zero, and
// so are the locations of touch events inside, which therefore agree with the frames. A scroll step
// costs the same for one child and for a hundred thousand. DisplayObject::getFrameOnScreen says
// where an object is on the screen.
//
// A touch listener inside that claims a gesture keeps it. A listener that only answers Possible is
// cancelled when the pointer begins to drag the content. What a container cannot use of a scroll
// gesture goes to the scroll containers around it.
//
// Offsets and lengths are in points of the screen, also where a group around the container scales.
// Offsets are kept within the limits. A number that is not finite, and a negative size, is refused
// with a line in the log. The functions are called on the application's thread.
class ORVANE_EXPORT ScrollContainer : public virtual ClipContainer {
public:
    // The directions in which the content moves.
    enum class Type { Both = 0, Horizontal = 1, Vertical = 2 };
    // Whether a change of the offset is shown at once or as a motion.
    enum class Motion { Immediate, Animated };

    // The directions that were given when it was created.
    virtual Type getType() const = 0;
    // Whether the content comes to rest at whole pages, each as large as the bounds.
    virtual bool isPaging() const = 0;
    // Changes it.
    virtual void setPaging(bool paging) = 0;

    // Sets the extent of the content.
    virtual void setContentSize(const geometry::Size<double>& size) = 0;
    // Makes the extent follow the children again, as at first: the content ends with the last
    // visible child in each direction.
    virtual void resetContentSize() = 0;
    // The extent of the content.
    virtual geometry::Size<double> getContentSize() = 0;

    // The offset that is shown now, also during a motion.
    virtual geometry::Point<double> getContentOffset() const = 0;
    // The largest offset: the extent of the content less that of the bounds.
    virtual geometry::Point<double> getMaximumOffset() = 0;
    // Sets the offset. Ends the motion that is going on.
    virtual void setContentOffset(const geometry::Point<double>& offset,
                                  Motion motion = Motion::Immediate) = 0;
    // Scrolls as little as necessary to show an object; its beginning, if it is larger than the
    // bounds. Scroll containers between this one and the object scroll, too. An object that is not
    // in this container is refused with a line in the log.
    virtual void scrollToVisible(const std::shared_ptr<DisplayObject>& object,
                                 Motion motion = Motion::Animated) = 0;
    // Whether the content moves, or the pointer or fingers hold it.
    virtual bool isScrolling() const = 0;
};

}  // namespace orvane::display::graphics
