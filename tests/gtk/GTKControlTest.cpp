#include <gtest/gtest.h>
#include <gtkmm/button.h>

#include <memory>
#include <string>
#include <string_view>
#include <tuple>

#include "platform/appkit/NSGestureRecognizer.h"
#include "platform/appkit/NSTextField.h"
#include "platform/gtk/GTKControl.h"
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

// A control of a program's own, with its widget.
class Switch : public platform::NSControl {
public:
    std::string_view controlKind() const override { return "test.Switch"; }
    void press() {
        isOn = !isOn;
        stateDidChange();
    }
    bool isOn = false;
};

class SwitchWidget : public platform::GTKControl {
public:
    explicit SwitchWidget(Switch& control) : control_(control) {
        button_.signal_clicked().connect([this] { control_.press(); });
    }
    Gtk::Widget& widget() override { return button_; }
    void stateDidChange() override { button_.set_label(control_.isOn ? "on" : "off"); }

private:
    Switch& control_;
    Gtk::Button button_;
};

}  // namespace

TEST_F(GTKControl, AProgramAddsWidgetsForItsOwnKind) {
    const auto early = std::make_shared<Switch>();
    early->setFrame({{50, 100}, {80, 40}});
    root_->addSubview(early);
    const auto create = [](platform::NSControl& control) {
        return std::make_unique<SwitchWidget>(dynamic_cast<Switch&>(control));
    };
    EXPECT_TRUE(platform::GTKControl::registerKind("test.Switch", create));
    EXPECT_FALSE(platform::GTKControl::registerKind("test.Switch", create));
    EXPECT_FALSE(platform::GTKControl::registerKind("", create));
    EXPECT_FALSE(platform::GTKControl::registerKind("test.Nothing", nullptr));
    const auto late = std::make_shared<Switch>();
    late->setFrame({{150, 100}, {80, 40}});
    root_->addSubview(late);
    window_.show();
    // The one that was in the window before paints itself.
    desktop::xdotool("mousemove 90 120 click 1 mousemove 190 120 click 1");
    EXPECT_TRUE(desktop::runUntil([&] { return late->isOn; }));
    EXPECT_FALSE(early->isOn);
}

TEST_F(GTKControl, ShowsWhatTheApplicationSetsAndGivesItWhatIsTyped) {
    const std::pair<std::string, std::string> texts[] = {
        {"gr\xC3\xBC\xC3\x9F", "gr\xC3\xBC\xC3\x9F"},
        {"a\xFFz", "a\xEF\xBF\xBDz"},  // bytes that are no text are shown as replacements
        {std::string("a\0b", 3),
         "a\xEF\xBF\xBD"
         "b"},
        {"a\nb", "a b"},
        {"", ""},
        {"abc", "abc"}};
    for (const auto& [text, expected] : texts) {
        field_->setStringValue(text);
        window_.show();
        EXPECT_EQ(field_->stringValue(), expected);
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

TEST_F(GTKControl, GetsNoPointerWhereItIsClippedAway) {
    const auto list = std::make_shared<platform::NSView>();
    list->setFrame({{0, 0}, {300, 60}});
    list->setClipsToBounds(true);
    root_->addSubview(list);
    // In front of the first field, and cut off above it.
    const auto clipped = std::make_shared<platform::NSTextField>();
    clipped->setFrame({{40, 10}, {200, 80}});
    platform::NSTextFieldStyle style;
    style.backgroundColor = {1, 1, 1, 1};
    clipped->setStyle(style);
    list->addSubview(clipped);
    window_.show();
    desktop::xdotool("mousemove 100 70 click 1 type a");
    EXPECT_TRUE(desktop::runUntil([&] { return field_->stringValue() == "a"; }));
    desktop::xdotool("mousemove 100 30 click 1 type b");
    EXPECT_TRUE(desktop::runUntil([&] { return clipped->stringValue() == "b"; }));
    // Only the part inside is on screen.
    const Picture before = window_.picture();
    clipped->setClips({{{{0, 0}, {1, 1}}, {}}});
    const Picture after = window_.picture();
    const double scale = window_.window().backingScaleFactor();
    for (const auto& [x, y, differs] :
         {std::tuple{45, 30, true}, {45, 58, true}, {45, 62, false}, {45, 80, false}}) {
        const auto at =
            static_cast<std::size_t>(y * scale) * static_cast<std::size_t>(before.width) +
            static_cast<std::size_t>(x * scale);
        EXPECT_EQ(before.pixels[at] != after.pixels[at], differs) << x << ", " << y;
    }
}

}  // namespace orvane::tests
