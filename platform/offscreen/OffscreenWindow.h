#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSWindow.h"

namespace orvane::platform {

class CGImage;
class OffscreenCompositor;

// A window in memory: composes its views into an image. For servers, screenshots and tests. Only
// what was damaged is composed anew: what views painted, and where they were and are now when they
// moved, came, left, hid, faded or changed places.
//
// Nothing shows by itself: display() makes the picture true to the views. Main thread only.
class ORVANE_EXPORT OffscreenWindow : public NSWindow {
public:
    // In points, and pixels a point. Extents and scales out of reason are brought within it.
    OffscreenWindow(CGSize size, double scale = 1);
    ~OffscreenWindow() override;

    double backingScaleFactor() const override;
    CGSize contentSize() const override;
    // Both compose everything anew at the next display().
    void setContentSize(CGSize size);
    void setBackingScaleFactor(double scale);

    // One display pass at the present media time. The rectangles of the image that were composed;
    // valid until the next call.
    std::span<const NSBackingRect> display();

    // ---- the picture, as of the last display() ----
    int pixelWidth() const;
    int pixelHeight() const;
    // Premultiplied ARGB, 32 bits in the machine's byte order, rows `bytesPerRow` apart;
    // transparent where no view covers it.
    const std::uint32_t* pixels() const;
    std::size_t bytesPerRow() const;
    // A copy.
    std::shared_ptr<const CGImage> image() const;
    // False when the file could not be written.
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

    CGSize size_;
    double scale_;
    std::span<const NSBackingRect> composed_;
    std::unique_ptr<OffscreenCompositor> compositor_;
};

}  // namespace orvane::platform
