#include "platform/quartzcore/CATransaction.h"

#include <glib.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

#include "platform/quartzcore/CAKeyframeAnimation.h"
#include "platform/quartzcore/CALayer.h"
#include "platform/quartzcore/CAMediaTime.h"

using namespace orvane::platform;

namespace {

class CATransactionTest : public testing::Test {
protected:
    // Opens a transaction that logs its name when it completes.
    void begin(const std::string& name) {
        CATransaction::begin();
        CATransaction::setCompletionBlock([this, name] { log += name; });
    }
    static void add(CALayer& layer, const std::string& key, double duration) {
        CAKeyframeAnimation animation("opacity");
        animation.setDuration(duration);
        layer.addAnimation(animation, key);
    }
    static void run(const std::function<void()>& completion, CALayer& onLayer,
                    const std::string& key, double duration) {
        CATransaction::begin();
        CATransaction::setCompletionBlock(completion);
        add(onLayer, key, duration);
        CATransaction::commit();
    }
    void run(const std::string& name, CALayer& onLayer, const std::string& key, double duration) {
        run([this, name] { log += name; }, onLayer, key, duration);
    }
    // Advances the clock and returns what completed since the last call.
    std::string after(double seconds) {
        clock->advanceBy(seconds);
        return std::exchange(log, "");
    }

    std::string log;
    std::optional<CAVirtualClock> clock{std::in_place, 5};
    std::shared_ptr<CALayer> layer = std::make_shared<CALayer>();
    std::shared_ptr<CALayer> other = std::make_shared<CALayer>();
};

}  // namespace

TEST_F(CATransactionTest, AnEmptyTransactionCompletesAtOnceButNotInsideTheCommit) {
    begin("a");
    CATransaction::commit();
    EXPECT_EQ(log, "");
    EXPECT_EQ(after(0), "a");
    CATransaction::commit();  // without a begin
    CATransaction::setCompletionBlock([] { FAIL(); });
    add(*layer, "x", 1);
    EXPECT_EQ(after(5), "");
}

TEST_F(CATransactionTest, NestedTransactionsKeepTheOuterOpenAndEachCompletesOnce) {
    begin("outer ");
    add(*layer, "y", 3);
    run("first ", *layer, "x", 1);
    run("second ", *other, "x", 2);
    begin("empty ");
    CATransaction::commit();
    CATransaction::commit();
    EXPECT_EQ(after(0), "empty ");
    EXPECT_EQ(after(1), "first ");
    EXPECT_EQ(after(1), "second ");
    EXPECT_EQ(after(1), "outer ");
    EXPECT_EQ(after(10), "");
}

TEST_F(CATransactionTest, LayersEndInAnyOrder) {
    const auto third = std::make_shared<CALayer>();
    run("a", *layer, "x", 1);
    run("c", *other, "x", 3);
    run("b", *third, "x", 2);
    EXPECT_EQ(after(1), "a");
    EXPECT_EQ(after(1), "b");
    EXPECT_EQ(after(1), "c");
}

TEST_F(CATransactionTest, CompletesOnceHoweverItsAnimationEnds) {
    const struct {
        std::string what;
        std::function<void()> end;
    } cases[] = {
        {"replaced", [this] { add(*layer, "x", 100); }},
        {"removed", [this] { layer->removeAnimationForKey("x"); }},
        {"all removed", [this] { layer->removeAllAnimations(); }},
        {"the layer is destroyed", [this] { layer.reset(); }},
    };
    for (const auto& c : cases) {
        layer = std::make_shared<CALayer>();
        run("a", *layer, "x", 2);
        clock->advanceBy(1);
        c.end();
        EXPECT_EQ(log, "") << c.what << ": not synchronously";
        EXPECT_EQ(after(0), "a") << c.what;
        EXPECT_EQ(after(5), "") << c.what;
    }
}

TEST_F(CATransactionTest, CompletionsMayDoAnything) {
    run([this] { run("next ", *layer, "x", 1); }, *layer, "x", 1);
    run([] { throw std::runtime_error("on purpose"); }, *layer, "y", 1);
    run([] { throw 1; }, *layer, "w", 1);
    run([this] { other.reset(); }, *other, "x", 1);
    run("last ", *layer, "z", 1);
    EXPECT_EQ(after(1), "last ");
    EXPECT_EQ(after(1), "next ");
}

TEST_F(CATransactionTest, EachThreadHasItsOwnTransactions) {
    begin("main");
    std::thread([this] {
        CATransaction::commit();  // must not close the main thread's transaction
        begin("thread ");
        CATransaction::commit();
    }).join();
    EXPECT_EQ(after(0), "thread ");
    CATransaction::commit();
    EXPECT_EQ(after(0), "main");
}

TEST_F(CATransactionTest, OnTheRealClockTheMainLoopEndsAnimationsWithoutAWindow) {
    clock.reset();
    bool done = false;
    run([&done] { done = true; }, *layer, "x", 0.01);
    const double start = CACurrentMediaTime();
    while (!done) {
        g_main_context_iteration(nullptr, TRUE);
    }
    EXPECT_GE(CACurrentMediaTime() - start, 0.01);
    EXPECT_FALSE(layer->hasAnimations());
    // The main queue ends its turn, and then nothing wakes the loop.
    for (int i = 0; i < 5; ++i) {
        g_main_context_iteration(nullptr, FALSE);
    }
    EXPECT_FALSE(g_main_context_pending(nullptr));
}
