#include "platform/gtk/GTKScroll.h"

#include <gtk/gtk.h>

#include <utility>

#include "platform/gtk/GTKEventClock.h"
#include "platform/gtk/toModifierFlags.h"

namespace orvane::platform {

namespace {

// A touchpad that reports pixels moves content this much farther than the fingers: the factor of
// GTK's own scrolled windows.
constexpr double kTouchpadFactor = 2.5;

}  // namespace

GTKScroll::GTKScroll(Gtk::Widget& widget, std::function<bool(const NSEvent&)> send)
    : widget_(widget),
      send_(std::move(send)),
      controller_(Gtk::EventControllerScroll::create()),
      motion_(Gtk::EventControllerMotion::create()) {
    controller_->set_flags(Gtk::EventControllerScroll::Flags::BOTH_AXES);
    controller_->signal_scroll_begin().connect([this] { sendPhase(NSEventPhase::Began); });
    controller_->signal_scroll_end().connect([this] { sendPhase(NSEventPhase::Ended); });
    controller_->signal_scroll().connect([this](double dx, double dy) { return scroll(dx, dy); },
                                         false);
    widget_.add_controller(controller_);
    // Scroll events have no position of their own. In the capture phase, the pointer is also seen
    // over the widget's children.
    const auto moveTo = [this](double x, double y) { pointer_ = {x, y}; };
    motion_->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
    motion_->signal_enter().connect(moveTo);
    motion_->signal_motion().connect(moveTo);
    widget_.add_controller(motion_);
}

GTKScroll::~GTKScroll() {
    widget_.remove_controller(controller_);
    widget_.remove_controller(motion_);
}

NSEvent GTKScroll::makeEvent() const {
    NSEvent event;
    event.type = NSEventType::ScrollWheel;
    GtkEventController* const controller = GTK_EVENT_CONTROLLER(controller_->gobj());
    event.timestamp = GTKEventClock::mediaTime(controller);
    event.modifierFlags = toModifierFlags(gtk_event_controller_get_current_event_state(controller));
    event.locationInWindow = pointer_;
    return event;
}

// GTK also reports gestures for wheels with a high resolution. They are wheels all the same.
void GTKScroll::sendPhase(NSEventPhase phase) {
    GdkEvent* const cause =
        gtk_event_controller_get_current_event(GTK_EVENT_CONTROLLER(controller_->gobj()));
    GdkDevice* const device = cause != nullptr ? gdk_event_get_device(cause) : nullptr;
    if (phase == NSEventPhase::Began) {
        isGesture_ = device != nullptr && gdk_device_get_source(device) != GDK_SOURCE_MOUSE;
    }
    if (isGesture_) {
        NSEvent event = makeEvent();
        event.phase = phase;
        event.hasPreciseScrollingDeltas = true;
        send_(event);
    }
    isGesture_ = isGesture_ && phase == NSEventPhase::Began;
}

bool GTKScroll::scroll(double dx, double dy) {
    NSEvent event = makeEvent();
    const bool isInPixels = controller_->get_unit() == Gdk::ScrollUnit::SURFACE;
    const double factor = isInPixels ? kTouchpadFactor : kNSScrollNotch;
    event.scrollingDelta = {dx * factor, dy * factor};
    event.hasPreciseScrollingDeltas = isInPixels || isGesture_;
    event.phase = isGesture_ ? NSEventPhase::Changed : NSEventPhase::None;
    return send_(event);
}

}  // namespace orvane::platform
