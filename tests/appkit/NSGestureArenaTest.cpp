#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <sstream>
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

// Two views, one in the other, and a recognizer on each.
class NSGestureArenaTest : public testing::Test {
protected:
    NSGestureArenaTest() { build(); }

    void build() {
        log.clear();
        inside = std::make_shared<Scripted>("in", log);
        outside = std::make_shared<Scripted>("out", log);
        outer = std::make_shared<NSView>();
        inner = std::make_shared<NSView>();
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
    // A letter and a place for each event: d(own), m(oved) with the button down, u(p).
    void send(const std::string& events) {
        std::istringstream words(events);
        char what = 0;
        double x = 0;
        while (words >> what >> x) {
            window.sendEvent({what == 'd'   ? NSEventType::LeftMouseDown
                              : what == 'm' ? NSEventType::LeftMouseDragged
                                            : NSEventType::LeftMouseUp,
                              {x, 20},
                              0});
        }
    }

    static constexpr const char* gesture = "d20 m21 m22 u23";
    std::string log;
    InnerFirst innerFirst;
    std::shared_ptr<NSView> outer, inner;
    std::shared_ptr<Scripted> inside, outside;
    OffscreenWindow window{{100, 100}};
};

}  // namespace

TEST_F(NSGestureArenaTest, GesturesGoToTheOneThatClaimsThem) {
    const struct {
        std::string what;
        bool outerWaits;
        std::string inner, outer;
        std::string expected;
        std::string events = gesture;
    } cases[] = {
        {"the inner one claims, the outer one has seen nothing", true, "bcce", "pppp",
         "in:down20 in:action in:drag21 in:action in:drag22 in:action in:up23 in:action "},
        {"the inner one claims late, the outer one has seen the beginning", false, "ppbe", "pppp",
         "in:down20 out:down20 in:drag21 out:drag21 in:drag22 in:action out:cancelled in:up23 "
         "in:action "},
        {"the inner one fails late, the outer one sees all in order", true, "ppf", "pbce",
         "in:down20 in:drag21 in:drag22 out:down20 out:drag21 out:action out:drag22 out:action "
         "out:up23 out:action "},
        {"a claim, then failure: nobody is left", false, "pbf", "pppp",
         "in:down20 out:down20 in:drag21 in:action out:cancelled in:drag22 "},
        {"the pointer goes anywhere, the gesture stays", false, "bce", "ppp",
         "in:down20 in:action in:drag900 in:action in:up-900 in:action ", "d20 m900 u-900"},
        {"a press without the last release begins anew", false, "bb", "",
         "in:down20 in:action in:cancelled in:down21 in:action ", "d20 d21"},
    };
    for (const auto& c : cases) {
        build();
        inside->script = c.inner;
        outside->script = c.outer;
        if (c.outerWaits) {
            waitForInner();
        }
        send(c.events);
        EXPECT_EQ(log, c.expected) << c.what;
        if (c.events.find('u') != std::string::npos) {
            EXPECT_EQ(inside->state(), State::Possible) << c.what;
            EXPECT_EQ(outside->state(), State::Possible) << c.what;
        }
    }
}

TEST_F(NSGestureArenaTest, AViewThatLeavesIsCancelledAndLetsTheOthersIn) {
    // From within its own handler, and its owner lets go of it.
    waitForInner();
    inside->onDown = [this] {
        inner->removeFromSuperviewWithoutNeedingDisplay();
        inner.reset();
    };
    outside->script = "pbce";
    send(gesture);
    EXPECT_EQ(log,
              "in:down20 in:cancelled out:down20 out:drag21 out:action out:drag22 out:action "
              "out:up23 out:action ");

    // One that moves within its window keeps the gesture.
    build();
    inside->script = "bce";
    send("d20");
    const auto other = std::make_shared<NSView>();
    outer->addSubview(other);
    other->addSubview(inner);
    send("u21");
    EXPECT_EQ(log, "in:down20 in:action in:up21 in:action ");
}

TEST_F(NSGestureArenaTest, EventsSentFromAHandlerWaitForTheirTurn) {
    inside->onDown = [this] { send("u30"); };
    send("d20");
    EXPECT_EQ(log, "in:down20 out:down20 in:up30 out:up30 ");
}

TEST_F(NSGestureArenaTest, PlacesAreTheViewsOwn) {
    inner->layer()->setTransform(CATransform3D::makeAffineTransform({2, 0, 0, 2, 0, 0}));
    const NSEvent event{NSEventType::LeftMouseDown, {30, 20}, 0};
    EXPECT_EQ(inside->locationInView(event, *inner), (CGPoint{10, 5}));
    EXPECT_EQ(inside->locationInView(event, *outer), (CGPoint{30, 20}));
}
