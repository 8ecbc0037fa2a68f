#pragma once

#include <memory>

#include "bench/Measure.h"
#include "orvane/display/native/DisplayView.h"
#include "orvane/orvane.h"
#include "platform/appkit/NSBackingStore.h"
#include "platform/offscreen/OffscreenWindow.h"

// Our side of the scenes: the display in a window in memory.
namespace bench {

class DisplayWindow {
public:
    DisplayWindow() {
        view().setFrame({{0, 0}, {kWidth, kHeight}});
        window_.setContentView(display_->getView());
        paint();
    }
    ~DisplayWindow() {
        display_->removeAll();
        window_.setContentView(nullptr);
    }

    void add(const std::shared_ptr<orvane::display::DisplayObject>& object) {
        display_->add(object);
    }
    void paint() { window_.display(); }
    // Invalidates everything in every layer.
    void invalidate() {
        for (const auto& layer : view().subviews()) {
            layer->setNeedsDisplayInRect(layer->bounds());
        }
    }

    // The size of the layers' backing stores, in bytes.
    double storeBytes() const {
        double pixels = 0;
        for (const auto& layer : view().subviews()) {
            const auto* const store = layer->backingStore();
            pixels += store != nullptr ? static_cast<double>(store->area().area()) : 0;
        }
        return 4 * pixels;
    }

private:
    orvane::platform::NSView& view() const { return *display_->getView(); }

    std::shared_ptr<orvane::display::Display> display_ = orvane::display::Display::instance();
    orvane::platform::OffscreenWindow window_{{kWidth, kHeight}};
};

// A square or a circle in turn, filled and stroked.
inline std::shared_ptr<orvane::display::graphics::Shape> makeShape(int i) {
    using orvane::display::DisplayFactory;
    const auto side = static_cast<float>(kSide);
    std::shared_ptr<orvane::display::graphics::Shape> shape;
    if (i % 2 == 0) {
        const auto rect = DisplayFactory::createRect();
        rect->set(0, 0, side, side);
        shape = rect;
    } else {
        const auto circle = DisplayFactory::createCircle();
        circle->set(0, 0, side / 2);
        shape = circle;
    }
    shape->setFillColor(shapeColor(i));
    shape->setStrokeColor(0xFF000000U);
    shape->setStrokeWidth(1);
    return shape;
}

inline void moveTo(orvane::display::DisplayObject& object, const Place& place) {
    object.setTranslate(static_cast<float>(place.x), static_cast<float>(place.y));
}

}  // namespace bench
