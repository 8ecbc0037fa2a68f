#include <gtest/gtest.h>

#include <functional>

#include "orvane/display/events/DisplayEventHandler.h"
#include "tests/tree/FakeLayer.h"

namespace orvane::display::events {
namespace {

using State = TouchEventListenerState;
using Phase = TouchEventPhase;
using R = DisplayObject::Rect;

// Answers from a script, and then with its last answer; writes down all it is told.
class Finger : public TouchEventListener {
public:
    Finger(std::string name, std::string& log, std::vector<State> answers)
        : name_(std::move(name)), log_(log), answers_(std::move(answers)) {}

    State operator()(const std::shared_ptr<DisplayObject>&, const TouchEvent& event) override {
        log_ += name_ + "bmec"[static_cast<int>(event.phase)] + " ";
        last = event;
        const State answer = answers_[std::min(told_, answers_.size() - 1)];
        ++told_;
        if (then) {
            then();
        }
        return answer;
    }
    void reset() override { log_ += name_ + "0 "; }
    void action() override { log_ += name_ + "! "; }

    TouchEvent last;
    std::function<void()> then;

private:
    std::string name_;
    std::string& log_;
    std::vector<State> answers_;
    std::size_t told_ = 0;
};

class TouchDispatch : public testing::Test {
protected:
    void SetUp() override {
        layer_->addObject(root_);
        root_->add(first_);
        root_->add(second_);
    }
    std::shared_ptr<Finger> listen(const std::shared_ptr<DisplayObject>& object,
                                   const std::string& name, std::vector<State> answers) {
        fingers_.push_back(std::make_shared<Finger>(name, log_, std::move(answers)));
        object->addListener<TouchEvent>(fingers_.back());
        return fingers_.back();
    }

    std::string log_;
    std::vector<std::shared_ptr<Finger>> fingers_;
    std::shared_ptr<FakeLayer> layer_ = std::make_shared<FakeLayer>();
    std::shared_ptr<Group> root_ = std::make_shared<Group>();
    std::shared_ptr<Spot> first_ = std::make_shared<Spot>(R(0, 0, 10, 10));
    std::shared_ptr<Spot> second_ = std::make_shared<Spot>(R(0, 0, 10, 10));
    DisplayEventHandler handler_;
};

TEST_F(TouchDispatch, WhoClaimsTheTouchIsToldAlone) {
    listen(root_, "a", {State::Possible, State::Began, State::Changed});
    listen(first_, "b", {State::Possible});
    EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Possible);
    EXPECT_EQ(handler_.touchMoved({6, 5}), State::Began);
    EXPECT_EQ(handler_.touchMoved({7, 5}), State::Changed);
    EXPECT_EQ(log_, "a0 b0 ab am am ");
    handler_.invokeActiveListenerAction();
    EXPECT_EQ(log_, "a0 b0 ab am am a! ");
}

TEST_F(TouchDispatch, WhoGivesUpHandsTheWholeGestureOn) {
    listen(first_, "a", {State::Possible, State::Possible, State::Failed});
    listen(second_, "b", {State::Possible, State::Began, State::Changed});
    handler_.touchBegan(root_, {5, 5});
    handler_.touchMoved({6, 5});
    EXPECT_EQ(handler_.touchEnded({6, 6}), State::Changed);
    // The second hears all from the first event; its action runs for what it claims of the past,
    // and not for the present event, of which the platform asks.
    EXPECT_EQ(log_, "a0 b0 ab am ae bb bm b! be ");
}

TEST_F(TouchDispatch, NobodyThereOrNobodyWilling) {
    EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Failed);
    listen(first_, "a", {State::Failed});
    listen(second_, "b", {State::Failed});
    EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Failed);
    EXPECT_EQ(handler_.touchMoved({5, 5}), State::Failed);
    EXPECT_EQ(log_, "a0 b0 ab bb ");
    handler_.invokeActiveListenerAction();
}

TEST_F(TouchDispatch, EventsCarryTheGesturesPlaces) {
    const auto a = listen(first_, "a", {State::Possible});
    handler_.touchBegan(root_, {1, 2});
    handler_.touchMoved({4, 4});
    handler_.touchCancelled({5, 9});
    EXPECT_EQ(a->last.phase, Phase::Cancelled);
    EXPECT_EQ(a->last.startLocation, TouchEvent().location + geometry::Point<double>(1, 2));
    EXPECT_EQ(a->last.delta, geometry::Point<double>(1, 5));
}

TEST_F(TouchDispatch, HitsAreTheVisibleUnderThePointEdgesIncluded) {
    listen(first_, "a", {State::Possible});
    second_->setArea({10, 0, 10, 10});
    listen(second_, "b", {State::Possible});
    handler_.touchBegan(root_, {10, 10});
    EXPECT_EQ(log_, "a0 b0 ab ");
    log_.clear();
    first_->setVisible(false);
    handler_.touchBegan(root_, {10, 10});
    EXPECT_EQ(log_, "b0 bb ");
    log_.clear();
    handler_.touchBegan(root_, {30, 10});
    EXPECT_EQ(log_, "");
}

TEST_F(TouchDispatch, TheWalkGoesOnBehindTheRootAndEndsAtAnotherLayer) {
    const auto sibling = std::make_shared<Spot>();
    const auto onOther = std::make_shared<Spot>();
    const auto behind = std::make_shared<Spot>();
    const auto outer = std::make_shared<Group>();
    onOther->extractIntoLayer(std::make_shared<FakeLayer>("other"));
    for (const auto& object : {std::make_shared<Spot>(), sibling, onOther, behind}) {
        outer->add(object);
    }
    listen(sibling, "s", {State::Possible});
    listen(behind, "x", {State::Possible});
    handler_.touchBegan(outer->getChildren().front(), {5, 5});
    EXPECT_EQ(log_, "s0 sb ");
}

TEST_F(TouchDispatch, AListenerMayStartOverOrTakeItsObjectAway) {
    const auto a = listen(first_, "a", {State::Possible});
    a->then = [&] {
        EXPECT_EQ(handler_.touchCancelled({0, 0}), State::Failed);
        EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Failed);
        root_->remove(first_);
    };
    EXPECT_EQ(handler_.touchBegan(root_, {5, 5}), State::Possible);
    EXPECT_EQ(handler_.touchMoved({5, 6}), State::Possible);
    EXPECT_EQ(log_, "a0 ab am ");
}

}  // namespace
}  // namespace orvane::display::events
