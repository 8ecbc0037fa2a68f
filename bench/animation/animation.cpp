// Layers that animate all at once, off-screen: milliseconds a frame, from the clock to the composed
// picture.
#include <memory>
#include <string>
#include <vector>

#include "bench/animation/Motions.h"
#include "orvane/display/DisplayView.h"
#include "orvane/orvane.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace {

using namespace orvane::display;
using animation::AttributeName;
using animation::ValueAnimation;

std::shared_ptr<DisplayObject> makeObject(int i) {
    const auto side = static_cast<float>(bench::kSide);
    std::shared_ptr<graphics::Shape> shape;
    if (i % 2 == 0) {
        const auto rect = DisplayFactory::createRect();
        rect->set(0, 0, side, side);
        shape = rect;
    } else {
        const auto circle = DisplayFactory::createCircle();
        circle->set(0, 0, side / 2);
        shape = circle;
    }
    shape->setFillColor(0xFF000000U | static_cast<unsigned>(i) * 2654435761U >> 8U);
    shape->setStrokeColor(0xFF000000U);
    shape->setStrokeWidth(1);
    const bench::Place place = bench::place(i);
    shape->setTranslate(static_cast<float>(place.x), static_cast<float>(place.y));
    return shape;
}

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
    orvane::platform::OffscreenWindow window({bench::kWidth, bench::kHeight});
    const auto display = Display::instance();
    display->getView()->setFrame({{0, 0}, {bench::kWidth, bench::kHeight}});
    window.setContentView(display->getView());

    const auto root = DisplayFactory::createContainer();
    display->add(root);
    {
        const UpdateLock lock(root);
        for (int i = 0; i < count; ++i) {
            const auto object = makeObject(i);
            root->add(object);
            const auto animation = makeAnimation(bench::motion(i));
            animation->setAnimatable(object->extractAnimationLayer());
            animation->setDuration(bench::kPass);
            animation->setRepeatCount(-1);
            animation->setAnchorPointX(0.5F);
            animation->setAnchorPointY(0.5F);
            animation->run();
        }
    }
    window.display();
    bench::report("layers=" + std::to_string(count), "animated_frame_ms",
                  bench::median(bench::kFrames, [&] {
                      clock.advanceBy(bench::kFrame);
                      window.display();
                  }));
    window.setContentView(nullptr);
    display->removeAll();
}

}  // namespace

int main() {
    for (const int count : bench::kCounts) {
        run(count);
    }
    return 0;
}
