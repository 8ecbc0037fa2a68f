#include "orvane/display/animation/Easing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace orvane::display::animation {
namespace {

using Curve = Easing::Curve;
using Direction = Easing::Direction;

// The expected numbers are those of the published definitions of the curves.
TEST(Easing, FollowsTheNamedCurves) {
    const struct {
        std::string what;
        Easing easing;
        double at, expected;
    } cases[] = {
        {"linear", {}, 0.3, 0.3},
        {"ease", Easing::ease(), 0.5, 0.8024034},
        {"ease-in", Easing::easeIn(), 0.5, 0.3153568},
        {"ease-out", Easing::easeOut(), 0.5, 0.6846432},
        {"ease-in-out", Easing::easeInOut(), 0.25, 0.1291620},
        {"a curve that overshoots", Easing::cubicBezier(0.5, -1, 0.5, 2), 0.75, 1.1823224},
        {"a curve with a vertical part", Easing::cubicBezier(1, 0, 0, 1), 0.5, 0.5},
        {"x beyond its range", Easing::cubicBezier(-3, 0.5, 7, 0.5), 0.5, 0.5},
        {"sine", Easing::make(Curve::Sine, Direction::Out), 0.5, std::sqrt(0.5)},
        {"quad", Easing::make(Curve::Quad, Direction::InOut), 0.25, 0.125},
        {"cubic", Easing::make(Curve::Cubic, Direction::In), 0.5, 0.125},
        {"quart", Easing::make(Curve::Quart, Direction::Out), 0.5, 0.9375},
        {"quint", Easing::make(Curve::Quint, Direction::InOut), 0.75, 1 - 0.015625},
        {"expo", Easing::make(Curve::Expo, Direction::In), 0.5, 0.03125},
        {"circ", Easing::make(Curve::Circ, Direction::Out), 0.2, 0.6},
        {"back", Easing::make(Curve::Back, Direction::In), 0.5, -0.0876975},
        {"elastic", Easing::make(Curve::Elastic, Direction::Out), 0.3, 0.875},
        {"bounce", Easing::make(Curve::Bounce, Direction::Out), 0.3, 0.680625},
        {"second bounce", Easing::make(Curve::Bounce, Direction::Out), 0.6, 0.7725},
        {"third bounce", Easing::make(Curve::Bounce, Direction::Out), 9 / 11.0, 0.9375},
        {"last bounce", Easing::make(Curve::Bounce, Direction::In), 0.5 / 11, 0.015625},
        {"steps", Easing::steps(4), 0.74, 0.5},
        {"at least one step", Easing::steps(0), 0.99, 0},
        {"own", Easing([](double x) { return 7 * x; }), 0.5, 3.5},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(c.easing(c.at), c.expected, 1e-6) << c.what;
        EXPECT_EQ(c.easing(std::nan("")), 0) << c.what;
        EXPECT_EQ(c.easing(-1), 0) << c.what;
        EXPECT_EQ(c.easing(1), 1) << c.what;
        EXPECT_LT(std::abs(c.easing(1e-7)), 0.02) << c.what << " begins with a jump";
    }
}

// Below, at and above critical damping, the closed solution agrees with small steps of the equation
// of motion.
TEST(Spring, FollowsItsEquationOfMotion) {
    EXPECT_EQ(Spring::withBounce(0, 0).stiffness, Spring::withBounce(0.5, 0).stiffness);
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        Spring spring;
        double settlingTime;  // at most
    } cases[] = {{{1, 100, 10, 0}, 1.5},
                 {{2, 50, 20, 3}, 3},
                 {{1, 100, 60, -2}, 8},
                 {Spring::withBounce(0.5, 0), 1},
                 {Spring::withBounce(0.5, 0.6), 2},
                 {{1, 100, -5, 0}, 60},
                 {{-1, 0, 2, 0}, 10},
                 {{1, 1, infinity, 0}, 60}};
    for (const auto& [spring, settlingTime] : cases) {
        SCOPED_TRACE(spring.stiffness);
        const double settled = spring.getSettlingTime();
        EXPECT_GT(settled, 0);
        EXPECT_LE(settled, settlingTime);
        if (!(spring.damping > 0 && spring.damping < infinity && spring.mass > 0)) {
            continue;
        }
        double place = 0;
        double speed = spring.initialVelocity;
        constexpr double kStep = 1e-5;
        for (int i = 0; i < 30000; ++i) {
            speed +=
                kStep / spring.mass * (spring.stiffness * (1 - place) - spring.damping * speed);
            place += kStep * speed;
        }
        EXPECT_NEAR(spring.positionAt(0.3), place, 1e-3);
        for (int i = 0; i < 100; ++i) {
            EXPECT_NEAR(spring.positionAt(settled + 0.01 * i), 1, 0.001);
        }
        EXPECT_NEAR(Easing::spring(spring)(0.3 / settled), place, 1e-3);
    }
}

}  // namespace
}  // namespace orvane::display::animation
