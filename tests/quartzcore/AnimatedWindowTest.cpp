#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "platform/appkit/NSView.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CAKeyframeAnimation.h"
#include "platform/quartzcore/CAMediaTime.h"

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
    // From 10 s to 14 s.
    static CAKeyframeAnimation slide() {
        CAKeyframeAnimation animation("transform.translation.x");
        animation.setValues(std::vector<double>{0, 100});
        animation.setBeginTime(10);
        animation.setDuration(4);
        return animation;
    }

    CAVirtualClock clock{1};
    OffscreenWindow window{{200, 100}};
    std::shared_ptr<NSView> root = std::make_shared<NSView>();
};

constexpr CGColor kRed{1, 0, 0, 1};

}  // namespace

TEST_F(AnimatedWindowTest, AnIdleWindowNeedsNoDisplay) {
    const auto view = block({{0, 0}, {20, 20}}, kRed);
    displayAt(1);
    view->layer()->addAnimation(slide(), "slide");
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

TEST_F(AnimatedWindowTest, AViewThatLeavesItsWindowLosesItsAnimations) {
    const auto view = block({{0, 0}, {20, 20}}, kRed);
    const auto inner = std::make_shared<NSView>();
    view->addSubview(inner);
    inner->layer()->addAnimation(slide(), "slide");
    root->addSubview(inner);
    EXPECT_TRUE(inner->layer()->hasAnimations()) << "moved within the same window";
    inner->removeFromSuperviewWithoutNeedingDisplay();
    root->addSubview(inner);
    window.display();
    EXPECT_TRUE(inner->layer()->hasAnimations()) << "back before the next pass";
    inner->removeFromSuperviewWithoutNeedingDisplay();
    window.display();
    EXPECT_FALSE(inner->layer()->hasAnimations());
    {
        OffscreenWindow other{{200, 100}};
        other.setContentView(inner);
        inner->layer()->addAnimation(slide(), "slide");
        EXPECT_TRUE(inner->layer()->hasAnimations());
    }
    EXPECT_FALSE(inner->layer()->hasAnimations()) << "the window is destroyed";
}
