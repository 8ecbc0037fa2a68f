#include "orvane/embedding/Accessibility.h"

#include <algorithm>
#include <string>
#include <utility>

#include "orvane/commons/guardedCall.h"
#include "orvane/display/Display.h"
#include "orvane/display/events/KeyEvent.h"
#include "orvane/display/native/DisplayView.h"
#include "orvane/display/native/NativeObject.h"
#include "orvane/embedding/childrenOf.h"
#include "orvane/embedding/labelOf.h"
#include "orvane/embedding/preOrder.h"
#include "orvane/embedding/textOf.h"
#include "platform/appkit/NSControl.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSWindow.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::embedding {

using display::AccessibilityAction;
using display::AccessibilityElement;
using display::AccessibilityRole;
using display::DisplayObject;
using platform::NSAccessibilityElement;
using platform::NSAccessibilityRole;

namespace {

// The most elements that a window shows; a screen reader could not use more of them.
constexpr std::size_t kMostElements = 4000;

constexpr std::pair<AccessibilityAction, unsigned> kActions[] = {
    {AccessibilityAction::Press, platform::kNSAccessibilityPress},
    {AccessibilityAction::Increment, platform::kNSAccessibilityIncrement},
    {AccessibilityAction::Decrement, platform::kNSAccessibilityDecrement}};

// 0 is no element.
std::uint64_t identifierOf(const DisplayObject& object) {
    return object.getId() + 1;
}

NSAccessibilityRole toRole(AccessibilityRole role) {
    // Both lists have the same roles in the same order, but for Automatic, which comes first.
    static_assert(static_cast<int>(AccessibilityRole::Dialog) ==
                  static_cast<int>(NSAccessibilityRole::Dialog) + 1);
    return static_cast<NSAccessibilityRole>(static_cast<int>(role) - 1);
}

bool canBePressed(NSAccessibilityRole role) {
    return role <= NSAccessibilityRole::Tab;
}

// Whether the element represents everything in it.
bool containsAll(NSAccessibilityRole role) {
    return canBePressed(role) ||
           (role >= NSAccessibilityRole::Slider && role <= NSAccessibilityRole::Text);
}

// What an object is; none for one that is not exposed.
std::optional<NSAccessibilityRole> roleOf(const DisplayObject& object,
                                          const AccessibilityElement* element) {
    if (element != nullptr && element->getRole() != AccessibilityRole::Automatic) {
        return toRole(element->getRole());
    }
    if (dynamic_cast<const display::graphics::Text*>(&object) != nullptr) {
        return NSAccessibilityRole::Text;
    }
    if (element == nullptr || element->getLabel().empty()) {
        return std::nullopt;
    }
    return object.asContainer() != nullptr ? NSAccessibilityRole::Group
                                           : NSAccessibilityRole::Image;
}

// The texts in an object, one after another.
std::string textsIn(DisplayObject& object) {
    std::string texts = textOf(object);
    preOrder(childrenOf(object), childrenOf, [&texts](DisplayObject& inner, int) {
        if (const std::string text = textOf(inner); !text.empty() && inner.isVisible()) {
            texts += (texts.empty() ? "" : " ") + text;
        }
    });
    return texts;
}

NSAccessibilityElement describe(DisplayObject& object, const AccessibilityElement* element,
                                NSAccessibilityRole role) {
    NSAccessibilityElement result;
    result.identifier = identifierOf(object);
    result.role = role;
    // What is scrolled out of sight has a place without an extent, and can still be read.
    result.frame = platform::CGRect(object.getFrameOnScreen());
    result.isFocusable = object.hasListeners<display::events::KeyEvent>() ||
                         object.hasListeners<display::events::FocusEvent>();
    if (element != nullptr) {
        result.label = element->getLabel();
        result.description = element->getDescription();
        result.value = element->getValue();
        if (const auto& range = element->getRange()) {
            result.minimum = range->minimum;
            result.maximum = range->maximum;
            result.number = range->value;
        }
        result.isChecked = element->isChecked();
        result.isSelected = element->isSelected();
        result.isExpanded = element->isExpanded();
        result.isEnabled = element->isEnabled();
        for (const auto& [action, bit] : kActions) {
            result.actions |= element->getAction(action) ? bit : 0;
        }
    }
    if (canBePressed(role)) {
        result.actions |= platform::kNSAccessibilityPress;
    }
    if (result.label.empty() && containsAll(role)) {
        result.label = textsIn(object);
    }
    return result;
}

platform::NSControl* controlOf(const DisplayObject& object) {
    const auto* const native = dynamic_cast<const display::native::NativeObject*>(&object);
    return native != nullptr ? dynamic_cast<platform::NSControl*>(native->getObjectHandler().get())
                             : nullptr;
}

// Returns the children, without those of objects in which there is nothing to find: of 100,000
// shapes, for example.
const display::ContainerObject::Children& childrenToSearch(const DisplayObject& object) {
    static const display::ContainerObject::Children none;
    return object.leadsToAccessible() ? childrenOf(object) : none;
}

}  // namespace

std::vector<NSAccessibilityElement> Accessibility::elements() {
    std::vector<NSAccessibilityElement> elements;
    const std::shared_ptr<DisplayObject> focus = display_.getFocus();
    // For each depth, the element that contains the objects there; none if they are not exposed.
    std::vector<std::optional<std::uint64_t>> containers{0};
    preOrder(display_.getObjects(), childrenToSearch, [&](DisplayObject& object, int depth) {
        const auto level = static_cast<std::size_t>(depth);
        containers.resize(level);
        const std::optional<std::uint64_t> container = containers.back();
        containers.push_back(container);
        if (!object.mayBeAccessible()) {
            if (container && object.asContainer() != nullptr && !object.isVisible()) {
                containers.back().reset();
            }
            return;
        }
        if (platform::NSControl* const control = controlOf(object)) {
            control->setAccessibilityLabel(labelOf(object));
            return;
        }
        const std::shared_ptr<AccessibilityElement> element = object.getAccessibilityElement();
        if (!container || !object.isVisible() || (element && element->isHidden())) {
            containers.back().reset();
            return;
        }
        const auto role = roleOf(object, element.get());
        if (!role || elements.size() >= kMostElements) {
            return;
        }
        NSAccessibilityElement described = describe(object, element.get(), *role);
        if (*role == NSAccessibilityRole::Text && described.label.empty()) {
            return;
        }
        described.parent = *container;
        described.isFocused = focus.get() == &object;
        described.isFocusable = described.isFocusable || described.isFocused;
        containers.back() = containsAll(*role) ? std::nullopt : std::optional(described.identifier);
        elements.push_back(std::move(described));
    });
    return elements;
}

std::shared_ptr<DisplayObject> Accessibility::find(std::uint64_t identifier) const {
    std::shared_ptr<DisplayObject> found;
    preOrder(display_.getObjects(), childrenOf, [&](DisplayObject& object, int) {
        if (identifierOf(object) == identifier) {
            found = std::static_pointer_cast<DisplayObject>(object.shared_from_this());
        }
    });
    return found;
}

void Accessibility::perform(std::uint64_t identifier, unsigned action) {
    const std::shared_ptr<DisplayObject> object = find(identifier);
    if (!object) {
        return;
    }
    const auto* const known =
        std::ranges::find(kActions, action, &std::pair<AccessibilityAction, unsigned>::second);
    const auto element = object->getAccessibilityElement();
    if (known == std::end(kActions) || !element || !element->isEnabled()) {
        return;
    }
    if (const std::function<void()> function = element->getAction(known->first)) {
        commons::guardedCall("exception of an accessibility action", function);
    } else if (known->first == AccessibilityAction::Press) {
        press(*object);
    }
}

void Accessibility::press(DisplayObject& object) {
    platform::NSWindow* const window = display_.getView()->window();
    const display::DisplayObject::Rect place = object.getFrameOnScreen();
    if (window == nullptr || place.isEmpty()) {
        return;
    }
    // The display's view has the coordinates of the screen.
    const platform::CGPoint middle =
        platform::CGPoint{place.x + place.width / 2, place.y + place.height / 2};
    const platform::CGPoint location = display_.getView()->transformToWindow().apply(middle);
    const double now = platform::CACurrentMediaTime();
    window->sendEvent({platform::NSEventType::LeftMouseDown, location, now});
    window->sendEvent({platform::NSEventType::LeftMouseUp, location, now});
}

void Accessibility::focus(std::uint64_t identifier) {
    if (const std::shared_ptr<DisplayObject> object = find(identifier)) {
        display_.setFocus(object);
    }
}

}  // namespace orvane::embedding
