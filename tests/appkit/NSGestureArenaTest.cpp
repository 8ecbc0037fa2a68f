#include <gtest/gtest.h>

#include <functional>
#include <map>
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

// Inner recognizers come before those of the views around them.
class InnerFirst final : public NSGestureRecognizerDelegate {
public:
    bool shouldBeRequiredToFailByGestureRecognizer(const NSGestureRecognizer& recognizer,
                                                   const NSGestureRecognizer& other) override {
        return recognizer.view()->isDescendantOf(*other.view());
    }
};

// Writes down what it sees, and answers as a script says: a letter for each event.
class Scripted final : public NSGestureRecognizer {
public:
    Scripted(std::string name, std::string& log) : name_(std::move(name)), log_(log) {}

    // p(ossible) b(egan) c(hanged) e(nded) f(ailed)
    std::string script = "ppppp";
    std::function<void()> onDown = [] {};

    void mouseDown(const NSEvent& event) override {
        answer("down", event);
        onDown();
    }
    void mouseDragged(const NSEvent& event) override { answer("drag", event); }
    void mouseUp(const NSEvent& event) override { answer("up", event); }
    void cancelled() override { log_ += name_ + ":cancelled "; }
    void invokeAction() override { log_ += name_ + ":action "; }

private:
    void answer(const char* what, const NSEvent& event) {
        log_ += name_ + ":" + what + std::to_string(std::lround(event.locationInWindow.x)) + " ";
        static const std::map<char, State> states{{'p', State::Possible},
                                                  {'b', State::Began},
                                                  {'c', State::Changed},
                                                  {'e', State::Ended},
                                                  {'f', State::Failed}};
        setState(states.at(script.at(next_++)));
    }

    std::string name_;
    std::string& log_;
    std::size_t next_ = 0;
};

class NSGestureArenaTest : public testing::Test {
protected:
    NSGestureArenaTest() {
        outer->setFrame({{0, 0}, {100, 100}});
        inner->setFrame({{10, 10}, {50, 50}});
        outer->addSubview(inner);
        outer->addGestureRecognizer(outside);
        inner->addGestureRecognizer(inside);
        window.setContentView(outer);
    }

    void waitForInner() {
        inside->setDelegate(&innerFirst);
        outside->setDelegate(&innerFirst);
    }
    void send(NSEventType type, double x) { window.sendEvent({type, {x, 20}, 0}); }
    void gesture() {
        send(NSEventType::LeftMouseDown, 20);
        send(NSEventType::LeftMouseDragged, 21);
        send(NSEventType::LeftMouseDragged, 22);
        send(NSEventType::LeftMouseUp, 23);
    }

    std::string log;
    InnerFirst innerFirst;
    std::shared_ptr<NSView> outer = std::make_shared<NSView>();
    std::shared_ptr<NSView> inner = std::make_shared<NSView>();
    std::shared_ptr<Scripted> inside = std::make_shared<Scripted>("in", log);
    std::shared_ptr<Scripted> outside = std::make_shared<Scripted>("out", log);
    OffscreenWindow window{{100, 100}};
};

}  // namespace

TEST_F(NSGestureArenaTest, GesturesGoToTheOneThatClaimsThem) {
    const struct {
        std::string what;
        bool outerWaits;
        std::string inner, outer;
        std::string expected;
    } cases[] = {
        {"undecided, the outer one waits for good", true, "pppp", "pppp",
         "in:down20 in:drag21 in:drag22 in:up23 "},
        {"undecided, none waits", false, "pppp", "pppp",
         "in:down20 out:down20 in:drag21 out:drag21 in:drag22 out:drag22 in:up23 out:up23 "},
        {"the inner one claims, the outer one has seen nothing", true, "bcce", "pppp",
         "in:down20 in:action in:drag21 in:action in:drag22 in:action in:up23 in:action "},
        {"the inner one claims late, the outer one has seen the beginning", false, "ppbe", "pppp",
         "in:down20 out:down20 in:drag21 out:drag21 in:drag22 in:action out:cancelled in:up23 "
         "in:action "},
        {"the inner one fails at once", true, "f", "bcce",
         "in:down20 out:down20 out:action out:drag21 out:action out:drag22 out:action out:up23 "
         "out:action "},
        {"the inner one fails late, the outer one sees all in order", true, "ppf", "pbce",
         "in:down20 in:drag21 in:drag22 out:down20 out:drag21 out:action out:drag22 out:action "
         "out:up23 out:action "},
        {"the inner one fails at the release", true, "pppf", "pppe",
         "in:down20 in:drag21 in:drag22 in:up23 out:down20 out:drag21 out:drag22 out:up23 "
         "out:action "},
        {"the outer one claims", false, "pp", "bcce",
         "in:down20 out:down20 out:action in:cancelled out:drag21 out:action out:drag22 "
         "out:action out:up23 out:action "},
        {"both fail", true, "f", "f", "in:down20 out:down20 "},
        {"a claim, then failure: nobody is left", false, "pbf", "pppp",
         "in:down20 out:down20 in:drag21 in:action out:cancelled in:drag22 "},
    };
    for (const auto& c : cases) {
        log.clear();
        inside = std::make_shared<Scripted>("in", log);
        outside = std::make_shared<Scripted>("out", log);
        inside->script = c.inner;
        outside->script = c.outer;
        outer = std::make_shared<NSView>();
        inner = std::make_shared<NSView>();
        outer->setFrame({{0, 0}, {100, 100}});
        inner->setFrame({{10, 10}, {50, 50}});
        outer->addSubview(inner);
        outer->addGestureRecognizer(outside);
        inner->addGestureRecognizer(inside);
        window.setContentView(outer);
        if (c.outerWaits) {
            waitForInner();
        }
        gesture();
        EXPECT_EQ(log, c.expected) << c.what;
        EXPECT_EQ(inside->state(), State::Possible) << c.what;
        EXPECT_EQ(outside->state(), State::Possible) << c.what;
    }
}

TEST_F(NSGestureArenaTest, TwoRecognizersOfOneViewDoNotWaitForOneAnother) {
    waitForInner();
    const auto second = std::make_shared<Scripted>("second", log);
    second->setDelegate(&innerFirst);
    inner->addGestureRecognizer(second);
    inside->script = "f";
    second->script = "bcce";
    gesture();
    EXPECT_EQ(log,
              "in:down20 second:down20 second:action second:drag21 second:action second:drag22 "
              "second:action second:up23 second:action ");
}

TEST_F(NSGestureArenaTest, AGestureStaysWhereverThePointerGoes) {
    inside->script = "bce";
    send(NSEventType::LeftMouseDown, 20);
    send(NSEventType::LeftMouseDragged, 900);
    send(NSEventType::LeftMouseUp, -900);
    EXPECT_EQ(log, "in:down20 in:action in:drag900 in:action in:up-900 in:action ");
    // A press beside the inner view is none of its business; a press outside is nobody's.
    log.clear();
    outside->script = "f";
    send(NSEventType::LeftMouseDown, 5);
    send(NSEventType::LeftMouseUp, 5);
    send(NSEventType::LeftMouseDown, 500);
    send(NSEventType::LeftMouseUp, 500);
    EXPECT_EQ(log, "out:down5 ");
}

TEST_F(NSGestureArenaTest, AViewThatLeavesIsCancelledAndLetsTheOthersIn) {
    waitForInner();
    // From within its own handler, and its owner lets go of it.
    inside->onDown = [this] {
        inner->removeFromSuperviewWithoutNeedingDisplay();
        inner.reset();
    };
    outside->script = "pbce";
    gesture();
    EXPECT_EQ(log,
              "in:down20 in:cancelled out:down20 out:drag21 out:action out:drag22 out:action "
              "out:up23 out:action ");
}

TEST_F(NSGestureArenaTest, AViewThatLeavesBetweenEventsIsCancelledBeforeTheNext) {
    send(NSEventType::LeftMouseDown, 20);
    window.setContentView(nullptr);
    EXPECT_EQ(log, "in:down20 out:down20 ");
    send(NSEventType::LeftMouseDragged, 21);
    EXPECT_EQ(log, "in:down20 out:down20 in:cancelled out:cancelled ");
    EXPECT_EQ(inside->state(), State::Cancelled);
    send(NSEventType::LeftMouseUp, 21);
    EXPECT_EQ(inside->state(), State::Possible);
}

TEST_F(NSGestureArenaTest, AViewThatMovesWithinItsWindowKeepsTheGesture) {
    inside->script = "bce";
    send(NSEventType::LeftMouseDown, 20);
    const auto other = std::make_shared<NSView>();
    outer->addSubview(other);
    other->addSubview(inner);
    send(NSEventType::LeftMouseUp, 21);
    EXPECT_EQ(log, "in:down20 in:action in:up21 in:action ");
}

TEST_F(NSGestureArenaTest, APressWithoutTheLastReleaseBeginsAnew) {
    inside->script = "bb";
    send(NSEventType::LeftMouseDown, 20);
    send(NSEventType::LeftMouseDown, 21);
    EXPECT_EQ(log, "in:down20 in:action in:cancelled in:down21 in:action ");
}

TEST_F(NSGestureArenaTest, EventsSentFromAHandlerWaitForTheirTurn) {
    inside->onDown = [this] { send(NSEventType::LeftMouseUp, 30); };
    send(NSEventType::LeftMouseDown, 20);
    EXPECT_EQ(log, "in:down20 out:down20 in:up30 out:up30 ");
}

TEST_F(NSGestureArenaTest, PlacesAreTheViewsOwn) {
    inner->layer()->setTransform(CATransform3D::makeAffineTransform({2, 0, 0, 2, 0, 0}));
    const NSEvent event{NSEventType::LeftMouseDown, {30, 20}, 0};
    EXPECT_EQ(inside->locationInView(event, *inner), (CGPoint{10, 5}));
    EXPECT_EQ(inside->locationInView(event, *outer), (CGPoint{30, 20}));
}
