#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "orvane/display/native/BitmapLayer.h"
#include "orvane/display/native/DisplayView.h"
#include "orvane/display/native/NativeLayer.h"
#include "orvane/display/native/NativeObject.h"
#include "orvane/orvane.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CALayer.h"

namespace orvane::display {

// A control whose view has one color.
class ColorControl : public native::NativeObject {
public:
    ColorControl(const Rect& bounds, unsigned rgb) : bounds_(bounds), rgb_(rgb) {}
    static std::shared_ptr<ColorControl> create(const Rect& bounds, unsigned rgb = 0x00FF00) {
        auto control = std::make_shared<ColorControl>(bounds, rgb);
        control->init();
        return control;
    }
    std::string getDescription() const override { return "ColorControl"; }

protected:
    struct Layer : native::NativeLayer {
        explicit Layer(unsigned color) : rgb(color) {}
        std::shared_ptr<platform::NSView> createLayerHandler() override {
            auto view = std::make_shared<platform::NSView>();
            view->layer()->setBackgroundColor(
                {(rgb >> 16 & 255) / 255.0, (rgb >> 8 & 255) / 255.0, (rgb & 255) / 255.0, 1});
            return view;
        }
        const unsigned rgb;
    };

    Rect computeFrame() override { return applyTransformToRect(bounds_); }
    std::shared_ptr<native::NativeLayer> createLayer() override {
        return std::make_shared<Layer>(rgb_);
    }

private:
    const Rect bounds_;
    const unsigned rgb_;
};

// A display in an off-screen window.
class Stage : public testing::Test {
protected:
    static constexpr int kWidth = 200;
    static constexpr int kHeight = 150;

    void SetUp() override {
        view_->setFrame({{0, 0}, {kWidth, kHeight}});
        window_.setContentView(view_);
    }
    void TearDown() override {
        display_->removeAll();
        window_.setContentView(nullptr);
        display_.reset();
        Display::reset();
    }

    static std::shared_ptr<graphics::Rect> rect(float x, float y, float width, float height,
                                                unsigned argb) {
        auto result = DisplayFactory::createRect();
        result->set(x, y, width, height);
        result->setFillColor(argb);
        return result;
    }
    static std::shared_ptr<native::NativeLayer> layerOf(const std::shared_ptr<DisplayObject>& o) {
        return std::dynamic_pointer_cast<native::NativeLayer>(o->getLayer());
    }
    static std::shared_ptr<platform::NSView> viewOf(const std::shared_ptr<DisplayObject>& o) {
        return layerOf(o)->getLayerHandler();
    }
    // The color in which a painted object appears: a component c is painted as (c + 1) / 256.
    static unsigned shown(unsigned rgb) {
        unsigned result = 0;
        for (const unsigned shift : {0U, 8U, 16U}) {
            const double component = ((rgb >> shift & 255) + 1) / 256.0;
            result |= static_cast<unsigned>(std::lround(component * 255)) << shift;
        }
        return result;
    }
    // The color on screen, as 0xRRGGBB.
    unsigned pixel(int x, int y) {
        return picture()[static_cast<std::size_t>(y * kWidth + x)] & 0xFFFFFF;
    }
    std::vector<std::uint32_t> picture() {
        window_.display();
        std::vector<std::uint32_t> result;
        for (int y = 0; y < window_.pixelHeight(); ++y) {
            const auto* const row =
                window_.pixels() + static_cast<std::size_t>(y) * (window_.bytesPerRow() / 4);
            result.insert(result.end(), row, row + window_.pixelWidth());
        }
        return result;
    }
    // The same views, painted from scratch.
    std::vector<std::uint32_t> pictureFromScratch() {
        window_.setContentView(nullptr);
        window_.setContentView(view_);
        return picture();
    }

    std::shared_ptr<Display> display_ = Display::instance();
    std::shared_ptr<DisplayView> view_ = display_->getView();
    platform::OffscreenWindow window_{{kWidth, kHeight}};
};

}  // namespace orvane::display
