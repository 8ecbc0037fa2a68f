// N objects in one container, half rectangles and half circles, each filled and stroked:
//   bench_scene N
#include <cstdlib>
#include <memory>
#include <vector>

#include "bench/Measure.h"
#include "orvane/display/DisplayView.h"
#include "orvane/orvane.h"
#include "platform/offscreen/OffscreenWindow.h"

namespace {

using namespace orvane::display;

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

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 1000;
    const std::string scene = "N=" + std::to_string(count);

    const auto display = Display::instance();
    const auto view = display->getView();
    orvane::platform::OffscreenWindow window({bench::kWidth, bench::kHeight});
    view->setFrame({{0, 0}, {bench::kWidth, bench::kHeight}});
    window.setContentView(view);
    window.display();

    const double before = bench::heapBytes();
    const auto root = DisplayFactory::createContainer();
    std::vector<std::shared_ptr<DisplayObject>> objects;
    objects.reserve(static_cast<std::size_t>(count));
    bench::report(scene, "build_and_first_paint_ms", bench::milliseconds([&] {
                      for (int i = 0; i < count; ++i) {
                          objects.push_back(makeObject(i));
                          root->add(objects.back());
                      }
                      display->add(root);
                      window.display();
                  }));

    const auto& views = view->subviews();
    bench::report(scene, "full_repaint_ms", bench::median(count > 50000 ? 3 : 9, [&] {
                      for (const auto& each : views) {
                          each->setNeedsDisplayInRect(each->bounds());
                      }
                      window.display();
                  }));

    const double pixels = 4.0 * bench::kWidth * bench::kHeight;  // of the layer's backing store
    bench::report(scene, "bytes_an_object", (bench::heapBytes() - before - pixels) / count);

    for (const int moving : {1, 100}) {
        const std::vector<int> movers = bench::movers(count, moving);
        int frame = 0;
        const auto step = [&] {
            ++frame;
            {
                const UpdateLock lock(root);
                for (const int i : movers) {
                    const bench::Place place = bench::movedPlace(i, frame);
                    objects[static_cast<std::size_t>(i)]->setTranslate(static_cast<float>(place.x),
                                                                       static_cast<float>(place.y));
                }
            }
            window.display();
        };
        step();
        bench::report(scene, moving == 1 ? "frame_1_moves_ms" : "frame_100_move_ms",
                      bench::median(bench::kFrames, step));
    }
    display->removeAll();
    return 0;
}
