#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <memory>
#include <string>

#include "platform/appkit/NSGestureRecognizer.h"
#include "platform/appkit/NSTextField.h"
#include "platform/appkit/NSView.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

class GTKControl : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(desktop::connect());
        window_ = std::make_unique<TestWindow>(platform::CGSize{400, 300});
        root_ = std::make_shared<platform::NSView>();
        root_->setFrame({{0, 0}, {400, 300}});
        window_->window().setContentView(root_);
        field_ = std::make_shared<platform::NSTextField>();
        field_->setFrame({{50, 50}, {200, 40}});
        root_->addSubview(field_);
        window_->show();
        desktop::focus(window_->toplevel());
    }

    // Returns the type of the widget that takes the pointer at a point of the window.
    std::string widgetAt(double x, double y) {
        GtkWidget* const widget =
            gtk_widget_pick(window_->window().widget().gobj(), x, y, GTK_PICK_DEFAULT);
        return widget != nullptr ? G_OBJECT_TYPE_NAME(widget) : "";
    }

    std::unique_ptr<TestWindow> window_;
    std::shared_ptr<platform::NSView> root_;
    std::shared_ptr<platform::NSTextField> field_;
};

class PressCounter : public platform::NSGestureRecognizer {
public:
    void mouseDown(const platform::NSEvent&) override { ++presses; }
    int presses = 0;
};

}  // namespace

TEST_F(GTKControl, ShowsWhatTheApplicationSetsAndGivesItWhatIsTyped) {
    // Text that the widget can show, text that is not UTF-8, and text with a zero byte.
    for (const std::string& text : {std::string("gr\xC3\xBC\xC3\x9F"), std::string("a\xFFz"),
                                    std::string("a\0b", 3), std::string(), std::string("abc")}) {
        field_->setStringValue(text);
        window_->show();
        EXPECT_EQ(field_->stringValue(), text);
    }
    desktop::xdotool("mousemove 100 70 click 1 key End type d");
    EXPECT_TRUE(desktop::runUntil([&] { return field_->stringValue() == "abcd"; }))
        << field_->stringValue();
}

TEST_F(GTKControl, IsBetweenPaintedViewsForThePointer) {
    const auto front = makePattern({{80, 40}, {40, 60}}, {1, 0, 0, 0.5});
    const auto inFront = std::make_shared<PressCounter>();
    front->addGestureRecognizer(inFront);
    root_->addSubview(front);
    const auto back = makePattern({{0, 0}, {400, 300}}, {0, 0, 1, 1});
    const auto behind = std::make_shared<PressCounter>();
    back->addGestureRecognizer(behind);
    root_->addSubview(back, platform::NSWindowOrderingMode::Below, field_.get());
    window_->show();
    EXPECT_EQ(widgetAt(200, 70), "GtkText");
    EXPECT_NE(widgetAt(100, 70), "GtkText");
    // In front of the field, on it, next to it. When the last press arrives, the others have been
    // handled.
    for (const char* const place : {"100 70", "200 70", "300 70"}) {
        desktop::xdotool(std::string("mousemove ") + place + " click 1");
    }
    ASSERT_TRUE(desktop::runUntil([&] { return behind->presses > 0; }));
    EXPECT_EQ(inFront->presses, 1);
    EXPECT_EQ(behind->presses, 1);
}

}  // namespace orvane::tests
