#pragma once

#include <gtkmm/widget.h>

#include <functional>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// An invisible widget in front of all controls. It takes the pointer where a painted view covers
// the control below, so that GTK gives the press to the window and not to the control.
class GTKShield final : public Gtk::Widget {
public:
    // `isCovered` tells whether a painted view is in front at a point, in the shield's coordinates.
    GTKShield(Gtk::Widget& parent, std::function<bool(CGPoint)> isCovered);
    ~GTKShield() override;

protected:
    bool contains_vfunc(double x, double y) const override;

private:
    std::function<bool(CGPoint)> isCovered_;
};

}  // namespace orvane::platform
