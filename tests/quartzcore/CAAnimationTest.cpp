#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "platform/quartzcore/CAKeyframeAnimation.h"
#include "platform/quartzcore/CALayer.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "platform/quartzcore/CATransition.h"

using namespace orvane::platform;

namespace {

CAKeyframeAnimation animation(const std::string& keyPath, std::vector<double> values,
                              double begin = 10, double duration = 4, float repeatCount = 1) {
    CAKeyframeAnimation animation(keyPath);
    animation.setValues(std::move(values));
    animation.setBeginTime(begin);
    animation.setDuration(duration);
    animation.setRepeatCount(repeatCount);
    return animation;
}

class CAAnimationTest : public testing::Test {
protected:
    double opacity(double time) const { return layer->presentation(time).opacity; }

    CAVirtualClock clock{1};
    std::shared_ptr<CALayer> layer = std::make_shared<CALayer>();
};

// An animation of three key frames, 0, 1 and 0.5, with some more properties.
CAKeyframeAnimation paced(std::vector<double> times, CAMediaTimingFunction timing = {},
                          std::vector<CAMediaTimingFunction> segments = {}) {
    CAKeyframeAnimation paced = animation("opacity", {0, 1, 0.5});
    paced.setKeyTimes(std::move(times));
    paced.setTimingFunction(std::move(timing));
    paced.setTimingFunctions(std::move(segments));
    return paced;
}

constexpr float kForever = std::numeric_limits<float>::infinity();

}  // namespace

TEST_F(CAAnimationTest, InterpolatesEvenlySpacedKeyFrames) {
    const struct {
        std::string what;
        CAKeyframeAnimation animation;
        std::vector<std::pair<double, double>> shown;  // time, opacity; 0.5 is the model's
    } cases[] = {
        {"one pass",
         animation("opacity", {0, 1, 0}),
         {{9.99, 0.5}, {10, 0}, {11, 0.5}, {12, 1}, {13.5, 0.25}, {14, 0.5}}},
        {"two and a half passes",
         animation("opacity", {0, 1}, 10, 4, 2.5F),
         {{13, 0.75}, {14, 0}, {19, 0.25}, {19.5, 0.375}, {20, 0.5}}},
        {"forever", animation("opacity", {0, 1}, 10, 4, kForever), {{4000000011, 0.25}}},
        {"one key frame", animation("opacity", {0.2}), {{10, 0.2}, {13.9, 0.2}, {14, 0.5}}},
        {"no duration", animation("opacity", {0, 1}, 10, 0), {{10, 0.5}}},
        {"opacities out of range", animation("opacity", {-1, 3}), {{10, 0}, {13, 1}}},
        {"key times",
         paced({0.25, 0.5, 1}),
         {{10.5, 0}, {11.5, 0.5}, {12, 1}, {13, 0.75}, {14, 0.5}}},
        {"equal key times", paced({0, 0.5, 0.5}), {{11, 0.5}, {12, 0.5}, {13, 0.5}}},
        {"a timing function of the pass",
         paced({}, [](double x) { return x * x; }),
         {{12, 0.5}, {10 + 4 * std::sqrt(0.75), 0.75}}},
        {"timing functions between key frames",
         paced({}, {}, {[](double x) { return x * x; }, nullptr}),
         {{11, 0.25}, {13, 0.75}}},
        {"beyond the last key frame", paced({}, [](double) { return 1.5; }), {{11, 0}}},
        {"beyond the last key time", paced({0, 0.2, 0.6}, [](double) { return 0.8; }), {{11, 0.5}}},
        {"before the first key frame",
         paced({0.25, 0.5, 1}, [](double x) { return x < 0.5 ? -1 : 0.5; }),
         {{11, 0}, {13, 1}}},
        {"a timing that is not a number",
         paced({0, 0.5, 1}, [](double) { return std::nan(""); }),
         {{11, 0.5}}},
        {"not a number", animation("opacity", {std::nan("")}), {{12, 0}}},
        {"an unknown key path", animation("", {0, 1}), {{12, 0.5}}},
    };
    for (const auto& c : cases) {
        layer = std::make_shared<CALayer>();
        layer->setOpacity(0.5);
        layer->addAnimation(c.animation, "key");
        for (const auto& [time, expected] : c.shown) {
            EXPECT_NEAR(opacity(time), expected, 1e-9) << c.what << " at " << time;
        }
    }
}

TEST_F(CAAnimationTest, TransformPathsReplaceComponentsOfTheModelTransform) {
    layer->setTransform(CATransform3D::makeAffineTransform({2, 0, 0, 3, 100, 50}));
    layer->addAnimation(animation("transform.translation.x", {0, 40}), "x");
    layer->addAnimation(animation("transform.translation.y", {10, 20}), "y");
    layer->addAnimation(animation("transform.rotation", {0, 2}), "turn");
    const CGAffineTransform expected = CGAffineTransform{1, 0, 0, 1, 20, 15}.rotate(1).scale(2, 3);
    const CGAffineTransform shown = layer->presentation(12).transform.affineTransform();
    EXPECT_NEAR(shown.a, expected.a, 1e-12);
    EXPECT_NEAR(shown.c, expected.c, 1e-12);
    EXPECT_EQ(shown.tx, 20);
    EXPECT_EQ(shown.ty, 15);
}

TEST_F(CAAnimationTest, EndedAnimationsAreDroppedIfRemovedOnCompletion) {
    CAKeyframeAnimation staying = animation("opacity", {0, 1});
    staying.setRemovedOnCompletion(false);
    layer->addAnimation(staying, "staying");
    layer->addAnimation(animation("opacity", {0, 1}), "going");
    clock.advanceTo(14);
    EXPECT_TRUE(layer->hasAnimations());
    EXPECT_FALSE(layer->isAnimating(14));
    layer->removeAnimationForKey("staying");
    EXPECT_FALSE(layer->hasAnimations());

    layer->addAnimation(animation("opacity", {0, 1}, 0), "key");
    EXPECT_NEAR(opacity(16), 0.5, 1e-12) << "a begin time of zero is now";
}

// Every fade runs from 10 to 14 unless stated. What begins in the middle of another fade, the
// shares add up to 1 and do not jump at the beginning.
TEST_F(CAAnimationTest, AFadeDuringAFadeReplacesTheMixture) {
    const auto fade = [](CALayer& outgoing, CALayer& incoming, double begin) {
        CATransition transition;
        transition.setBeginTime(begin);
        transition.setDuration(4);
        transition.setOutgoingLayer(&outgoing);
        incoming.addAnimation(transition, "transition");
    };
    const auto old = std::make_shared<CALayer>();
    const auto middle = std::make_shared<CALayer>();
    const auto fresh = std::make_shared<CALayer>();
    const auto expectShares = [&](double time, double first, double second, double third) {
        SCOPED_TRACE(time);
        EXPECT_NEAR(old->presentation(time).opacity, first, 1e-12);
        EXPECT_NEAR(middle->presentation(time).opacity, second, 1e-12);
        EXPECT_NEAR(fresh->presentation(time).opacity, third, 1e-12);
    };
    fade(*old, *middle, 10);
    fade(*middle, *fresh, 12);
    expectShares(12, 0.5, 0.5, 0);
    expectShares(13, 0.25 * 0.75, 0.75 * 0.75, 0.25);
    EXPECT_EQ(middle->presentation(13).fadesFrom, old.get());
    EXPECT_EQ(middle->presentation(13).fadesInto, fresh.get());
    clock.advanceTo(15);
    expectShares(15, 1, 0.25, 0.75);

    // A page that fades back in before it has faded out.
    fresh->removeAllAnimations();
    fade(*old, *middle, 20);
    fade(*middle, *old, 22);
    expectShares(23, 0.25 + 0.25 * 0.75, 0.75 * 0.75, 1);
    EXPECT_EQ(old->presentation(23).fadesFrom, middle.get());
    EXPECT_EQ(middle->presentation(23).fadesFrom, nullptr);
}

TEST_F(CAAnimationTest, APushTravelsByTheWidthOfWhatFramesBothPages) {
    const auto screen = std::make_shared<CALayer>();
    const auto old = std::make_shared<CALayer>();
    old->setSize({100, 50});
    old->setPosition({50, 0});
    layer->setSize({200, 50});
    CATransition push;
    push.setType(CATransitionType::Push);
    push.setSubtype(CATransitionSubtype::FromRight);
    push.setBeginTime(10);
    push.setDuration(4);
    push.setOutgoingLayer(old.get());
    layer->addAnimation(push, "transition");
    EXPECT_EQ(layer->presentation(13).position.x, 50);
    EXPECT_EQ(old->presentation(13).position.x, 50 - 150);
    old->setPosition({150, 0});
    EXPECT_EQ(layer->presentation(10).position.x, 250) << "the width of both together";
    screen->setSize({1000, 50});
    layer->setSuperlayer(screen.get());
    EXPECT_EQ(layer->presentation(10).position.x, 1000);
    EXPECT_EQ(old->presentation(13).position.x, 150 - 750);
}

TEST_F(CAAnimationTest, EitherLayerOfATransitionMayBeDestroyedFirst) {
    auto old = std::make_shared<CALayer>();
    CATransition transition;
    transition.setDuration(4);
    transition.setOutgoingLayer(old.get());
    layer->addAnimation(transition, "transition");
    old.reset();
    EXPECT_EQ(layer->presentation(3).fadesFrom, nullptr);
    layer->removeAnimationForKey("transition");

    old = std::make_shared<CALayer>();
    transition.setOutgoingLayer(old.get());
    layer->addAnimation(transition, "transition");
    layer.reset();
    EXPECT_FALSE(old->hasAnimations());
    EXPECT_EQ(old->presentation(3).opacity, 1);
}
