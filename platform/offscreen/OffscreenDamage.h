#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "platform/appkit/NSBackingRect.h"
#include "platform/appkit/NSDamageRegion.h"

namespace orvane::platform {

class NSView;
struct OffscreenScroll;

// Collects which pixels of an off-screen window's image must be composed again.
class OffscreenDamage {
public:
    // Sets the size of the image, and damages all of it.
    void setBounds(const NSBackingRect& bounds);

    // Damages a part of the image.
    void add(const NSBackingRect& rect) { region_.add(rect); }
    // The view painted these rectangles, in its own pixels. They are damaged where the view is at
    // the next take().
    void addPainted(NSView& view, std::span<const NSBackingRect> rects);
    // The drawing order of the subviews changed. Damages the subviews that are now above or below
    // another one than before, and records the new order.
    void addReordered(NSView& superview);
    // The pixels of a scrolled view are moved. Damages what appears, and moves what was damaged;
    // the rest of this pass's damage stays where it is, too.
    void addScrolled(const OffscreenScroll& scroll, double scale);
    // The view leaves the window.
    void forget(const NSView& view);

    // Moves the damaged rectangles to `out`, which is emptied first. `scale` is the number of
    // pixels per point.
    void take(std::vector<NSBackingRect>& out, double scale);

private:
    struct Painted {
        NSView* view;
        NSBackingRect rect;
    };

    NSBackingRect rectOf(const Painted& painted, double scale) const;

    NSDamageRegion region_;
    std::vector<Painted> painted_;
    // Used by one function each; members to reuse their memory.
    std::vector<NSBackingRect> rects_;
    std::vector<std::size_t> ends_;
    std::vector<std::size_t> before_;
};

}  // namespace orvane::platform
