#include "orvane/inspector/Inspector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "orvane/display/Display.h"
#include "orvane/display/graphics/ListContainer.h"
#include "orvane/display/tree/ContainerObject.h"
#include "orvane/display/tree/DisplayObject.h"
#include "orvane/driver/Driver.h"
#include "orvane/driver/findObjects.h"
#include "platform/offscreen/OffscreenWindow.h"
#include "platform/quartzcore/CAMediaTime.h"

namespace {

using namespace orvane;
using driver::Query;
using platform::CGPoint;
using platform::NSEvent;
using platform::NSEventType;
using Object = std::shared_ptr<display::DisplayObject>;

// The gallery, with the inspector in a second window.
class InspectorTest : public ::testing::Test {
protected:
    InspectorTest() { step(); }

    // Lets the inspector see what has changed.
    void step(double seconds = 0.25) {
        driver_.step(seconds);
        window_.display();
    }
    Object find(const Query& query) { return driver::findObject(*inspector_->getDisplay(), query); }
    bool has(const Query& query) {
        return !driver::findObjects(*inspector_->getDisplay(), query).empty();
    }
    void send(NSEvent event) {
        event.timestamp = platform::CACurrentMediaTime();
        window_.sendEvent(event);
        window_.display();
    }
    void sendKey(const std::string& key, const std::string& text, unsigned modifiers = 0) {
        NSEvent event;
        event.type = NSEventType::KeyDown;
        event.key = key;
        event.characters = text;
        event.modifierFlags = modifiers;
        send(event);
    }
    // Presses what is in the inspector's window.
    void press(const Query& query) {
        const auto frame = find(query)->getFrameOnScreen();
        const CGPoint point{frame.x + frame.width / 2, frame.y + frame.height / 2};
        send({NSEventType::LeftMouseDown, point});
        send({NSEventType::LeftMouseUp, point});
        step();
    }
    // Replaces what is in a field of the inspector.
    void enter(const std::string& field, const std::string& text) {
        press({.label = field});
        sendKey("a", {}, platform::kNSEventModifierControl);
        sendKey({}, text);
        sendKey("Return", {});
        step();
    }
    // What the application's window shows, as 0xRRGGBB.
    std::vector<unsigned> pixels() {
        const auto& window = driver_.window();
        const std::span all(window.pixels(), window.bytesPerRow() / 4 * 800);
        std::vector<unsigned> result(all.size());
        std::ranges::transform(all, result.begin(), [](unsigned argb) { return argb & 0xFFFFFFU; });
        return result;
    }
    unsigned pixel(CGPoint point) {
        return pixels()[static_cast<std::size_t>(point.y * 1280 + point.x)];
    }
    // How much of the application's window is about this color.
    std::ptrdiff_t countPixels(unsigned color) {
        return std::ranges::count_if(pixels(), [color](unsigned pixel) {
            const auto differs = [&](int shift) {
                return std::abs(static_cast<int>(pixel >> shift & 255U) -
                                static_cast<int>(color >> shift & 255U)) > 40;
            };
            return !differs(0) && !differs(8) && !differs(16);
        });
    }

    driver::Driver driver_{ORVANE_TEST_GALLERY, {.size = {1280, 800}}};
    platform::OffscreenWindow window_{{1000, 760}};
    const std::unique_ptr<inspector::Inspector> inspector_{
        orvane_open_inspector(&driver_.window(), &window_)};
};

constexpr unsigned kOutline = 0x4C99FF;

TEST_F(InspectorTest, FindsChoosesOutlinesAndChanges) {
    driver_.pressAt({36, 270});  // the page of animations
    step(1);
    enter("Search", "affine");
    EXPECT_TRUE(has({.text = "\"Affine\""}));
    const auto list =
        std::dynamic_pointer_cast<display::graphics::ListContainer>(find({.label = "Tree"}));
    EXPECT_EQ(list->getRowCount(), 3U);  // the page, the card, and its title
    EXPECT_NE(pixel({390, 400}), kOutline);
    press({.text = "Affine"});
    EXPECT_TRUE(has({.text = "Container/Container[5]"}));
    EXPECT_EQ(pixel({390, 400}), kOutline);

    const Object card = driver_.find({.label = "Affine"});
    enter("Geometry moved by", "411 291");
    EXPECT_EQ(card->getTransformation().m02, 411);
    EXPECT_EQ(card->getTransformation().m12, 291);
    EXPECT_EQ(pixel({410, 400}), kOutline);
    enter("Geometry moved by", "500");  // one number is no place
    EXPECT_EQ(card->getTransformation().m02, 411);
    press({.label = "visible"});
    EXPECT_FALSE(card->isVisible());
    EXPECT_NE(pixel({410, 400}), kOutline);
}

TEST_F(InspectorTest, PicksWithoutPressingWhatIsPicked) {
    press({.label = "Pick"});
    const CGPoint button{36, 102};  // shows another page
    NSEvent move;
    move.type = NSEventType::MouseMoved;
    move.locationInWindow = button;
    const std::vector<unsigned> before = pixels();
    driver_.send(move);
    EXPECT_NE(pixels(), before);
    driver_.pressAt(button);
    step(1);
    EXPECT_TRUE(has({.label = "Object text"}));  // the letter on the button
    EXPECT_FALSE(driver_.findAll({.text = "Shapes"}).empty());
    driver_.pressAt(button);
    driver_.step(1);
    EXPECT_TRUE(driver_.findAll({.text = "Shapes"}).empty());
}

TEST_F(InspectorTest, ChangesWhatIsPaintedAndKeepsItForWhatIsNoValue) {
    const std::string number = '#' + std::to_string(driver_.find({.path = "Container"})->getId());
    inspector_->chooseFirst(number);
    EXPECT_TRUE(has({.text = "Container  " + number}));
    inspector_->chooseFirst("Container/Rect");
    const struct {
        std::string value;
        bool changes;
    } cases[] = {{"#204060", true}, {"red", false}, {"#12345", false}, {"#20406080", true}};
    for (const auto& [value, changes] : cases) {
        const unsigned before = pixel({640, 10});
        enter("Style fill", value);
        EXPECT_EQ(pixel({640, 10}) != before, changes) << value;
    }
}

TEST_F(InspectorTest, ListsLayersAndMovesThroughThemByKeys) {
    press({.label = "Layers"});
    inspector_->chooseFirst("BitmapLayer");
    step();
    EXPECT_TRUE(has({.label = "View opacity"}));
    EXPECT_EQ(pixel({1, 400}), kOutline);  // the layer of the page
    sendKey("Down", {});
    step();
    EXPECT_TRUE(has({.label = "View opacity"}));
    EXPECT_NE(pixel({1, 400}), kOutline);
}

TEST_F(InspectorTest, DrawsFramesOverTheApplicationAndAsPlots) {
    driver_.pressAt({36, 270});  // the page of animations
    step(1);
    const std::pair<const char*, unsigned> frames[] = {
        {"Repaints", 0xFF4D4D}, {"Damage", 0x45BF8F}, {"Layer borders", 0xB873FF}};
    for (const auto& [label, color] : frames) {
        const auto before = countPixels(color);
        press({.label = label});
        EXPECT_GT(countPixels(color), before) << label;
        press({.label = label});
    }
    for (const char* const plot : {"Frames a second", "Time of a frame", "Memory"}) {
        const auto card = find({.label = plot})->getFrame();
        int curve = 0;  // pixels
        for (int x = 0; x < 290; ++x) {
            curve += window_.pixels()[static_cast<int>(card.y + 132) * 1000 +
                                      static_cast<int>(card.x) + 15 + x] != 0xFF1C1F26;
        }
        EXPECT_GT(curve, 10) << plot;
    }
    EXPECT_FALSE(has({.text = "present 0.0 ms"}));
}

}  // namespace
