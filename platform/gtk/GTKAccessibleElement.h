#pragma once

#include <gtkmm/widget.h>

#include <string>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// A widget that only assistive technology sees: a label with a frame. It draws nothing and takes no
// pointer input. Main thread only.
class GTKAccessibleElement final : public Gtk::Widget {
public:
    // The parent is borrowed and must outlive the element.
    explicit GTKAccessibleElement(Gtk::Widget& parent);
    ~GTKAccessibleElement() override;

    // Sets the text and the frame, which is in the parent's coordinates.
    void update(const std::string& label, const CGRect& frame);

    // Called by the parent's layout.
    void allocate();

protected:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;

private:
    std::string label_;
    CGRect frame_;
};

}  // namespace orvane::platform
