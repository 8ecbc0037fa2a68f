#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CAKeyframeAnimation.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "platform/quartzcore/CATransaction.h"
#include "platform/quartzcore/CATransition.h"
#include "tests/appkit/PaintedView.h"

using namespace orvane::platform;

namespace {

class AnimatedWindowTest : public testing::Test {
protected:
    AnimatedWindowTest() {
        root->setFrame({{0, 0}, {200, 100}});
        root->layer()->setBackgroundColor({0, 0, 0, 1});
        window.setContentView(root);
        window.display();
    }

    std::uint32_t pixel(int x, int y) const {
        return window.pixels()[static_cast<std::size_t>(y) * 200 + static_cast<std::size_t>(x)];
    }
    std::size_t displayAt(double time) {
        clock.advanceTo(time);
        return window.display().size();
    }
    std::shared_ptr<NSView> block(const CGRect& frame, const CGColor& color) {
        auto view = std::make_shared<NSView>();
        view->setFrame(frame);
        view->layer()->setBackgroundColor(color);
        root->addSubview(view);
        return view;
    }
    static CAKeyframeAnimation slide(double to) {
        CAKeyframeAnimation animation("transform.translation.x");
        animation.setValues(std::vector<double>{0, to});
        animation.setBeginTime(10);
        animation.setDuration(4);
        return animation;
    }

    CAVirtualClock clock{1};
    OffscreenWindow window{{200, 100}};
    std::shared_ptr<NSView> root = std::make_shared<NSView>();
};

constexpr CGColor red{1, 0, 0, 1};
constexpr CGColor blue{0, 0, 1, 1};

}  // namespace

TEST_F(AnimatedWindowTest, WhatIsShownFollowsTheTimeAndNothingIsRepainted) {
    const auto view = std::make_shared<PaintedView>(CGRect{{0, 0}, {20, 20}});
    root->addSubview(view);
    window.display();
    view->drawn.clear();
    view->layer()->addAnimation(slide(100), "slide");
    for (const auto& [time, x] : {std::pair{10.0, 0}, {11.0, 25}, {13.0, 75}, {14.0, 0}}) {
        displayAt(time);
        EXPECT_EQ(pixel(x + 10, 10), 0xFFFF0000U) << time;
        EXPECT_EQ(pixel((x + 60) % 100, 10), 0xFF000000U) << time;
    }
    EXPECT_TRUE(view->drawn.empty());
}

TEST_F(AnimatedWindowTest, AnIdleWindowAsksForNothing) {
    const auto view = block({{0, 0}, {20, 20}}, red);
    displayAt(1);
    view->layer()->addAnimation(slide(100), "slide");
    displayAt(2);
    EXPECT_FALSE(window.needsDisplay()) << "it has not begun";
    EXPECT_EQ(displayAt(9), 0U);
    clock.advanceTo(10);
    EXPECT_TRUE(window.needsDisplay());
    displayAt(11);
    EXPECT_TRUE(window.isAnimating());
    EXPECT_EQ(displayAt(14), 1U) << "back to where it was";
    EXPECT_FALSE(window.needsDisplay());
    EXPECT_EQ(displayAt(15), 0U);
}

TEST_F(AnimatedWindowTest, AViewThatLeavesItsWindowIsDoneWithItsAnimations) {
    const auto view = block({{0, 0}, {20, 20}}, red);
    const auto inner = std::make_shared<NSView>();
    view->addSubview(inner);
    int completed = 0;
    CATransaction::begin();
    CATransaction::setCompletionBlock([&completed] { ++completed; });
    CAKeyframeAnimation endless = slide(100);
    endless.setRepeatCount(HUGE_VALF);
    inner->layer()->addAnimation(endless, "slide");
    CATransaction::commit();
    displayAt(11);
    root->addSubview(inner);
    displayAt(12);
    EXPECT_TRUE(inner->layer()->hasAnimations()) << "elsewhere in the same window it goes on";
    EXPECT_EQ(completed, 0);
    inner->removeFromSuperviewWithoutNeedingDisplay();
    displayAt(13);
    EXPECT_EQ(completed, 1);
    EXPECT_FALSE(inner->layer()->hasAnimations());
}

TEST_F(AnimatedWindowTest, APushMovesBothSides) {
    const auto old = block({{0, 0}, {200, 100}}, red);
    const auto fresh = block({{0, 0}, {200, 100}}, blue);
    CATransition push;
    push.setType(CATransitionType::Push);
    push.setSubtype(CATransitionSubtype::FromRight);
    push.setBeginTime(10);
    push.setDuration(4);
    push.setOutgoingLayer(old->layer());
    fresh->layer()->addAnimation(push, "transition");
    displayAt(11);
    EXPECT_EQ(pixel(149, 50), 0xFFFF0000U);
    EXPECT_EQ(pixel(150, 50), 0xFF0000FFU);
    displayAt(14);
    EXPECT_EQ(pixel(0, 50), 0xFF0000FFU);
}

TEST_F(AnimatedWindowTest, ACrossFadeAddsUpToTheWhole) {
    // Half of the screen is covered by both, the other half by one of them each.
    const auto old = block({{0, 0}, {120, 100}}, red);
    const auto between = block({{0, 0}, {40, 10}}, {0, 1, 0, 1});
    const auto fresh = block({{80, 0}, {120, 100}}, blue);
    CATransition fade;
    fade.setBeginTime(10);
    fade.setDuration(4);
    fade.setOutgoingLayer(old->layer());
    fresh->layer()->addAnimation(fade, "transition");
    displayAt(11);
    EXPECT_EQ(pixel(40, 50), 0xFFBF0000U);
    EXPECT_EQ(pixel(100, 50), 0xFFBF0040U) << "nothing black shines through";
    EXPECT_EQ(pixel(160, 50), 0xFF000040U);
    EXPECT_EQ(pixel(20, 5), 0xFFBF4000U) << "both stand where the new one does";
    between->layer()->setBackgroundColor(blue);
    EXPECT_EQ(displayAt(11), 1U);
    EXPECT_EQ(pixel(20, 5), 0xFFBF0040U) << "composed away from the new one, too";
    displayAt(14);
    EXPECT_EQ(pixel(100, 50), 0xFF0000FFU);
    EXPECT_EQ(pixel(40, 50), 0xFFFF0000U);
    EXPECT_EQ(pixel(20, 5), 0xFF0000FFU);
}

TEST_F(AnimatedWindowTest, TheSameTimesGiveTheSameBytes) {
    const auto frames = [this](double start) {
        const auto view = std::make_shared<PaintedView>(CGRect{{50, 30}, {40, 20}});
        root->addSubview(view);
        view->layer()->setAnchorPoint({0.5, 0.5});
        CAKeyframeAnimation turn("transform.rotation");
        turn.setValues(std::vector<double>{0, 6});
        turn.setBeginTime(start);
        turn.setDuration(2);
        view->layer()->addAnimation(turn, "turn");
        std::vector<std::uint32_t> all;
        for (int frame = 0; frame < 16; ++frame) {
            displayAt(start + frame / 8.0);
            all.insert(all.end(), window.pixels(), window.pixels() + 200 * 100);
        }
        view->removeFromSuperviewWithoutNeedingDisplay();
        return all;
    };
    const std::vector<std::uint32_t> first = frames(16);
    EXPECT_TRUE(first == frames(32));
}
