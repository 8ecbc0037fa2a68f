#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>

#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGGradient.h"

namespace orvane::platform {

// The colors along an axis. Adjacent pixels are usually between the same two stops, so the computed
// interval is kept until a pixel leaves it.
class GradientRamp {
public:
    GradientRamp(std::span<const CGGradient::Stop> stops, unsigned options)
        : stops_(stops), options_(options) {}

    // The color at a position that is not NaN, and at most 1e30 in magnitude.
    std::uint32_t at(double t) {
        if (!(t >= from_ && t < to_)) {
            enter(t);
        }
        const auto along = static_cast<float>(t - origin_);
        // Loops over the four channels, which the compiler vectorizes.
        float channel[4];
        for (int i = 0; i < 4; ++i) {
            channel[i] = first_[i] + slope_[i] * along;
        }
        const float alpha[4] = {channel[3], channel[3], channel[3], 1};
        std::int32_t byte[4];
        for (int i = 0; i < 4; ++i) {
            byte[i] = static_cast<std::int32_t>(channel[i] * alpha[i] * 255 + 0.5f);
        }
        return static_cast<std::uint32_t>(byte[3] << 24 | byte[0] << 16 | byte[1] << 8 | byte[2]);
    }

private:
    // Finds the interval of stops that contains t.
    void enter(double t) {
        constexpr double kInfinity = std::numeric_limits<double>::infinity();
        const auto behind = std::ranges::upper_bound(stops_, t, {}, &CGGradient::Stop::location);
        origin_ = 0;
        if (t < 0 && (options_ & kCGGradientDrawsBeforeStartLocation) == 0) {
            hold({0, 0, 0, 0}, -kInfinity, 0);
        } else if (t > 1 && (options_ & kCGGradientDrawsAfterEndLocation) == 0) {
            hold({0, 0, 0, 0}, std::nextafter(1.0, 2.0), kInfinity);
        } else if (behind == stops_.begin()) {
            hold(behind->color, t < 0 ? -kInfinity : 0, behind->location);
        } else if (behind == stops_.end()) {
            const CGGradient::Stop& last = stops_.back();
            hold(last.color, last.location, t > 1 ? kInfinity : std::nextafter(1.0, 2.0));
        } else {
            const CGGradient::Stop& before = *(behind - 1);
            hold(before.color, before.location, behind->location);
            origin_ = before.location;
            const double length = behind->location - before.location;
            // Two stops at almost the same position are an edge: the slope would not be finite.
            constexpr double kShortest = 1e-30;
            if (length < kShortest) {
                return;
            }
            const CGColor& end = behind->color;
            const CGColor& start = before.color;
            slope_[0] = static_cast<float>((end.red - start.red) / length);
            slope_[1] = static_cast<float>((end.green - start.green) / length);
            slope_[2] = static_cast<float>((end.blue - start.blue) / length);
            slope_[3] = static_cast<float>((end.alpha - start.alpha) / length);
        }
    }

    void hold(const CGColor& color, double from, double to) {
        first_[0] = static_cast<float>(color.red);
        first_[1] = static_cast<float>(color.green);
        first_[2] = static_cast<float>(color.blue);
        first_[3] = static_cast<float>(color.alpha);
        std::fill_n(slope_, 4, 0.0f);
        from_ = from;
        to_ = to;
    }

    std::span<const CGGradient::Stop> stops_;
    unsigned options_;
    double from_ = 0;  // empty at first
    double to_ = 0;
    double origin_ = 0;
    float first_[4] = {};
    float slope_[4] = {};
};

}  // namespace orvane::platform
