#pragma once

#include <functional>
#include <utility>

#include "orvane/commons/Export.h"

namespace orvane::display::animation {

// A damped spring that pulls something from 0 to 1. Seconds are its unit of time. A mass or
// stiffness that is not above 0 counts as 1; the damping is at least a hundredth, and at most a
// hundred times, the critical one, at which a spring just does not overshoot.
struct ORVANE_EXPORT Spring {
    // In units of mass.
    double mass = 1;
    // The force per unit of distance.
    double stiffness = 100;
    // The force per unit of speed that slows it down.
    double damping = 10;
    // In ways per second: 1 would reach the end in a second.
    double initialVelocity = 0;

    // Returns a spring by how it looks: the time of one swing, in seconds, and how much it swings,
    // from 0 (it does not overshoot) to almost 1.
    static Spring withBounce(double duration, double bounce);

    // The place after a time in seconds; 0 at the beginning.
    double positionAt(double seconds) const;
    // The time after which it stays within a thousandth of the end, in seconds; at most 60.
    double getSettlingTime() const;

private:
    // The natural frequency, in radians per second, and the damping in relation to the critical
    // one.
    double frequency() const;
    double dampingRatio() const;
};

// The pace of an animation: maps the elapsed fraction of a time to the fraction of the way. Every
// easing begins at exactly 0 and ends at exactly 1; between, some leave this range for a while. It
// is a value, cheap to copy, and can be used on its own, for example in a FrameAnimation:
//
//     static const Easing easing = Easing::make(Easing::Curve::Back, Easing::Direction::Out);
//     bar->setHeight(50 * static_cast<float>(easing(phase)));
class ORVANE_EXPORT Easing {
public:
    // The named curves, which begin slowly in the direction In: a sine, powers (Quad to Quint),
    // 2^10x, a quarter circle, one that moves back first, one that swings like a rubber band, and
    // one that bounces like a ball.
    enum class Curve { Sine, Quad, Cubic, Quart, Quint, Expo, Circ, Back, Elastic, Bounce };
    // Where the curve is slow: at the beginning, at the end, or at both.
    enum class Direction { In, Out, InOut };

    // The same pace throughout.
    Easing() = default;
    // A function of the application's own. It is called with values between 0 and 1, on the main
    // thread, often several times in a frame; it must not throw.
    explicit Easing(std::function<double(double)> function) : function_(std::move(function)) {}

    // The curves of style sheets:
    static Easing ease() { return cubicBezier(0.25, 0.1, 0.25, 1); }
    static Easing easeIn() { return cubicBezier(0.42, 0, 1, 1); }
    static Easing easeOut() { return cubicBezier(0, 0, 0.58, 1); }
    static Easing easeInOut() { return cubicBezier(0.42, 0, 0.58, 1); }
    // A curve from 0, 0 to 1, 1 with two control points. Each x is limited to 0 to 1.
    static Easing cubicBezier(double x1, double y1, double x2, double y2);
    // One of the named curves.
    static Easing make(Curve curve, Direction direction);
    // Jumps at the end of each of `count` equal parts of the time; at least 1.
    static Easing steps(unsigned count);
    // A spring, from its beginning until it has settled. Give the animation the duration
    // spring.getSettlingTime(); ValueAnimation::setSpring does so.
    static Easing spring(const Spring& spring);

    // The fraction of the way at an elapsed fraction of the time. Fractions below 0 count as 0 and
    // those above 1 as 1.
    double operator()(double elapsed) const;

private:
    std::function<double(double)> function_;  // empty for linear
};

}  // namespace orvane::display::animation
