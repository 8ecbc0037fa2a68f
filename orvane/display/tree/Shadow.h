#pragma once

namespace orvane::display {

// A blurred silhouette behind an object. Lengths are in the object's coordinates, so the shadow is
// scaled and rotated with the object.
struct Shadow {
    // How far the shadow is to the right of the object, and below it.
    float x = 0;
    float y = 0;
    // The radius of the blur: twice the standard deviation of the Gaussian curve. 0 is sharp.
    float radius = 0;
    // ARGB, alpha in bits 24 to 31. No shadow if it is transparent.
    unsigned color = 0;

    friend constexpr bool operator==(const Shadow&, const Shadow&) = default;
};

}  // namespace orvane::display
