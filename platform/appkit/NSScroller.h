#pragma once

#include <functional>
#include <memory>

#include "platform/appkit/NSView.h"

namespace orvane::platform {

// A scroll bar over the edge of a content: a knob, which the user can drag, on a track. The track
// appears when the pointer comes near (the bar is open then), and a click on it turns a page. The
// view of a closed bar is the knob and nothing else, so that the content next to it takes the
// pointer. NSScrollView places it, fades it with the opacity of its layer and hides it.
class NSScroller final : public NSView {
public:
    struct Handler {
        // The user took or released the knob.
        std::function<void(bool isHeld)> grasped;
        // The user dragged the knob by so many points along the bar.
        std::function<void(double way)> dragged;
        // The user clicked on the track, after the knob or before it.
        std::function<void(bool isAfter)> paged;
        // The pointer came over the bar, or left it.
        std::function<void(bool isOver)> hovered;
    };

    // The extent across the bar, in points.
    static constexpr double kBreadth = 13;
    // The least extent of the knob along the bar, in points.
    static constexpr double kShortest = 28;

    // Views are held by shared pointers: use it instead of a constructor.
    static std::shared_ptr<NSScroller> create(bool isVertical, Handler handler);

    // Places the bar: `track` is in the superview's coordinates, and the knob begins `start` after
    // the beginning of the track.
    void place(const CGRect& track, double start, double length, bool isOpen);

    bool paints() const override { return true; }
    void drawRect(const CGRect& dirty) override;
    bool pointerEvent(const NSEvent& event) override;

private:
    double along(CGPoint point) const { return isVertical_ ? point.y : point.x; }
    bool press(double place);
    void release();

    bool isVertical_ = false;
    Handler handler_;
    bool isOpen_ = false;
    CGRect knob_;  // in the view's coordinates
    bool isHeld_ = false;
    double grasp_ = 0;  // where the knob is held, from its beginning
};

}  // namespace orvane::platform
