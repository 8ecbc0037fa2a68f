#pragma once

#include <cstdint>
#include <vector>

#include "platform/appkit/NSBackingRect.h"

namespace orvane::platform {

class NSView;

// A view that moved by whole pixels, with its subviews, inside a clip that did not move and that it
// covers before and after: the pixels that are visible all the time need not be composed again. All
// rectangles are in the image.
struct OffscreenScroll {
    NSView* view;
    NSBackingRect visible;  // what the clip leaves of the view
    std::int64_t dx;        // how far the view moved
    std::int64_t dy;

    // Returns where the pixels of a rectangle are after the scroll, as far as they are visible.
    NSBackingRect moved(const NSBackingRect& rect) const {
        return rect.intersection(visible).movedBy(dx, dy).intersection(visible);
    }
};

// Decides whether moving pixels has the same result as composing them: what is behind the view must
// look the same everywhere, and no view may be drawn as part of a group.
class OffscreenScrollCheck {
public:
    explicit OffscreenScrollCheck(const OffscreenScroll& scroll);

    // Returns whether pixels can be moved. Then `inFront` is replaced by the areas of the views in
    // front of the scrolled one: their pixels must not move.
    bool passes(NSView& root, std::vector<NSBackingRect>& inFront);

private:
    bool isDrawnAlone() const;
    bool visit(NSView& view);
    void addBehind(const NSView& view);

    const OffscreenScroll& scroll_;
    int picture_;
    std::vector<NSBackingRect>* inFront_ = nullptr;
    bool isInFront_ = false;  // of the scrolled view: it has been visited
    bool isUniform_ = true;   // what is behind it
};

}  // namespace orvane::platform
