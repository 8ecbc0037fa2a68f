#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "platform/appkit/NSScrollAxis.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

enum class NSScrollDirection : std::size_t { Horizontal, Vertical };

// The offset of scrolled content, and how input moves it: wheel, keys, pages, and what happens when
// the pointer or fingers release it. NSScrollView passes in what the user does, calls step at each
// frame, and shows the result; this class knows no views and no clock.
//
// Offsets and distances are in points, x and y positive to the right and down, times in seconds.
// Every offset is between zero and limit(). Numbers that go in must be finite.
class NSScrollMotion {
public:
    using Direction = NSScrollDirection;

    // ---- the extents ----
    const NSScrollAxis& axis(Direction direction) const { return axes_[index(direction)]; }
    // Each returns whether the offset has changed.
    bool setLengths(CGSize content, CGSize visible);
    bool setEnabled(bool horizontally, bool vertically);
    // Content of this extent was inserted above or left of what is visible; see NSScrollAxis.
    void insertBefore(CGSize extent);
    // With paging, the content comes to rest at a page or at the end of the content.
    void setPaging(bool paging) { paging_ = paging; }
    bool isPaging() const { return paging_; }

    // ---- the offset ----
    CGPoint offset() const;
    // The largest offset.
    CGPoint limit() const;
    // Where the motion that is going on will end; the offset when there is none.
    CGPoint target() const;
    // The offset that shows a rectangle of the content, as near as possible to the target.
    CGPoint offsetToShow(const CGRect& rect) const;
    // The numbers of the pages that are nearest to the target, and the offset of such pages.
    CGPoint targetPages() const;
    CGPoint offsetOfPages(CGPoint pages) const;

    // ---- motion ----
    bool isMoving() const;
    bool isFlung() const;
    void stop();
    // Computes the offset at a time.
    void step(double time);
    // Stops the motion and sets the offset.
    void jumpTo(CGPoint offset);
    // Moves to an offset in about 0.3 seconds.
    void glideTo(CGPoint offset, double time);
    // Moves the content at once by a part of `delta`, as far as it goes, and returns that part.
    CGPoint moveBy(CGPoint delta);
    // The same for notches of a wheel, with a short motion. With paging, a notch turns one page.
    CGPoint moveByWheel(CGPoint delta, double time);
    // Does what a key does: arrows, Page Up and Down, Home, End and Space. `key` is as in NSEvent.
    // Returns false if the key has no meaning here, or the content is at the end already.
    bool moveByKey(std::string_view key, bool isShift, double time);
    // Shows the next page, or the previous one.
    void turnPage(Direction direction, bool forward, double time);
    // The content was released at a velocity, in points per second: flings it, or goes to a page.
    void release(CGPoint velocity, double time);
    // Whether a drag of the pointer by `way` moves the content.
    bool canDrag(CGPoint way) const;

private:
    static std::size_t index(Direction direction) { return static_cast<std::size_t>(direction); }
    NSScrollAxis& axis(Direction direction) { return axes_[index(direction)]; }
    double turnPageByWheel(Direction direction, double delta, double time);
    void comeToRestAtPage(Direction direction, double velocity, double time);

    std::array<NSScrollAxis, 2> axes_;
    bool paging_ = false;
    std::array<double, 2> wheel_{};  // the part of a notch that has turned no page yet
};

}  // namespace orvane::platform
