#include "orvane/notification/Notifier.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

#include "orvane/commons/virtual_enable_shared_from_this.h"

namespace orvane::notification {
namespace {

class Bell;
struct Rung {
    using listener_type = Listener<Bell, Rung, void>;
    int times = 0;
};
class Bell : public virtual Notifier<Bell>,
             public virtual commons::virtual_enable_shared_from_this<Bell> {};

class Ear : public Rung::listener_type {
public:
    using Heard = std::function<void(const std::shared_ptr<Bell>&, const Rung&)>;
    explicit Ear(Heard heard) : heard_(std::move(heard)) {}
    void operator()(const std::shared_ptr<Bell>& bell, const Rung& rung) override {
        heard_(bell, rung);
    }

private:
    Heard heard_;
};

class NotifierTest : public testing::Test {
protected:
    std::shared_ptr<Ear> ear(
        const std::string& name, std::function<void()> also = [] {}) {
        return std::make_shared<Ear>([this, name, also](const auto& sender, const Rung& rung) {
            EXPECT_EQ(sender, bell_);
            log_ += name + std::to_string(rung.times) + " ";
            also();
        });
    }

    std::shared_ptr<Bell> bell_ = std::make_shared<Bell>();
    std::string log_;
};

TEST_F(NotifierTest, CallsTheLivingInOrderAndOneAddedTwiceTwice) {
    const auto a = ear("a");
    auto b = ear("b");
    bell_->addListener<Rung>(a);
    bell_->addListener<Rung>(b);
    bell_->addListener<Rung>(a);
    bell_->notify(Rung{1});
    b.reset();
    bell_->notify(Rung{2});
    EXPECT_EQ(log_, "a1 b1 a1 a2 a2 ");
}

TEST_F(NotifierTest, ChangesMadeByAListenerCountFromTheNextEvent) {
    auto late = ear("late");
    auto dropped = ear("dropped");
    const auto first = ear("first", [&] {
        bell_->addListener<Rung>(late);
        dropped.reset();
    });
    bell_->addListener<Rung>(first);
    bell_->addListener<Rung>(dropped);
    bell_->notify(Rung{1});
    EXPECT_EQ(log_, "first1 dropped1 ");
    log_.clear();
    bell_->notify(Rung{2});
    EXPECT_EQ(log_, "first2 late2 ");
}

TEST_F(NotifierTest, AnExceptionPassesAndEndsThePass) {
    const auto angry = ear("angry", [] { throw std::runtime_error("no"); });
    const auto after = ear("after");
    bell_->addListener<Rung>(angry);
    bell_->addListener<Rung>(after);
    EXPECT_THROW(bell_->notify(Rung{1}), std::runtime_error);
    EXPECT_EQ(log_, "angry1 ");
}

TEST_F(NotifierTest, ASenderThatNobodyHoldsIsOnlyAskedForWhenSomebodyListens) {
    Bell loose;
    EXPECT_NO_THROW(loose.notify(Rung{}));
    const auto listener = ear("x");
    loose.addListener<Rung>(listener);
    EXPECT_THROW(loose.notify(Rung{}), std::bad_weak_ptr);
}

}  // namespace
}  // namespace orvane::notification
