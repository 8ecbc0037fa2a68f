#pragma once

#include <gtkmm/widget.h>

#include <string>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// A widget for assistive technology alone: a label at a place. It draws nothing, and the pointer
// passes through it. Main thread only.
class GTKAccessibleElement final : public Gtk::Widget {
public:
    explicit GTKAccessibleElement(Gtk::Widget& parent);
    ~GTKAccessibleElement() override;

    // The place is in the parent's coordinates.
    void update(const std::string& label, const CGRect& frame);

    // For the parent's layout.
    void allocate();

protected:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;

private:
    std::string label_;
    CGRect frame_;
};

}  // namespace orvane::platform
