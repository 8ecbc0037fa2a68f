#pragma once

#include <gtkmm/gesturedrag.h>
#include <gtkmm/widget.h>

#include <functional>
#include <memory>
#include <vector>

#include "platform/appkit/NSEvent.h"
#include "platform/gtk/GTKWindow.h"

namespace orvane::platform {

class GTKAccessibleElement;

// The widget that a GTKWindow gives to the program: it holds the widget of the content view, cuts
// it to the window, and turns what the pointer does into events. Controls come first: a press that
// one of them takes for itself is no event of the window's. Main thread only.
class GTKRoot final : public Gtk::Widget {
public:
    // What the window does about it.
    struct Delegate {
        std::function<void()> resized;
        std::function<void()> scaleFactorChanged;
        std::function<void(const NSEvent&)> pointerMoved;
    };

    // `size` in points is what the widget asks for.
    GTKRoot(CGSize size, Delegate delegate);
    ~GTKRoot() override;

    // What assistive technology finds here.
    void setLabels(const std::vector<NSAccessibilityLabel>& labels);

    // In points: as allocated, or as asked for before that.
    CGSize size() const { return size_; }

protected:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;
    void snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) override;
    void on_map() override;

private:
    void send(NSEventType type, double x, double y);

    CGSize wanted_;
    CGSize size_;
    Delegate delegate_;
    Glib::RefPtr<Gtk::GestureDrag> drag_;
    std::vector<std::unique_ptr<GTKAccessibleElement>> labels_;
};

}  // namespace orvane::platform
