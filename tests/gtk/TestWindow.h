#pragma once

#include <gtest/gtest.h>
#include <gtkmm/window.h>

#include <memory>

#include "platform/appkit/NSView.h"
#include "platform/gtk/GTKWindow.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "tests/gtk/Desktop.h"

namespace orvane::tests {

// A GTKWindow in a toplevel without decorations, at the top left of the screen.
class TestWindow {
public:
    explicit TestWindow(platform::CGSize size);
    ~TestWindow();
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    platform::GTKWindow& window() { return window_; }
    Gtk::Window& toplevel() { return toplevel_; }

    // Brings all changes made so far to the screen.
    void show();
    // Calls show() and returns what is on screen then, in device pixels.
    Picture picture();
    // Whether the processor composes the window, without a GPU.
    bool isComposedByProcessor();
    // How many frames GTK has drawn.
    int frames() const { return frames_; }

private:
    desktop::Connection connection_;
    platform::GTKWindow window_;
    Gtk::Window toplevel_;
    int frames_ = 0;
};

// A view of one color, with a pattern that shows its orientation.
class PatternView : public platform::NSView {
public:
    bool paints() const override { return true; }
    bool isFlipped() const override { return true; }
    void drawRect(const platform::CGRect& dirty) override;

    platform::CGColor color;
    int drawCount = 0;
};

std::shared_ptr<PatternView> makePattern(const platform::CGRect& frame,
                                         const platform::CGColor& color);

// A window that shows an empty black view.
class WindowTest : public ::testing::Test {
protected:
    WindowTest();

    std::shared_ptr<PatternView> add(const platform::CGRect& frame, const platform::CGColor& color);

    static constexpr platform::CGSize size{600, 400};
    TestWindow window_{size};
    std::shared_ptr<platform::NSView> root_ = std::make_shared<platform::NSView>();
};

// What an off-screen window shows, as 0x00RRGGBB.
Picture pictureOf(platform::OffscreenWindow& window);
// How many pixels differ by more than `tolerance` in a component.
int countDifferences(const Picture& a, const Picture& b, int tolerance);

// About the layer's anchor point.
platform::CATransform3D rotation(double radians);

}  // namespace orvane::tests
