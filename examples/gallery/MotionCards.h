#pragma once

#include <memory>

#include "Cards.h"
#include "Drag.h"

namespace gallery {

// A ring of dots of which every other is hidden; a touch on the card changes them over. The card
// holds the listener that comes back weakly: keep it.
[[nodiscard]] std::shared_ptr<orvane::display::events::TouchEventListener> drawHiddenAndShown(
    ContainerObject& inside);

// A control of the desktop with painted objects behind it and in front.
void drawNative(ContainerObject& inside, const std::shared_ptr<Drag>& drag);

// Chips that can be dragged about, on the page and beyond the card.
void drawDraggables(ContainerObject& inside, const std::shared_ptr<Drag>& drag);

}  // namespace gallery
