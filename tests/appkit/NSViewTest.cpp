#include "platform/appkit/NSView.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>

#include "platform/offscreen/OffscreenWindow.h"

using namespace orvane::platform;

namespace {

struct Named final : NSView {
    Named(char name_, std::string& log_) : name(name_), log(log_) {}
    void viewDidMoveToWindow() override { log += {name, window() ? '+' : '-'}; }

    char name;
    std::string& log;
};

class NSViewTest : public testing::Test {
protected:
    std::shared_ptr<Named> make(char name) { return std::make_shared<Named>(name, log); }

    static std::string order(const NSView& view) {
        std::string names;
        for (const NSView* subview : view.subviewsInDrawingOrder()) {
            names += static_cast<const Named*>(subview)->name;
        }
        return names;
    }

    std::string log;
    std::shared_ptr<Named> root = make('r');
    std::shared_ptr<Named> a = make('a');
    std::shared_ptr<Named> b = make('b');
    std::shared_ptr<Named> c = make('c');
};

}  // namespace

TEST_F(NSViewTest, SubviewsAreInTheOrderInWhichTheyWereAdded) {
    root->addSubview(a);
    root->addSubview(b, NSWindowOrderingMode::Below, a.get());
    EXPECT_EQ(order(*root), "ba");
    root->addSubview(c, NSWindowOrderingMode::Above, b.get());
    EXPECT_EQ(order(*root), "bca");
    root->addSubview(a, NSWindowOrderingMode::Below, nullptr);
    EXPECT_EQ(order(*root), "abc");
    root->addSubview(a);
    EXPECT_EQ(order(*root), "bca");
    b->addSubview(a);
    EXPECT_EQ(order(*root), "bc");
    EXPECT_EQ(a->superview(), b.get());
    // A view cannot be added to itself or to its own subtree.
    a->addSubview(b);
    a->addSubview(a);
    EXPECT_EQ(order(*root), "bc");
    EXPECT_TRUE(a->subviews().empty());
    a->removeFromSuperviewWithoutNeedingDisplay();
    EXPECT_EQ(a->superview(), nullptr);
}

TEST_F(NSViewTest, ZPositionHasPrecedenceOverOrder) {
    for (const auto& view : {a, b, c}) {
        root->addSubview(view);
    }
    a->layer()->setZPosition(1);
    EXPECT_EQ(order(*root), "bca");
    c->layer()->setZPosition(1);
    EXPECT_EQ(order(*root), "bac");
    b->layer()->setZPosition(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(order(*root), "bac");
}

TEST_F(NSViewTest, AWholeSubtreeEntersAndLeavesAWindow) {
    auto window = std::make_unique<OffscreenWindow>(CGSize{100, 100});
    a->addSubview(b);
    root->addSubview(a);
    window->setContentView(root);
    EXPECT_EQ(log, "r+a+b+");
    log.clear();
    root->addSubview(c);
    c->addSubview(a);
    EXPECT_EQ(log, "c+") << "a view that moves within its window does not change windows";
    log.clear();
    c->removeFromSuperviewWithoutNeedingDisplay();
    EXPECT_EQ(log, "c-a-b-");

    root->addSubview(a);
    window.reset();
    EXPECT_EQ(a->window(), nullptr) << "a view outlives its window";
    EXPECT_EQ(a->superview(), root.get());
    a->setNeedsDisplayInRect({{0, 0}, {1, 1}});
    root.reset();
    EXPECT_EQ(a->superview(), nullptr);
}

TEST_F(NSViewTest, AContentViewThatIsAddedElsewhereLeavesItsWindowWithoutContent) {
    root->setFrame({{0, 0}, {100, 100}});
    root->layer()->setBackgroundColor({1, 0, 0, 1});
    root->addSubview(a);
    for (const bool asContent : {true, false}) {
        SCOPED_TRACE(asContent ? "another window's content" : "another view's subview");
        OffscreenWindow second({100, 100});
        auto first = std::make_unique<OffscreenWindow>(CGSize{100, 100});
        first->setContentView(root);
        first->display();
        if (asContent) {
            second.setContentView(root);
        } else {
            second.setContentView(b);
            b->addSubview(root);
        }
        EXPECT_EQ(first->contentView(), nullptr);
        first->display();
        second.display();
        EXPECT_EQ(first->pixels()[0], 0U);
        EXPECT_EQ(second.pixels()[0], 0xFFFF0000U);
        first.reset();
        EXPECT_EQ(a->window(), &second) << "the first window does not change views that left it";
    }
}

TEST_F(NSViewTest, HitsTheFrontmostVisibleView) {
    root->setFrame({{0, 0}, {100, 100}});
    a->setFrame({{10, 10}, {40, 40}});
    b->setFrame({{30, 30}, {40, 40}});
    c->setFrame({{5, 5}, {10, 10}});
    root->addSubview(a);
    root->addSubview(b);
    b->addSubview(c);
    const auto hit = [this](double x, double y) -> char {
        const NSView* view = root->hitTest({x, y});
        return view ? static_cast<const Named*>(view)->name : '0';
    };
    EXPECT_EQ(hit(15, 15), 'a');
    EXPECT_EQ(hit(32, 32), 'b');
    EXPECT_EQ(hit(36, 36), 'c');
    EXPECT_EQ(hit(99, 99), 'r');
    EXPECT_EQ(hit(100, 100), '0');
    a->layer()->setZPosition(1);
    EXPECT_EQ(hit(36, 36), 'a');
    a->setHidden(true);
    EXPECT_EQ(hit(36, 36), 'c');
    // Scaled by two about its own origin.
    b->layer()->setTransform(CATransform3D::makeAffineTransform({2, 0, 0, 2, 0, 0}));
    EXPECT_EQ(hit(58, 58), 'c');
    EXPECT_EQ(hit(61, 61), 'b');
    b->layer()->setTransform(CATransform3D::makeAffineTransform({0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(hit(36, 36), 'r');
}
