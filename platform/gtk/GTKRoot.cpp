#include "platform/gtk/GTKRoot.h"

#include <gdkmm/display.h>
#include <gdkmm/frameclock.h>
#include <gdkmm/monitor.h>
#include <gtk/gtk.h>
#include <gtkmm/native.h>
#include <gtkmm/window.h>

#include <algorithm>
#include <utility>

#include "platform/gtk/GTKAccessibility.h"
#include "platform/gtk/GTKEventClock.h"
#include "platform/gtk/GTKPresentation.h"
#include "platform/gtk/GTKView.h"
#include "platform/gtk/toExtent.h"
#include "platform/gtk/toModifierFlags.h"

namespace orvane::platform {

namespace {

// The key under which a widget holds the GTKRoot that it belongs to.
GQuark rootKey() {
    static const GQuark key = g_quark_from_static_string("orvane-root");
    return key;
}

}  // namespace

GTKRoot::GTKRoot(CGSize size, std::optional<double> scale, Delegate delegate)
    : Glib::ObjectBase("OrvaneRoot"),
      wanted_(size),
      size_(size),
      scale_(scale),
      delegate_(std::move(delegate)),
      drag_(Gtk::GestureDrag::create()),
      keys_(Gtk::EventControllerKey::create()) {
    GTKView::makePlainGroup(*this);
    set_overflow(Gtk::Overflow::HIDDEN);
    set_focusable(true);
    set_hexpand(true);
    set_vexpand(true);
    drag_->signal_drag_begin().connect([this](double x, double y) {
        // The keys that follow are for what was pressed.
        if (!hasFocusInside()) {
            grab_focus();
        }
        send(NSEventType::LeftMouseDown, x, y);
    });
    drag_->signal_drag_update().connect([this](double dx, double dy) {
        double x = 0;
        double y = 0;
        drag_->get_start_point(x, y);
        send(NSEventType::LeftMouseDragged, x + dx, y + dy);
    });
    // GTK cancels the gesture when another button is pressed or another program takes the pointer.
    // The end follows.
    drag_->signal_cancel().connect([this](Gdk::EventSequence*) { isCancelled_ = true; });
    drag_->signal_drag_end().connect([this](double dx, double dy) {
        double x = 0;
        double y = 0;
        drag_->get_start_point(x, y);
        const bool isCancelled = std::exchange(isCancelled_, false);
        send(isCancelled ? NSEventType::MouseCancelled : NSEventType::LeftMouseUp, x + dx, y + dy);
    });
    add_controller(drag_);
    connectKeys();
    // The class is this one's own. gtkmm has no virtual function for the focus, and one for the
    // snapshot that creates a wrapper for every frame.
    GtkWidgetClass* const type = GTK_WIDGET_GET_CLASS(Gtk::Widget::gobj());
    g_object_set_qdata(Glib::ObjectBase::gobj(), rootKey(), this);
    type->snapshot = [](GtkWidget* widget, GtkSnapshot* snapshot) {
        const auto* const root =
            static_cast<GTKRoot*>(g_object_get_qdata(G_OBJECT(widget), rootKey()));
        if (root != nullptr && root->presentation_ != nullptr) {
            root->presentation_->snapshot(snapshot);
        }
    };
    type->focus = [](GtkWidget* widget, GtkDirectionType direction) -> gboolean {
        auto* const root = static_cast<GTKRoot*>(g_object_get_qdata(G_OBJECT(widget), rootKey()));
        return root != nullptr && root->focus(direction) ? TRUE : FALSE;
    };
    desktopScale_ = get_scale_factor();
    property_scale_factor().signal_changed().connect([this] {
        desktopScale_ = get_scale_factor();
        delegate_.resized();
    });
}

GTKRoot::~GTKRoot() {
    focusMoved_.disconnect();
    g_object_set_qdata(Glib::ObjectBase::gobj(), rootKey(), nullptr);
}

// The controller sees the keys that the focused control has not handled.
void GTKRoot::connectKeys() {
    keys_->signal_key_pressed().connect(
        [this](guint, guint keycode, Gdk::ModifierType state) {
            return sendKey(NSEventType::KeyDown, keycode, state);
        },
        false);
    keys_->signal_key_released().connect([this](guint, guint keycode, Gdk::ModifierType state) {
        sendKey(NSEventType::KeyUp, keycode, state);
    });
    add_controller(keys_);
}

bool GTKRoot::sendKey(NSEventType type, guint keycode, Gdk::ModifierType state) {
    NSEvent event;
    event.type = type;
    event.timestamp = GTKEventClock::mediaTime(GTK_EVENT_CONTROLLER(keys_->gobj()));
    event.modifierFlags = toModifierFlags(static_cast<GdkModifierType>(state));
    // The symbol with Shift is in the text, the symbol without Shift is the key's name.
    const auto symbol = [&](Gdk::ModifierType with) {
        guint found = 0;
        gdk_display_translate_key(
            get_display()->gobj(), keycode, static_cast<GdkModifierType>(with),
            static_cast<int>(keys_->get_group()), &found, nullptr, nullptr, nullptr);
        return found;
    };
    if (const char* const name =
            gdk_keyval_name(gdk_keyval_to_lower(symbol(state & ~Gdk::ModifierType::SHIFT_MASK)))) {
        event.key = name;
    }
    const gunichar character = gdk_keyval_to_unicode(symbol(state));
    if (g_unichar_isprint(character) != FALSE &&
        (event.modifierFlags & ~unsigned{kNSEventModifierShift}) == 0) {
        char utf8[6];
        event.characters.assign(utf8, g_unichar_to_utf8(character, utf8));
    }
    event.isARepeat = type == NSEventType::KeyDown && heldKey_ == keycode;
    heldKey_ = type == NSEventType::KeyDown ? keycode : 0;
    return delegate_.keyPressed(event);
}

bool GTKRoot::focus(GtkDirectionType direction) {
    if (direction != GTK_DIR_TAB_FORWARD && direction != GTK_DIR_TAB_BACKWARD) {
        return false;  // arrow keys are the views' own
    }
    if (delegate_.tabPressed(direction == GTK_DIR_TAB_FORWARD)) {
        return true;
    }
    return !hasFocusInside() && grab_focus();
}

bool GTKRoot::hasFocusInside() {
    GtkRoot* const toplevel = gtk_widget_get_root(Gtk::Widget::gobj());
    GtkWidget* const focused = toplevel != nullptr ? gtk_root_get_focus(toplevel) : nullptr;
    return focused != nullptr && (focused == Gtk::Widget::gobj() ||
                                  gtk_widget_is_ancestor(focused, Gtk::Widget::gobj()) != FALSE);
}

void GTKRoot::setPresentation(GTKPresentation* presentation) {
    presentation_ = presentation;
}

double GTKRoot::pixelsPerPoint() const {
    return scale_.value_or(desktopScale_);
}

void GTKRoot::send(NSEventType type, double x, double y) {
    GtkEventController* const controller = GTK_EVENT_CONTROLLER(drag_->gobj());
    const GdkModifierType state = gtk_event_controller_get_current_event_state(controller);
    delegate_.pointerMoved(
        {type, {x, y}, GTKEventClock::mediaTime(controller), toModifierFlags(state)});
}

void GTKRoot::measure_vfunc(Gtk::Orientation orientation, int, int& minimum, int& natural,
                            int& minimumBaseline, int& naturalBaseline) const {
    minimum = 0;
    const double points =
        orientation == Gtk::Orientation::HORIZONTAL ? wanted_.width : wanted_.height;
    natural = toExtent(points);
    minimumBaseline = naturalBaseline = -1;
}

void GTKRoot::size_allocate_vfunc(int width, int height, int) {
    const CGSize size{static_cast<double>(width), static_cast<double>(height)};
    if (size != size_) {
        size_ = size;
        delegate_.resized();
    }
    if (presentation_ != nullptr) {
        presentation_->allocate();
    }
    if (accessibility_ != nullptr) {
        accessibility_->allocate();
    }
}

void GTKRoot::on_realize() {
    Gtk::Widget::on_realize();
    if (auto* const toplevel = dynamic_cast<Gtk::Window*>(get_root())) {
        focusMoved_ = toplevel->property_focus_widget().signal_changed().connect(
            [this, toplevel] { delegate_.focusMoved(gtk_window_get_focus(toplevel->gobj())); });
    }
    clock_ = get_frame_clock();
    // gtkmm has no signals for the beginning and the end of a frame.
    frameBegan_ =
        g_signal_connect_swapped(clock_->gobj(), "before-paint",
                                 G_CALLBACK(+[](GTKRoot* self) { self->beginFrame(); }), this);
    frameEnded_ = g_signal_connect_swapped(
        clock_->gobj(), "after-paint", G_CALLBACK(+[](GTKRoot* self) { self->endFrame(); }), this);
    desktopScale_ = get_scale_factor();
    if (isFrameRequested_) {
        clock_->request_phase(Gdk::FrameClock::Phase::PAINT);
    }
    delegate_.realized();
}

// The paint phase and not the update phase, which makes GTK check the style of its widgets.
void GTKRoot::requestFrame() {
    if (!std::exchange(isFrameRequested_, true) && clock_) {
        clock_->request_phase(Gdk::FrameClock::Phase::PAINT);
    }
}

void GTKRoot::beginFrame() {
    if (std::exchange(isFrameRequested_, false)) {
        delegate_.frameBegan(static_cast<double>(clock_->get_frame_time()) * 1e-6);
    }
}

// GTK has taken a request that was made during the frame as one for this frame.
void GTKRoot::endFrame() {
    if (isFrameRequested_) {
        clock_->request_phase(Gdk::FrameClock::Phase::PAINT);
    }
}

void GTKRoot::on_unrealize() {
    g_clear_signal_handler(&frameBegan_, clock_->gobj());
    g_clear_signal_handler(&frameEnded_, clock_->gobj());
    clock_.reset();
    focusMoved_.disconnect();
    Gtk::Widget::on_unrealize();
}

}  // namespace orvane::platform
