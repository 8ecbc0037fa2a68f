#pragma once

#include <gtkmm/widget.h>

#include <functional>

#include "platform/appkit/NSAccessibility.h"

namespace orvane::platform {

// A widget that only assistive technology sees: an element with a place, which may contain others.
// It draws nothing and takes no pointer input. It can have the keyboard focus, so that a screen
// reader follows the keyboard among the objects that a window paints. Main thread only.
class GTKAccessibleElement final : public Gtk::Widget {
public:
    // Called with one of NSAccessibilityActions.
    using Perform = std::function<void(unsigned action)>;

    // The role of an element does not change. It has no parent at first.
    GTKAccessibleElement(NSAccessibilityRole role, Perform perform);
    ~GTKAccessibleElement() override;

    // Shows an element. `origin` is the place of the parent in the window.
    void update(const NSAccessibilityElement& element, CGPoint origin);
    const NSAccessibilityElement& element() const { return element_; }

    // Called by the parent's layout.
    void allocate();

protected:
    void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                       int& minimumBaseline, int& naturalBaseline) const override;
    void size_allocate_vfunc(int width, int height, int baseline) override;

private:
    void updateStates();
    void updateActions();

    Perform perform_;
    NSAccessibilityElement element_;
    CGPoint origin_;
};

}  // namespace orvane::platform
