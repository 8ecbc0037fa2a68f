// Layers that are animated together, off-screen: milliseconds per frame, from the clock to the
// composed picture.
#include <memory>
#include <string>
#include <vector>

#include "bench/Ours.h"
#include "bench/animation/Motions.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace {

using namespace orvane::display;
using animation::AttributeName;
using animation::ValueAnimation;

std::shared_ptr<ValueAnimation> makeAnimation(bench::Motion motion) {
    const auto floats = [](const std::vector<double>& values) {
        return std::vector<float>(values.begin(), values.end());
    };
    switch (motion) {
        case bench::Motion::Move: {
            std::vector<float> values;
            for (const bench::Place& place : bench::kMoves) {
                values.push_back(static_cast<float>(place.x));
                values.push_back(static_cast<float>(place.y));
            }
            return std::make_shared<ValueAnimation>("bench", AttributeName::Translation, values);
        }
        case bench::Motion::Turn:
            return std::make_shared<ValueAnimation>("bench", AttributeName::Rotation,
                                                    floats(bench::kTurns));
        case bench::Motion::Fade:
            break;
    }
    return std::make_shared<ValueAnimation>("bench", AttributeName::Opacity, floats(bench::kFades));
}

void run(int count) {
    orvane::platform::CAVirtualClock clock;
    bench::DisplayWindow window;
    const auto root = DisplayFactory::createContainer();
    window.add(root);
    {
        const UpdateLock lock(root);
        for (int i = 0; i < count; ++i) {
            const auto shape = bench::makeShape(i);
            bench::moveTo(*shape, bench::place(i));
            root->add(shape);
            const auto animation = makeAnimation(bench::motion(i));
            animation->setAnimatable(shape->extractAnimationLayer());
            animation->setDuration(bench::kPass);
            animation->setRepeatCount(-1);
            animation->setAnchorPointX(0.5F);
            animation->setAnchorPointY(0.5F);
            animation->run();
        }
    }
    window.paint();
    bench::report("layers=" + std::to_string(count), "animated_frame_ms",
                  bench::median(bench::kFrames, [&] {
                      clock.advanceBy(bench::kFrame);
                      window.paint();
                  }));
}

}  // namespace

int main() {
    for (const int count : bench::kCounts) {
        run(count);
    }
    return 0;
}
