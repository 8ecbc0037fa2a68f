#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "platform/appkit/NSBackingRect.h"
#include "platform/offscreen/OffscreenDamage.h"
#include "platform/offscreen/OffscreenLayout.h"
#include "platform/offscreen/OffscreenTarget.h"

namespace orvane::platform {

class NSView;

// Keeps the image of an off-screen window equal to its views, composing only what changed: the
// layout knows where the views are, the damage what must be composed again, and a composer draws
// it.
class OffscreenCompositor {
public:
    // Replaces the image, and damages all of it. `width` and `height` are in pixels; `scale` is the
    // number of pixels per point.
    void setImage(int width, int height, double scale);
    int width() const { return static_cast<int>(image_.area.width()); }
    int height() const { return static_cast<int>(image_.area.height()); }
    // Premultiplied ARGB, packed rows.
    const std::uint32_t* pixels() const { return image_.pixels.get(); }

    // What OffscreenWindow receives about its views; see NSWindow.
    void add(NSView& view);
    void remove(NSView& view);
    void reorder(NSView& superview);
    // The view moved, or its visibility or opacity changed.
    void change(NSView& view) { layout_.mark(view); }
    // The view's background changed.
    void recolor(NSView& view) { layout_.markRecolored(view); }
    void painted(NSView& view, std::span<const NSBackingRect> rects);

    // Makes the image equal to the views as they are shown at a media time. Returns the rectangles
    // of the image that were composed; they are valid until the next call. `root` may be null.
    std::span<const NSBackingRect> compose(NSView* root, double time);

private:
    OffscreenTarget image_;
    double scale_ = 1;
    OffscreenDamage damage_;
    OffscreenLayout layout_{damage_};
    std::vector<NSBackingRect> composed_;
};

}  // namespace orvane::platform
