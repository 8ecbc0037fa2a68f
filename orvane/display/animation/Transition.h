#pragma once

namespace orvane::display::animation {

// How Display::replace changes one object for another.
struct Transition {
    enum Type : int {
        PushFromRight = 0,
        PushFromLeft = 1,
        // Any other value takes the platform's default, a cross-fade.
        Fade = 2,
    };

    int type = Fade;
    double duration = 0;  // seconds
};

}  // namespace orvane::display::animation
