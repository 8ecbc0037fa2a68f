#pragma once

namespace orvane::display::animation {

// Describes how Display::replace exchanges one object for another.
struct Transition {
    // The kinds of transitions.
    enum Type : int {
        PushFromRight = 0,
        PushFromLeft = 1,
        // Any other value means the platform's default, a cross-fade.
        Fade = 2,
    };

    // One of Type.
    int type = Fade;
    // In seconds.
    double duration = 0;
};

}  // namespace orvane::display::animation
