#pragma once

#include <functional>
#include <memory>

#include "platform/appkit/NSView.h"

namespace orvane::platform {

// The knob of a scroll bar, which the user can grasp. Its view is the knob and nothing else, so
// that the content beside it takes the pointer. NSScrollView places it, fades it with the opacity
// of its layer and hides it.
class NSScroller final : public NSView {
public:
    struct Handler {
        // The user took or released the knob.
        std::function<void(bool isHeld)> grasped;
        // The user dragged the knob by so many points, along both axes.
        std::function<void(CGPoint way)> dragged;
    };

    // The extent across the bar, in points.
    static constexpr double kBreadth = 13;
    // The least extent of the knob along the bar, in points.
    static constexpr double kShortest = 28;

    // Views are held by shared pointers: use it instead of a constructor.
    static std::shared_ptr<NSScroller> create(Handler handler);

    bool paints() const override { return true; }
    void setFrame(const CGRect& frame) override;
    void drawRect(const CGRect& dirty) override;
};

}  // namespace orvane::platform
