#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"
#include "platform/offscreen/OffscreenWindow.h"

using namespace orvane::platform;

namespace {

// Writes every call to a log, and handles the events that a test chooses.
struct Responder final : NSView {
    Responder(std::string name_, std::string& log_) : name(std::move(name_)), log(log_) {
        setFrame({{0, 0}, {100, 100}});
    }
    bool keyDown(const NSEvent& event) override { return note("down " + event.key); }
    bool keyUp(const NSEvent& event) override { return note("up " + event.key); }
    bool scrollWheel(const NSEvent&) override { return note("scroll"); }
    bool acceptsFirstResponder() const override { return accepts; }
    bool canBecomeKeyView() const override { return isKeyView; }
    void didBecomeKeyView() override { note("was reached by Tab"); }
    void didBecomeFirstResponder() override { note("has the keyboard"); }
    void didResignFirstResponder() override { note("lost the keyboard"); }
    void step(double time) override {
        note("step");
        times.push_back(time);
        setNeedsFrames(times.size() < 2);
    }
    bool note(const std::string& what) {
        log += name + " " + what + ", ";
        return handles;
    }

    std::string name;
    std::string& log;
    bool handles = false;
    bool accepts = true;
    bool isKeyView = false;
    std::vector<double> times;
};

class NSRespondersTest : public testing::Test {
protected:
    NSRespondersTest() {
        window.setContentView(root);
        root->addSubview(inner);
        root->addSubview(other);
        other->setFrame({{100, 0}, {100, 100}});
        root->setFrame({{0, 0}, {200, 100}});
    }
    std::string send(const NSEvent& event) {
        const bool handled = window.sendEvent(event);
        return std::exchange(log, {}) + (handled ? "handled" : "not handled");
    }
    static NSEvent key(const std::string& name, NSEventType type = NSEventType::KeyDown) {
        NSEvent event;
        event.type = type;
        event.key = name;
        return event;
    }
    static NSEvent scroll(double x, NSEventPhase phase = NSEventPhase::None) {
        NSEvent event;
        event.type = NSEventType::ScrollWheel;
        event.locationInWindow = {x, 50};
        event.phase = phase;
        return event;
    }

    std::string log;
    std::shared_ptr<Responder> root = std::make_shared<Responder>("root", log);
    std::shared_ptr<Responder> inner = std::make_shared<Responder>("inner", log);
    std::shared_ptr<Responder> other = std::make_shared<Responder>("other", log);
    OffscreenWindow window{{200, 100}};
};

}  // namespace

TEST_F(NSRespondersTest, KeysGoToTheFirstResponderAndUpToTheContentView) {
    EXPECT_EQ(send(key("a")), "root down a, not handled");
    EXPECT_TRUE(window.makeFirstResponder(inner.get()));
    EXPECT_EQ(send(key("a", NSEventType::KeyUp)),
              "inner has the keyboard, inner up a, root up a, not handled");
    inner->handles = true;
    EXPECT_EQ(send(key("b")), "inner down b, handled");
    other->accepts = false;
    EXPECT_FALSE(window.makeFirstResponder(other.get()));
    EXPECT_EQ(window.firstResponder(), inner.get());
    other->accepts = true;
    EXPECT_TRUE(window.makeFirstResponder(other.get()));
    EXPECT_EQ(std::exchange(log, {}), "inner lost the keyboard, other has the keyboard, ");
    other->removeFromSuperviewWithoutNeedingDisplay();
    EXPECT_EQ(window.firstResponder(), nullptr);
    EXPECT_FALSE(window.makeFirstResponder(other.get()));
}

TEST_F(NSRespondersTest, TabVisitsKeyViewsInTheirOrder) {
    const auto addKeyView = [&](const std::string& name, int order) {
        const auto view = std::make_shared<Responder>(name, log);
        view->isKeyView = true;
        view->setKeyViewOrder(order);
        root->addSubview(view);
        return view;
    };
    const auto second = addKeyView("second", 1);
    const auto third = addKeyView("third", 1);
    const auto hidden = addKeyView("hidden", 0);
    const auto disabled = addKeyView("disabled", 0);
    const auto first = addKeyView("first", 0);
    hidden->setHidden(true);
    disabled->accepts = false;
    const auto visited = [&](const NSEvent& event) {
        window.sendEvent(event);
        log.clear();
        const auto* const view = dynamic_cast<const Responder*>(window.firstResponder());
        return view != nullptr ? view->name : "none";
    };
    NSEvent back = key("Tab");
    back.modifierFlags = kNSEventModifierShift;
    EXPECT_EQ(visited(back), "third");
    for (const std::string name : {"first", "second", "third", "first"}) {
        EXPECT_EQ(visited(key("Tab")), name);
    }
    EXPECT_EQ(visited(back), "third");
    EXPECT_FALSE(window.selectKeyView(true, false));
    EXPECT_TRUE(window.selectKeyView(false, false));
    EXPECT_EQ(std::exchange(log, {}),
              "third lost the keyboard, second has the keyboard, second was reached by Tab, ");
    // A view that handles Tab keeps it, and a Tab with Control moves nothing.
    second->handles = true;
    EXPECT_EQ(visited(key("Tab")), "second");
    second->handles = false;
    NSEvent command = key("Tab");
    command.modifierFlags = kNSEventModifierControl;
    EXPECT_EQ(visited(command), "second");
}

TEST_F(NSRespondersTest, APressGivesTheKeyboardToTheInnermostViewThatAcceptsIt) {
    const auto press = [&](double x) {
        window.sendEvent({NSEventType::LeftMouseDown, {x, 50}, 0});
        window.sendEvent({NSEventType::LeftMouseUp, {x, 50}, 0});
        return window.firstResponder();
    };
    EXPECT_EQ(press(50), inner.get());
    EXPECT_EQ(press(150), other.get());
    inner->accepts = false;
    EXPECT_EQ(press(50), root.get());
    root->accepts = false;
    EXPECT_TRUE(window.makeFirstResponder(other.get()));
    EXPECT_EQ(press(50), other.get());
    root->setHidden(true);
    log.clear();
    window.displayIfNeeded(1);
    EXPECT_EQ(window.firstResponder(), nullptr);
    EXPECT_EQ(log, "other lost the keyboard, ");
}

TEST_F(NSRespondersTest, AScrollGestureStaysWithTheViewsWhereItBegan) {
    EXPECT_EQ(send(scroll(150)), "other scroll, root scroll, not handled");
    EXPECT_EQ(send(scroll(50, NSEventPhase::Began)), "inner scroll, root scroll, not handled");
    EXPECT_EQ(send(scroll(150, NSEventPhase::Changed)), "inner scroll, root scroll, not handled");
    EXPECT_EQ(send(scroll(150)), "other scroll, root scroll, not handled");
    EXPECT_EQ(send(scroll(150, NSEventPhase::Ended)), "inner scroll, root scroll, not handled");
    EXPECT_EQ(send(scroll(150, NSEventPhase::Changed)), "other scroll, root scroll, not handled");
}

TEST_F(NSRespondersTest, AViewIsSteppedAtEachPassUntilItNeedsNoMoreFrames) {
    inner->setNeedsFrames(true);
    EXPECT_TRUE(window.isAnimating());
    for (const double time : {1.0, 2.0, 3.0}) {
        window.displayIfNeeded(time);
    }
    EXPECT_EQ(inner->times, (std::vector<double>{1, 2}));
    EXPECT_FALSE(window.needsDisplay());
    // A view keeps its wish while it is in no window.
    other->removeFromSuperviewWithoutNeedingDisplay();
    other->setNeedsFrames(true);
    window.displayIfNeeded(4);
    EXPECT_TRUE(other->times.empty());
    root->addSubview(other);
    window.displayIfNeeded(5);
    EXPECT_EQ(other->times, std::vector<double>{5});
}
