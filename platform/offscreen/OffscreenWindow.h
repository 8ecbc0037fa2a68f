#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSWindow.h"
#include "platform/offscreen/OffscreenWindowHost.h"

namespace orvane::platform {

class CGImage;
class OffscreenCompositor;

// A window in memory that composes its views into an image, for servers, screenshots and tests.
// The image changes only when display() is called. display() composes only what was damaged: what
// views painted, and the old and new places of views that changed. Main thread only.
class ORVANE_EXPORT OffscreenWindow : public NSWindow {
public:
    // `size` is in points; `scale` is the number of pixels per point. Sizes and scales out of range
    // are clamped: an image has 1 to 32767 pixels a side, and the scale is from 0.01 to 100.
    OffscreenWindow(CGSize size, double scale = 1);
    ~OffscreenWindow() override;

    double backingScaleFactor() const override;
    CGSize contentSize() const override;
    // Change what the constructor has set; the next display() composes everything:
    void setContentSize(CGSize size);
    void setBackingScaleFactor(double scale);

    // What the content has asked of the window.
    OffscreenWindowHost& windowHost() { return host_; }
    const OffscreenWindowHost& windowHost() const { return host_; }

    // Runs one display pass at the current media time. Returns the rectangles of the image that
    // were composed or scrolled; they are valid until the next call.
    std::span<const NSBackingRect> display();

    // ---- the image, as of the last display() ----
    // The size of the image in pixels:
    int pixelWidth() const;
    int pixelHeight() const;
    // Premultiplied ARGB, 32 bits in the machine's byte order; transparent where there is no view.
    // Valid until the next display().
    const std::uint32_t* pixels() const;
    // The distance between two rows of pixels().
    std::size_t bytesPerRow() const;
    // Returns a copy.
    std::shared_ptr<const CGImage> image() const;
    // Returns false if the file could not be written.
    bool writePNG(const std::string& path) const;

protected:
    void scheduleDisplay() override;
    void didAddView(NSView& view) override;
    void willRemoveView(NSView& view) override;
    void didReorderSubviews(NSView& superview) override;
    void didChangeView(NSView& view, unsigned changes) override;
    void didPaintView(NSView& view, std::span<const NSBackingRect> rects) override;
    void present() override;

private:
    void resize(CGSize size, double scale);

    OffscreenWindowHost host_{*this};
    CGSize size_;
    double scale_;
    std::span<const NSBackingRect> composed_;
    std::unique_ptr<OffscreenCompositor> compositor_;
};

}  // namespace orvane::platform
