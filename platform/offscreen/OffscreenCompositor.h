#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSBackingRect.h"
#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/offscreen/OffscreenDamage.h"
#include "platform/offscreen/OffscreenLayout.h"
#include "platform/offscreen/OffscreenPlace.h"

namespace orvane::platform {

class NSView;
struct OffscreenTarget;

// Keeps the image of a window equal to its views, composing only what changed: the layout knows
// where the views are, the damage what must be composed again, and a composer draws it.
//
// Where the desktop shows some of the views with widgets ("native" views), there is more than one
// picture: the views behind the first native view, those between it and the second, and so on.
class ORVANE_EXPORT OffscreenCompositor {
public:
    // Whether the window fills what the first picture does not cover with backdropColor(). The
    // picture then has the size of what is in front of a plain background, not that of the window.
    enum class Backdrop { Composed, LeftToWindow };

    explicit OffscreenCompositor(Backdrop backdrop = Backdrop::Composed);
    ~OffscreenCompositor();
    OffscreenCompositor(const OffscreenCompositor&) = delete;
    OffscreenCompositor& operator=(const OffscreenCompositor&) = delete;

    // Replaces the image, and damages all of it. `width` and `height` are in pixels; `scale` is the
    // number of pixels per point.
    void setImage(int width, int height, double scale);
    const NSBackingRect& bounds() const { return bounds_; }

    double scale() const { return scale_; }

    struct Picture {
        NSBackingRect area;  // the part of the image that it covers; empty if it shows nothing
        std::shared_ptr<const std::uint32_t[]> pixels;  // premultiplied ARGB, packed rows
        bool isOpaque;                                  // false if that is not known
    };
    // One more than there are native views. The first covers the whole image, unless there is a
    // backdrop color. compose() changes the pixels, or replaces them: when the picture gets another
    // area, and when all of a picture is scrolled that no window shows.
    std::size_t pictureCount() const;
    Picture picture(std::size_t index) const;
    // The opaque color of the image where the first picture is not, as of the last compose().
    // Nothing if the picture covers the whole image.
    std::optional<CGColor> backdropColor() const;

    struct NativePlace {
        CGAffineTransform toImage;  // from the view's points to the image's pixels
        bool isShown = false;
        double opacity = 1;  // including its superviews'
        int picture = 0;     // the picture directly in front of the view
        // The clips of the view and its superviews: nothing of it is outside this part of the
        // image, and outside any of the masks.
        NSBackingRect visible;
        std::vector<OffscreenClip> masks;

        friend bool operator==(const NativePlace&, const NativePlace&) = default;
    };
    // Where a native view is, as of the last compose().
    static NativePlace placeOfNative(const NSView& view);

    // What a window receives about its views; see NSWindow.
    void add(NSView& view);
    // Whether the view is native; a new one is not.
    void setNative(NSView& view, bool isNative);
    void remove(NSView& view);
    void reorder(NSView& superview);
    // The view moved, or its visibility or opacity changed.
    void change(NSView& view);
    // The view's background changed.
    void recolor(NSView& view);
    void painted(NSView& view, std::span<const NSBackingRect> rects);

    // Makes the image equal to the views as they are shown at a media time. Returns the rectangles
    // of the image that were composed or scrolled; they are valid until the next call. `root` may
    // be null.
    std::span<const NSBackingRect> compose(NSView* root, double time);

private:
    void scroll(NSView& root);
    void assignAreas(NSView* root);
    int assignPictures(NSView& view, int picture);
    void fitPictures();

    const Backdrop backdrop_;
    // Of the last backdrop that was left to the window.
    std::optional<CGColor> backdropColor_;
    // While the areas are assigned: the backdrop, until it has been reached. The views that are
    // reached before it are behind it.
    const NSView* leftOut_ = nullptr;
    NSBackingRect bounds_;
    std::vector<OffscreenTarget> pictures_;
    std::vector<NSBackingRect> areas_;  // the parts of the image that the pictures must cover
    bool isOpaque_ = false;             // the first picture
    int natives_ = 0;                   // the number of native views
    double scale_ = 1;
    OffscreenDamage damage_;
    OffscreenLayout layout_{damage_};
    std::vector<NSBackingRect> composed_;
    NSBackingRect scrolled_;              // in this compose(); empty if nothing was scrolled
    std::vector<NSBackingRect> inFront_;  // used by scroll() only
};

}  // namespace orvane::platform
