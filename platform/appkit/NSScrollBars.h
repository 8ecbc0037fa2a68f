#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <memory>

#include "platform/appkit/NSScrollMotion.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class NSScroller;
class NSView;

// The two bars of a scroll view, which are subviews over its content: where they are, when they are
// shown, and how they fade. NSScrollView tells it when the content or the pointer moves, and
// decides what a bar that is used does to the content.
//
// A bar is shown if the content can be moved along it. A bar that the pointer has opened does not
// fade. Times are media times in seconds.
class NSScrollBars {
public:
    using Direction = NSScrollDirection;

    // What the user does with a bar; see NSScroller::Handler.
    struct Handler {
        std::function<void(bool isHeld)> grasped;
        std::function<void(Direction, double way)> dragged;
        std::function<void(Direction, bool isAfter)> paged;
        std::function<void(Direction, bool isOver)> hovered;
    };

    // Adds the bars to `view`, which owns this object, as does `motion`.
    NSScrollBars(NSView& view, const NSScrollMotion& motion, const Handler& handler);
    ~NSScrollBars();
    NSScrollBars(const NSScrollBars&) = delete;
    NSScrollBars& operator=(const NSScrollBars&) = delete;

    // Must be called after the offset or the extents have changed.
    void place();
    // Shows the bars and lets them fade a second after `time`.
    void show(double time);
    // Sets the opacity that the bars have at `time`.
    void fade(double time);
    // Opens or closes a bar. Returns whether that is a change.
    bool setOpen(Direction direction, bool isOpen, double time);
    void close() { isOpen_ = {}; }
    // Whether the bars are shown and change with time.
    bool isFading() const;

    // Whether a point of the view is over the place of a bar, which may not be shown.
    bool isNear(Direction direction, CGPoint point) const;
    // How far the content moves when its knob is dragged by `way`; 0 if the knob cannot move.
    double contentWay(Direction direction, double way) const;

private:
    static std::size_t index(Direction direction) { return static_cast<std::size_t>(direction); }
    bool isAnyOpen() const { return isOpen_[0] || isOpen_[1]; }
    double knobLength(Direction direction) const;
    double trackLength(Direction direction) const;
    CGRect trackFrame(Direction direction) const;

    NSView& view_;
    const NSScrollMotion& motion_;
    std::array<std::shared_ptr<NSScroller>, 2> bars_;
    double shownAt_ = 0;
    bool areShown_ = false;
    std::array<bool, 2> isOpen_{};
};

}  // namespace orvane::platform
