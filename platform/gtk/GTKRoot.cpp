#include "platform/gtk/GTKRoot.h"

#include <gdkmm/display.h>
#include <gdkmm/monitor.h>
#include <gtkmm/native.h>

#include <algorithm>
#include <utility>

#include "platform/gtk/GTKAccessibleElement.h"
#include "platform/gtk/GTKPresentation.h"
#include "platform/gtk/toExtent.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::platform {

GTKRoot::GTKRoot(CGSize size, std::optional<double> scale, Delegate delegate)
    : Glib::ObjectBase("OrvaneRoot"),
      wanted_(size),
      size_(size),
      scale_(scale),
      delegate_(std::move(delegate)),
      drag_(Gtk::GestureDrag::create()) {
    set_overflow(Gtk::Overflow::HIDDEN);
    set_hexpand(true);
    set_vexpand(true);
    drag_->signal_drag_begin().connect(
        [this](double x, double y) { send(NSEventType::LeftMouseDown, x, y); });
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
    property_scale_factor().signal_changed().connect([this] { delegate_.resized(); });
}

GTKRoot::~GTKRoot() = default;

void GTKRoot::setLabels(const std::vector<NSAccessibilityLabel>& labels) {
    labels_.resize(std::min(labels_.size(), labels.size()));
    while (labels_.size() < labels.size()) {
        labels_.push_back(std::make_unique<GTKAccessibleElement>(*this));
    }
    for (std::size_t i = 0; i < labels.size(); ++i) {
        labels_[i]->update(labels[i].text, labels[i].frame);
    }
}

void GTKRoot::setPresentation(GTKPresentation* presentation) {
    presentation_ = presentation;
}

double GTKRoot::pixelsPerPoint() const {
    return scale_.value_or(get_scale_factor());
}

void GTKRoot::send(NSEventType type, double x, double y) {
    delegate_.pointerMoved({type, {x, y}, CACurrentMediaTime()});
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
    for (const auto& label : labels_) {
        label->allocate();
    }
}

void GTKRoot::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
    if (presentation_ != nullptr) {
        presentation_->snapshot(snapshot);
    }
}

void GTKRoot::on_realize() {
    Gtk::Widget::on_realize();
    delegate_.realized();
}

}  // namespace orvane::platform
