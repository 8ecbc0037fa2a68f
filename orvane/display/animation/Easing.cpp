#include "orvane/display/animation/Easing.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane::display::animation {

namespace {

constexpr double kPi = std::numbers::pi;

// ---- springs ----

constexpr double kSettled = 0.001;
constexpr double kLongestSettlingTime = 60;
constexpr double kHighestFrequency = 1e4;
constexpr double kLeastDampingRatio = 0.01;
constexpr double kMostDampingRatio = 100;

// ---- curves ----

// One coordinate of a cubic curve from 0 to 1 with two control values, and its derivative.
struct Cubic {
    double first, second;

    double at(double t) const {
        const double u = 1 - t;
        return 3 * u * u * t * first + 3 * u * t * t * second + t * t * t;
    }
    double slopeAt(double t) const {
        const double u = 1 - t;
        return 3 * u * u * first + 6 * u * t * (second - first) + 3 * t * t * (1 - second);
    }
    // The parameter at which a rising curve has a value: Newton's method, which ends in bisection
    // where the curve is too flat for it.
    double parameterOf(double value) const {
        double t = value;
        for (int i = 0; i < 8; ++i) {
            const double slope = slopeAt(t);
            const double difference = at(t) - value;
            if (std::abs(difference) < 1e-9) {
                return t;
            }
            if (slope < 1e-6) {
                break;
            }
            t = std::clamp(t - difference / slope, 0.0, 1.0);
        }
        double low = 0;
        double high = 1;
        while (high - low > 1e-9) {
            t = (low + high) / 2;
            (at(t) < value ? low : high) = t;
        }
        return t;
    }
};

// A ball that falls from a height of 1, in four parabolas. The constants are those of the widely
// used easing equations, in which each bounce lasts half as long as the one before.
double bounceOut(double x) {
    constexpr double kSteepness = 7.5625;
    constexpr struct {
        double end, middle, height;
    } parts[] = {{1 / 2.75, 0, 0},
                 {2 / 2.75, 1.5 / 2.75, 0.75},
                 {2.5 / 2.75, 2.25 / 2.75, 0.9375},
                 {1, 2.625 / 2.75, 0.984375}};
    const auto* part = std::find_if(std::begin(parts), std::end(parts) - 1,
                                    [x](const auto& candidate) { return x < candidate.end; });
    return kSteepness * (x - part->middle) * (x - part->middle) + part->height;
}

// The direction In of each curve. The other directions mirror it.
double easedIn(Easing::Curve curve, double x) {
    using Curve = Easing::Curve;
    switch (curve) {
        case Curve::Sine:
            return 1 - std::cos(x * kPi / 2);
        case Curve::Quad:
            return x * x;
        case Curve::Cubic:
            return x * x * x;
        case Curve::Quart:
            return x * x * x * x;
        case Curve::Quint:
            return x * x * x * x * x;
        case Curve::Expo:
            return std::exp2(10 * x - 10);
        case Curve::Circ:
            return 1 - std::sqrt(1 - x * x);
        case Curve::Back: {
            constexpr double kOvershoot = 1.70158;  // moves back by a tenth of the way
            return x * x * ((kOvershoot + 1) * x - kOvershoot);
        }
        case Curve::Elastic:
            return -std::exp2(10 * x - 10) * std::sin((x * 10 - 10.75) * 2 * kPi / 3);
        case Curve::Bounce:
            return 1 - bounceOut(1 - x);
    }
    return x;
}

}  // namespace

Spring Spring::withBounce(double duration, double bounce) {
    // A spring of mass 1 whose undamped swing takes `duration`; a damping ratio of 1 is critical.
    const double time = duration > 0 ? duration : 0.5;
    const double frequency = 2 * kPi / time;
    return {1, frequency * frequency, 2 * frequency * (1 - std::clamp(bounce, 0.0, 0.99)), 0};
}

double Spring::frequency() const {
    return std::min(std::sqrt((stiffness > 0 ? stiffness : 1) / (mass > 0 ? mass : 1)),
                    kHighestFrequency);
}

double Spring::dampingRatio() const {
    const double ratio = damping / (2 * (mass > 0 ? mass : 1) * frequency());
    return ratio > kLeastDampingRatio ? std::min(ratio, kMostDampingRatio) : kLeastDampingRatio;
}

// The solutions of the damped oscillator's equation for the deviation from the end, which is -1 at
// the beginning: below, at and above critical damping.
double Spring::positionAt(double seconds) const {
    const double t = seconds > 0 ? seconds : 0;
    const double omega = frequency();
    const double ratio = dampingRatio();
    const double decay = ratio * omega;
    const double slope = decay - initialVelocity;
    if (std::abs(ratio - 1) < 1e-6) {
        return 1 - std::exp(-decay * t) * (1 + slope * t);
    }
    const double swing = omega * std::sqrt(std::abs(1 - ratio * ratio));
    if (ratio < 1) {
        return 1 -
               std::exp(-decay * t) * (std::cos(swing * t) + slope / swing * std::sin(swing * t));
    }
    const double fast = (1 + slope / swing) / 2;
    const double slow = (1 - slope / swing) / 2;
    return 1 - fast * std::exp((swing - decay) * t) - slow * std::exp(-(swing + decay) * t);
}

double Spring::getSettlingTime() const {
    // The deviation is sampled backward in steps of a millisecond: it has settled after the last
    // sample that is too far away.
    constexpr int kStepsPerSecond = 1000;
    const double decay = dampingRatio() * frequency();
    const double rate =
        dampingRatio() > 1 ? decay - std::sqrt(decay * decay - frequency() * frequency()) : decay;
    // An upper bound of the envelope: it has decayed by far more than is needed.
    const double bound =
        std::min((20 + std::log1p(std::abs(initialVelocity))) / rate, kLongestSettlingTime);
    int step = static_cast<int>(bound * kStepsPerSecond) - 1;
    while (step > 0 &&
           std::abs(1 - positionAt(static_cast<double>(step) / kStepsPerSecond)) < kSettled) {
        --step;
    }
    return static_cast<double>(step + 1) / kStepsPerSecond;
}

Easing Easing::cubicBezier(double x1, double y1, double x2, double y2) {
    const Cubic x{std::clamp(x1, 0.0, 1.0), std::clamp(x2, 0.0, 1.0)};
    const Cubic y{y1, y2};
    return Easing([x, y](double elapsed) { return y.at(x.parameterOf(elapsed)); });
}

Easing Easing::make(Curve curve, Direction direction) {
    switch (direction) {
        case Direction::In:
            return Easing([curve](double x) { return easedIn(curve, x); });
        case Direction::Out:
            return Easing([curve](double x) { return 1 - easedIn(curve, 1 - x); });
        case Direction::InOut:
            return Easing([curve](double x) {
                return x < 0.5 ? easedIn(curve, 2 * x) / 2 : 1 - easedIn(curve, 2 - 2 * x) / 2;
            });
    }
    return {};
}

Easing Easing::steps(unsigned count) {
    return Easing([steps = static_cast<double>(std::max(count, 1U))](double x) {
        return std::floor(x * steps) / steps;
    });
}

Easing Easing::spring(const Spring& spring) {
    return Easing([spring, time = spring.getSettlingTime()](double x) {
        return spring.positionAt(x * time);
    });
}

double Easing::operator()(double elapsed) const {
    // The ends are exact: the function is not called there. Not a number counts as 0.
    if (!(elapsed > 0)) {
        return 0;
    }
    if (elapsed >= 1) {
        return 1;
    }
    return function_ ? function_(elapsed) : elapsed;
}

}  // namespace orvane::display::animation
