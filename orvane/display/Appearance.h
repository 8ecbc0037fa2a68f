#pragma once

#include <cstdint>
#include <string>

#include "orvane/notification/Listener.h"

namespace orvane::display {

class Display;

// How the user wants programs to look. Where the desktop does not say something, it has the value
// that is stated here. Display::getAppearance returns it.
struct Appearance {
    bool isDark = false;
    // ARGB, opaque. For what is selected or the main action; a medium blue.
    std::uint32_t accentColor = 0xFF3584E4;
    // The family of the desktop's font, for setFont of a text.
    std::string font = "sans-serif";
    // The size of the desktop's font for setTextSize, in points of the display, without textScale.
    double textSize = 15;
    // By how much the user wants all texts to be larger or smaller.
    double textScale = 1;
    // Whether motion should be left out as far as the meaning does not depend on it.
    bool reducesMotion = false;

    friend bool operator==(const Appearance&, const Appearance&) = default;
};

// Sent by a Display when the appearance has changed; see Display::getAppearance. Main thread.
struct AppearanceChangedEvent {
    using listener_type = notification::Listener<Display, AppearanceChangedEvent, void>;

    Appearance appearance;
};

}  // namespace orvane::display
