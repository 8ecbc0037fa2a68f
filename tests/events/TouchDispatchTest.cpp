#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "orvane/display/events/DisplayEventHandler.h"
#include "tests/tree/FakeLayer.h"

namespace orvane::display::events {
namespace {

using State = TouchEventListenerState;
using Phase = TouchEventPhase;
using R = DisplayObject::Rect;

// A listener that answers from a list, repeating the last entry, and logs every call.
class ScriptedListener : public TouchEventListener {
public:
    ScriptedListener(std::string name, std::string& log, std::vector<State> answers)
        : name_(std::move(name)), log_(log), answers_(std::move(answers)) {}

    State operator()(const std::shared_ptr<DisplayObject>&, const TouchEvent& event) override {
        static constexpr const char* kPhases[] = {"began", "moved", "ended", "cancelled"};
        write(kPhases[static_cast<int>(event.phase)]);
        last = event;
        const State answer = answers_[std::min(calls_, answers_.size() - 1)];
        ++calls_;
        if (then) {
            then();
        }
        return answer;
    }
    void reset() override { write("reset"); }
    void action() override { write("action"); }

    TouchEvent last;
    std::function<void()> then;

private:
    void write(const char* what) { log_ += (log_.empty() ? "" : ", ") + name_ + " " + what; }

    std::string name_;
    std::string& log_;
    std::vector<State> answers_;
    std::size_t calls_ = 0;
};

class TouchDispatch : public testing::Test {
protected:
    void SetUp() override {
        layer_->addObject(root_);
        root_->add(first_);
        root_->add(second_);
    }
    std::shared_ptr<ScriptedListener> listen(const std::shared_ptr<DisplayObject>& object,
                                             const std::string& name, std::vector<State> answers) {
        listeners_.push_back(std::make_shared<ScriptedListener>(name, log_, std::move(answers)));
        object->addListener<TouchEvent>(listeners_.back());
        return listeners_.back();
    }

    std::string log_;
    std::vector<std::shared_ptr<ScriptedListener>> listeners_;
    std::shared_ptr<FakeLayer> layer_ = std::make_shared<FakeLayer>();
    std::shared_ptr<Group> root_ = std::make_shared<Group>();
    std::shared_ptr<Spot> first_ = std::make_shared<Spot>(R(0, 0, 10, 10));
    std::shared_ptr<Spot> second_ = std::make_shared<Spot>(R(0, 0, 10, 10));
    DisplayEventHandler handler_;
};

TEST_F(TouchDispatch, AListenerThatClaimsTheTouchReceivesItAlone) {
    listen(root_, "root", {State::Possible, State::Began, State::Changed});
    listen(first_, "first", {State::Possible});
    EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Possible);
    EXPECT_EQ(handler_.touchMoved({6, 5}), State::Began);
    EXPECT_EQ(handler_.touchMoved({7, 5}), State::Changed);
    EXPECT_EQ(log_, "root reset, first reset, root began, root moved, root moved");
    handler_.invokeActiveListenerAction();
    EXPECT_EQ(log_, "root reset, first reset, root began, root moved, root moved, root action");
}

TEST_F(TouchDispatch, AListenerThatGivesUpPassesOnTheWholeGesture) {
    listen(first_, "first", {State::Possible, State::Possible, State::Failed});
    listen(second_, "second", {State::Possible, State::Began, State::Changed});
    handler_.touchBegan(root_, {5, 5});
    handler_.touchMoved({6, 5});
    EXPECT_EQ(handler_.touchEnded({6, 6}), State::Changed);
    // The second listener receives all events from the first one. Its action is called for the past
    // event that it claims, not for the present one, whose action the platform requests.
    EXPECT_EQ(log_,
              "first reset, second reset, first began, first moved, first ended, second began, "
              "second moved, second action, second ended");
}

TEST_F(TouchDispatch, FailsWithoutAWillingListener) {
    EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Failed);
    listen(first_, "first", {State::Failed});
    listen(second_, "second", {State::Failed});
    EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Failed);
    EXPECT_EQ(handler_.touchMoved({5, 5}), State::Failed);
    EXPECT_EQ(log_, "first reset, second reset, first began, second began");
    handler_.invokeActiveListenerAction();
}

TEST_F(TouchDispatch, EventsCarryTheLocationsOfTheGesture) {
    const auto listener = listen(first_, "first", {State::Possible});
    handler_.touchBegan(root_, {1, 2});
    handler_.touchMoved({4, 4});
    handler_.touchCancelled({5, 9});
    EXPECT_EQ(listener->last.phase, Phase::Cancelled);
    EXPECT_EQ(listener->last.startLocation, TouchEvent().location + geometry::Point<double>(1, 2));
    EXPECT_EQ(listener->last.delta, geometry::Point<double>(1, 5));
}

TEST_F(TouchDispatch, HitsVisibleObjectsIncludingTheirEdges) {
    listen(first_, "first", {State::Possible});
    second_->setArea({10, 0, 10, 10});
    listen(second_, "second", {State::Possible});
    handler_.touchBegan(root_, {10, 10});
    EXPECT_EQ(log_, "first reset, second reset, first began");
    log_.clear();
    first_->setVisible(false);
    handler_.touchBegan(root_, {10, 10});
    EXPECT_EQ(log_, "second reset, second began");
    log_.clear();
    handler_.touchBegan(root_, {30, 10});
    EXPECT_EQ(log_, "");
}

TEST_F(TouchDispatch, QueriesTheVisibilityOfAContainerOnce) {
    struct CountingGroup : Group {
        bool isVisible() const override {
            ++queries;
            return Group::isVisible();
        }
        mutable int queries = 0;
    };
    const auto outer = std::make_shared<CountingGroup>();
    const auto inner = std::make_shared<Group>();
    root_->add(outer);
    outer->add(inner);
    inner->add(std::make_shared<Spot>());
    root_->getFrame();
    outer->queries = 0;
    handler_.touchBegan(root_, {5, 5});
    EXPECT_EQ(outer->queries, 1);
}

TEST_F(TouchDispatch, SearchesAfterTheRootUpToAnotherLayer) {
    const auto sibling = std::make_shared<Spot>();
    const auto onOther = std::make_shared<Spot>();
    const auto behind = std::make_shared<Spot>();
    const auto outer = std::make_shared<Group>();
    onOther->extractIntoLayer(std::make_shared<FakeLayer>("other"));
    for (const auto& object : {std::make_shared<Spot>(), sibling, onOther, behind}) {
        outer->add(object);
    }
    listen(sibling, "sibling", {State::Possible});
    listen(behind, "behind", {State::Possible});
    handler_.touchBegan(outer->getChildren().front(), {5, 5});
    EXPECT_EQ(log_, "sibling reset, sibling began");
}

TEST_F(TouchDispatch, AListenerMayCauseEventsAndRemoveItsObject) {
    const auto listener = listen(first_, "first", {State::Possible});
    listener->then = [&] {
        EXPECT_EQ(handler_.touchCancelled({0, 0}), State::Failed);
        EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Failed);
        root_->remove(first_);
    };
    EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Possible);
    EXPECT_EQ(handler_.touchMoved({5, 6}), State::Possible);
    EXPECT_EQ(log_, "first reset, first began, first moved");
}

TEST_F(TouchDispatch, AListenerThatThrowsIsLoggedAndGivesUp) {
    const auto thrower = listen(first_, "first", {State::Changed});
    thrower->then = [] { throw std::runtime_error("out of paper"); };
    listen(second_, "second", {State::Began});
    testing::internal::CaptureStderr();
    EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Began);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "exception of a touch listener: out of paper\n");
    EXPECT_EQ(log_, "first reset, second reset, first began, second began");
}

TEST_F(TouchDispatch, AListenerThatThrowsInAnEarlierEventGivesUp) {
    listen(first_, "first", {State::Possible, State::Failed});
    const auto thrower = listen(second_, "second", {State::Possible, State::Possible});
    thrower->then = [calls = 0]() mutable {
        if (++calls == 2) {
            throw std::runtime_error("out of paper");
        }
    };
    EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Possible);
    EXPECT_EQ(handler_.touchMoved({5, 6}), State::Failed);
}

TEST_F(TouchDispatch, CancelsOnlyAnOpenGesture) {
    const auto listener = listen(first_, "first", {State::Began});
    handler_.touchBegan(root_, {5, 5});
    handler_.cancelGesture();
    handler_.cancelGesture();
    EXPECT_EQ(log_, "first reset, first began, first cancelled");
    log_.clear();
    handler_.touchBegan(root_, {5, 5});
    handler_.touchEnded({5, 5});
    handler_.cancelGesture();
    EXPECT_EQ(log_, "first reset, first began, first ended");

    log_.clear();
    listener->then = [&] {  // from within a listener
        listener->then = nullptr;
        handler_.cancelGesture();
    };
    EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Failed);
    EXPECT_EQ(log_, "first reset, first began, first cancelled");
}

}  // namespace
}  // namespace orvane::display::events
