#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "orvane/driver/Driver.h"
#include "orvane/orvane.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSScriptedDesktop.h"
#include "platform/offscreen/OffscreenWindowHost.h"

namespace {

using orvane::driver::Driver;
using namespace orvane::platform;

class NotesExample : public ::testing::Test {
protected:
    double columnOf(const std::string& note) {
        return driver_.find({.kind = "Container", .label = note})->getFrame().x;
    }
    std::string focus() {
        const auto object = orvane::display::Display::instance()->getFocus();
        return object ? object->getAccessibilityElement()->getLabel() : "nothing";
    }
    static std::string file() {
        std::stringstream text;
        text << std::ifstream(orvane::system::getDocumentsDirectory() + "/notes.json").rdbuf();
        return text.str();
    }

    static constexpr double kRing = 4;  // around what has the focus
    Driver driver_{ORVANE_NOTES_EXAMPLE, {.size = {900, 600}}};
};

TEST_F(NotesExample, NotesAreDraggedAndMovedByKeys) {
    const double first = columnOf("Buy coffee");
    const double second = columnOf("Plan the trip to the coast:\ntrain, tent, tide table");
    driver_.drag({.label = "Buy coffee"}, {second - first, 60});
    EXPECT_NEAR(columnOf("Buy coffee"), second, kRing);
    EXPECT_EQ(focus(), "Buy coffee");
    driver_.key("Right", kNSEventModifierAlt);
    EXPECT_GT(columnOf("Buy coffee"), second + kRing);
    driver_.key("Up");
    EXPECT_EQ(focus(), "Water the plants");
    driver_.key("Delete");
    EXPECT_TRUE(driver_.findAll({.label = "Water the plants"}).empty());
    EXPECT_TRUE(driver_.drop(orvane::driver::Query{.label = "Done"}, {}, "dropped"));
    EXPECT_NEAR(columnOf("dropped"), columnOf("Buy coffee"), kRing);
}

TEST_F(NotesExample, TheDialogKeepsTheKeyboardAndGivesItBack) {
    driver_.key("Tab");
    driver_.key("Tab");
    EXPECT_EQ(focus(), "Buy coffee");
    driver_.key("Return");
    for (const std::string stop : {"Text of the note", "Cancel", "Keep", "Text of the note"}) {
        EXPECT_EQ(focus(), stop);
        driver_.key("Tab");
    }
    driver_.key("Escape");
    EXPECT_EQ(focus(), "Buy coffee");
    driver_.press({.label = "New note"});
    driver_.type("Bake bread");
    driver_.desktop().setAppearance({.isDark = true});  // draws everything again
    driver_.press({.label = "Keep"});
    EXPECT_EQ(focus(), "Bake bread");
    driver_.key("c", kNSEventModifierControl);
    driver_.key("v", kNSEventModifierControl);
    driver_.step(0);
    EXPECT_EQ(driver_.findAll({.kind = "Container", .label = "Bake bread"}).size(), 2U);
}

TEST_F(NotesExample, TheWindowClosesWhenTheNotesAreSaved) {
    driver_.key("Tab");
    driver_.key("Tab");
    driver_.key("Delete");
    EXPECT_FALSE(driver_.closeWindow());
    driver_.waitUntil([&] { return driver_.windowHost().isClosed(); });
    EXPECT_EQ(file().find("Buy coffee"), std::string::npos);
    EXPECT_NE(file().find("Water the plants"), std::string::npos);
}

}  // namespace
