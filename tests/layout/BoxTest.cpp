#include "orvane/display/layout/Box.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "orvane/display/layout/flexLengths.h"
#include "orvane/display/native/DisplayView.h"
#include "orvane/orvane.h"
#include "platform/appkit/NSView.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "tests/coretext/registerTestFonts.h"

namespace orvane::display::layout {
namespace {

using Place = geometry::Rect<double>;
using Places = std::vector<Place>;
constexpr double kInfinity = Item::kUnlimited;

TEST(FlexLengths, DistributesSpaceWithinTheLimits) {
    const double nan = std::nan("");
    const struct {
        const char* what;
        std::vector<FlexItem> items;  // base, min, max, grow, shrink
        double available;
        std::vector<double> lengths;
    } cases[] = {
        {"no item", {}, 100, {}},
        {"nothing grows", {{10, 0, 99, 0, 0}, {20, 0, 99, 0, 0}}, 100, {10, 20}},
        {"by parts", {{10, 0, 99, 1, 0}, {10, 0, 99, 3, 0}}, 60, {20, 40}},
        {"parts below 1 leave space", {{0, 0, 99, 0.25, 0}, {0, 0, 99, 0.25, 0}}, 80, {20, 20}},
        {"one reaches its limit", {{0, 0, 15, 1, 0}, {0, 0, 99, 1, 0}}, 60, {15, 45}},
        {"one has a minimum", {{0, 50, 99, 1, 0}, {0, 0, 99, 1, 0}}, 60, {50, 10}},
        {"shrinks by size", {{60, 0, 99, 0, 1}, {30, 0, 99, 0, 1}}, 60, {40, 20}},
        {"to a minimum", {{60, 55, 99, 0, 1}, {30, 0, 99, 0, 1}}, 60, {55, 5}},
        {"does not shrink", {{60, 0, 99, 1, 0}, {30, 0, 99, 1, 0}}, 60, {60, 30}},
        {"shrinks to nothing", {{60, 0, 99, 0, 1}, {30, 0, 99, 0, 0}}, 10, {0, 30}},
        {"open", {{10, 20, 99, 1, 0}}, kInfinity, {20}},
        {"minimum above maximum", {{10, 30, 20, 1, 1}}, 100, {30}},
        {"no space", {{10, 0, 99, 1, 1}}, -5, {0}},
        {"negative parts", {{10, 0, 99, -1, -1}}, 50, {10}},
        {"not a number", {{10, 0, 99, nan, 0}, {10, 0, 99, 1, 0}}, 50, {10, 40}},
    };
    for (const auto& c : cases) {
        const std::vector<double> lengths = flexLengths(c.items, c.available);
        ASSERT_EQ(lengths.size(), c.lengths.size()) << c.what;
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            EXPECT_NEAR(lengths[i], c.lengths[i], 1e-9) << c.what;
        }
    }
    flexLengths({{nan, 0, 99, 1, 1}, {kInfinity, 0, kInfinity, 1, 1}}, 50);  // ends
}

class BoxTest : public testing::Test {
protected:
    BoxTest() {
        platform::registerTestFonts();
        Display::reset();
    }
    ~BoxTest() override {
        Display::instance()->removeAll();
        Display::reset();
    }

    static std::shared_ptr<graphics::Rect> makeRect(float width, float height) {
        auto rect = DisplayFactory::createRect();
        rect->set(7, 7, width, height);
        return rect;
    }
    static std::shared_ptr<Box> makeBox(const BoxStyle& style = {}) {
        return std::make_shared<Box>(style);
    }
    // The places of the objects of a box, and of the boxes in it, on the screen.
    static Places placesIn(ContainerObject& container) {
        Places places;
        for (const auto& child : container.getChildren()) {
            if (ContainerObject* const inner = child->asContainer()) {
                const Places more = placesIn(*inner);
                places.insert(places.end(), more.begin(), more.end());
            } else {
                places.push_back(child->getFrame());
            }
        }
        return places;
    }
    static Places placesIn(const std::shared_ptr<Box>& box) {
        return placesIn(*box->getContainer());
    }
};

// Three rectangles of 10 x 10, 20 x 20 and 30 x 30 points in a box of 200 x 100.
TEST_F(BoxTest, PlacesItemsByItsStyle) {
    const Insets padding{10, 20, 30, 40};  // 160 x 40 are left
    const struct {
        const char* what;
        BoxStyle style;
        std::vector<Item> items;
        Places places;
    } cases[] = {
        {"a row stretches",
         {.gap = 5, .padding = padding},
         {},
         {{10, 20, 10, 40}, {25, 20, 20, 40}, {50, 20, 30, 40}}},
        {"aligned",
         {.align = Align::Start},
         {{}, {.align = Align::Center}, {.align = Align::End}},
         {{0, 0, 10, 10}, {10, 40, 20, 20}, {30, 70, 30, 30}}},
        {"center",
         {.gap = 10, .padding = padding, .justify = Justify::Center, .align = Align::Start},
         {},
         {{50, 20, 10, 10}, {70, 20, 20, 20}, {100, 20, 30, 30}}},
        {"end",
         {.justify = Justify::End, .align = Align::Start},
         {},
         {{140, 0, 10, 10}, {150, 0, 20, 20}, {170, 0, 30, 30}}},
        {"between",
         {.justify = Justify::SpaceBetween, .align = Align::Start},
         {},
         {{0, 0, 10, 10}, {80, 0, 20, 20}, {170, 0, 30, 30}}},
        {"around",
         {.gap = 10, .justify = Justify::SpaceAround, .align = Align::Start},
         {},
         {{20, 0, 10, 10}, {80, 0, 20, 20}, {150, 0, 30, 30}}},
        {"evenly",
         {.justify = Justify::SpaceEvenly, .align = Align::Start},
         {},
         {{35, 0, 10, 10}, {80, 0, 20, 20}, {135, 0, 30, 30}}},
        {"growing and shrinking",
         {.gap = 10, .align = Align::Start},
         {{.width = 50, .grow = 1}, {.width = 40, .maxWidth = 60, .grow = 1}, {.height = 5}},
         {{0, 0, 90, 10}, {100, 0, 60, 20}, {170, 0, 30, 5}}},
        {"too long",
         {.align = Align::Start},
         {{.width = 150, .shrink = 1}, {.width = 150}},
         {{0, 0, 20, 10}, {20, 0, 150, 20}, {170, 0, 30, 30}}},
        {"a column",
         {.direction = Direction::Column, .gap = 5, .padding = padding},
         {},
         {{10, 20, 160, 10}, {10, 35, 160, 20}, {10, 60, 160, 30}}},
        {"a column that is aligned",
         {.direction = Direction::Column, .justify = Justify::SpaceBetween, .align = Align::Center},
         {{.maxHeight = 20, .grow = 1}, {.minWidth = 50}, {.align = Align::End}},
         {{95, 0, 10, 20}, {75, 35, 50, 20}, {170, 70, 30, 30}}},
        {"wrapped",
         {.gap = 10, .align = Align::End, .wraps = true, .lineGap = 5},
         {{.width = 95}, {.width = 95}, {.width = 250}},
         {{0, 10, 95, 10}, {105, 0, 95, 20}, {0, 25, 250, 30}}},
        {"a wrapped column",
         {.direction = Direction::Column, .justify = Justify::End, .wraps = true, .lineGap = 5},
         {{.height = 60}, {.height = 40}, {}},
         {{0, 0, 20, 60}, {0, 60, 20, 40}, {25, 70, 30, 30}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const auto box = makeBox(c.style);
        for (std::size_t i = 0; i < 3; ++i) {
            const auto size = static_cast<float>(10 * (i + 1));
            box->add(makeRect(size, size), i < c.items.size() ? c.items[i] : Item{});
        }
        box->layOut({0, 0, 200, 100});
        EXPECT_EQ(placesIn(box), c.places);
        box->layOut({3, 4, 200, 100});
        EXPECT_EQ(placesIn(box)[1], c.places[1].movedBy({3, 4})) << "again, elsewhere";
    }
}

TEST_F(BoxTest, EdgesAreAtWholePointsWithoutGapsOrOverlaps) {
    const auto row = makeBox({.padding = {0.4, 0, 0, 0}});
    for (int i = 0; i < 3; ++i) {
        row->add(makeRect(1, 1), {.width = 0, .grow = 1});
    }
    row->layOut({0, 0, 100.4, 50.3});
    EXPECT_EQ(placesIn(row), (Places{{0, 0, 33, 50}, {33, 0, 34, 50}, {67, 0, 33, 50}}));
}

TEST_F(BoxTest, MeasuresItsNaturalSize) {
    const auto row = makeBox({.gap = 5, .padding = Insets::all(10)});
    const auto column = makeBox({.direction = Direction::Column, .gap = 5});
    row->add(makeRect(10, 10), {.grow = 1});
    row->add(column);
    column->add(makeRect(20, 20));
    column->add(makeRect(30, 30), {.minWidth = 40});
    EXPECT_EQ(column->measure(), (geometry::Size<double>{40, 55}));
    EXPECT_EQ(row->measure(), (geometry::Size<double>{75, 75}));
    EXPECT_EQ(row->measure(500), (geometry::Size<double>{75, 75})) << "it does not grow";
    column->add(makeRect(50, 5));
    EXPECT_EQ(row->measure(500), (geometry::Size<double>{85, 85}));
    row->setStyle({.gap = 5, .padding = Insets::all(10), .wraps = true, .lineGap = 1});
    EXPECT_EQ(row->measure(80), (geometry::Size<double>{70, 96}));
    EXPECT_EQ(makeBox({.padding = {1, 2, 3, 4}})->measure(), (geometry::Size<double>{4, 6}));
}

TEST_F(BoxTest, TheHeightOfAWrappedTextFollowsItsWidth) {
    const auto page = makeBox({.direction = Direction::Column});
    const auto row = makeBox({.gap = 10, .align = Align::Start});
    const auto text = DisplayFactory::createText(true);
    text->setFont("DejaVuSans");
    text->setTextSize(16);
    text->setContent("several words that take several lines in a narrow box");
    row->add(makeRect(30, 30));
    row->add(text, {.grow = 1});
    page->add(row);
    const auto below = makeRect(10, 10);
    page->add(below);
    const auto heightAt = [&](float width) {
        return graphics::measureText(text->getContent(), {"DejaVuSans", 16}, width).height;
    };
    for (const float width : {140.0F, 240.0F, 1000.0F}) {
        page->layOut({0, 0, width, 500});
        EXPECT_EQ(text->getBounds().width, width - 40);
        EXPECT_EQ(below->getFrame().y, std::round(std::max(heightAt(width - 40), 30.0)));
        EXPECT_EQ(text->getTransformation().m02, 40);
    }
}

TEST_F(BoxTest, SizesAndMovesEachKindOfObject) {
    const auto ellipse = DisplayFactory::createEllipse();
    const auto clip = DisplayFactory::createClipContainer(false);
    const auto inClip = makeRect(5, 5);
    clip->add(inClip);
    const auto list = DisplayFactory::createListContainer();
    const auto field = DisplayFactory::createInputText(false, false, 0);
    const auto image = DisplayFactory::createImage();
    image->setRawData(std::string(4 * 20 * 10, 'x'), 20, 10);
    const auto circle = DisplayFactory::createCircle();
    circle->set(50, 60, 4);
    const auto group = DisplayFactory::createContainer();
    group->add(makeRect(8, 8));
    const auto line = DisplayFactory::createText(false);
    line->setFont("DejaVuSans");
    line->setContent("a line");
    const auto row = makeBox();
    const Item sized{.width = 40, .height = 30};
    row->add(ellipse, sized);
    row->add(clip, sized);
    row->add(field, sized);
    row->add(image, sized);
    row->add(circle);
    row->add(group);
    row->add(line);
    row->add(list, sized);
    row->layOut({100, 50, 500, 60});
    EXPECT_EQ(ellipse->getFrame(), Place(100, 50, 40, 30));
    EXPECT_EQ(clip->getFrame(), Place(140, 50, 40, 30));
    EXPECT_EQ(inClip->getFrame(), Place(147, 57, 5, 5)) << "the content moves with the clip";
    EXPECT_EQ(field->getFrame(), Place(180, 50, 40, 30));
    EXPECT_EQ(image->getFrame(), Place(220, 55, 40, 20)) << "it keeps its proportions";
    EXPECT_EQ(circle->getFrame(), Place(260, 50, 8, 8));
    EXPECT_EQ(group->getFrame(), Place(268, 50, 8, 8));
    EXPECT_EQ(line->getFrame().position(), geometry::Point<double>(276, 50));
    EXPECT_EQ(list->getFrame().size(), Place(0, 0, 40, 30).size());
    EXPECT_EQ(list->getFullTransformation().mapPoint(list->getBounds().position()),
              list->getFrame().position())
        << "where its rows begin";
    row->layOut({0, 0, 500, 60});
    EXPECT_EQ(group->getFrame(), Place(168, 0, 8, 8))
        << "laid out again, it moves from where it is";
    EXPECT_EQ(circle->getFrame(), Place(160, 0, 8, 8));
}

TEST_F(BoxTest, AnImageKeepsItsProportions) {
    const auto image = DisplayFactory::createImage();
    image->setRawData(std::string(4 * 20 * 10, 'x'), 20, 10);
    for (const Direction direction : {Direction::Row, Direction::Column}) {
        for (const auto& [item, width, shown] : {std::tuple{Item{}, 500, Place(0, 0, 20, 10)},
                                                 {Item{.height = 30}, 500, Place(0, 0, 60, 30)},
                                                 {Item{.width = 40}, 500, Place(0, 0, 40, 20)},
                                                 {Item{}, 10, Place(0, 0, 10, 5)}}) {
            const auto box = makeBox({.direction = direction, .align = Align::Start});
            box->add(image, item);
            box->layOut({0, 0, double(width), 60});
            EXPECT_EQ(image->getFrame(), shown) << width;
            EXPECT_EQ(box->measure(width).height, shown.height);
            box->remove(image);
        }
    }
}

TEST_F(BoxTest, ItemsComeAndGo) {
    const auto page = makeBox({.direction = Direction::Column});
    const auto row = makeBox({.align = Align::Start});
    const auto first = makeRect(10, 10);
    const auto second = makeRect(20, 10);
    const auto back = makeRect(1, 1);
    page->setBackground(makeRect(1, 1));
    page->setBackground(back);
    row->add(first);
    row->addSpace();
    row->add(second);
    row->add(std::shared_ptr<DisplayObject>());
    page->add(row);
    row->update();  // nothing happens: it was not laid out
    page->layOut({0, 0, 100, 50});
    EXPECT_EQ(placesIn(page), (Places{{0, 0, 100, 50}, {0, 0, 10, 10}, {80, 0, 20, 10}}));
    row->remove(first);
    row->remove(first);
    row->setItem(second, {.width = 60, .place = {}});
    row->setItem(first, {});
    row->update();
    EXPECT_EQ(placesIn(page), (Places{{0, 0, 100, 50}, {40, 0, 60, 10}}));
    Place placed;
    row->setItem(second, {.width = 60, .place = [&](const Place& rect) { placed = rect; }});
    row->update();
    EXPECT_EQ(placed, Place(40, 0, 60, 10));

    const auto outside = makeBox();
    outside->add(page);
    for (const auto& refused : {row, page, outside}) {
        row->add(refused);
        EXPECT_EQ(row->getContainer()->getChildren().size(), 1U);
    }
    page->remove(row);
    row->add(outside);
    EXPECT_EQ(row->getContainer()->getChildren().size(), 2U) << "now it is no longer inside";
    row->clear();
    EXPECT_TRUE(row->getContainer()->getChildren().empty());
    row->layOut({0, 0, 10, 10});
}

TEST_F(BoxTest, FollowsTheSizeOfTheDisplay) {
    const auto display = Display::instance();
    display->getView()->setFrame({{0, 0}, {200, 100}});
    auto page = makeBox();
    const auto rect = makeRect(10, 10);
    page->add(rect, {.grow = 1});
    page->showOnDisplay();
    EXPECT_EQ(rect->getFrame(), Place(0, 0, 200, 100));
    display->frameChanged({300, 50});
    EXPECT_EQ(rect->getFrame(), Place(0, 0, 300, 50));
    page.reset();
    display->frameChanged({400, 50});
    EXPECT_EQ(rect->getFrame(), Place(0, 0, 300, 50)) << "the objects outlive the box";
}

TEST_F(BoxTest, ItemsGlideToTheirNewPlaces) {
    platform::CAVirtualClock clock(100);
    Display::instance()->getView()->setFrame({{0, 0}, {200, 100}});
    const auto page = makeBox({.align = Align::Start});
    const auto first = makeRect(10, 10);
    const auto second = makeRect(10, 10);
    page->add(first, {.width = 10});
    page->add(second);
    page->setMotion(1, animation::Easing());
    page->showOnDisplay();
    EXPECT_FALSE(second->ownsLayer()) << "at first they appear in place";
    const auto shown = [&] {
        return second->getLayer()->getPresentationValue(animation::AttributeName::Translation);
    };
    page->setItem(first, {.width = 50});
    page->update();
    EXPECT_EQ(second->getFrame().x, 50);
    EXPECT_EQ(shown(), (std::vector<float>{-40, 0}));
    clock.advanceBy(0.5);
    EXPECT_EQ(shown(), (std::vector<float>{-20, 0}));
    page->setItem(first, {.width = 90});
    page->update();
    EXPECT_EQ(shown(), (std::vector<float>{-60, 0})) << "it is still where it was: 30";
    clock.advanceBy(0);
    EXPECT_EQ(shown(), (std::vector<float>{-60, 0})) << "the end of the first motion has no effect";
    clock.advanceBy(1);
    EXPECT_EQ(shown(), (std::vector<float>{0, 0}));
    EXPECT_EQ(second->getFrame().x, 90);
}

}  // namespace
}  // namespace orvane::display::layout
