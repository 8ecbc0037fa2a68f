#include "platform/gtk/GTKPointer.h"

#include <gtk/gtk.h>

#include <iterator>
#include <utility>

#include "platform/appkit/NSCursor.h"
#include "platform/gtk/GTKEventClock.h"
#include "platform/gtk/toModifierFlags.h"

namespace orvane::platform {

namespace {

// The desktop's numbers of buttons, and those of NSEvent.
constexpr std::pair<guint, int> kButtons[] = {{1, 0}, {3, 1}, {2, 2}, {8, 3}, {9, 4}};

// The names of the shapes in CSS, in the order of NSCursor.
constexpr const char* kCursors[] = {"default", "pointer",   "text",      "crosshair",
                                    "move",    "grab",      "grabbing",  "not-allowed",
                                    "wait",    "ew-resize", "ns-resize", "none"};
static_assert(std::size(kCursors) == static_cast<std::size_t>(NSCursor::None) + 1);

}  // namespace

GTKPointer::GTKPointer(Gtk::Widget& widget, std::function<void(const NSEvent&)> send)
    : widget_(widget),
      send_(std::move(send)),
      motion_(Gtk::EventControllerMotion::create()),
      clicks_(Gtk::GestureClick::create()) {
    motion_->signal_enter().connect([this](double x, double y) { move(x, y); });
    motion_->signal_motion().connect([this](double x, double y) { move(x, y); });
    motion_->signal_leave().connect([this] {
        this->send(NSEventType::MouseExited, 0, 0, GTK_EVENT_CONTROLLER(motion_->gobj()), 0);
    });
    widget_.add_controller(motion_);
    clicks_->set_button(0);  // any
    clicks_->signal_pressed().connect([this](int, double x, double y) {
        click(NSEventType::OtherMouseDown, x, y, clicks_->get_current_button());
    });
    clicks_->signal_released().connect([this](int, double x, double y) {
        click(NSEventType::OtherMouseUp, x, y, clicks_->get_current_button());
    });
    // The gesture gives up when the pointer moves far; the release comes all the same.
    clicks_->signal_unpaired_release().connect(
        [this](double x, double y, guint button, Gdk::EventSequence*) {
            click(NSEventType::OtherMouseUp, x, y, button);
        });
    widget_.add_controller(clicks_);
}

GTKPointer::~GTKPointer() {
    widget_.remove_controller(motion_);
    widget_.remove_controller(clicks_);
}

void GTKPointer::setCursor(NSCursor cursor) {
    widget_.set_cursor(kCursors[static_cast<std::size_t>(cursor)]);
}

void GTKPointer::move(double x, double y) {
    GtkEventController* const source = GTK_EVENT_CONTROLLER(motion_->gobj());
    const GdkModifierType state = gtk_event_controller_get_current_event_state(source);
    if ((state & GDK_BUTTON1_MASK) == 0) {
        send(NSEventType::MouseMoved, x, y, source, 0);
    }
}

void GTKPointer::click(NSEventType type, double x, double y, guint button) {
    for (const auto& [theirs, ours] : kButtons) {
        if (theirs == button && ours != 0) {
            send(type, x, y, GTK_EVENT_CONTROLLER(clicks_->gobj()), ours);
        }
    }
}

void GTKPointer::send(NSEventType type, double x, double y, GtkEventController* source,
                      int button) {
    NSEvent event;
    event.type = type;
    event.locationInWindow = {x, y};
    event.timestamp = GTKEventClock::mediaTime(source);
    event.modifierFlags = toModifierFlags(gtk_event_controller_get_current_event_state(source));
    event.buttonNumber = button;
    send_(event);
}

}  // namespace orvane::platform
