#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSGestureRecognizer.h"
#include "platform/appkit/NSView.h"
#include "platform/offscreen/OffscreenWindow.h"

using namespace orvane::platform;

namespace {

using State = NSGestureRecognizerState;

// The recognizer of an inner view has precedence over those of the views around it.
class InnerFirst final : public NSGestureRecognizerDelegate {
public:
    int queries = 0;

    bool shouldBeRequiredToFailByGestureRecognizer(const NSGestureRecognizer& recognizer,
                                                   const NSGestureRecognizer& other) override {
        ++queries;
        return recognizer.view()->isDescendantOf(*other.view());
    }
};

// Records what it sees, and takes the states of a script, one for each event. After the end of the
// script, the state does not change.
class Scripted final : public NSGestureRecognizer {
public:
    Scripted(std::string name, std::string& log) : name_(std::move(name)), log_(log) {}

    std::vector<State> script;
    std::function<void()> onDown = [] {};

    void mouseDown(const NSEvent& event) override {
        answer("down", event);
        onDown();
    }
    void mouseDragged(const NSEvent& event) override { answer("drag", event); }
    void mouseUp(const NSEvent& event) override { answer("up", event); }
    void endGesture(NSGestureEndReason reason) override {
        log_ += name_ + (reason == NSGestureEndReason::Ended    ? ":over "
                         : reason == NSGestureEndReason::Failed ? ":gave up "
                                                                : ":cancelled ");
    }
    void invokeAction() override { log_ += name_ + ":action "; }

private:
    void answer(const char* what, const NSEvent& event) {
        log_ += name_ + ":" + what + std::to_string(std::lround(event.locationInWindow.x)) + " ";
        if (next_ < script.size()) {
            setState(script[next_++]);
        }
    }

    std::string name_;
    std::string& log_;
    std::size_t next_ = 0;
};

// An inner and an outer view with a recognizer on each.
class NSGestureArenaTest : public testing::Test {
protected:
    NSGestureArenaTest() { build(); }

    void build() {
        window = std::make_unique<OffscreenWindow>(CGSize{100, 100});
        log.clear();
        inside = std::make_shared<Scripted>("inner", log);
        outside = std::make_shared<Scripted>("outer", log);
        outer = std::make_shared<NSView>();
        inner = std::make_shared<NSView>();
        outer->setFrame({{0, 0}, {100, 100}});
        inner->setFrame({{10, 10}, {50, 50}});
        outer->addSubview(inner);
        outer->addGestureRecognizer(outside);
        inner->addGestureRecognizer(inside);
        window->setContentView(outer);
    }
    void waitForInner() {
        inside->setDelegate(&innerFirst);
        outside->setDelegate(&innerFirst);
    }
    void down(double x) { send(NSEventType::LeftMouseDown, x); }
    void drag(double x) { send(NSEventType::LeftMouseDragged, x); }
    void up(double x) { send(NSEventType::LeftMouseUp, x); }
    void send(NSEventType type, double x) { window->sendEvent({type, {x, 20}, 0}); }
    void gesture() {
        down(20);
        drag(21);
        drag(22);
        up(23);
    }

    std::string log;
    InnerFirst innerFirst;
    std::shared_ptr<NSView> outer, inner;
    std::shared_ptr<Scripted> inside, outside;
    std::unique_ptr<OffscreenWindow> window;
};

}  // namespace

TEST_F(NSGestureArenaTest, GesturesGoToTheRecognizerThatClaimsThem) {
    using enum NSGestureRecognizerState;
    const struct {
        std::string what;
        bool outerWaits;
        std::vector<State> inner, outer;
        std::string expected;
    } cases[] = {
        {"the inner one claims, the outer one has seen nothing",
         true,
         {Began, Changed, Changed, Ended},
         {},
         "inner:down20 inner:action inner:drag21 inner:action inner:drag22 inner:action "
         "inner:up23 inner:action inner:over "},
        {"the inner one claims late, the outer one has seen the beginning",
         false,
         {Possible, Possible, Began, Ended},
         {},
         "inner:down20 outer:down20 inner:drag21 outer:drag21 inner:drag22 inner:action "
         "outer:cancelled inner:up23 inner:action inner:over "},
        {"the inner one fails late, the outer one sees all events in order",
         true,
         {Possible, Possible, Failed},
         {Possible, Began, Changed, Ended},
         "inner:down20 inner:drag21 inner:drag22 inner:gave up outer:down20 outer:drag21 "
         "outer:action outer:drag22 outer:action outer:up23 outer:action outer:over "},
        {"no claim until the button is released",
         false,
         {},
         {},
         "inner:down20 outer:down20 inner:drag21 outer:drag21 inner:drag22 outer:drag22 "
         "inner:up23 outer:up23 inner:over outer:over "},
    };
    for (const auto& c : cases) {
        build();
        inside->script = c.inner;
        outside->script = c.outer;
        if (c.outerWaits) {
            waitForInner();
        }
        gesture();
        EXPECT_EQ(log, c.expected) << c.what;
        EXPECT_EQ(inside->state(), Possible) << c.what;
    }
}

TEST_F(NSGestureArenaTest, AGestureNeverEndsInSilence) {
    const struct {
        std::string what;
        std::function<void()> happens;
        std::string expected;
    } cases[] = {
        {"the pointer leaves the window",
         [this] {
             drag(900);
             up(-900);
         },
         "inner:drag900 inner:up-900 inner:over "},
        {"a press without a release before it", [this] { down(90); },
         "inner:cancelled outer:down90 "},
        {"the desktop withdraws the pointer",
         [this] {
             send(NSEventType::MouseCancelled, 0);
             drag(30);
             up(30);
         },
         "inner:cancelled "},
        {"the view leaves the window",
         [this] {
             inner->removeFromSuperviewWithoutNeedingDisplay();
             drag(30);
         },
         "inner:cancelled "},
        {"the window is destroyed", [this] { window.reset(); }, "inner:cancelled "},
        {"the view has another place in the window at the next event",
         [this] {
             const auto other = std::make_shared<NSView>();
             outer->addSubview(other);
             inner->removeFromSuperviewWithoutNeedingDisplay();
             other->addSubview(inner);
             up(21);
         },
         "inner:up21 inner:over "},
    };
    for (const auto& c : cases) {
        build();
        inside->script = {State::Began};
        down(20);
        log.clear();
        c.happens();
        EXPECT_EQ(log, c.expected) << c.what;
    }
}

TEST_F(NSGestureArenaTest, ARecognizerWhoseHandlerRemovesItsViewLetsTheOthersIn) {
    using enum NSGestureRecognizerState;
    waitForInner();
    inside->onDown = [this] {
        inner->removeFromSuperviewWithoutNeedingDisplay();
        inner.reset();
    };
    outside->script = {Possible, Began, Changed, Ended};
    gesture();
    EXPECT_EQ(log,
              "inner:down20 inner:cancelled outer:down20 outer:drag21 outer:action outer:drag22 "
              "outer:action outer:up23 outer:action outer:over ");
}

TEST_F(NSGestureArenaTest, EventsSentFromAHandlerAreDeliveredAfterTheCurrentOne) {
    inside->onDown = [this] { up(30); };
    down(20);
    EXPECT_EQ(log, "inner:down20 outer:down20 inner:up30 outer:up30 inner:over outer:over ");
}

TEST_F(NSGestureArenaTest, TheDelegateIsQueriedOncePerNestedView) {
    constexpr int kDepth = 300;
    for (const bool fails : {true, false}) {
        build();
        std::vector<std::shared_ptr<Scripted>> recognizers;
        std::shared_ptr<NSView> innermost = inner;
        for (int i = 0; i < kDepth; ++i) {
            auto view = std::make_shared<NSView>();
            view->setFrame({{0, 0}, {50, 50}});
            recognizers.push_back(std::make_shared<Scripted>("nested", log));
            recognizers.back()->setDelegate(&innerFirst);
            recognizers.back()->script = {fails ? State::Failed : State::Possible};
            view->addGestureRecognizer(recognizers.back());
            innermost->addSubview(view);
            innermost = view;
        }
        innerFirst.queries = 0;
        gesture();
        EXPECT_LE(innerFirst.queries, kDepth + 2);
        EXPECT_EQ(log.find("outer:down") != std::string::npos, fails);
    }
}

TEST_F(NSGestureArenaTest, LocationsAreInTheCoordinatesOfTheView) {
    inner->layer()->setTransform(CATransform3D::makeAffineTransform({2, 0, 0, 2, 0, 0}));
    const NSEvent event{NSEventType::LeftMouseDown, {30, 20}, 0};
    EXPECT_EQ(inside->locationInView(event, *inner), (CGPoint{10, 5}));
    EXPECT_EQ(inside->locationInView(event, *outer), (CGPoint{30, 20}));
}
