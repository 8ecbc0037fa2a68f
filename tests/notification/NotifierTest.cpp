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

struct BellListener : Rung::listener_type {
    void operator()(const std::shared_ptr<Bell>& bell, const Rung& rung) override {
        heard(bell, rung);
    }
    std::function<void(const std::shared_ptr<Bell>&, const Rung&)> heard;
};

class NotifierTest : public testing::Test {
protected:
    std::shared_ptr<BellListener> listener(
        const std::string& name, const std::function<void()>& action = [] {}) {
        const auto result = std::make_shared<BellListener>();
        result->heard = [this, name, action](const auto& sender, const Rung& rung) {
            EXPECT_EQ(sender, bell_);
            log_ += name + " " + std::to_string(rung.times) + ", ";
            action();
        };
        return result;
    }

    std::shared_ptr<Bell> bell_ = std::make_shared<Bell>();
    std::string log_;
};

TEST_F(NotifierTest, CallsListenersInOrderAndAppliesTheirChangesFromTheNextEvent) {
    const auto late = listener("late");
    auto released = listener("released");
    const auto first = listener("first", [&] {
        bell_->addListener<Rung>(late);
        released.reset();
    });
    bell_->addListener<Rung>(first);
    bell_->addListener<Rung>(released);
    bell_->addListener<Rung>(first);
    bell_->notify(Rung{1});
    EXPECT_EQ(log_, "first 1, released 1, first 1, ");
    log_.clear();
    bell_->notify(Rung{2});
    EXPECT_EQ(log_, "first 2, first 2, late 2, late 2, ");
}

TEST_F(NotifierTest, AnExceptionReachesTheSenderAndSkipsLaterListeners) {
    const auto throwing = listener("throwing", [] { throw std::runtime_error("on purpose"); });
    const auto after = listener("after");
    bell_->addListener<Rung>(throwing);
    bell_->addListener<Rung>(after);
    EXPECT_THROW(bell_->notify(Rung{1}), std::runtime_error);
    EXPECT_EQ(log_, "throwing 1, ");
}

TEST_F(NotifierTest, ASenderWithoutOwnerThrowsOnlyWhenThereAreListeners) {
    Bell unowned;
    EXPECT_NO_THROW(unowned.notify(Rung{}));
    const auto any = listener("any");
    unowned.addListener<Rung>(any);
    EXPECT_THROW(unowned.notify(Rung{}), std::bad_weak_ptr);
}

}  // namespace
}  // namespace orvane::notification
