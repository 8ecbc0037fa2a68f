#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <memory>
#include <string>
#include <vector>

#include "host/accessibilityLabels.h"
#include "orvane/display/DisplayView.h"
#include "orvane/orvane.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

using display::Display;
using display::DisplayFactory;

// What assistive technology finds in a widget: each label, with its place.
std::vector<std::string> labelsIn(Gtk::Widget& parent, const std::vector<std::string>& expected) {
    std::vector<std::string> found;
    for (GtkWidget* child = gtk_widget_get_first_child(parent.gobj()); child != nullptr;
         child = gtk_widget_get_next_sibling(child)) {
        auto* const accessible = GTK_ACCESSIBLE(child);
        if (gtk_accessible_get_accessible_role(accessible) != GTK_ACCESSIBLE_ROLE_LABEL) {
            continue;
        }
        graphene_rect_t place;
        EXPECT_TRUE(gtk_widget_compute_bounds(child, parent.gobj(), &place));
        std::string text = "?";
        for (const std::string& candidate : expected) {
            char* const difference = gtk_test_accessible_check_property(
                accessible, GTK_ACCESSIBLE_PROPERTY_LABEL, candidate.c_str());
            if (difference == nullptr) {
                text = candidate;
            }
            g_free(difference);
        }
        found.push_back(text + " " + std::to_string(static_cast<int>(place.origin.x)) + "," +
                        std::to_string(static_cast<int>(place.origin.y)) + " " +
                        std::to_string(static_cast<int>(place.size.width)) + "x" +
                        std::to_string(static_cast<int>(place.size.height)));
    }
    return found;
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
    ASSERT_TRUE(desktop::connect());
    TestWindow window({300, 200});
    const auto display = Display::instance();
    display->getView()->setFrame({{0, 0}, {300, 200}});
    window.window().setContentView(display->getView());
    window.window().setAccessibilityLabels([&] { return host::accessibilityLabels(*display); });

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

    const std::vector<std::string> texts{"first", "second", "hidden", ""};
    const auto finds = [&](const std::vector<std::string>& expected) {
        return desktop::runUntil(
            [&] { return labelsIn(window.window().widget(), texts) == expected; });
    };
    EXPECT_TRUE(finds({"first 10,10 30x20", "second 50,10 30x20"}));
    second->setTranslate(0, 100);
    hidden->setVisible(true);
    EXPECT_TRUE(finds({"first 10,10 30x20", "second 50,110 30x20", "hidden 150,10 30x20"}));
    group->clear();
    EXPECT_TRUE(finds({}));

    display->removeAll();
    window.window().setContentView(nullptr);
    Display::reset();
}

}  // namespace orvane::tests
