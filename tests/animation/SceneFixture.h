#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "orvane/display/Display.h"
#include "orvane/display/DisplayFactory.h"
#include "orvane/display/DisplayLayer.h"
#include "orvane/display/DisplayView.h"
#include "orvane/display/animation/ValueAnimation.h"
#include "orvane/display/graphics/Container.h"
#include "orvane/display/graphics/quartz/QuartzRect.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace orvane::display::animation {

// A rectangle that counts how often it is painted.
class CountedRect : public graphics::quartz::QuartzRect {
public:
    void validate(const geometry::Rect<double>& rect) override {
        ++paints;
        QuartzRect::validate(rect);
    }

    int paints = 0;
};

// A display in a window in memory, 200 x 100 points, on a clock that stands until it is advanced.
class SceneTest : public testing::Test {
protected:
    SceneTest() {
        Display::reset();
        showInWindow(*Display::instance());
    }
    ~SceneTest() override {
        window_.setContentView(nullptr);
        // The layers of its objects hold the display.
        Display::instance()->removeAll();
        Display::reset();
        clock_.advanceBy(0);
    }

    void showInWindow(const Display& display) {
        display.getView()->setFrame({{0, 0}, {200, 100}});
        window_.setContentView(display.getView());
    }

    static std::shared_ptr<CountedRect> makeRect(float x, float y, float width, float height,
                                                 std::uint32_t color) {
        auto rect = std::make_shared<CountedRect>();
        rect->set(x, y, width, height);
        rect->setFillColor(color);
        rect->setStrokeWidth(0);
        return rect;
    }

    std::shared_ptr<ValueAnimation> makeAnimation(const std::shared_ptr<DisplayObject>& object,
                                                  AttributeName attribute,
                                                  const std::vector<float>& values,
                                                  float duration = 1) {
        auto animation = std::make_shared<ValueAnimation>("key", attribute, values);
        animation->setAnimatable(object->extractAnimationLayer());
        animation->setDuration(duration);
        animation->setCompletionCallback([this] { ++completions_; });
        return animation;
    }

    // One refresh of the display after so many seconds.
    void refresh(double seconds) {
        clock_.advanceBy(seconds);
        window_.display();
    }

    std::uint32_t pixel(int x, int y) const {
        return window_.pixels()[static_cast<std::size_t>(y) * window_.bytesPerRow() / 4 +
                                static_cast<std::size_t>(x)];
    }

    // Whether a pixel is of a colour, but for the rounding of its components.
    bool isColor(int x, int y, std::uint32_t color) const {
        for (int shift = 0; shift < 32; shift += 8) {
            const int difference = static_cast<int>((pixel(x, y) >> shift) & 0xFF) -
                                   static_cast<int>((color >> shift) & 0xFF);
            if (difference < -2 || difference > 2) {
                return false;
            }
        }
        return true;
    }

    platform::CAVirtualClock clock_{100};
    platform::OffscreenWindow window_{{200, 100}};
    int completions_ = 0;
};

}  // namespace orvane::display::animation
