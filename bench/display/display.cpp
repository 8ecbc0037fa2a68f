// What a frame costs in addition to painting, at 1920x1080: one view whose drawRect does
// nothing, K damaged rectangles, 1,000 more views that stay as they are; then N views that turn and
// move.
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "platform/appkit/NSView.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CAKeyframeAnimation.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace {

using namespace orvane::platform;

class EmptyView final : public NSView {
public:
    explicit EmptyView(const CGRect& frame) { setFrame(frame); }
    bool paints() const override { return true; }
};

constexpr CGRect screen{{0, 0}, {bench::kWidth, bench::kHeight}};

void damage(int count) {
    const auto root = std::make_shared<EmptyView>(screen);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> x(0, bench::kWidth - 30);
    std::uniform_real_distribution<double> y(0, bench::kHeight - 30);
    for (int i = 0; i < 1000; ++i) {
        root->addSubview(std::make_shared<EmptyView>(CGRect{{x(random), y(random)}, {20, 20}}));
    }
    OffscreenWindow window(screen.size);
    window.setContentView(root);
    window.display();
    bench::report("K=" + std::to_string(count), "frame_ms", bench::median(bench::kFrames, [&] {
                      for (int i = 0; i < count; ++i) {
                          root->setNeedsDisplayInRect({{x(random), y(random)}, {20, 20}});
                      }
                      window.display();
                  }));
}

void animate(int count) {
    CAVirtualClock clock;
    const auto root = std::make_shared<EmptyView>(screen);
    OffscreenWindow window(screen.size);
    window.setContentView(root);
    for (int i = 0; i < count; ++i) {
        const bench::Place place = bench::place(i);
        const auto view = std::make_shared<EmptyView>(CGRect{{place.x, place.y}, {20, 20}});
        view->layer()->setBackgroundColor({1, 0, 0, 1});
        CAKeyframeAnimation animation(i % 2 == 0 ? "transform.rotation"
                                                 : "transform.translation.x");
        animation.setValues(std::vector<double>{0, 50});
        animation.setDuration(1000);
        view->layer()->addAnimation(animation, "key");
        root->addSubview(view);
    }
    window.display();
    bench::report("A=" + std::to_string(count), "frame_ms", bench::median(bench::kFrames, [&] {
                      clock.advanceBy(1 / 60.0);
                      window.display();
                  }));
}

}  // namespace

int main() {
    for (const int count : {1, 100, 200, 1000, 10000}) {
        damage(count);
    }
    for (const int count : {100, 1000, 10000}) {
        animate(count);
    }
    return 0;
}
