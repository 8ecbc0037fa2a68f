#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "platform/appkit/NSBackingStore.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "tests/appkit/PaintedView.h"

using namespace orvane::platform;

namespace {

class NSWindowDisplayTest : public testing::Test {
protected:
    NSWindowDisplayTest() {
        root->setFrame({{0, 0}, {1000, 500}});
        root->addSubview(view);
        window.setContentView(root);
        window.displayIfNeeded();
    }

    // Runs a display pass and returns the rectangles that the view painted in it.
    std::vector<CGRect> drawnBy(PaintedView& painted) {
        painted.drawn.clear();
        window.displayIfNeeded();
        return painted.drawn;
    }

    using Rects = std::vector<CGRect>;
    static constexpr CGRect frame{{100, 100}, {200, 100}};
    std::shared_ptr<NSView> root = std::make_shared<NSView>();
    std::shared_ptr<PaintedView> view = std::make_shared<PaintedView>(frame);
    OffscreenWindow window{{1000, 500}};
};

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

}  // namespace

TEST_F(NSWindowDisplayTest, DamageIsRoundedOutwardAndExpandedByOnePixel) {
    const struct {
        std::string what;
        double scale;
        CGRect damage;
        CGRect drawn;
    } cases[] = {
        {"fractions", 1, {{10.2, 10.8}, {5.1, 5.4}}, {{9, 9}, {8, 9}}},
        {"two pixels per point", 2, {{10.25, 10}, {5, 5}}, {{9.5, 9.5}, {6.5, 6}}},
        {"a negative extent", 1, {{15, 15}, {-5, -5}}, {{9, 9}, {7, 7}}},
        {"over the edge", 1, {{-10, -10}, {20, 20}}, {{0, 0}, {11, 11}}},
        {"not a number", 1, {{kNotANumber, 10}, {5, 5}}, {{0, 0}, {200, 100}}},
        {"infinite", 1, {{10, 10}, {kInfinity, 5}}, {{0, 0}, {200, 100}}},
        {"twice infinite", 1, {{-kInfinity, 10}, {kInfinity, 5}}, {{0, 0}, {200, 100}}},
        {"huge", 1, {{-1e300, 10}, {2e300, 1}}, {{0, 9}, {200, 3}}},
    };
    for (const auto& c : cases) {
        window.setBackingScaleFactor(c.scale);
        window.displayIfNeeded();
        view->setNeedsDisplayInRect(c.damage);
        EXPECT_EQ(drawnBy(*view), Rects{c.drawn}) << c.what;
    }
    view->setNeedsDisplayInRect({{500, 500}, {10, 10}});
    EXPECT_FALSE(window.needsDisplay()) << "outside the view";
}

TEST_F(NSWindowDisplayTest, OnlyDamagePaints) {
    const auto expectNoPainting = [this](const std::string& what) {
        EXPECT_EQ(drawnBy(*view), Rects{}) << what;
    };
    view->setFrame({{-1900, 50}, {200, 100}});
    expectNoPainting("moved out of the window");
    view->setFrame(frame);
    view->layer()->setOpacity(0.5);
    view->layer()->setTransform(
        CATransform3D::makeAffineTransform(CGAffineTransform::makeRotation(1)));
    expectNoPainting("moved back, faded and turned");
    const auto other = std::make_shared<NSView>();
    root->addSubview(other);
    other->addSubview(view);
    expectNoPainting("moved within the view tree");
    view->setFrame({{100, 100}, {210, 100}});
    EXPECT_EQ(drawnBy(*view), (Rects{{{200, 0}, {10, 100}}})) << "grown";
    view->setFrame({{100, 100}, {150, 100}});
    expectNoPainting("shrunk");
}

TEST_F(NSWindowDisplayTest, AHiddenViewPaintsWhenItIsShownAndCompletelyAtANewScale) {
    root->setHidden(true);
    view->setNeedsDisplayInRect({{10, 10}, {5, 5}});
    EXPECT_EQ(drawnBy(*view), Rects{});
    root->setHidden(false);
    EXPECT_EQ(drawnBy(*view), (Rects{{{9, 9}, {7, 7}}}));
    window.setBackingScaleFactor(2);
    EXPECT_EQ(drawnBy(*view), (Rects{{{0, 0}, {200, 100}}}));
    EXPECT_EQ(view->backingStore()->area(), (NSBackingRect{0, 0, 400, 200}));
}

TEST_F(NSWindowDisplayTest, OnlyTheVisiblePartOfAHugeViewIsStored) {
    const auto huge = std::make_shared<PaintedView>(CGRect{{-1e9, -200}, {2e9, 2e9}});
    root->addSubview(huge);
    window.displayIfNeeded();
    ASSERT_NE(huge->backingStore(), nullptr);
    const NSBackingRect seen{1000000000, 200, 1000001000, 700};
    EXPECT_TRUE(huge->backingStore()->area().contains(seen));
    EXPECT_LT(huge->backingStore()->area().area(), 4 * seen.area());

    // A small step stays within the margin; a larger one paints only what became visible.
    huge->setFrame({{-1e9 + 100, -150}, {2e9, 2e9}});
    EXPECT_EQ(drawnBy(*huge), Rects{});
    huge->setFrame({{-1e9 + 600, -200}, {2e9, 2e9}});
    ASSERT_EQ(drawnBy(*huge).size(), 1U);
    EXPECT_LE(huge->drawn[0].size.width, 1024);
    EXPECT_TRUE(huge->backingStore()->area().contains(seen.movedBy(-600, 0)));

    // Whole tiles of 256 pixels, and one tile more on each side.
    const struct {
        CGRect frame;
        NSBackingRect stored;
    } cases[] = {
        {{{5000, 0}, {2e9, 2e9}}, {}},
        // A small view is stored as soon as it is visible.
        {{{5000, 0}, {500, 500}}, {}},
        {{{999, 0}, {500, 500}}, {0, 0, 500, 500}},
        {{{0, 0}, {2e9, 2e9}}, {0, 0, 1280, 768}},
        // The rest is more than half of what was stored.
        {{{800, 300}, {2e9, 2e9}}, {0, 0, 512, 512}},
        // Few pixels, but a long side.
        {{{-5000, 0}, {20000, 1}}, {4608, 0, 6400, 1}},
    };
    for (const auto& c : cases) {
        huge->setFrame(c.frame);
        window.displayIfNeeded();
        const NSBackingStore* const store = huge->backingStore();
        EXPECT_EQ(store != nullptr ? store->area() : NSBackingRect{}, c.stored) << c.frame.origin.x;
    }
    for (const CGRect& odd : Rects{{{0, 0}, {kNotANumber, 10}},
                                   {{kInfinity, 0}, {10, 10}},
                                   {{0, 0}, {-5, 10}},
                                   {{0, 0}, {1e300, 1e300}}}) {
        huge->setFrame(odd);
        huge->setNeedsDisplayInRect(odd);
        window.displayIfNeeded();
        EXPECT_TRUE(!huge->backingStore() || huge->backingStore()->area().area() < 1 << 22);
    }
}

TEST_F(NSWindowDisplayTest, AViewMayLeaveWhileItPaints) {
    class Leaving final : public NSView {
    public:
        bool paints() const override { return true; }
        void drawRect(const CGRect&) override { removeFromSuperviewWithoutNeedingDisplay(); }
    };
    auto leaving = std::make_shared<Leaving>();
    leaving->setFrame({{0, 0}, {10, 10}});
    root->addSubview(leaving);
    leaving.reset();
    window.displayIfNeeded();
    window.displayIfNeeded();
    EXPECT_EQ(root->subviews().size(), 1U);
}
