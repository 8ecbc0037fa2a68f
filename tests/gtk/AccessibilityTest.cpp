#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <memory>
#include <string>
#include <vector>

#include "orvane/display/native/DisplayView.h"
#include "orvane/embedding/accessibilityLabels.h"
#include "orvane/orvane.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

using display::Display;
using display::DisplayFactory;

struct Label {
    std::string text;
    graphene_rect_t place;
};

// Whether these are the labels that assistive technology finds in a widget, in their places.
bool isLabelled(Gtk::Widget& parent, const std::vector<Label>& expected) {
    std::size_t found = 0;
    for (GtkWidget* child = gtk_widget_get_first_child(parent.gobj()); child != nullptr;
         child = gtk_widget_get_next_sibling(child)) {
        auto* const accessible = GTK_ACCESSIBLE(child);
        if (gtk_accessible_get_accessible_role(accessible) != GTK_ACCESSIBLE_ROLE_LABEL) {
            continue;
        }
        graphene_rect_t place;
        if (found == expected.size() || !gtk_widget_compute_bounds(child, parent.gobj(), &place) ||
            !graphene_rect_equal(&place, &expected[found].place)) {
            return false;
        }
        char* const difference = gtk_test_accessible_check_property(
            accessible, GTK_ACCESSIBLE_PROPERTY_LABEL, expected[found++].text.c_str());
        if (difference != nullptr) {
            g_free(difference);
            return false;
        }
    }
    return found == expected.size();
}

std::shared_ptr<display::graphics::Rect> makeRect(double x, double y, const std::string& label) {
    auto rect = DisplayFactory::createRect();
    rect->set(x, y, 30, 20);
    rect->setFillColor(0xFF336699);
    rect->getOrCreateAccessibilityElement()->setLabel(label);
    return rect;
}

}  // namespace

TEST(Accessibility, FindsEachVisibleLabelledObjectAtItsPlace) {
    TestWindow window({300, 200});
    const auto display = Display::instance();
    display->getView()->setFrame({{0, 0}, {300, 200}});
    window.window().setContentView(display->getView());
    window.window().setAccessibilityLabels(
        [&] { return embedding::accessibilityLabels(*display); });

    const auto group = DisplayFactory::createContainer();
    group->add(makeRect(10, 10, "first"));
    const auto second = makeRect(50, 10, "second");
    group->add(second);
    group->add(makeRect(100, 10, ""));
    const auto hidden = makeRect(150, 10, "hidden");
    hidden->setVisible(false);
    group->add(hidden);
    display->add(group);
    window.show();

    const auto becomes = [&](const std::vector<Label>& expected) {
        return desktop::runUntil([&] { return isLabelled(window.window().widget(), expected); });
    };
    EXPECT_TRUE(becomes({{"first", {{10, 10}, {30, 20}}}, {"second", {{50, 10}, {30, 20}}}}));
    second->setTranslate(0, 100);
    hidden->setVisible(true);
    EXPECT_TRUE(becomes({{"first", {{10, 10}, {30, 20}}},
                         {"second", {{50, 110}, {30, 20}}},
                         {"hidden", {{150, 10}, {30, 20}}}}));
    group->clear();
    EXPECT_TRUE(becomes({}));

    display->removeAll();
    window.window().setContentView(nullptr);
    Display::reset();
}

}  // namespace orvane::tests
