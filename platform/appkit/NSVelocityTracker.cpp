#include "platform/appkit/NSVelocityTracker.h"

namespace orvane::platform {

namespace {

// In seconds.
constexpr double kWindow = 0.1;
constexpr double kLongestRest = 0.06;
constexpr double kSampleLength = 0.007;

}  // namespace

void NSVelocityTracker::add(CGPoint delta, double time) {
    if (count_ > 1 && time - samples_[(count_ - 2) % kSamples].time < kSampleLength) {
        Sample& last = samples_[(count_ - 1) % kSamples];
        last = {time, {last.delta.x + delta.x, last.delta.y + delta.y}};
        return;
    }
    samples_[count_ % kSamples] = {time, delta};
    ++count_;
}

CGPoint NSVelocityTracker::velocity(double time) const {
    if (count_ < 2 || time - samples_[(count_ - 1) % kSamples].time > kLongestRest) {
        return {};
    }
    const double end = samples_[(count_ - 1) % kSamples].time;
    CGPoint way;
    double start = end;
    // The way of a sample was covered since the sample before it.
    for (std::size_t i = count_ - 1; i > 0 && i + kSamples > count_; --i) {
        const Sample& before = samples_[(i - 1) % kSamples];
        if (end - before.time > kWindow && start < end) {
            break;
        }
        way.x += samples_[i % kSamples].delta.x;
        way.y += samples_[i % kSamples].delta.y;
        start = before.time;
    }
    const double seconds = end - start;
    if (seconds < kSampleLength) {
        return {};  // the time that so short a way took is not known
    }
    return {way.x / seconds, way.y / seconds};
}

}  // namespace orvane::platform
