#pragma once

#include <gtkmm/gesturedrag.h>
#include <gtkmm/widget.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/appkit/NSEvent.h"
#include "platform/gtk/GTKWindow.h"

namespace orvane::platform {

class GTKAccessibleElement;
class GTKPresentation;

// The widget that a GTKWindow gives to the program. It contains what the window's presentation
// shows, clips it, and turns pointer input into events. A press that a control takes is not an
// event of the window. Main thread only.
class GTKRoot final : public Gtk::Widget {
public:
    // What the window does about it.
    struct Delegate {
        std::function<void()> realized;  // the renderer is known
        std::function<void()> resized;   // or the number of pixels per point changed
        std::function<void(const NSEvent&)> pointerMoved;
    };

    // `size` in points is what the widget asks for. `scale` is the number of pixels per point;
    // without one, the desktop's.
    GTKRoot(CGSize size, std::optional<double> scale, Delegate delegate);
    ~GTKRoot() override;

    // Borrowed; null for none.
    void setPresentation(GTKPresentation* presentation);
    // Sets what assistive technology finds here.
    void setLabels(const std::vector<NSAccessibilityLabel>& labels);

    // In points: the allocated size, or the requested one before the first allocation.
    CGSize size() const { return size_; }
    double pixelsPerPoint() const;

protected:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;
    void on_realize() override;

private:
    void send(NSEventType type, double x, double y);

    CGSize wanted_;
    CGSize size_;
    std::optional<double> scale_;
    Delegate delegate_;
    GTKPresentation* presentation_ = nullptr;
    Glib::RefPtr<Gtk::GestureDrag> drag_;
    bool isCancelled_ = false;  // the drag that is about to end
    std::vector<std::unique_ptr<GTKAccessibleElement>> labels_;
};

}  // namespace orvane::platform
