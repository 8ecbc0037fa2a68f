#include "platform/gtk/GTKWindow.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSGestureRecognizer.h"
#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CAKeyframeAnimation.h"
#include "platform/quartzcore/CATransaction.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

using platform::CGRect;
using platform::CGSize;
using platform::NSEvent;
using platform::NSView;

constexpr CGSize size{600, 400};

class GTKWindow : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(desktop::connect());
        window_ = std::make_unique<TestWindow>(size);
        root_ = std::make_shared<NSView>();
        root_->setFrame({{0, 0}, size});
        root_->layer()->setBackgroundColor({0, 0, 0, 1});
        window_->window().setContentView(root_);
    }

    std::shared_ptr<PatternView> add(const CGRect& frame, const platform::CGColor& color) {
        auto view = makePattern(frame, color);
        root_->addSubview(view);
        return view;
    }

    std::unique_ptr<TestWindow> window_;
    std::shared_ptr<NSView> root_;
};

// Records the events that it receives, as "down 10,20", with the location in its view.
class Recorder : public platform::NSGestureRecognizer {
public:
    void mouseDown(const NSEvent& event) override { record("down", event); }
    void mouseDragged(const NSEvent& event) override {
        record("move", event);
        if (leaves) {
            view()->removeFromSuperviewWithoutNeedingDisplay();
        }
    }
    void mouseUp(const NSEvent& event) override { record("up", event); }
    void endGesture(platform::NSGestureEndReason reason) override {
        if (reason == platform::NSGestureEndReason::Cancelled) {
            log.emplace_back("cancelled");
        }
    }

    std::vector<std::string> log;
    // Removes its view from the window at the first drag.
    bool leaves = false;

private:
    void record(const std::string& what, const NSEvent& event) {
        const platform::CGPoint place = locationInView(event, *view());
        log.push_back(what + " " + std::to_string(static_cast<int>(place.x)) + "," +
                      std::to_string(static_cast<int>(place.y)));
    }
};

void collectTextures(GskRenderNode* node, std::vector<GdkTexture*>& textures) {
    switch (gsk_render_node_get_node_type(node)) {
        case GSK_CONTAINER_NODE:
            for (guint i = 0; i < gsk_container_node_get_n_children(node); ++i) {
                collectTextures(gsk_container_node_get_child(node, i), textures);
            }
            return;
        case GSK_TRANSFORM_NODE:
            return collectTextures(gsk_transform_node_get_child(node), textures);
        case GSK_CLIP_NODE:
            return collectTextures(gsk_clip_node_get_child(node), textures);
        case GSK_TEXTURE_NODE:
            textures.push_back(gsk_texture_node_get_texture(node));
            return;
        default:
            return;
    }
}

// Returns the textures that GTK shows of a widget and its descendants, in drawing order.
std::vector<GdkTexture*> texturesOf(Gtk::Widget& widget) {
    GdkPaintable* const shown = gtk_widget_paintable_new(widget.gobj());
    GtkSnapshot* const snapshot = gtk_snapshot_new();
    gdk_paintable_snapshot(shown, snapshot, widget.get_width(), widget.get_height());
    GskRenderNode* const node = gtk_snapshot_free_to_node(snapshot);
    std::vector<GdkTexture*> textures;
    collectTextures(node, textures);
    gsk_render_node_unref(node);
    g_object_unref(shown);
    return textures;
}

}  // namespace

TEST_F(GTKWindow, SendsTheGestureOfTheRealPointerToTheViewUnderIt) {
    const auto view = add({{100, 50}, {200, 200}}, {1, 0, 0, 1});
    const auto recorder = std::make_shared<Recorder>();
    const auto& log = recorder->log;
    view->addGestureRecognizer(recorder);
    window_->show();
    // The pointer leaves the view meanwhile.
    desktop::xdotool("mousemove 110 70 mousedown 1 mousemove 150 80 mousemove 50 300 mouseup 1");
    ASSERT_TRUE(desktop::runUntil([&] { return !log.empty() && log.back().starts_with("up"); }));
    EXPECT_EQ(log.front(), "down 10,20");
    // GTK may combine motions.
    ASSERT_GE(log.size(), 3U);
    EXPECT_EQ(log[log.size() - 2], "move -50,250");
    EXPECT_EQ(log.back(), "up -50,250");
}

TEST_F(GTKWindow, CancelsTheGestureWhenAnotherButtonIsPressed) {
    const auto view = add({{100, 50}, {200, 200}}, {1, 0, 0, 1});
    const auto recorder = std::make_shared<Recorder>();
    view->addGestureRecognizer(recorder);
    window_->show();
    desktop::xdotool(
        "mousemove 110 70 mousedown 1 mousemove 150 80 mousedown 3 mousemove 160 90 mouseup 3 "
        "mouseup 1 mousemove 120 80 click 1");
    const auto& log = recorder->log;
    // The second click arrives when all else has been handled.
    ASSERT_TRUE(desktop::runUntil([&] { return std::ranges::count(log, "up 20,30") == 1; }));
    const auto cancelled = std::ranges::find(log, "cancelled");
    ASSERT_NE(cancelled, log.end());
    EXPECT_EQ(std::vector(cancelled + 1, log.end()),
              (std::vector<std::string>{"down 20,30", "up 20,30"}));
}

TEST_F(GTKWindow, MovesRotatesFadesHidesAndReordersWithoutPainting) {
    const auto view = add({{100, 50}, {300, 200}}, {1, 0, 0, 1});
    add({{150, 100}, {300, 200}}, {0, 1, 0, 1});
    window_->show();
    const int painted = view->drawCount;
    const std::function<void()> changes[] = {
        [&] {
            view->setFrame({{20, 30}, {300, 200}});
        },
        [&] { view->layer()->setTransform(rotation(1)); },
        [&] { view->layer()->setOpacity(0.5); },
        [&] { view->layer()->setZPosition(4); },
        [&] { view->setHidden(true); },
        [&] { view->setHidden(false); },
    };
    for (const auto& change : changes) {
        change();
        window_->show();
    }
    EXPECT_EQ(view->drawCount, painted);
}

TEST_F(GTKWindow, AnimatesOnTheFrameClockAndThenSleeps) {
    const auto view = add({{100, 50}, {300, 200}}, {1, 0, 0, 1});
    window_->show();
    bool isOver = false;
    platform::CATransaction::begin();
    platform::CATransaction::setCompletionBlock([&isOver] { isOver = true; });
    platform::CAKeyframeAnimation animation("transform.rotation");
    animation.setValues(std::vector<double>{1, 0});
    animation.setDuration(0.5);
    animation.setRepeatCount(std::numeric_limits<float>::infinity());
    view->layer()->addAnimation(animation, "turn");
    platform::CATransaction::commit();
    const int before = window_->frames();
    EXPECT_TRUE(desktop::runUntil([&] { return window_->frames() >= before + 10; }));
    EXPECT_FALSE(isOver);
    view->layer()->removeAllAnimations();
    EXPECT_TRUE(desktop::runUntil([&] { return isOver; }));
    EXPECT_TRUE(desktop::runUntilAsleep());
}

TEST_F(GTKWindow, UploadsOnlyTheTilesThatWerePainted) {
    const auto view = add({{0, 0}, size}, {1, 0, 0, 1});
    window_->show();
    const auto before = texturesOf(window_->window().widget());
    if (before.empty()) {
        GTEST_SKIP() << "the processor composes: there are no textures";
    }
    ASSERT_EQ(before.size(), 6U);  // 600x400 in tiles of 256
    view->setNeedsDisplayInRect({{300, 10}, {20, 20}});
    window_->show();
    const auto after = texturesOf(window_->window().widget());
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        EXPECT_EQ(after[i] == before[i], i != 1) << i;
    }
}

TEST_F(GTKWindow, ReportsAndFollowsAResize) {
    CGSize told;
    window_->window().setResizeHandler([&](CGSize newSize) {
        told = newSize;
        root_->setFrame({{0, 0}, newSize});
    });
    window_->show();
    window_->toplevel().set_default_size(700, 300);
    ASSERT_TRUE(desktop::runUntil([&] { return told == CGSize{700, 300}; }));
    EXPECT_EQ(window_->window().contentSize(), told);
    root_->layer()->setBackgroundColor({0, 0, 1, 1});
    EXPECT_EQ(window_->picture().at(699, 299), 0x0000FFU);
}

TEST_F(GTKWindow, ShowsTheNeighborsOfAViewThatCannotBeShown) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    add({{0, 0}, {50, 50}}, {0, 0, 1, 1});
    const CGRect frames[] = {{{nan, 0}, {10, 10}},      {{60, 60}, {nan, nan}},
                             {{infinite, 0}, {10, 10}}, {{60, 60}, {infinite, 10}},
                             {{60, 60}, {-10, -10}},    {{60, 60}, {1e12, 1e12}},
                             {{1e12, 1e12}, {10, 10}}};
    for (const CGRect& frame : frames) {
        const auto view = add(frame, {0, 1, 0, 1});
        EXPECT_EQ(window_->picture().at(40, 45), 0x0000FFU);
        view->removeFromSuperviewWithoutNeedingDisplay();
    }
}

TEST_F(GTKWindow, ReleasesAViewThatLeavesDuringItsOwnGesture) {
    const auto view = add({{100, 50}, {200, 200}}, {1, 0, 0, 1});
    const auto recorder = std::make_shared<Recorder>();
    recorder->leaves = true;
    view->addGestureRecognizer(recorder);
    EXPECT_NE(window_->picture().at(290, 240), 0U);
    desktop::xdotool("mousemove 110 70 mousedown 1 mousemove 150 80 mouseup 1");
    ASSERT_TRUE(desktop::runUntil([&] { return recorder->log.size() > 1; }));
    EXPECT_EQ(window_->picture().at(290, 240), 0U);
}

}  // namespace orvane::tests
