#pragma once

#include <array>
#include <cstddef>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// Estimates how fast a pointer, or fingers on a touchpad, moved at the end of a gesture: the mean
// velocity of the last tenth of a second, and none after a rest.
class NSVelocityTracker {
public:
    void reset() { count_ = 0; }
    // Adds a movement by `delta`, in points, that ended at `time`, in seconds.
    void add(CGPoint delta, double time);
    // In points per second, for a gesture that ends at `time`.
    CGPoint velocity(double time) const;

private:
    struct Sample {
        double time = 0;
        CGPoint delta;
    };
    // Movements that follow one another faster than a display refreshes are one sample, so that the
    // samples cover the time of the estimate for any device.
    static constexpr std::size_t kSamples = 16;

    std::array<Sample, kSamples> samples_;  // a ring
    std::size_t count_ = 0;                 // of the samples ever added
};

}  // namespace orvane::platform
