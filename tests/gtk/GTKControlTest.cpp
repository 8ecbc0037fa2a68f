#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/appkit/NSGestureRecognizer.h"
#include "platform/appkit/NSTextField.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

class GTKControl : public WindowTest {
protected:
    GTKControl() {
        field_->setFrame({{50, 50}, {200, 40}});
        root_->addSubview(field_);
        window_.show();
        desktop::focus(window_.toplevel());
    }

    std::shared_ptr<platform::NSTextField> field_ = std::make_shared<platform::NSTextField>();
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
        window_.show();
        EXPECT_EQ(field_->stringValue(), text);
    }
    desktop::xdotool("mousemove 100 70 click 1 key End type d");
    EXPECT_TRUE(desktop::runUntil([&] { return field_->stringValue() == "abcd"; }))
        << field_->stringValue();
}

TEST_F(GTKControl, IsBetweenPaintedViewsForThePointer) {
    const auto front = add({{80, 40}, {40, 60}}, {1, 0, 0, 0.5});
    const auto inFront = std::make_shared<PressCounter>();
    front->addGestureRecognizer(inFront);
    const auto back = makePattern({{0, 0}, {400, 300}}, {0, 0, 1, 1});
    const auto behind = std::make_shared<PressCounter>();
    back->addGestureRecognizer(behind);
    root_->addSubview(back, platform::NSWindowOrderingMode::Below, field_.get());
    window_.show();
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
