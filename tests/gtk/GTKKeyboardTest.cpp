#include <gtest/gtest.h>
#include <gtkmm/box.h>
#include <gtkmm/button.h>

#include <memory>
#include <string>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSTextField.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

// Writes down the keys that it gets.
class KeyView : public platform::NSView {
public:
    bool acceptsFirstResponder() const override { return true; }
    bool canBecomeKeyView() const override { return true; }
    bool keyDown(const platform::NSEvent& event) override {
        keys += (event.modifierFlags & platform::kNSEventModifierControl) != 0 ? "ctrl+" : "";
        keys += (event.modifierFlags & platform::kNSEventModifierShift) != 0 ? "shift+" : "";
        keys += event.key + "(" + event.characters + ") ";
        return event.key != "Tab";
    }
    bool keyUp(const platform::NSEvent& event) override {
        released += event.key + " ";
        return true;
    }

    std::string keys;
    std::string released;
};

class GTKKeyboard : public WindowTest {
protected:
    GTKKeyboard() {
        view_->setFrame({{10, 10}, {100, 40}});
        field_->setFrame({{10, 60}, {200, 40}});
        root_->addSubview(view_);
        root_->addSubview(field_);
        window_.show();
        desktop::focus(window_.toplevel());
    }
    bool becomesFirst(const platform::NSView* view) {
        return desktop::runUntil([&] { return window_.window().firstResponder() == view; });
    }

    std::shared_ptr<KeyView> view_ = std::make_shared<KeyView>();
    std::shared_ptr<platform::NSTextField> field_ = std::make_shared<platform::NSTextField>();
};

}  // namespace

TEST_F(GTKKeyboard, AViewGetsTheNamesAndTheTextOfKeys) {
    desktop::xdotool("mousemove 50 30 click 1");
    ASSERT_TRUE(becomesFirst(view_.get()));
    desktop::xdotool("key a key A key exclam key ctrl+b key Left key KP_Enter");
    EXPECT_TRUE(desktop::runUntil([&] { return view_->keys.ends_with("KP_Enter() "); }));
    EXPECT_NE(view_->keys.find("shift+a(A)"), std::string::npos) << view_->keys;
    EXPECT_NE(view_->keys.find("shift+1(!)"), std::string::npos) << view_->keys;
    EXPECT_NE(view_->keys.find("ctrl+b()"), std::string::npos) << view_->keys;
    EXPECT_EQ(view_->keys.substr(0, 5), "a(a) ");
    EXPECT_NE(view_->released.find("Left"), std::string::npos) << view_->released;
}

TEST_F(GTKKeyboard, TheFocusAndTheFirstResponderAgree) {
    desktop::xdotool("mousemove 100 80 click 1");
    ASSERT_TRUE(becomesFirst(field_.get()));
    desktop::xdotool("type x");
    EXPECT_TRUE(desktop::runUntil([&] { return field_->stringValue() == "x"; }));
    // From the view to the widget and back.
    window_.window().makeFirstResponder(view_.get());
    desktop::xdotool("key y");
    EXPECT_TRUE(desktop::runUntil([&] { return view_->keys == "y(y) "; }));
    window_.window().makeFirstResponder(field_.get());
    desktop::xdotool("key End key z");
    EXPECT_TRUE(desktop::runUntil([&] { return field_->stringValue() == "xz"; }));
    EXPECT_EQ(view_->keys, "y(y) ");
    // Without a first responder, keys go to no field.
    window_.window().makeFirstResponder(nullptr);
    desktop::xdotool("key w");
    window_.window().makeFirstResponder(view_.get());
    desktop::xdotool("key v");
    EXPECT_TRUE(desktop::runUntil([&] { return view_->keys.ends_with("v(v) "); }));
    EXPECT_EQ(field_->stringValue(), "xz");
}

TEST_F(GTKKeyboard, TabVisitsTheViewsAndThenTheOtherWidgetsOfTheWindow) {
    Gtk::Box box;
    Gtk::Button button("of the program");
    window_.toplevel().unset_child();
    box.append(window_.window().widget());
    box.append(button);
    window_.toplevel().set_child(box);
    window_.show();
    field_->setKeyViewOrder(-1);
    window_.window().makeFirstResponder(field_.get());
    desktop::xdotool("key Tab");
    EXPECT_TRUE(becomesFirst(view_.get()));
    desktop::xdotool("key Tab");
    EXPECT_TRUE(desktop::runUntil([&] { return button.has_focus(); }));
    EXPECT_EQ(window_.window().firstResponder(), nullptr);
    desktop::xdotool("key Tab");
    EXPECT_TRUE(becomesFirst(field_.get()));
    desktop::xdotool("key shift+Tab");
    EXPECT_TRUE(desktop::runUntil([&] { return button.has_focus(); }));
    desktop::xdotool("key shift+Tab");
    EXPECT_TRUE(becomesFirst(view_.get()));
    box.remove(window_.window().widget());
    window_.toplevel().set_child(window_.window().widget());
}

}  // namespace orvane::tests
