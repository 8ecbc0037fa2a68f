#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSAccessibilityLabel.h"
#include "platform/appkit/NSWindow.h"

namespace Gtk {
class Widget;
}

namespace orvane::platform {

class GTKRoot;

// A window on a real desktop: shows its views by GTK widgets, one a view, and hands it the
// pointer's events. It comes as a widget, to be put into a window of the program's own, X11 or
// Wayland.
//
// The display pass runs on the frame clock, and only when something has changed. GTK must be
// initialised, and the widget be taken out of its parent before this window goes. Main thread only.
class ORVANE_EXPORT GTKWindow final : public NSWindow {
public:
    // `scale` is pixels a point; without one the desktop's own, also when that changes. The widget
    // is as large as its parent makes it, and asks for `size` points.
    explicit GTKWindow(CGSize size, std::optional<double> scale = {});
    ~GTKWindow() override;

    // Borrowed.
    Gtk::Widget& widget();

    double backingScaleFactor() const override;
    CGSize contentSize() const override;

    // Told at the beginning of the display pass that follows a resize: resize the views there.
    void setResizeHandler(std::function<void(CGSize)> handler);

    // Sets the function that lists what assistive technology finds in the window, usually
    // embedding::accessibilityLabels. It is called again some time after the window has shown
    // something new, and not while the window is unchanged.
    void setAccessibilityLabels(std::function<std::vector<NSAccessibilityLabel>()> labels);

    // What the desktop shows of this window, as a PNG. To be called when the frame clock has
    // painted a frame: GTK has no picture of what waits to be drawn. False when there is none, or
    // the file cannot be written.
    bool writePNG(const std::string& path) const;

protected:
    void scheduleDisplay() override;
    void didAddView(NSView& view) override;
    void didReorderSubviews(NSView& superview) override;
    void didChangeView(NSView& view, unsigned changes) override;
    void didPaintView(NSView& view, std::span<const NSBackingRect> rects) override;
    void present() override;
    bool showsNatively(const NSView& view) const override;

private:
    // A frame of the frame clock. Whether the next one is wanted too.
    bool tick();

    std::unique_ptr<GTKRoot> root_;
    std::optional<double> scale_;
    std::function<void(CGSize)> resizeHandler_;
    std::function<std::vector<NSAccessibilityLabel>()> labels_;
    unsigned int labelsTimer_ = 0;
    bool resized_ = false;    // since the last frame
    bool scheduled_ = false;  // a frame is asked for
    bool ticking_ = false;    // inside a frame
};

}  // namespace orvane::platform
