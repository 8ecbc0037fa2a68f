#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <limits>
#include <optional>
#include <vector>

#include "platform/appkit/NSGestureRecognizer.h"
#include "platform/quartzcore/CAKeyframeAnimation.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

using platform::CGRect;
using platform::CGSize;
using platform::NSEvent;

// Records where it receives events, in the coordinates of its view.
struct Recorder : platform::NSGestureRecognizer {
    void mouseDown(const NSEvent& event) override { down = locationInView(event, *view()); }
    void mouseDragged(const NSEvent& event) override { moved = locationInView(event, *view()); }
    void mouseUp(const NSEvent& event) override { up = locationInView(event, *view()); }

    void endGesture(platform::NSGestureEndReason reason) override { ended.push_back(reason); }

    std::optional<platform::CGPoint> down, moved, up;
    std::vector<platform::NSGestureEndReason> ended;
};

void collectTextures(GskRenderNode* node, std::vector<GdkTexture*>& textures) {
    const GskRenderNodeType type = gsk_render_node_get_node_type(node);
    if (type == GSK_CONTAINER_NODE) {
        for (guint i = 0; i < gsk_container_node_get_n_children(node); ++i) {
            collectTextures(gsk_container_node_get_child(node, i), textures);
        }
    } else if (type == GSK_TRANSFORM_NODE) {
        collectTextures(gsk_transform_node_get_child(node), textures);
    } else if (type == GSK_CLIP_NODE) {
        collectTextures(gsk_clip_node_get_child(node), textures);
    } else if (type == GSK_TEXTURE_NODE) {
        textures.push_back(gsk_texture_node_get_texture(node));
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

using GTKWindow = WindowTest;

TEST_F(GTKWindow, SendsTheGestureOfTheRealPointerToTheViewUnderIt) {
    const auto view = add({{100, 50}, {200, 200}}, {1, 0, 0, 1});
    const auto recorder = std::make_shared<Recorder>();
    view->addGestureRecognizer(recorder);
    window_.show();
    // The pointer leaves the view meanwhile.
    desktop::xdotool("mousemove 110 70 mousedown 1 mousemove 150 80 mousemove 50 300 mouseup 1");
    EXPECT_TRUE(desktop::runUntil([&] { return recorder->up.has_value(); }));
    EXPECT_EQ(recorder->down, (platform::CGPoint{10, 20}));
    EXPECT_EQ(recorder->moved, (platform::CGPoint{-50, 250}));
    EXPECT_EQ(recorder->up, (platform::CGPoint{-50, 250}));
}

TEST_F(GTKWindow, CancelsTheGestureWhenAnotherButtonIsPressed) {
    const auto view = add({{100, 50}, {200, 200}}, {1, 0, 0, 1});
    const auto recorder = std::make_shared<Recorder>();
    view->addGestureRecognizer(recorder);
    window_.show();
    desktop::xdotool(
        "mousemove 110 70 mousedown 1 mousemove 150 80 mousedown 3 mousemove 160 90 mouseup 3 "
        "mouseup 1 mousemove 120 80 click 1");
    // The second click arrives when all else has been handled.
    ASSERT_TRUE(desktop::runUntil([&] { return recorder->up == platform::CGPoint{20, 30}; }));
    EXPECT_EQ(recorder->ended.front(), platform::NSGestureEndReason::Cancelled);
}

TEST_F(GTKWindow, AnimatesOnTheFrameClockAndThenSleeps) {
    const auto view = add({{100, 50}, {300, 200}}, {1, 0, 0, 1});
    window_.show();
    platform::CAKeyframeAnimation animation("transform.rotation");
    animation.setValues(std::vector<double>{1, 0});
    animation.setDuration(0.5);
    animation.setRepeatCount(std::numeric_limits<float>::infinity());
    view->layer()->addAnimation(animation, "turn");
    const int before = window_.frames();
    EXPECT_TRUE(desktop::runUntil([&] { return window_.frames() >= before + 10; }));
    view->layer()->removeAllAnimations();
    EXPECT_TRUE(desktop::runUntilAsleep());
}

TEST_F(GTKWindow, UploadsOnlyTheTilesThatWerePainted) {
    const auto view = add({{0, 0}, size}, {1, 0, 0, 1});
    window_.show();
    const auto before = texturesOf(window_.window().widget());
    if (before.empty()) {
        GTEST_SKIP() << "the processor composes: there are no textures";
    }
    ASSERT_EQ(before.size(), 6U);  // 600x400 in tiles of 256
    view->setNeedsDisplayInRect({{300, 10}, {20, 20}});
    window_.show();
    const auto after = texturesOf(window_.window().widget());
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        EXPECT_EQ(after[i] == before[i], i != 1) << i;
    }
}

TEST_F(GTKWindow, ReportsAndFollowsAResize) {
    CGSize told;
    window_.window().setResizeHandler([&](CGSize newSize) {
        told = newSize;
        root_->setFrame({{0, 0}, newSize});
    });
    window_.show();
    window_.toplevel().set_default_size(700, 300);
    ASSERT_TRUE(desktop::runUntil([&] { return told == CGSize{700, 300}; }));
    EXPECT_EQ(window_.window().contentSize(), told);
    root_->layer()->setBackgroundColor({0, 0, 1, 1});
    EXPECT_EQ(window_.picture().at(699, 299), 0x0000FFU);
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
        EXPECT_EQ(window_.picture().at(40, 45), 0x0000FFU);
        view->removeFromSuperviewWithoutNeedingDisplay();
    }
}

}  // namespace orvane::tests
