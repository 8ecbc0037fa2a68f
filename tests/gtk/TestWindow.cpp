#include "tests/gtk/TestWindow.h"

#include <gtk/gtk.h>

// After GTK's.
#include <gsk/gskcairorenderer.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <numeric>

#include "platform/appkit/NSGraphicsContext.h"
#include "platform/coregraphics/CGContext.h"

namespace orvane::tests {

TestWindow::TestWindow(platform::CGSize size) : window_(size) {
    toplevel_.set_decorated(false);
    toplevel_.set_child(window_.widget());
    toplevel_.present();
    g_signal_connect_swapped(gtk_widget_get_frame_clock(window_.widget().gobj()), "after-paint",
                             G_CALLBACK(+[](TestWindow* self) { ++self->frames_; }), this);
}

TestWindow::~TestWindow() {
    g_signal_handlers_disconnect_by_data(gtk_widget_get_frame_clock(window_.widget().gobj()), this);
    toplevel_.unset_child();
}

void TestWindow::show() {
    // Everything is on screen with the first frame that leaves nothing to do.
    const int before = frames_;
    window_.widget().queue_draw();
    EXPECT_TRUE(desktop::runUntil(
        [&] { return frames_ > before && (!window_.needsDisplay() || window_.isAnimating()); }));
}

bool TestWindow::isComposedByProcessor() {
    return GSK_IS_CAIRO_RENDERER(gtk_native_get_renderer(GTK_NATIVE(toplevel_.gobj())));
}

Picture TestWindow::picture() {
    show();
    const double factor = window_.widget().get_scale_factor();
    const platform::CGSize size = window_.contentSize();
    return desktop::screenshot(static_cast<int>(size.width * factor),
                               static_cast<int>(size.height * factor));
}

void PatternView::drawRect(const platform::CGRect&) {
    ++drawCount;
    platform::CGContext& canvas = *platform::NSGraphicsContext::currentGraphicsPort();
    const auto fill = [&canvas](const platform::CGRect& rect) {
        canvas.addRect(rect);
        canvas.drawPath(platform::CGPathDrawingMode::Fill);
    };
    canvas.setRGBFillColor(color.red, color.green, color.blue, color.alpha);
    fill(bounds());
    for (int i = 0; i < 40; ++i) {
        canvas.setRGBFillColor(1 - color.red, color.blue, color.green, 0.5 + 0.5 / (i + 1));
        fill({{20.0 * i, 12.0 * i}, {15, 8}});
    }
}

std::shared_ptr<PatternView> makePattern(const platform::CGRect& frame,
                                         const platform::CGColor& color) {
    auto view = std::make_shared<PatternView>();
    view->color = color;
    view->setFrame(frame);
    view->setNeedsDisplayInRect(view->bounds());
    return view;
}

WindowTest::WindowTest() {
    root_->setFrame({{0, 0}, size});
    root_->layer()->setBackgroundColor({0, 0, 0, 1});
    window_.window().setContentView(root_);
}

std::shared_ptr<PatternView> WindowTest::add(const platform::CGRect& frame,
                                             const platform::CGColor& color) {
    auto view = makePattern(frame, color);
    root_->addSubview(view);
    return view;
}

platform::CATransform3D rotation(double radians) {
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    return platform::CATransform3D::makeAffineTransform({c, s, -s, c, 0, 0});
}

Picture pictureOf(platform::OffscreenWindow& window) {
    window.display();
    Picture picture{window.pixelWidth(), window.pixelHeight(), {}};
    for (int y = 0; y < picture.height; ++y) {
        const std::uint32_t* const row = window.pixels() + static_cast<std::size_t>(y) *
                                                               window.bytesPerRow() /
                                                               sizeof(std::uint32_t);
        std::transform(row, row + picture.width, std::back_inserter(picture.pixels),
                       [](std::uint32_t pixel) { return pixel & 0xFFFFFF; });
    }
    return picture;
}

int countDifferences(const Picture& a, const Picture& b, int tolerance) {
    EXPECT_EQ(a.width, b.width);
    EXPECT_EQ(a.height, b.height);
    const auto differ = [tolerance](std::uint32_t x, std::uint32_t y) {
        return std::ranges::any_of(std::array{0, 8, 16}, [=](int shift) {
            return std::abs(static_cast<int>(x >> shift & 0xFF) -
                            static_cast<int>(y >> shift & 0xFF)) > tolerance;
        });
    };
    return std::inner_product(a.pixels.begin(), a.pixels.end(), b.pixels.begin(), 0, std::plus(),
                              differ);
}

}  // namespace orvane::tests
