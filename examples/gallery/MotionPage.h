#pragma once

#include <array>
#include <memory>
#include <vector>

#include "Cards.h"
#include "Loop.h"

namespace gallery {

// The page of motion and layout: the pace of animations, where they end, how they stop, a frame
// loop, and boxes. Everything moves while the page is on the display.
class MotionPage {
public:
    MotionPage();

    const Container& root() const { return page_.root(); }
    // Call this after the page has been added to the display.
    void start();
    static void drawIcon(ContainerObject& inside);

private:
    struct Ball {
        std::shared_ptr<DisplayObject> object;
        float x, y, speedX, speedY;
    };

    void addLoop(Loop::Make make);
    float scale() const;

    void drawEasings(ContainerObject& inside);
    void drawCurves(ContainerObject& inside);
    void drawSprings(ContainerObject& inside);
    void drawKeyTimes(ContainerObject& inside);
    void drawWalk(ContainerObject& inside);
    void drawStop(ContainerObject& inside);
    void startRunner();
    void drawFrameLoop(ContainerObject& inside);
    void moveBalls(float elapsed);
    static void drawBoxes(ContainerObject& inside);
    void drawWrapping(ContainerObject& inside);

    Page page_;
    std::vector<std::shared_ptr<Loop>> loops_;
    std::vector<std::shared_ptr<orvane::display::events::TouchEventListener>> taps_;
    std::shared_ptr<DisplayObject> runner_;
    std::shared_ptr<orvane::display::animation::ValueAnimation> run_;  // null while it is stopped
    float runnerPlace_ = 0;                                            // on its way, in points
    std::vector<Ball> balls_;
    orvane::display::animation::FrameLoop frameLoop_;
    std::shared_ptr<orvane::display::layout::Box> wrapping_;
    bool isNarrow_ = false;
};

}  // namespace gallery
