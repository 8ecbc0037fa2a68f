#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSScrollView.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

using platform::CGPoint;
using platform::NSScrollView;
using platform::NSView;

// A scroll view with patterns that are nowhere alike.
struct ScrolledScene {
    ScrolledScene() {
        root->setFrame({{0, 0}, {600, 400}});
        root->layer()->setBackgroundColor({1, 1, 1, 1});
        root->addSubview(scroll);
        scroll->setFrame({{50, 40}, {400, 300}});
        scroll->setContentSize({700, 2000});
        auto document = makePattern({}, {0.9, 0.9, 0.8, 1});
        for (int i = 0; i < 10; ++i) {
            document->addSubview(makePattern({{30.0 * i, 205.0 * i}, {300, 150}},
                                             {i / 10.0, 0.5, 1 - i / 10.0, 0.7}));
        }
        scroll->setDocumentView(document);
    }

    std::shared_ptr<NSView> root = std::make_shared<NSView>();
    std::shared_ptr<NSScrollView> scroll = NSScrollView::create();
};

class GTKScroll : public ::testing::Test {
protected:
    GTKScroll() {
        onScreen_.window().setContentView(shown_.root);
        offScreen_.setContentView(rendered_.root);
        onScreen_.show();
        desktop::focus(onScreen_.toplevel());
        desktop::xdotool("mousemove 200 200");
    }

    CGPoint offset() const { return shown_.scroll->contentOffset(); }
    bool reaches(CGPoint wanted) {
        return desktop::runUntil(
            [&] { return offset() == wanted && !shown_.scroll->isScrolling(); });
    }
    // Compares the two windows when the content is at rest and the bars have faded.
    void expectSamePictures() {
        EXPECT_TRUE(desktop::runUntil([&] { return !onScreen_.window().isAnimating(); }));
        rendered_.scroll->setContentOffset(offset(), false);
        offScreen_.displayIfNeeded(platform::CACurrentMediaTime() + 10);
        const Picture shown = onScreen_.picture();
        EXPECT_EQ(countDifferences(shown, pictureOf(offScreen_),
                                   onScreen_.isComposedByProcessor() ? 0 : 6),
                  0);
    }

    ScrolledScene shown_;
    ScrolledScene rendered_;
    TestWindow onScreen_{{600, 400}};
    platform::OffscreenWindow offScreen_{{600, 400}, onScreen_.window().backingScaleFactor()};
};

}  // namespace

TEST_F(GTKScroll, ByWheel) {
    desktop::xdotool("click --repeat 3 --delay 20 5");
    ASSERT_TRUE(reaches({0, 3 * 48}));
    expectSamePictures();
    // Sideways with a second wheel, and with Shift.
    desktop::xdotool("click 7");
    ASSERT_TRUE(reaches({48, 3 * 48}));
    desktop::xdotool("keydown Shift_L click 5 keyup Shift_L");
    ASSERT_TRUE(reaches({96, 3 * 48}));
    desktop::xdotool("click 4");
    ASSERT_TRUE(reaches({96, 2 * 48}));
    expectSamePictures();
}

TEST_F(GTKScroll, ByDrag) {
    desktop::xdotool(
        "mousemove 200 300 mousedown 1 mousemove 200 280 mousemove 170 200 sleep 0.2 mouseup 1");
    ASSERT_TRUE(reaches({30, 100}));
    expectSamePictures();
    // The knob of the vertical bar, while it is shown: 31 of its 241 points of way.
    desktop::xdotool("click 5");
    ASSERT_TRUE(reaches({30, 148}));
    desktop::xdotool("mousemove 444 80 mousedown 1 mousemove 444 111 mouseup 1");
    ASSERT_TRUE(desktop::runUntil([&] { return offset().y > 300; }));
    // The pointer is over the bar, which is open.
    offScreen_.sendEvent({platform::NSEventType::MouseMoved, {444, 111}});
    expectSamePictures();
}

// The window gets all of a drag at once, as in a program that is busy.
TEST_F(GTKScroll, GlidesAsFastAsThePointerMoved) {
    const auto glide = [this](const char* pause) {
        std::string drag = "mousemove 200 320 mousedown 1";
        for (int y = 310; y >= 220; y -= 10) {
            drag += " sleep " + std::string(pause) + " mousemove 200 " + std::to_string(y);
        }
        shown_.scroll->setContentOffset({}, false);
        desktop::xdotool(drag + " mouseup 1");
        EXPECT_TRUE(desktop::runUntil(
            [this] { return offset().y >= 100 && !shown_.scroll->isScrolling(); }));
        return offset().y - 100;
    };
    const double slow = glide("0.03");
    EXPECT_GT(glide("0.006"), 2 * slow);
}

TEST_F(GTKScroll, ByKeys) {
    desktop::xdotool("click 1 key Page_Down key Down key Right");
    ASSERT_TRUE(reaches({48, 300 * 0.875 + 48}));
    expectSamePictures();
    desktop::xdotool("key End");
    ASSERT_TRUE(reaches({48, 1700}));
    desktop::xdotool("key shift+space");
    ASSERT_TRUE(reaches({48, 1700 - 300 * 0.875}));
    expectSamePictures();
}

}  // namespace orvane::tests
