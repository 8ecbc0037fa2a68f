#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Cards.h"

namespace gallery {

// The buttons and switches of a page. The pointer, Return, space and assistive technology press
// them, and Tab goes from one to the next while the page is on the display.
class Controls {
public:
    using Rect = orvane::display::geometry::Rect<float>;
    using Action = std::function<void()>;

    explicit Controls(Container page);

    // Adds a button. One of several is the main one, which has the accent color.
    void addButton(ContainerObject& inside, const Rect& bounds, const std::string& label,
                   const Action& pressed, bool isMain = false);
    // Adds a switch with a label at its right, which is off. A press calls `changed` with the state
    // that the user wants. Returns a function that shows a state.
    std::function<void(bool)> addSwitch(ContainerObject& inside, float x, float y,
                                        const std::string& label,
                                        const std::function<void(bool)>& changed);
    // Makes what a container shows a stop of Tab, with a ring of this size while it has the focus.
    void addStop(const Container& object, const Rect& bounds, float radius);
    // For other listeners of the page.
    orvane::notification::Listeners& listeners() { return listeners_; }

private:
    void makePressable(const Container& object, const Action& pressed);
    bool focusNext(const orvane::display::events::KeyEvent& event);

    Container page_;
    std::vector<Container> stops_;
    orvane::notification::Listeners listeners_;
};

}  // namespace gallery
