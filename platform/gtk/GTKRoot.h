#pragma once

#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/gesturedrag.h>
#include <gtkmm/widget.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/appkit/NSEvent.h"
#include "platform/gtk/GTKWindow.h"

namespace orvane::platform {

class GTKAccessibility;
class GTKPresentation;

// The widget that a GTKWindow gives to the program. It contains what the window's presentation
// shows, clips it, and turns input into events. A press or a key that a control takes is not an
// event of the window.
//
// The root has the keyboard focus while a view that paints is the first responder. It decides where
// Tab goes among the views. Main thread only.
class GTKRoot final : public Gtk::Widget {
public:
    // What the window does about it.
    struct Delegate {
        std::function<void()> realized;  // the renderer is known
        std::function<void()> resized;   // or the number of pixels per point changed
        // A frame that was requested begins; `time` is that of CACurrentMediaTime.
        std::function<void(double time)> frameBegan;
        std::function<void(const NSEvent&)> pointerMoved;
        // No control has handled the key. Returns whether a view has.
        std::function<bool(const NSEvent&)> keyPressed;
        // A widget of the toplevel window got the keyboard focus, in this widget or elsewhere; null
        // for none.
        std::function<void(GtkWidget*)> focusMoved;
        // Gives the keyboard to the view before or after the one that has it. Returns false at the
        // end.
        std::function<bool(bool isForward)> tabPressed;
    };

    // `size` in points is what the widget asks for. `scale` is the number of pixels per point;
    // without one, the desktop's.
    GTKRoot(CGSize size, std::optional<double> scale, Delegate delegate);
    ~GTKRoot() override;

    // Borrowed; null for none.
    void setPresentation(GTKPresentation* presentation);
    // Borrowed; null for none.
    void setAccessibility(GTKAccessibility* accessibility) { accessibility_ = accessibility; }

    // Asks for one call of `frameBegan`, with the next frame of the toplevel window, or with the
    // first one if it is not realized yet. Unlike a tick callback of GTK, a request costs no
    // allocation and no signal connection.
    void requestFrame();

    // In points: the allocated size, or the requested one before the first allocation.
    CGSize size() const { return size_; }
    double pixelsPerPoint() const;

protected:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    void on_realize() override;
    void on_unrealize() override;

private:
    void send(NSEventType type, double x, double y);
    void connectKeys();
    void beginFrame();
    void endFrame();
    bool hasFocusInside();
    // GTK looks for the next widget that can have the focus.
    bool focus(GtkDirectionType direction);
    bool sendKey(NSEventType type, guint keycode, Gdk::ModifierType state);

    CGSize wanted_;
    CGSize size_;
    std::optional<double> scale_;
    int desktopScale_ = 1;  // GTK's own answer climbs to the toplevel window
    Delegate delegate_;
    GTKPresentation* presentation_ = nullptr;
    Glib::RefPtr<Gtk::GestureDrag> drag_;
    Glib::RefPtr<Gtk::EventControllerKey> keys_;
    guint heldKey_ = 0;  // the hardware code of the last key that was pressed; 0 for none
    sigc::connection focusMoved_;
    Glib::RefPtr<Gdk::FrameClock> clock_;  // null until the root is realized
    gulong frameBegan_ = 0;                // the handlers of the clock's signals
    gulong frameEnded_ = 0;
    bool isFrameRequested_ = false;
    bool isCancelled_ = false;  // the drag that is about to end
    GTKAccessibility* accessibility_ = nullptr;
};

}  // namespace orvane::platform
