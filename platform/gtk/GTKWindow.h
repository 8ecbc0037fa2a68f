#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSWindow.h"

namespace Gtk {
class Widget;
}

struct _GtkWidget;

namespace orvane::platform {

class CVDisplay;
class GTKAccessibility;
class GTKControl;
class GTKDesktop;
class GTKDrop;
class GTKPointer;
class GTKPresentation;
class GTKRoot;
class GTKScroll;
enum class GTKRendererKind;

// A window on a real desktop, X11 or Wayland: a widget that shows views and turns input into
// events, to be put into a window of the program's own.
//
// The first responder and the keyboard focus of GTK agree: a control that the user clicks becomes
// the first responder, and a view that becomes the first responder gets the focus. Tab visits the
// views in their own order, and then the other widgets of the program's window.
//
// A control has a widget while it is close to what is visible, or has the keyboard.
//
// The display pass runs on the frame clock, and only when something has changed. GTK must be
// initialized, and the widget removed from its parent before this object is destroyed. Main thread
// only.
//
// Without a GPU, the processor composes the views, and creating the first GTKWindow makes GTK use
// its Cairo renderer for all windows that the program opens afterwards. The environment variable
// GSK_RENDERER, if it is set, chooses the renderer instead.
class ORVANE_EXPORT GTKWindow final : public NSWindow {
public:
    // Initializes GTK, without the software GL that GTK would otherwise load on a machine without a
    // GPU, and of gtkmm as much as a window needs: that saves memory and time to start. A program
    // that receives other objects from GTK through gtkmm calls Gtk::init_gtkmm_internals() too; one
    // that creates a Gtk::Application need call neither. Returns false if there is no display.
    static bool initialize();

    // `scale` is the number of pixels per point; without one it is the desktop's own, also when
    // that changes. The widget requests `size`, in points.
    explicit GTKWindow(CGSize size, std::optional<double> scale = {});
    ~GTKWindow() override;

    // The widget to put into a window. Borrowed; owned by this object.
    Gtk::Widget& widget();

    double backingScaleFactor() const override;
    CGSize contentSize() const override;

    // Sets the function that is called with the new size, in points, at the beginning of the
    // display pass that follows a resize. It should resize the views.
    void setResizeHandler(std::function<void(CGSize)> handler);

    void setAccessibility(NSAccessibility* content) override;
    void accessibilityDidChange() override;

    // Writes what the window shows to a PNG file. Call it after the frame clock has painted a
    // frame: GTK has no picture of what is still to be drawn. Returns false if there is no picture,
    // or the file cannot be written.
    bool writePNG(const std::string& path) const;

protected:
    void scheduleDisplay() override;
    void didAddView(NSView& view) override;
    void willRemoveView(NSView& view) override;
    void didReorderSubviews(NSView& superview) override;
    void didChangeView(NSView& view, unsigned changes) override;
    void didPaintView(NSView& view, std::span<const NSBackingRect> rects) override;
    void present() override;
    bool showsNatively(const NSView& view) const override;
    void didExposeNativeView(NSView& view, double distance) override;
    void didChangeFirstResponder() override;
    void didChangeCursor() override;

private:
    // Shows a frame of the frame clock. Returns whether the next frame is wanted, too.
    // Runs the display pass. `frameTime` is the time at which the frame is shown, in seconds.
    void beginFrame(double frameTime);
    void choosePresentation();
    // The focus of GTK is now in `focused`, or nowhere: makes its view the first responder.
    void focusDidMove(_GtkWidget* focused);
    GTKControl* controlOf(const NSView& view) const;
    GTKControl* realize(NSView& view);
    void release(NSView& view);
    bool tabPressed(bool isForward);
    // Gives the focus of GTK to the widget that represents the views that paint.
    void grabFocusForViews();
    void updateAccessibility();
    void updateAccessibilityLater(unsigned milliseconds);

    std::unique_ptr<GTKRoot> root_;
    std::unique_ptr<GTKScroll> scroll_;
    // Null for a control that has no widget at present.
    std::unordered_map<NSView*, std::unique_ptr<GTKControl>> controls_;
    bool isMovingFocus_ = false;                     // this object moves the focus of GTK
    std::unique_ptr<GTKPresentation> presentation_;  // null until the root is realized
    GTKRendererKind kind_{};
    std::function<void(CGSize)> resizeHandler_;
    std::unique_ptr<GTKAccessibility> accessibility_;  // null without a content that tells
    unsigned int accessibilityTimer_ = 0;
    double accessibilityCost_ = 0;  // milliseconds that the last update took
    bool resized_ = false;          // since the last frame
    std::unique_ptr<GTKPointer> pointer_;
    std::unique_ptr<GTKDrop> drop_;
    std::unique_ptr<GTKDesktop> desktop_;
    std::unique_ptr<CVDisplay> display_;
};

}  // namespace orvane::platform
