#include "platform/appkit/NSScrollView.h"
#include "platform/appkit/NSVelocityTracker.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSGestureRecognizer.h"
#include "platform/appkit/NSScroller.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "tests/appkit/PaintedView.h"

using namespace orvane::platform;

namespace {

// Writes what its scroll view does to a log.
struct Log final : NSScrollViewDelegate {
    void scrollViewWillBeginScrolling(NSScrollView&) override { text += "begin "; }
    void scrollViewDidEndScrolling(NSScrollView&) override { text += "end "; }
    void scrollViewDidScroll(NSScrollView&) override { ++changes; }
    std::string take() { return std::exchange(text, {}); }

    std::string text;
    int changes = 0;
};

// Claims every gesture, or only watches it.
struct Claimer final : NSGestureRecognizer {
    void mouseDown(const NSEvent&) override {
        if (claims) {
            setState(NSGestureRecognizerState::Began);
        }
    }
    void endGesture(NSGestureEndReason reason) override { ends.push_back(reason); }
    bool claims = true;
    std::vector<NSGestureEndReason> ends;
};

// A scroll view of 200 x 100 points with a content of 200 x 1000.
class NSScrollViewTest : public testing::Test {
protected:
    NSScrollViewTest() {
        window.setContentView(root);
        root->addSubview(scroll);
        add(*scroll, {200, 1000});
        scroll->setDelegate(&log);
        run(0);
    }
    ~NSScrollViewTest() override { scroll->setDelegate(nullptr); }

    std::shared_ptr<PaintedView> add(NSScrollView& into, CGSize content) {
        into.setFrame({{0, 0}, {200, 100}});
        into.setContentSize(content);
        auto document = std::make_shared<PaintedView>(CGRect{});
        into.setDocumentView(document);
        return document;
    }
    // A scroll view in the content of the other one, at its top.
    std::shared_ptr<NSScrollView> addInner(CGSize content) {
        auto inner = NSScrollView::create();
        add(*inner, content);
        scroll->documentView()->addSubview(inner);
        return inner;
    }
    void run(double seconds) {
        const double end = CACurrentMediaTime() + seconds;
        while (CACurrentMediaTime() < end - 1e-9) {
            clock.advanceTo(std::min(CACurrentMediaTime() + frame, end));
            window.display();
        }
        window.display();
    }
    double y() const { return scroll->contentOffset().y; }

    bool wheel(CGPoint delta, NSEventPhase phase = NSEventPhase::None, unsigned modifiers = 0) {
        NSEvent event;
        event.type = NSEventType::ScrollWheel;
        event.locationInWindow = {100, 50};
        event.timestamp = CACurrentMediaTime();
        event.modifierFlags = modifiers;
        event.scrollingDelta = delta;
        event.phase = phase;
        event.hasPreciseScrollingDeltas = phase != NSEventPhase::None;
        return window.sendEvent(event);
    }
    // Fingers that move evenly, and then leave the touchpad.
    void swipe(CGPoint delta, int times) {
        wheel({}, NSEventPhase::Began);
        for (int i = 0; i < times; ++i) {
            run(0.01);
            wheel(delta, NSEventPhase::Changed);
        }
        wheel({}, NSEventPhase::Ended);
    }
    bool key(const std::string& name, unsigned modifiers = 0) {
        NSEvent event;
        event.type = NSEventType::KeyDown;
        event.key = name;
        event.timestamp = CACurrentMediaTime();
        event.modifierFlags = modifiers;
        return window.sendEvent(event);
    }
    void pointer(NSEventType type, CGPoint place) {
        window.sendEvent({type, place, CACurrentMediaTime()});
    }
    void drag(CGPoint from, CGPoint to, int steps, double pause = 0) {
        pointer(NSEventType::LeftMouseDown, from);
        for (int i = 1; i <= steps; ++i) {
            run(0.01);
            pointer(NSEventType::LeftMouseDragged,
                    {from.x + (to.x - from.x) * i / steps, from.y + (to.y - from.y) * i / steps});
        }
        run(pause);
        pointer(NSEventType::LeftMouseUp, to);
    }

    CAVirtualClock clock;
    double frame = 1.0 / 60;
    OffscreenWindow window{{200, 100}};
    std::shared_ptr<PaintedView> root =
        std::make_shared<PaintedView>(CGRect{{0, 0}, {200, 100}}, CGColor{0, 0, 1, 1});
    std::shared_ptr<NSScrollView> scroll = NSScrollView::create();
    Log log;
};

}  // namespace

TEST_F(NSScrollViewTest, AWheelGlidesByWholeNotches) {
    EXPECT_TRUE(wheel({0, 48}));
    run(0.05);
    EXPECT_GT(y(), 5);
    EXPECT_LT(y(), 48);
    wheel({0, 48});
    run(1);
    EXPECT_EQ(y(), 96);
    EXPECT_EQ(scroll->documentView()->frame(), (CGRect{{0, -96}, {200, 1000}}));
    EXPECT_EQ(log.take(), "begin end ");
    EXPECT_FALSE(wheel({48, 0}));  // the content is no wider than the view
    wheel({0, 5000});
    run(1);
    EXPECT_EQ(y(), 900);
    EXPECT_FALSE(wheel({0, 48}));
    // Nothing asks for frames when the bars have faded.
    run(2);
    EXPECT_FALSE(window.isAnimating());
    scroll->setContentSize({1000, 1000});
    scroll->setContentOffset({0, 500}, false);
    wheel({0, 48}, NSEventPhase::None, kNSEventModifierShift);
    run(1);
    EXPECT_EQ(scroll->contentOffset(), (CGPoint{48, 500}));
}

TEST_F(NSScrollViewTest, ContentFollowsFingersAndKeepsTheirVelocity) {
    std::vector<double> ends;
    for (const double length : {1.0 / 30, 1.0 / 60, 1.0 / 144}) {
        frame = length;
        scroll->setContentOffset({0, 0}, false);
        wheel({}, NSEventPhase::Began);
        wheel({0, 10}, NSEventPhase::Changed);
        EXPECT_EQ(y(), 10);
        wheel({0, -10}, NSEventPhase::Changed);
        wheel({}, NSEventPhase::Ended);
        run(0.5);
        swipe({0, 8}, 10);
        EXPECT_EQ(y(), 80);
        run(0.25);
        ends.push_back(y());
        run(3);
        // 800 points per second, slowed down by a friction of 4 per second.
        EXPECT_NEAR(y(), 80 + 800.0 / 4, 1);
    }
    EXPECT_NEAR(ends[0], 80 + 200 * (1 - std::exp(-1)), 1e-6);
    EXPECT_NEAR(ends[0], ends[1], 1e-6);
    EXPECT_NEAR(ends[0], ends[2], 1e-6);
    log.take();
    // A rest before the fingers leave ends the motion.
    wheel({}, NSEventPhase::Began);
    wheel({0, 30}, NSEventPhase::Changed);
    run(0.2);
    wheel({}, NSEventPhase::Ended);
    EXPECT_FALSE(scroll->isScrolling());
    EXPECT_EQ(log.take(), "begin end ");
}

TEST_F(NSScrollViewTest, APressStopsAFlingAndIsNothingElse) {
    auto button = std::make_shared<Claimer>();
    button->claims = false;
    scroll->documentView()->addGestureRecognizer(button);
    swipe({0, 8}, 10);
    run(0.1);
    const double stopped = y();
    drag({100, 50}, {100, 50}, 1);
    run(1);
    EXPECT_EQ(y(), stopped);
    drag({100, 50}, {100, 45}, 1);  // less than the distance of a drag
    EXPECT_EQ(y(), stopped);
    drag({100, 50}, {100, 20}, 3, 0.2);
    EXPECT_EQ(y(), stopped + 30);
    using enum NSGestureEndReason;
    EXPECT_EQ(button->ends, (std::vector{Cancelled, Ended, Cancelled}));
}

TEST_F(NSScrollViewTest, AClaimOfTheContentWinsAndOneFromOutsideWaits) {
    auto inside = std::make_shared<Claimer>();
    auto outside = std::make_shared<Claimer>();
    scroll->documentView()->addGestureRecognizer(inside);
    root->addGestureRecognizer(outside);
    drag({100, 90}, {100, 10}, 4);
    EXPECT_EQ(y(), 0);
    inside->claims = false;
    drag({100, 90}, {100, 10}, 4, 0.2);
    EXPECT_EQ(y(), 80);
    EXPECT_TRUE(outside->ends.empty());
    drag({10, 50}, {190, 50}, 4);  // no direction of this content
    EXPECT_EQ(outside->ends.size(), 1U);
}

TEST_F(NSScrollViewTest, KeysScroll) {
    ASSERT_TRUE(window.makeFirstResponder(scroll.get()));
    struct {
        const char* name;
        unsigned modifiers;
        double from, to;
    } const cases[] = {{"Down", 0, 0, 48},        {"Up", 0, 100, 52},
                       {"Page_Down", 0, 0, 87.5}, {"KP_Page_Up", 0, 500, 412.5},
                       {"space", 0, 0, 87.5},     {"space", kNSEventModifierShift, 500, 412.5},
                       {"End", 0, 7, 900},        {"Home", 0, 700, 0}};
    for (const auto& each : cases) {
        scroll->setContentOffset({0, each.from}, false);
        EXPECT_TRUE(key(each.name, each.modifiers)) << each.name;
        run(2);
        EXPECT_EQ(y(), each.to) << each.name;
    }
    EXPECT_FALSE(key("Up"));  // at the beginning: for the view around it
    EXPECT_FALSE(key("Right"));
    EXPECT_FALSE(key("a"));
    EXPECT_FALSE(key("Down", kNSEventModifierControl));
}

TEST_F(NSScrollViewTest, ContentThatWasUsedHasTheKeyboard) {
    wheel({0, 48});
    EXPECT_EQ(window.firstResponder(), scroll.get());
    auto inner = addInner({200, 300});
    scroll->setContentOffset({}, false);
    drag({100, 50}, {100, 50}, 1);
    EXPECT_EQ(window.firstResponder(), inner.get());
    inner->setContentOffset({0, 200}, false);
    EXPECT_TRUE(key("Page_Down"));  // not used by the inner one
    run(1);
    EXPECT_EQ(y(), 87.5);
    wheel({0, 48});
    EXPECT_EQ(window.firstResponder(), inner.get()) << "it passes keys on";
    // A wheel takes the keyboard from another scroll view, but not from a field.
    struct Field final : NSView {
        bool acceptsFirstResponder() const override { return true; }
    };
    const auto other = NSScrollView::create();
    root->addSubview(other, NSWindowOrderingMode::Below, scroll.get());
    add(*other, {200, 1000});
    const auto field = std::make_shared<Field>();
    root->addSubview(field);
    for (NSView* const first :
         {static_cast<NSView*>(other.get()), static_cast<NSView*>(field.get())}) {
        window.makeFirstResponder(first);
        wheel({0, 48});
        EXPECT_EQ(window.firstResponder() == first, first == field.get());
    }
}

TEST_F(NSScrollViewTest, ScrollViewsPassOnWhatTheyCannotUse) {
    auto inner = addInner({200, 130});
    wheel({0, 48});
    run(1);
    EXPECT_EQ(inner->contentOffset().y, 30);
    EXPECT_EQ(y(), 18);
    // Fingers move both, one after the other.
    scroll->setContentOffset({}, false);
    inner->setContentOffset({}, false);
    wheel({}, NSEventPhase::Began);
    wheel({0, 25}, NSEventPhase::Changed);
    wheel({0, 25}, NSEventPhase::Changed);
    EXPECT_EQ(inner->contentOffset().y, 30);
    EXPECT_EQ(y(), 20);
    EXPECT_TRUE(wheel({}, NSEventPhase::Ended));
    EXPECT_FALSE(scroll->isScrolling() && inner->isScrolling());
    // A drag belongs to the innermost one that can move in its direction.
    scroll->setContentOffset({}, false);
    drag({100, 90}, {100, 70}, 2, 0.2);
    EXPECT_EQ(y(), 20);
    drag({100, 50}, {100, 70}, 2, 0.2);
    EXPECT_EQ(y(), 20);
    EXPECT_EQ(inner->contentOffset().y, 10);
}

TEST_F(NSScrollViewTest, AGestureKeepsItsAxisAndItsViews) {
    scroll->setContentSize({1000, 1000});
    for (const bool isAcross : {false, true}) {
        wheel({}, NSEventPhase::Began);
        for (const auto& [across, along] : {CGPoint{1, 6}, {2, 5}, {9, 6}}) {
            wheel(isAcross ? CGPoint{along, across} : CGPoint{across, along},
                  NSEventPhase::Changed);
        }
        EXPECT_EQ(scroll->contentOffset(), (isAcross ? CGPoint{17, 0} : CGPoint{0, 17}));
        wheel({}, NSEventPhase::Ended);
        scroll->setContentOffset({}, false);
    }
    // A list that comes to be under the pointer does not take a turning wheel over.
    auto inner = addInner({200, 500});
    inner->setFrame({{0, 60}, {200, 100}});
    for (int i = 0; i < 4; ++i) {
        wheel({0, 20});
        run(0.1);
    }
    EXPECT_EQ(inner->contentOffset().y, 0);
    run(1);
    wheel({0, 20});
    run(1);
    EXPECT_EQ(inner->contentOffset().y, 20);
}

TEST(NSVelocityTracker, TheVelocityDoesNotDependOnTheRateOfEvents) {
    for (const double interval : {0.001, 0.004, 0.008, 0.02}) {
        NSVelocityTracker tracker;
        double time = 5;
        for (; time < 5.5; time += interval) {
            const double speed = time < 5.38 ? -900 : 300;  // what is long ago does not count
            tracker.add({speed * interval, 10 * interval}, time);
        }
        EXPECT_NEAR(tracker.velocity(time).x, 300, 1e-6) << interval;
        EXPECT_NEAR(tracker.velocity(time).y, 10, 1e-6) << interval;
        EXPECT_EQ(tracker.velocity(time + 0.1), CGPoint{}) << "after a rest";
    }
}

TEST_F(NSScrollViewTest, PagesSnap) {
    scroll->setContentSize({700, 100});
    scroll->setPaging(true);
    const auto page = [this] {
        run(2);
        return scroll->contentOffset().x / 200;
    };
    drag({190, 50}, {110, 50}, 4, 0.2);
    EXPECT_EQ(page(), 0);
    drag({190, 50}, {70, 50}, 4, 0.2);
    EXPECT_EQ(page(), 1);
    drag({190, 50}, {130, 50}, 3);  // short but quick
    EXPECT_EQ(page(), 2);
    wheel({48, 0});
    wheel({48, 0});
    EXPECT_EQ(page(), 2.5);  // the end of the content
    scroll->setFrame({{0, 0}, {100, 100}});
    EXPECT_EQ(scroll->contentOffset().x, 300);
    scroll->setFrame({{0, 0}, {200, 100}});
    swipe({-8, 0}, 5);
    EXPECT_EQ(page(), 2);
    wheel({-24, 0});  // half a notch
    EXPECT_EQ(page(), 2);
    wheel({-24, 0});
    EXPECT_EQ(page(), 1);
    window.makeFirstResponder(scroll.get());
    key("Left");
    EXPECT_EQ(page(), 0);
}

TEST_F(NSScrollViewTest, FlingsNeedALeastVelocity) {
    swipe({0, 0.5}, 4);  // 50 points per second
    EXPECT_FALSE(scroll->isScrolling());
    swipe({0, 0.75}, 4);
    run(3);
    EXPECT_NEAR(y(), 2 + 3 + 75.0 / 4, 1);
    scroll->setContentSize({700, 100});
    scroll->setPaging(true);
    for (const double speed : {240, 260}) {
        scroll->setContentOffset({200, 0}, false);
        swipe({speed / 100, 0}, 5);
        run(2);
        EXPECT_EQ(scroll->contentOffset().x, speed < 250 ? 200 : 400);
    }
}

TEST_F(NSScrollViewTest, AWheelTurnsAPageWhenTheOneBeforeHasMostlyAppeared) {
    scroll->setContentSize({1000, 100});
    scroll->setPaging(true);
    frame = 1.0 / 960;
    for (const bool isEarly : {true, false}) {
        scroll->setContentOffset({}, false);
        wheel({48, 0});
        while (scroll->contentOffset().x < (isEarly ? 148 : 150)) {
            run(frame);
        }
        wheel({48, 0});
        run(2);
        EXPECT_EQ(scroll->contentOffset().x, isEarly ? 200 : 400);
    }
    // Parts of a notch add up, until the wheel turns back.
    for (const auto& [delta, page] : {std::pair{40, 2}, {-24, 2}, {-24, 1}}) {
        wheel({static_cast<double>(delta), 0});
        run(2);
        EXPECT_EQ(scroll->contentOffset().x, 200.0 * page);
    }
}

TEST_F(NSScrollViewTest, ADiagonalDragMayGoInTheOtherDirection) {
    const auto dragged = [this](CGPoint way) {
        scroll->setContentOffset({100, 100}, false);
        drag({100, 50}, {100 + way.x, 50 + way.y}, 1, 0.2);
        return scroll->contentOffset();
    };
    EXPECT_EQ(dragged({40, -22}), (CGPoint{0, 122}));
    EXPECT_EQ(dragged({40, -18}), (CGPoint{0, 100}));
    scroll->setContentSize({1000, 100});
    EXPECT_EQ(dragged({-22, 40}), (CGPoint{122, 0}));
    EXPECT_EQ(dragged({-18, 40}), (CGPoint{100, 0}));
}

TEST_F(NSScrollViewTest, AnAnimatedOffsetKeepsTheVelocityOfTheMotionBefore) {
    scroll->setContentOffset({0, 500}, true);
    EXPECT_EQ(scroll->targetOffset().y, 500);
    run(0.1);
    const double before = y();
    run(frame);
    const double step = y() - before;
    scroll->setContentOffset({0, 900}, true);
    run(frame);
    EXPECT_NEAR(y() - before - step, step, step / 2);
    run(2);
    EXPECT_EQ(y(), 900);
    EXPECT_EQ(log.take(), "begin end ");
    scroll->setContentSize({1000, 1000});
    scroll->setContentOffset({300, 700}, true);
    run(2);
    EXPECT_EQ(scroll->contentOffset(), (CGPoint{300, 700}));
}

TEST_F(NSScrollViewTest, ARectangleIsMadeVisibleInAllScrollViews) {
    struct {
        double from, start, length, to;
    } const cases[] = {{0, 50, 20, 0}, {0, 150, 20, 70}, {300, 150, 20, 150}, {0, 150, 400, 150}};
    for (const auto& each : cases) {
        scroll->setContentOffset({0, each.from}, false);
        scroll->scrollRectToVisible({{0, each.start}, {10, each.length}}, false);
        EXPECT_EQ(y(), each.to);
    }
    auto inner = addInner({200, 500});
    inner->setFrame({{0, 400}, {200, 100}});
    auto field = std::make_shared<NSView>();
    field->setFrame({{0, 300}, {100, 30}});
    inner->documentView()->addSubview(field);
    scroll->setContentOffset({}, false);
    NSScrollView::scrollToVisible(*field, true);
    run(2);
    EXPECT_EQ(inner->contentOffset().y, 230);
    EXPECT_EQ(y(), 400);
}

TEST_F(NSScrollViewTest, ContentThatChangesWhileItMovesKeepsThePlace) {
    swipe({0, 8}, 10);
    run(0.1);
    const double before = y();
    const double target = scroll->targetOffset().y;
    scroll->insertContentBefore({0, 5000});
    EXPECT_EQ(y(), before + 5000);
    run(3);
    EXPECT_NEAR(y(), target + 5000, 1);
    swipe({0, 8}, 10);
    scroll->setContentSize({200, 150});
    run(frame);
    EXPECT_EQ(y(), 50);
    EXPECT_FALSE(scroll->isScrolling());
    // On its way to a place that is no longer there, it goes on from where it is.
    scroll->setContentSize({200, 1000});
    scroll->setContentOffset({}, false);
    scroll->setContentOffset({0, 900}, true);
    run(0.1);
    const double onItsWay = y();
    scroll->setContentSize({200, 800});
    run(frame);
    EXPECT_NEAR(y(), onItsWay, 100);
    run(2);
    EXPECT_EQ(y(), 700);
}

TEST_F(NSScrollViewTest, BadNumbersAreRefusedWithOneLine) {
    const auto lines = [](const auto& call) {
        testing::internal::CaptureStderr();
        call();
        const std::string text = testing::internal::GetCapturedStderr();
        return std::count(text.begin(), text.end(), '\n');
    };
    scroll->setContentOffset({0, 10}, false);
    EXPECT_EQ(lines([this] { scroll->setContentOffset({0, std::nan("")}, true); }), 1);
    EXPECT_EQ(lines([this] { scroll->insertContentBefore({0, INFINITY}); }), 1);
    EXPECT_EQ(lines([this] { scroll->scrollRectToVisible({{0, std::nan("")}, {}}, true); }), 1);
    EXPECT_FALSE(wheel({0, std::nan("")}));
    EXPECT_EQ(y(), 10);
    EXPECT_EQ(lines([this] { scroll->setContentSize({-5, std::nan("")}); }), 1);
    EXPECT_EQ(y(), 0);
    EXPECT_EQ(scroll->contentSize(), CGSize{});
    scroll->setContentOffset({1e300, -1e300}, false);
    EXPECT_EQ(scroll->contentOffset(), CGPoint{});
}

TEST_F(NSScrollViewTest, BarsShowTheOffsetFadeAndCanBeGrasped) {
    const NSView& bar = *scroll->subviews().back();
    EXPECT_TRUE(bar.isHidden());
    scroll->setContentOffset({0, 450}, false);
    run(0);
    EXPECT_FALSE(bar.isHidden());
    // The knob has the least length, and is in the middle of its track.
    EXPECT_EQ(bar.frame(), (CGRect{{200 - NSScroller::kBreadth, 36}, {NSScroller::kBreadth, 28}}));
    drag({195, 45}, {195, 27}, 3);
    EXPECT_EQ(y(), 225);
    EXPECT_EQ(log.take(), "begin end ");
    run(1.15);
    EXPECT_NEAR(bar.layer()->opacity(), 0.5, 0.1);
    run(1);
    EXPECT_TRUE(bar.isHidden());
    drag({195, 30}, {195, 10}, 3, 0.2);  // content again
    EXPECT_EQ(y(), 245);
}

TEST_F(NSScrollViewTest, ThePointerOpensABarAndAClickOnItsTrackTurnsAPage) {
    const NSView& bar = *scroll->subviews().back();
    const CGRect knob{{200 - NSScroller::kBreadth, 0}, {NSScroller::kBreadth, 28}};
    const CGRect track{{200 - NSScroller::kBreadth, 0}, {NSScroller::kBreadth, 100}};
    pointer(NSEventType::MouseMoved, {100, 50});
    EXPECT_EQ(bar.frame(), knob) << "shown";
    run(2);
    EXPECT_TRUE(bar.isHidden());
    pointer(NSEventType::MouseMoved, {195, 60});
    EXPECT_EQ(bar.frame(), track);
    run(2);
    EXPECT_FALSE(bar.isHidden());
    EXPECT_FALSE(window.isAnimating());
    drag({195, 60}, {195, 60}, 1);
    run(1);
    EXPECT_EQ(y(), 87.5);
    drag({195, 1}, {195, 1}, 1);
    run(1);
    EXPECT_EQ(y(), 0);
    drag({195, 5}, {100, 41}, 3);  // the knob, with a pointer that leaves the bar
    EXPECT_EQ(y(), 450);
    for (const NSEventType leaving : {NSEventType::MouseMoved, NSEventType::MouseExited}) {
        pointer(NSEventType::MouseMoved, {195, 60});
        EXPECT_EQ(bar.frame(), track);
        pointer(leaving, {100, 50});
        EXPECT_EQ(bar.frame().size, knob.size);
    }
    scroll->setContentSize({1000, 100});
    pointer(NSEventType::MouseMoved, {50, 95});
    EXPECT_EQ(scroll->subviews().end()[-2]->frame(),
              (CGRect{{0, 100 - NSScroller::kBreadth}, {200, NSScroller::kBreadth}}));
}

TEST_F(NSScrollViewTest, TwoBarsLeaveTheirCornerFree) {
    constexpr double breadth = NSScroller::kBreadth;
    const NSView& across = *scroll->subviews().end()[-2];
    const NSView& down = *scroll->subviews().back();
    scroll->setContentSize({1000, 200});
    scroll->setContentOffset({800, 100}, false);
    run(0);
    const double length = std::round((200 - breadth) / 5);
    EXPECT_EQ(across.frame(), (CGRect{{200 - breadth - length, 100 - breadth}, {length, breadth}}));
    pointer(NSEventType::MouseMoved, {195, 100 - breadth - 1});
    EXPECT_EQ(down.frame(), (CGRect{{200 - breadth, 0}, {breadth, 100 - breadth}}));
    pointer(NSEventType::MouseMoved, {195, 100 - breadth});
    EXPECT_LT(down.frame().size.height, 50) << "the corner opens none";
    EXPECT_LT(across.frame().size.width, 50);
    drag({200 - breadth - 1, 95}, {100, 95}, 4);
    EXPECT_NEAR(scroll->contentOffset().x, 800 - (99 - breadth) / (200 - breadth - length) * 800,
                1e-9);
}

TEST_F(NSScrollViewTest, ScrollingPaintsOnlyWhatAppears) {
    auto& document = static_cast<PaintedView&>(*scroll->documentView());
    scroll->setContentSize({200, 1e6});
    run(0);
    document.drawn.clear();
    for (int i = 0; i < 50; ++i) {
        wheel({}, NSEventPhase::Began);
        wheel({0, 40}, NSEventPhase::Changed);
        wheel({}, NSEventPhase::Ended);
        run(0.2);
    }
    double painted = 0;
    for (const CGRect& rect : document.drawn) {
        painted += rect.size.width * rect.size.height;
    }
    EXPECT_LT(painted, 200.0 * (2000 + 512));
}

TEST_F(NSScrollViewTest, AViewThatLeavesTheWindowComesToRest) {
    pointer(NSEventType::LeftMouseDown, {100, 90});
    pointer(NSEventType::LeftMouseDragged, {100, 50});
    EXPECT_TRUE(scroll->isScrolling());
    EXPECT_NE(scroll->documentView()->backingStore(), nullptr);
    scroll->removeFromSuperviewWithoutNeedingDisplay();
    EXPECT_EQ(scroll->documentView()->backingStore(), nullptr) << "pixels that nobody sees";
    EXPECT_FALSE(scroll->isScrolling());
    pointer(NSEventType::LeftMouseUp, {100, 10});
    EXPECT_EQ(log.take(), "begin end ");
}
