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

class BellListener : public Rung::listener_type {
public:
    using Heard = std::function<void(const std::shared_ptr<Bell>&, const Rung&)>;
    explicit BellListener(Heard heard) : heard_(std::move(heard)) {}
    void operator()(const std::shared_ptr<Bell>& bell, const Rung& rung) override {
        heard_(bell, rung);
    }

private:
    Heard heard_;
};

class NotifierTest : public testing::Test {
protected:
    std::shared_ptr<BellListener> listener(
        const std::string& name, std::function<void()> action = [] {}) {
        return std::make_shared<BellListener>(
            [this, name, action](const auto& sender, const Rung& rung) {
                EXPECT_EQ(sender, bell_);
                log_ += name + " " + std::to_string(rung.times) + ", ";
                action();
            });
    }

    std::shared_ptr<Bell> bell_ = std::make_shared<Bell>();
    std::string log_;
};

TEST_F(NotifierTest, CallsLiveListenersInOrderAndDuplicatesTwice) {
    const auto first = listener("first");
    auto second = listener("second");
    bell_->addListener<Rung>(first);
    bell_->addListener<Rung>(second);
    bell_->addListener<Rung>(first);
    bell_->notify(Rung{1});
    second.reset();
    bell_->notify(Rung{2});
    EXPECT_EQ(log_, "first 1, second 1, first 1, first 2, first 2, ");
}

TEST_F(NotifierTest, ChangesMadeByAListenerApplyFromTheNextEvent) {
    auto late = listener("late");
    auto released = listener("released");
    const auto first = listener("first", [&] {
        bell_->addListener<Rung>(late);
        released.reset();
    });
    bell_->addListener<Rung>(first);
    bell_->addListener<Rung>(released);
    bell_->notify(Rung{1});
    EXPECT_EQ(log_, "first 1, released 1, ");
    log_.clear();
    bell_->notify(Rung{2});
    EXPECT_EQ(log_, "first 2, late 2, ");
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
