#include "platform/appkit/NSView.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "platform/offscreen/OffscreenWindow.h"

using namespace orvane::platform;

namespace {

struct Named final : NSView {
    Named(std::string name_, std::string& log_) : name(std::move(name_)), log(log_) {}
    void viewDidMoveToWindow() override {
        log += name + (window() != nullptr ? " enters, " : " leaves, ");
    }

    std::string name;
    std::string& log;
};

class NSViewTest : public testing::Test {
protected:
    std::shared_ptr<Named> make(const std::string& name) {
        return std::make_shared<Named>(name, log);
    }

    static std::string order(const NSView& view) {
        std::string names;
        for (const NSView* subview : view.subviewsInDrawingOrder()) {
            names += static_cast<const Named*>(subview)->name + " ";
        }
        return names;
    }

    std::string log;
    std::shared_ptr<Named> root = make("root");
    std::shared_ptr<Named> first = make("first");
    std::shared_ptr<Named> second = make("second");
    std::shared_ptr<Named> third = make("third");
};

}  // namespace

TEST_F(NSViewTest, SubviewsAreInTheOrderInWhichTheyWereAdded) {
    root->addSubview(first);
    root->addSubview(second, NSWindowOrderingMode::Below, first.get());
    EXPECT_EQ(order(*root), "second first ");
    root->addSubview(third, NSWindowOrderingMode::Above, second.get());
    EXPECT_EQ(order(*root), "second third first ");
    root->addSubview(first, NSWindowOrderingMode::Below, nullptr);
    EXPECT_EQ(order(*root), "first second third ");
    root->addSubview(first);
    EXPECT_EQ(order(*root), "second third first ");
    second->addSubview(first);
    EXPECT_EQ(order(*root), "second third ");
    EXPECT_EQ(first->superview(), second.get());
    // A view cannot be added to itself or to its own subtree.
    first->addSubview(second);
    first->addSubview(first);
    EXPECT_EQ(order(*root), "second third ");
    EXPECT_TRUE(first->subviews().empty());
    first->removeFromSuperviewWithoutNeedingDisplay();
    EXPECT_EQ(first->superview(), nullptr);
}

TEST_F(NSViewTest, ZPositionHasPrecedenceOverOrder) {
    for (const auto& view : {first, second, third}) {
        root->addSubview(view);
    }
    first->layer()->setZPosition(1);
    EXPECT_EQ(order(*root), "second third first ");
    third->layer()->setZPosition(1);
    EXPECT_EQ(order(*root), "second first third ");
    second->layer()->setZPosition(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(order(*root), "second first third ");
}

TEST_F(NSViewTest, AWholeSubtreeEntersAndLeavesAWindow) {
    auto window = std::make_unique<OffscreenWindow>(CGSize{100, 100});
    first->addSubview(second);
    root->addSubview(first);
    window->setContentView(root);
    EXPECT_EQ(log, "root enters, first enters, second enters, ");
    log.clear();
    root->addSubview(third);
    third->addSubview(first);
    EXPECT_EQ(log, "third enters, ")
        << "a view that moves within its window does not change windows";
    log.clear();
    third->removeFromSuperviewWithoutNeedingDisplay();
    EXPECT_EQ(log, "third leaves, first leaves, second leaves, ");

    root->addSubview(first);
    window.reset();
    EXPECT_EQ(first->window(), nullptr) << "a view outlives its window";
    EXPECT_EQ(first->superview(), root.get());
    first->setNeedsDisplayInRect({{0, 0}, {1, 1}});
    root.reset();
    EXPECT_EQ(first->superview(), nullptr);
}

TEST_F(NSViewTest, AContentViewThatIsAddedElsewhereLeavesItsWindowWithoutContent) {
    root->setFrame({{0, 0}, {100, 100}});
    root->layer()->setBackgroundColor({1, 0, 0, 1});
    root->addSubview(first);
    for (const bool asContent : {true, false}) {
        SCOPED_TRACE(asContent ? "another window's content" : "another view's subview");
        OffscreenWindow newWindow({100, 100});
        auto oldWindow = std::make_unique<OffscreenWindow>(CGSize{100, 100});
        oldWindow->setContentView(root);
        oldWindow->display();
        if (asContent) {
            newWindow.setContentView(root);
        } else {
            newWindow.setContentView(second);
            second->addSubview(root);
        }
        EXPECT_EQ(oldWindow->contentView(), nullptr);
        oldWindow->display();
        newWindow.display();
        EXPECT_EQ(oldWindow->pixels()[0], 0U);
        EXPECT_EQ(newWindow.pixels()[0], 0xFFFF0000U);
        oldWindow.reset();
        EXPECT_EQ(first->window(), &newWindow)
            << "the old window does not change views that left it";
    }
}

TEST_F(NSViewTest, HitsTheFrontmostVisibleView) {
    root->setFrame({{0, 0}, {100, 100}});
    first->setFrame({{10, 10}, {40, 40}});
    second->setFrame({{30, 30}, {40, 40}});
    third->setFrame({{5, 5}, {10, 10}});
    root->addSubview(first);
    root->addSubview(second);
    second->addSubview(third);
    const auto hit = [this](double x, double y) -> std::string {
        const NSView* view = root->hitTest({x, y});
        return view ? static_cast<const Named*>(view)->name : "nothing";
    };
    EXPECT_EQ(hit(15, 15), "first");
    EXPECT_EQ(hit(32, 32), "second");
    EXPECT_EQ(hit(36, 36), "third");
    EXPECT_EQ(hit(99, 99), "root");
    EXPECT_EQ(hit(100, 100), "nothing");
    first->layer()->setZPosition(1);
    EXPECT_EQ(hit(36, 36), "first");
    first->setHidden(true);
    EXPECT_EQ(hit(36, 36), "third");
    // Scaled by two about its own origin.
    second->layer()->setTransform(CATransform3D::makeAffineTransform({2, 0, 0, 2, 0, 0}));
    EXPECT_EQ(hit(58, 58), "third");
    EXPECT_EQ(hit(61, 61), "second");
    second->layer()->setTransform(CATransform3D::makeAffineTransform({0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(hit(36, 36), "root");
}

TEST_F(NSViewTest, WhatIsClippedAwayIsNotHit) {
    root->setFrame({{0, 0}, {100, 100}});
    first->setFrame({{20, 20}, {20, 20}});
    second->setFrame({{10, 10}, {40, 40}});
    first->addSubview(second);
    root->addSubview(first);
    const auto hit = [this](double x, double y) {
        return static_cast<const Named*>(root->hitTest({x, y}))->name;
    };
    EXPECT_EQ(hit(65, 65), "second");
    first->setClipsToBounds(true);
    EXPECT_EQ(hit(65, 65), "root");
    EXPECT_EQ(hit(35, 35), "second");
    first->setClipsToBounds(false);
    first->setClips({{{{0, 0}, {60, 60}}, {}}, {{{0, 0}, {1, 1}}, {0, 50, -50, 0, 50, 0}}});
    EXPECT_EQ(hit(45, 45), "second");
    EXPECT_EQ(hit(55, 45), "root") << "outside the turned clip";
    first->layer()->setTransform(CATransform3D::makeTranslation(10, 0, 0));
    EXPECT_EQ(hit(45, 45), "second") << "the clips have not moved";
    EXPECT_EQ(hit(55, 45), "root");
}
