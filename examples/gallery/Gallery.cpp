#include <orvane/orvane.h>

#include <algorithm>

#include "Cards.h"
#include "Counter.h"
#include "Drag.h"
#include "MotionCards.h"
#include "Palette.h"

namespace gallery {

using namespace orvane::display;

namespace {

// What the layout is drawn for; another size of the display scales it.
constexpr double kWidth = 1280;
constexpr double kHeight = 800;

// Keeps a page as large as the display allows, in its middle.
class Fit : public FrameChangedEvent::listener_type {
public:
    explicit Fit(Container page) : page_(std::move(page)) {}

    void operator()(const std::shared_ptr<Display>&, const FrameChangedEvent& event) override {
        fit(event.frame);
    }
    void fit(const geometry::Size<double>& size) {
        if (size.width <= 0 || size.height <= 0) {
            return;
        }
        const double scale = std::min(size.width / kWidth, size.height / kHeight);
        page_->setMatrix(
            static_cast<float>(scale), 0, static_cast<float>((size.width - scale * kWidth) / 2), 0,
            static_cast<float>(scale), static_cast<float>((size.height - scale * kHeight) / 2));
    }

private:
    Container page_;
};

class Gallery {
public:
    void main() {
        drawBackground(*page_.root());
        page_.addCard("Shapes", drawShapes);
        page_.addCard("Fill rules", drawFillRules);
        page_.addCard("Curves and arcs", drawCurves);
        page_.addCard("Dashes", drawDashes);
        page_.addCard("Gradients in fractions", drawGradients);
        page_.addCard("Gradient in user space", drawGradientStops);
        page_.addCard("Clip container", drawClips);
        page_.addCard("Nested transforms", drawNestedTransforms);
        page_.addCard("Hidden and shown",
                      [this](ContainerObject& inside) { blink_ = drawHiddenAndShown(inside); });
        page_.addCard("Timed tasks", [this](ContainerObject& inside) {
            counter_ = std::make_shared<Counter>(inside);
        });
        page_.addCard("Native control",
                      [this](ContainerObject& inside) { drawNative(inside, drag_); });
        page_.addCard("Drag and drop",
                      [this](ContainerObject& inside) { drawDraggables(inside, drag_); });

        const auto display = Display::instance();
        display->addListener<FrameChangedEvent>(fit_);
        fit_->fit(display->getScreenSize());
        display->add(page_.root());
        counter_->start();
    }

private:
    static void drawBackground(ContainerObject& root) {
        const auto paper = DisplayFactory::createRect();
        paper->set(0, 0, kWidth, kHeight);
        paint(paper, palette::paper);
        root.add(paper);
        const auto rail = DisplayFactory::createRect();
        rail->set(0, 0, 72, kHeight);
        paint(rail, palette::ink);
        root.add(rail);
    }

    Page page_;
    std::shared_ptr<Fit> fit_ = std::make_shared<Fit>(page_.root());
    std::shared_ptr<Drag> drag_ = std::make_shared<Drag>();
    std::shared_ptr<events::TouchEventListener> blink_;
    std::shared_ptr<Counter> counter_;
};

}  // namespace
}  // namespace gallery

ORVANE_MAIN_CLASS(gallery::Gallery)
