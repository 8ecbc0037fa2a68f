#pragma once

#include <memory>

#include "orvane/commons/Export.h"
#include "platform/appkit/NSAccessibility.h"

namespace orvane::display {
class Display;
class DisplayObject;
}  // namespace orvane::display

namespace orvane::embedding {

// What assistive technology finds on a display: the objects that have an accessibility element with
// a label or a role, and all texts, as far as they are visible. A window exposes them
// (GTKWindow::setAccessibility). Text fields are found as the controls that they are, and get their
// labels here (NSControl::setAccessibilityLabel). Each call visits all objects. Main thread only.
class ORVANE_EXPORT Accessibility final : public platform::NSAccessibility {
public:
    // The display is borrowed.
    explicit Accessibility(display::Display& display) : display_(display) {}

    std::vector<platform::NSAccessibilityElement> elements() override;
    void perform(std::uint64_t identifier, unsigned action) override;
    void focus(std::uint64_t identifier) override;

private:
    std::shared_ptr<display::DisplayObject> find(std::uint64_t identifier) const;
    void press(display::DisplayObject& object);

    display::Display& display_;
};

}  // namespace orvane::embedding
