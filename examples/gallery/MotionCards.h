#pragma once

#include <memory>

#include "Cards.h"
#include "Drag.h"

namespace gallery {

// Draws a ring of dots, every other one hidden; a touch on the card exchanges hidden and shown
// ones. The card holds the returned listener weakly: keep it.
[[nodiscard]] std::shared_ptr<orvane::display::events::TouchEventListener> drawHiddenAndShown(
    ContainerObject& inside);

// Draws a control of the desktop with painted objects behind it and in front of it.
void drawNative(ContainerObject& inside, const std::shared_ptr<Drag>& drag);

// Draws chips that can be dragged on the page, also out of the card.
void drawDraggables(ContainerObject& inside, const std::shared_ptr<Drag>& drag);

}  // namespace gallery
