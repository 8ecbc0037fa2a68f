#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace orvane::display {

// What an object is to the user of assistive technology. What is in a Button, CheckBox, Switch,
// RadioButton, Link, Tab, Slider, ProgressBar, Image or Heading is not exposed on its own; its
// texts are the name if there is no label.
enum class AccessibilityRole {
    // A text is a Text, a container with a label a Group, anything else with a label an Image.
    Automatic,
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

// What a user can do with an object by other means than the pointer and the keys.
enum class AccessibilityAction { Press, Increment, Decrement };

// What assistive technology, such as a screen reader, learns about a display object and what it can
// do with it. DisplayObject creates and owns it; see
// DisplayObject::getOrCreateAccessibilityElement. Changes are read a fraction of a second after the
// window has shown something new. Application's thread.
class AccessibilityElement {
public:
    // A value between two limits, such as that of a slider.
    struct Range {
        double minimum = 0;
        double maximum = 1;
        double value = 0;

        friend bool operator==(const Range&, const Range&) = default;
    };

    // The name that a screen reader speaks; empty for none.
    void setLabel(std::string label) { label_ = std::move(label); }
    const std::string& getLabel() const { return label_; }

    // What the object is. Automatic at first.
    void setRole(AccessibilityRole role) { role_ = role; }
    AccessibilityRole getRole() const { return role_; }

    // A sentence for what the label does not say; empty for none.
    void setDescription(std::string description) { description_ = std::move(description); }
    const std::string& getDescription() const { return description_; }

    // The value as the user should hear it, such as "20 percent"; empty for none.
    void setValue(std::string value) { value_ = std::move(value); }
    const std::string& getValue() const { return value_; }

    // The value as a number; none at first.
    void setRange(const std::optional<Range>& range) { range_ = range; }
    const std::optional<Range>& getRange() const { return range_; }

    // Whether it is switched on; none for what cannot be switched.
    void setChecked(std::optional<bool> isChecked) { checked_ = isChecked; }
    std::optional<bool> isChecked() const { return checked_; }

    // Whether it is the selected one among several; none for what cannot be selected.
    void setSelected(std::optional<bool> isSelected) { selected_ = isSelected; }
    std::optional<bool> isSelected() const { return selected_; }

    // Whether what it opens is open; none for what opens nothing.
    void setExpanded(std::optional<bool> isExpanded) { expanded_ = isExpanded; }
    std::optional<bool> isExpanded() const { return expanded_; }

    // Whether it can be used. True at first.
    void setEnabled(bool isEnabled) { enabled_ = isEnabled; }
    bool isEnabled() const { return enabled_; }

    // Hides the object, and what is in it, from assistive technology. False at first.
    void setHidden(bool isHidden) { hidden_ = isHidden; }
    bool isHidden() const { return hidden_; }

    // Sets what happens when the user asks for an action, on the main thread; an empty function
    // withdraws the action. What can be pressed by its role, and has no function for Press, is
    // pressed with the pointer, in its middle.
    void setAction(AccessibilityAction action, std::function<void()> function) {
        actions_[action] = std::move(function);
    }
    // Empty for none.
    std::function<void()> getAction(AccessibilityAction action) const {
        const auto found = actions_.find(action);
        return found != actions_.end() ? found->second : nullptr;
    }

private:
    std::string label_;
    AccessibilityRole role_ = AccessibilityRole::Automatic;
    std::string description_;
    std::string value_;
    std::optional<Range> range_;
    std::optional<bool> checked_;
    std::optional<bool> selected_;
    std::optional<bool> expanded_;
    bool enabled_ = true;
    bool hidden_ = false;
    std::map<AccessibilityAction, std::function<void()>> actions_;
};

}  // namespace orvane::display
