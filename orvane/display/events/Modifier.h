#pragma once

namespace orvane::display::events {

// The modifier keys that are held down: a set of bits.
enum Modifier : unsigned {
    kShift = 1U << 0,
    kControl = 1U << 1,
    kAlt = 1U << 2,
    kSuper = 1U << 3,
};

}  // namespace orvane::display::events
