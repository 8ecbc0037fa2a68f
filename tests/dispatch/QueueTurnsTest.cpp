#include "platform/dispatch/QueueTurns.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace std::chrono_literals;
using orvane::platform::QueueTurns;
using Duration = QueueTurns::TimePoint::duration;

// Steps a clock through a second in which the queue always has work and the display always has a
// frame to draw. The loop takes work before frames whenever the turns allow it.
TEST(QueueTurns, NeitherWorkNorFramesWaitLongForTheOther) {
    const struct {
        Duration piece, frame;
    } cases[] = {{10us, 1ms}, {2ms, 3ms}, {10us, 16ms}, {40ms, 5ms}, {10us, 100ms}, {40ms, 40ms}};
    for (const auto& [piece, frame] : cases) {
        QueueTurns turns;
        QueueTurns::TimePoint now{1s};
        auto lastPiece = now;
        auto lastFrame = now;
        Duration longestWithoutPiece{};
        Duration longestWithoutFrame{};
        for (const auto end = now + 1s; now < end;) {
            if (now >= turns.endOfPause() && turns.mayBegin(now)) {
                longestWithoutPiece = std::max(longestWithoutPiece, now - lastPiece);
                do {
                    now += piece;
                } while (turns.mayContinue(now));
                lastPiece = now;
            } else {
                longestWithoutFrame = std::max(longestWithoutFrame, now - lastFrame);
                now += frame;
                lastFrame = now;
            }
        }
        EXPECT_LE(longestWithoutFrame, QueueTurns::kTurn + piece) << piece.count();
        EXPECT_LE(longestWithoutPiece, QueueTurns::kPause + frame) << frame.count();
    }
}

TEST(QueueTurns, WorkGoesOnAtOnceWhenThereIsNoFrameToDraw) {
    QueueTurns turns;
    const QueueTurns::TimePoint start{1s};
    EXPECT_TRUE(turns.mayBegin(start));
    EXPECT_TRUE(turns.mayContinue(start + QueueTurns::kTurn - 1us));
    EXPECT_FALSE(turns.mayContinue(start + QueueTurns::kTurn));
    EXPECT_FALSE(turns.mayBegin(start + QueueTurns::kTurn));
    turns.framesHadOpportunity();
    EXPECT_LE(turns.endOfPause(), start);
    EXPECT_TRUE(turns.mayBegin(start + QueueTurns::kTurn));
}

}  // namespace
