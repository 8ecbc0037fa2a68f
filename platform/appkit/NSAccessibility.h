#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// What an element is.
enum class NSAccessibilityRole {
    Button,
    CheckBox,
    Switch,
    RadioButton,
    Link,
    Tab,
    TabList,
    Slider,
    ProgressBar,
    Image,
    Heading,
    Text,
    List,
    ListItem,
    Group,
    Dialog,
};

// What can be done with an element: a set of bits.
enum NSAccessibilityActions : unsigned {
    kNSAccessibilityPress = 1U << 0,
    kNSAccessibilityIncrement = 1U << 1,
    kNSAccessibilityDecrement = 1U << 2,
};

// Something in a window that assistive technology finds, other than a control with a widget.
struct NSAccessibilityElement {
    std::uint64_t identifier = 0;  // not 0, and unique in the window
    std::uint64_t parent = 0;      // the element that contains it, which comes before it; 0: none
    NSAccessibilityRole role = NSAccessibilityRole::Text;
    CGRect frame;  // in points of the window's content
    std::string label;
    std::string description;
    std::string value;
    std::optional<double> minimum;  // with the next two, or none of them
    std::optional<double> maximum;
    std::optional<double> number;
    std::optional<bool> isChecked;
    std::optional<bool> isSelected;
    std::optional<bool> isExpanded;
    bool isEnabled = true;
    bool isFocusable = false;
    bool isFocused = false;
    unsigned actions = 0;  // a set of NSAccessibilityActions

    friend bool operator==(const NSAccessibilityElement&, const NSAccessibilityElement&) = default;
};

// What a window asks for its elements. Implemented by the content of the window. Main thread only.
class NSAccessibility {
public:
    virtual ~NSAccessibility() = default;

    // In drawing order, each element after the one that contains it.
    virtual std::vector<NSAccessibilityElement> elements() = 0;
    // The user asks for an action, one of NSAccessibilityActions. The element may be gone.
    virtual void perform(std::uint64_t identifier, unsigned action) = 0;
    // The user gives an element the keyboard. The element may be gone.
    virtual void focus(std::uint64_t identifier) = 0;
};

}  // namespace orvane::platform
