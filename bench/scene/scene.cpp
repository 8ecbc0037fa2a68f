// Shapes, lines of text and images, N of them in one container:
//   bench_scene shapes|text|images N
#include "bench/scene/Scene.h"

#include <cstdlib>
#include <memory>
#include <vector>

#include "bench/Ours.h"

namespace {

using namespace orvane::display;

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

class OurStage final : public bench::Stage {
public:
    void add(bench::Kind kind, int i) override {
        objects_.push_back(kind == bench::Kind::Shapes ? bench::makeShape(i)
                           : kind == bench::Kind::Text ? makeText(i)
                                                       : makeImage(i));
        root_->add(objects_.back());
    }
    void move(int i, const bench::Place& place) override {
        bench::moveTo(*objects_[static_cast<std::size_t>(i)], place);
    }
    void update(const std::function<void()>& moves) override {
        const UpdateLock lock(root_);
        moves();
    }
    void invalidate() override { window_.invalidate(); }
    void paint() override {
        if (!shown_) {
            window_.add(root_);
            shown_ = true;
        }
        window_.paint();
    }
    double pictureBytes() const override { return window_.storeBytes(); }

private:
    bench::DisplayWindow window_;
    std::shared_ptr<graphics::Container> root_ = DisplayFactory::createContainer();
    std::vector<std::shared_ptr<DisplayObject>> objects_;
    bool shown_ = false;
};

}  // namespace

int main(int argc, char** argv) {
    OurStage stage;
    bench::measure(stage, argc > 1 ? argv[1] : "shapes", argc > 2 ? std::atoi(argv[2]) : 1000);
}
