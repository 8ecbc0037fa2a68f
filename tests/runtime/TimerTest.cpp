#include "orvane/runtime/Timer.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "platform/quartzcore/CAMediaTime.h"

namespace orvane {
namespace {

class TimerTest : public testing::Test {
protected:
    // A task that logs a name and the time in milliseconds since the beginning.
    std::function<void()> log(const std::string& name) {
        return [this, name] {
            const double elapsed = platform::CACurrentMediaTime() - 100;
            log_ += name + std::to_string(static_cast<int>(elapsed * 1000 + 0.5)) + " ";
        };
    }
    std::string after(double seconds) {
        clock_->advanceBy(seconds);
        return std::exchange(log_, "");
    }

    std::unique_ptr<platform::CAVirtualClock> clock_ =
        std::make_unique<platform::CAVirtualClock>(100);
    std::string log_;
};

TEST_F(TimerTest, RunsOnceOrRepeatsAtItsTimes) {
    Timer repeating;
    Timer once;
    Timer fast;
    repeating.start(400, log("r"));
    once.startOnce(600, log("once"));
    EXPECT_EQ(after(0.375), "");
    EXPECT_EQ(after(1), "r400 once600 r800 r1200 ");
    EXPECT_FALSE(once.isRunning());
    EXPECT_TRUE(repeating.isRunning());
    repeating.stop();
    repeating.stop();
    EXPECT_EQ(after(1), "");
    EXPECT_FALSE(repeating.isRunning());

    once.startOnce(0, log("now"));
    EXPECT_EQ(after(0), "now2375 ");
    fast.start(0, log("f"));
    EXPECT_EQ(after(0.0025), "f2376 f2377 ");
    fast.start(1, {});
    EXPECT_FALSE(fast.isRunning());
}

TEST_F(TimerTest, ATaskMayStopRestartAndDestroyTimersAndThrow) {
    Timer timer;
    auto other = std::make_unique<Timer>();
    other->start(100, log("other"));
    timer.start(100, [&, own = std::string(1000, 'x')] {
        other.reset();
        log_ += own.substr(0, 1);
        timer.startOnce(50, [&] {
            log("then")();
            timer.stop();
            throw std::runtime_error("on purpose");
        });
        log_ += own.substr(0, 1);
    });
    EXPECT_EQ(after(1), "other100 xxthen150 ");
    timer.start(100, [&, isFirst = true]() mutable {
        log("t")();
        if (std::exchange(isFirst, false)) {
            clock_->advanceBy(0.25);  // time passes, and no timer is called within a timer's task
        }
    });
    EXPECT_EQ(after(0.15), "t1100 t1350 ") << "one run makes up for the times that were missed";
    EXPECT_EQ(after(0.25), "t1400 t1500 t1600 ");
}

TEST_F(TimerTest, OnTheRealClockTheMainLoopRunsTasks) {
    clock_.reset();
    Timer timer;
    int runs = 0;
    timer.start(5, [&] { ++runs; });
    const gint64 begin = g_get_monotonic_time();
    while (runs < 3 && g_get_monotonic_time() - begin < 10000000) {
        g_main_context_iteration(nullptr, TRUE);
    }
    EXPECT_EQ(runs, 3);
    EXPECT_GE(g_get_monotonic_time() - begin, 15000);
}

}  // namespace
}  // namespace orvane
