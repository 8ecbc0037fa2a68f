// Lines of text, and images, N of them in one container. Without arguments: all scenes.
#include <functional>
#include <memory>
#include <vector>

#include "bench/Measure.h"
#include "bench/text/text.h"
#include "orvane/display/DisplayView.h"
#include "orvane/orvane.h"
#include "platform/offscreen/OffscreenWindow.h"

namespace {

using namespace orvane::display;
using Make = std::function<std::shared_ptr<DisplayObject>(int)>;

std::shared_ptr<DisplayObject> makeText(int i) {
    const auto text = DisplayFactory::createText(false);
    text->setFont("DejaVuSans");
    text->setTextSize(13);
    text->setContent(bench::line(i));
    text->setFillColor(0xFF000000U);
    return text;
}

std::shared_ptr<DisplayObject> makeImage(int i) {
    const auto image = DisplayFactory::createImage();
    image->setRawData(bench::imagePixels(i), bench::kImageSide, bench::kImageSide);
    return image;
}

void place(DisplayObject& object, const bench::Place& place) {
    object.setTranslate(static_cast<float>(place.x), static_cast<float>(place.y));
}

void run(const std::string& scene, int count, const Make& make) {
    const auto display = Display::instance();
    const auto view = display->getView();
    orvane::platform::OffscreenWindow window({bench::kWidth, bench::kHeight});
    view->setFrame({{0, 0}, {bench::kWidth, bench::kHeight}});
    window.setContentView(view);
    window.display();

    const auto root = DisplayFactory::createContainer();
    std::vector<std::shared_ptr<DisplayObject>> objects;
    bench::report(scene, "build_and_first_paint_ms", bench::milliseconds([&] {
                      for (int i = 0; i < count; ++i) {
                          objects.push_back(make(i));
                          place(*objects.back(), bench::place(i));
                          root->add(objects.back());
                      }
                      display->add(root);
                      window.display();
                  }));

    bench::report(scene, "full_repaint_ms", bench::median(9, [&] {
                      for (const auto& each : view->subviews()) {
                          each->setNeedsDisplayInRect(each->bounds());
                      }
                      window.display();
                  }));

    for (const int moving : {1, 100}) {
        const std::vector<int> movers = bench::movers(count, moving);
        int frame = 0;
        const auto step = [&] {
            ++frame;
            {
                const UpdateLock lock(root);
                for (const int i : movers) {
                    place(*objects[static_cast<std::size_t>(i)], bench::movedPlace(i, frame));
                }
            }
            window.display();
        };
        step();
        bench::report(scene, moving == 1 ? "frame_1_moves_ms" : "frame_100_move_ms",
                      bench::median(bench::kFrames, step));
    }
    display->removeAll();
    window.setContentView(nullptr);
}

}  // namespace

int main() {
    for (const int count : {1000, 10000}) {
        run("text=" + std::to_string(count), count, makeText);
        run("images=" + std::to_string(count), count, makeImage);
    }
    return 0;
}
