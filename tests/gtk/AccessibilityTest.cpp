#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "orvane/display/native/DisplayView.h"
#include "orvane/embedding/Accessibility.h"
#include "orvane/orvane.h"
#include "tests/gtk/Reader.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

using namespace display;
using Role = AccessibilityRole;
using Action = AccessibilityAction;

std::shared_ptr<graphics::Rect> makeRect(float x, float y) {
    auto rect = DisplayFactory::createRect();
    rect->set(x, y, 30, 20);
    rect->setFillColor(0xFF336699);
    return rect;
}

std::shared_ptr<graphics::Text> makeText(const std::string& content) {
    auto text = DisplayFactory::createText(false);
    text->setContent(content);
    text->setY(150);
    return text;
}

// Claims touches and keys, and remembers that it was used.
struct Use : events::TouchEventListener, events::KeyEvent::listener_type {
    events::TouchEventListenerState operator()(const std::shared_ptr<DisplayObject>&,
                                               const events::TouchEvent&) override {
        ++touches;
        return events::TouchEventListenerState::Ended;
    }
    bool operator()(const std::shared_ptr<DisplayObject>&, const events::KeyEvent& event) override {
        keys += event.phase == events::KeyPhase::Down ? event.key : "";
        return true;
    }
    int touches = 0;
    std::string keys;
};

}  // namespace

class Accessibility : public ::testing::Test {
protected:
    Accessibility() {
        display_->getView()->setFrame({{0, 0}, {300, 200}});
        window_.window().setContentView(display_->getView());
        window_.window().setAccessibility(&content_);
    }
    ~Accessibility() override {
        window_.window().setAccessibility(nullptr);
        display_->removeAll();
        window_.window().setContentView(nullptr);
        Display::reset();
    }
    // Runs until the tree of the program is this one, and shows the difference if it never is.
    void expectTree(const std::string& expected) {
        std::string tree;
        desktop::runUntil(
            [&] {
                tree.clear();
                for (const Accessible& program : reader_.programs()) {
                    tree += reader_.tree(program);
                }
                return tree == expected;
            },
            3);
        EXPECT_EQ(tree, expected);
    }
    Accessible element(const std::string& name) { return reader_.byName()[name]; }
    void act(const Accessible& object, int number) {
        reader_.call(object, "org.a11y.atspi.Action", "DoAction", g_variant_new("(i)", number));
    }

    TestWindow window_{{300, 200}};
    std::shared_ptr<Display> display_ = Display::instance();
    embedding::Accessibility content_{*display_};
    Reader reader_;
};

TEST_F(Accessibility, AScreenReaderFindsWhatTheDisplayShowsAndUsesIt) {
    const auto page = DisplayFactory::createContainer();
    const auto title = makeText("Notes");
    title->getOrCreateAccessibilityElement()->setRole(Role::Heading);
    page->add(title);
    page->add(makeText("Two to do"));
    const auto button = DisplayFactory::createContainer();
    button->add(makeRect(10, 10));
    button->add(makeText("Add"));
    button->getOrCreateAccessibilityElement()->setRole(Role::Button);
    button->getAccessibilityElement()->setDescription("a note");
    button->getAccessibilityElement()->setValue("20 %");
    const auto use = std::make_shared<Use>();
    button->addListener<events::TouchEvent>(use);
    button->addListener<events::KeyEvent>(use);
    page->add(button);
    const auto list = DisplayFactory::createContainer();
    list->getOrCreateAccessibilityElement()->setRole(Role::List);
    list->getAccessibilityElement()->setLabel("To do");
    std::string done;
    for (const std::string name : {"first", "second"}) {
        const auto item = makeRect(50, name == "first" ? 10.0F : 40.0F);
        item->getOrCreateAccessibilityElement()->setLabel(name);
        item->getAccessibilityElement()->setRole(Role::CheckBox);
        item->getAccessibilityElement()->setChecked(name == "first");
        for (const Action action : {Action::Press, Action::Increment}) {
            item->getAccessibilityElement()->setAction(action, [&done, name, action] {
                done += name + (action == Action::Press ? "!" : "+");
            });
        }
        list->add(item);
    }
    page->add(list);
    const auto hidden = makeRect(200, 10);
    hidden->getOrCreateAccessibilityElement()->setLabel("hidden");
    hidden->getAccessibilityElement()->setHidden(true);
    page->add(hidden);
    page->add(makeRect(240, 10));
    display_->add(page);
    window_.toplevel().set_title("Board");
    window_.show();
    desktop::focus(window_.toplevel());
    const auto treeWith = [](const std::string& focus, const std::string& states) {
        const bool isRoot = focus == "root";
        const std::string focused = " focused";
        return "application 'gtk_accessible_test' (gtk_accessible_test)\n"
               "  window 'Board' [window.close] [window.minimize] [window.toggle-maximized] "
               "[default.activate]\n"
               "    group ''" +
               (isRoot ? focused : "") +
               "\n"
               "      heading 'Notes'\n"
               "      label 'Two to do'\n"
               "      button 'Add' (20 %, a note)" +
               (isRoot ? "" : focused) +
               " [element.press]\n"
               "      list 'To do'\n"
               "        checkbox 'first'" +
               states +
               " [element.increment] [element.press]\n"
               "        checkbox 'second' [element.increment] [element.press]\n";
    };
    expectTree(treeWith("root", " checked"));

    EXPECT_EQ(reader_.extents(element("second")), (std::array{50, 40, 30, 20}));

    // Actions reach the application: by a function, or as a press of the pointer.
    act(element("first"), 0);
    act(element("second"), 1);
    act(element("Add"), 0);
    EXPECT_TRUE(desktop::runUntil([&] { return done == "first+second!" && use->touches == 1; }));

    // The focus of the display is that of the screen reader, either way; keys follow it.
    display_->setFocus(button);
    list->getChildren().front()->getAccessibilityElement()->setChecked(false);
    expectTree(treeWith("button", ""));
    desktop::xdotool("key a");
    EXPECT_TRUE(desktop::runUntil([&] { return use->keys == "a"; }));
    display_->setFocus(nullptr);
    expectTree(treeWith("root", ""));
    for (GtkWidget* child = gtk_widget_get_first_child(window_.window().widget().gobj());
         child != nullptr; child = gtk_widget_get_next_sibling(child)) {
        if (gtk_accessible_get_accessible_role(GTK_ACCESSIBLE(child)) ==
            GTK_ACCESSIBLE_ROLE_BUTTON) {
            gtk_widget_grab_focus(child);
        }
    }
    EXPECT_TRUE(desktop::runUntil([&] { return display_->getFocus() == button; }));
    desktop::xdotool("key c");
    EXPECT_TRUE(desktop::runUntil([&] { return use->keys == "ac"; }));
    expectTree(treeWith("button", ""));
    page->remove(button);
    display_->setFocus(nullptr);
    page->clear();
    expectTree(
        "application 'gtk_accessible_test' (gtk_accessible_test)\n"
        "  window 'Board' [window.close] [window.minimize] [window.toggle-maximized] "
        "[default.activate]\n"
        "    group '' focused\n");
}

}  // namespace orvane::tests
