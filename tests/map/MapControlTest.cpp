#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "orvane/display/geometry/webMercator.h"
#include "orvane/notification/Listeners.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "tests/map/TestTiles.h"
#include "tests/native/Stage.h"
#include "tests/support/TemporaryFolder.h"

// A map in an off-screen window.
namespace orvane::display {

namespace {

using geometry::Coordinate;
using native::NMapControl;
using Phase = NMapControl::MoveEvent::Phase;
using Place = geometry::Point<double>;

class MapControl : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        map_->setBounds({20, 10, 160, 120});
        listeners_.add<NMapControl::MoveEvent>(*map_, [this](const auto& event) {
            const char* const names[] = {"began", "changed", "ended"};
            moves_.push_back(names[static_cast<int>(event.phase)] +
                             std::string(event.isByUser ? " by user" : ""));
        });
        listeners_.add<NMapControl::TapEvent>(
            *map_, [this](const auto& event) { taps_.push_back(event); });
        display_->add(map_);
        map_->moveTo(coordinateOf({0.5, 0.5}), 3, NMapControl::Motion::Immediate);
        window_.display();
        moves_.clear();
    }
    void TearDown() override {
        map_.reset();
        Stage::TearDown();
    }

    static Coordinate coordinateOf(const Place& place) { return geometry::fromWebMercator(place); }
    void press(const Place& at) { send(platform::NSEventType::LeftMouseDown, at); }
    void send(platform::NSEventType type, const Place& at, double seconds = 0.02) {
        platform::NSEvent event;
        event.type = type;
        event.locationInWindow = {at.x, at.y};
        event.timestamp = time_ += seconds;
        window_.sendEvent(event);
    }
    void key(const std::string& name, const std::string& characters = {}) {
        platform::NSEvent event;
        event.type = platform::NSEventType::KeyDown;
        event.key = name;
        event.characters = characters;
        event.timestamp = platform::CACurrentMediaTime();
        window_.sendEvent(event);
    }

    std::shared_ptr<NMapControl> map_ = DisplayFactory::createMapControl();
    std::vector<std::string> moves_;
    std::vector<NMapControl::TapEvent> taps_;
    notification::Listeners listeners_;
    double time_ = 1000;
};

void expectPlace(const Coordinate& found, const Place& expected) {
    const Place place = geometry::toWebMercator(found);
    EXPECT_NEAR(place.x, expected.x, 1e-9);
    EXPECT_NEAR(place.y, expected.y, 1e-9);
}

}  // namespace

TEST_F(MapControl, ConvertsBetweenScreenAndCoordinates) {
    // The world has 2048 points, and the middle of the map is at 100, 70 on the screen.
    expectPlace(map_->getCoordinate({100, 70}), {0.5, 0.5});
    expectPlace(map_->getCoordinate({120.48, 49.52}), {0.51, 0.49});
    const Place point = map_->getPoint(coordinateOf({0.51, 0.49}));
    EXPECT_NEAR(point.x, 120.48, 1e-9);
    EXPECT_NEAR(point.y, 49.52, 1e-9);
    // Also in a group that is moved and scaled, and before anything was painted again.
    const auto group = DisplayFactory::createContainer();
    group->add(map_);
    group->setMatrix(2, 0, 5, 0, 0.5, 7);
    display_->add(group);
    expectPlace(map_->getCoordinate({45 + 160, 12 + 30}), {0.5, 0.5});
}

TEST_F(MapControl, KeepsMarkersAtTheirCoordinates) {
    const auto marker = rect(-2, -2, 4, 4, 0xFFFF0000);
    const Coordinate place = coordinateOf({0.52, 0.5});
    map_->setMarker(marker, place);
    const auto expectAt = [&](double x, double y) {
        EXPECT_NEAR(marker->getFrame().x + 2, x, 1e-3);
        EXPECT_NEAR(marker->getFrame().y + 2, y, 1e-3);
        window_.display();
        EXPECT_EQ(pixel(static_cast<int>(x), static_cast<int>(y)), shown(0xFF0000));
    };
    expectAt(100 + 40.96, 70);
    map_->setZoom(2);
    expectAt(100 + 20.48, 70);
    map_->setBounds({0, 0, 180, 100});  // the middle stays in the middle
    expectAt(90 + 20.48, 50);
    map_->setCenter(coordinateOf({0.52, 0.51}));
    expectAt(90, 50 - 10.24);
    map_->setMarker(marker, coordinateOf({0.5, 0.51}));
    expectAt(90 - 20.48, 50);
    EXPECT_EQ(map_->getMarker(marker)->latitude, coordinateOf({0.5, 0.51}).latitude);
    // Far away it is not shown, and it comes back.
    map_->setZoom(15);
    EXPECT_FALSE(marker->isVisible());
    map_->setZoom(2);
    expectAt(90 - 20.48, 50);
    map_->removeMarker(marker);
    EXPECT_FALSE(map_->getMarker(marker));
    EXPECT_EQ(marker->getParent(), nullptr);
}

TEST_F(MapControl, DrawsPathsBelowMarkersWhereTheyBelong) {
    const auto marker = rect(-2, -2, 4, 4, 0xFFFF0000);
    map_->setMarker(marker, coordinateOf({0.5, 0.5}));
    const unsigned path = map_->addPath(
        {{coordinateOf({0.4, 0.5}), coordinateOf({0.51, 0.5}), coordinateOf({0.51, 0.6})},
         0xFF0000FF,
         4});
    window_.display();
    const std::tuple<int, int, unsigned> pixels[] = {
        {30, 70, 0x0000FF}, {120, 90, 0x0000FF}, {100, 70, 0xFF0000}, {10, 70, 0x000000}};
    for (const auto& [x, y, color] : pixels) {
        EXPECT_EQ(pixel(x, y), color == 0 ? 0 : shown(color)) << x << ", " << y;
    }
    EXPECT_NE(pixel(140, 70), shown(0x0000FF));
    EXPECT_TRUE(map_->setPath(
        path, {{coordinateOf({0.51, 0.5}), coordinateOf({0.6, 0.5})}, 0xFF00FF00, 4}));
    window_.display();
    EXPECT_EQ(pixel(140, 70), shown(0x00FF00));
    EXPECT_TRUE(map_->removePath(path));
    EXPECT_FALSE(map_->removePath(path));
    EXPECT_FALSE(map_->setPath(path, {}));
    window_.display();
    EXPECT_NE(pixel(140, 70), shown(0x00FF00));
}

TEST_F(MapControl, FollowsThePointer) {
    press({100, 70});
    send(platform::NSEventType::LeftMouseDragged, {110, 75});
    send(platform::NSEventType::LeftMouseDragged, {140.96, 70});
    send(platform::NSEventType::LeftMouseUp, {140.96, 70}, 1);  // after a rest: nothing is flung
    expectPlace(map_->getCenter(), {0.48, 0.5});
    EXPECT_EQ(moves_, (std::vector<std::string>{"began by user", "changed by user",
                                                "changed by user", "ended by user"}));
    EXPECT_TRUE(taps_.empty());
    EXPECT_FALSE(map_->isMoving());
}

TEST_F(MapControl, ReportsTapsThatNothingInFrontUses) {
    const auto marker = rect(-5, -5, 10, 10, 0xFFFF0000);
    map_->setMarker(marker, coordinateOf({0.5, 0.5}));
    int presses = 0;
    listeners_.add<events::PointerEvent>(*marker, [&](const events::PointerEvent& event) {
        presses += event.phase == events::PointerPhase::Down ? 1 : 0;
        return event.phase == events::PointerPhase::Down;
    });
    for (const Place& at : {Place(100, 70), Place(120.48, 70)}) {
        press(at);
        send(platform::NSEventType::LeftMouseUp, at);
    }
    EXPECT_EQ(presses, 1);
    ASSERT_EQ(taps_.size(), 1U);
    expectPlace(taps_[0].coordinate, {0.51, 0.5});
    EXPECT_EQ(taps_[0].location, Place(120.48, 70));
    // The second press of a double click zooms.
    press({120.48, 70});
    send(platform::NSEventType::LeftMouseUp, {120.48, 70});
    EXPECT_EQ(taps_.size(), 1U);
    EXPECT_TRUE(map_->isMoving());
}

TEST_F(MapControl, ZoomsWithTheWheelAndMovesWithTheKeys) {
    platform::NSEvent wheel;
    wheel.type = platform::NSEventType::ScrollWheel;
    wheel.locationInWindow = {60, 40};
    wheel.hasPreciseScrollingDeltas = true;
    wheel.scrollingDelta = {0, -50};
    const Coordinate under = map_->getCoordinate({60, 40});
    window_.sendEvent(wheel);
    EXPECT_NEAR(map_->getZoom(), 3.5, 1e-9);
    EXPECT_NEAR(map_->getPoint(under).x, 60, 1e-6);
    EXPECT_TRUE(map_->focus());
    map_->moveTo(coordinateOf({0.5, 0.5}), 3, NMapControl::Motion::Immediate);
    key("Right");
    key("Down");
    key("Down");
    expectPlace(map_->getCenter(), {0.5 + 64.0 / 2048, 0.5 + 128.0 / 2048});
    moves_.clear();
    key("plus", "+");
    EXPECT_EQ(moves_, std::vector<std::string>{"began by user"});
}

TEST_F(MapControl, MovesOverTimeAndReportsTheEnd) {
    map_->moveTo(coordinateOf({0.6, 0.5}), 4, NMapControl::Motion::Animated, 0.05);
    EXPECT_EQ(moves_, std::vector<std::string>{"began"});
    EXPECT_TRUE(map_->isMoving());
    const double begin = platform::CACurrentMediaTime();
    while (map_->isMoving() && platform::CACurrentMediaTime() < begin + 10) {
        window_.display();
    }
    expectPlace(map_->getCenter(), {0.6, 0.5});
    EXPECT_EQ(map_->getZoom(), 4);
    EXPECT_EQ(moves_.back(), "ended");
    EXPECT_EQ(std::ranges::count(moves_, "ended"), 1);
}

TEST_F(MapControl, ShowsCoordinatesAlsoWhenItHasNoExtentYet) {
    const std::vector<Coordinate> coordinates{coordinateOf({0.95, 0.4}), coordinateOf({0.05, 0.4})};
    const auto later = DisplayFactory::createMapControl();
    later->show(coordinates, 10);
    later->setBounds({0, 0, 160, 120});
    map_->show(coordinates, 10);
    for (const auto& map : {later, map_}) {
        // The shorter way around the world; 140 of 160 points for a tenth of it.
        expectPlace(map->getCenter(), {0, 0.4});
        EXPECT_NEAR(map->getZoom(), std::log2(140 / 25.6), 1e-9);
    }
}

TEST_F(MapControl, PaintsTheTilesOfAFolderAndAGridElsewhere) {
    const tests::TemporaryFolder folder;
    tests::writeTiles(folder.path(), 3);
    std::filesystem::remove(folder.path() / "3" / "4" / "4.png");
    map_->setTiles({.kind = NMapControl::Tiles::Kind::Folder,
                    .location = folder.path(),
                    .attribution = "Test",
                    .maximumZoom = 3});
    window_.display();
    // Four tiles meet in the middle.
    EXPECT_EQ(pixel(90, 60), tests::tileColor({3, 3, 3}));
    EXPECT_EQ(pixel(110, 60), tests::tileColor({3, 4, 3}));
    EXPECT_EQ(pixel(90, 80), tests::tileColor({3, 3, 4}));
    const unsigned ground = pixel(110, 80);
    EXPECT_NE(pixel(110, 70), ground) << "the edge of a tile without a picture";
    EXPECT_NE(pixel(176, 126), ground) << "the attribution is shown";
    map_->setZoom(9);
    EXPECT_EQ(map_->getZoom(), 3) << "there are no more tiles";
}

TEST_F(MapControl, RefusesWhatCannotBe) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto marker = rect(-2, -2, 4, 4, 0xFFFF0000);
    const NMapControl::Tiles good{.kind = NMapControl::Tiles::Kind::Server,
                                  .location = "http://127.0.0.1/{z}/{x}/{y}.png"};
    map_->setTiles(good);
    std::vector<NMapControl::Tiles> bad(7, good);
    bad[0].location = "";
    bad[1].location = "ftp://127.0.0.1/{z}/{x}/{y}.png";
    bad[2].location = "http://127.0.0.1/{z}/{x}.png";
    bad[3].minimumZoom = -1;
    bad[4].maximumZoom = 25;
    bad[5].minimumZoom = 20;
    bad[6].tileSize = 0;
    testing::internal::CaptureStderr();
    for (const NMapControl::Tiles& each : bad) {
        map_->setTiles(each);
    }
    map_->setMarker(marker, {nan, 0});
    map_->setMarker(nullptr, {});
    map_->setCenter({0, nan});
    map_->setZoom(nan);
    map_->setZoomLimits(5, 4);
    map_->show({{nan, 0}});
    map_->getPoint({nan, 0});
    map_->getCoordinate({0, nan});
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(log, '\n'), 14) << log;
    EXPECT_EQ(map_->getTiles().location, good.location);
    expectPlace(map_->getCenter(), {0.5, 0.5});
    EXPECT_FALSE(map_->getMarker(marker));
}

TEST_F(MapControl, SurvivesListenersThatRemoveIt) {
    listeners_.add<NMapControl::MoveEvent>(*map_, [this](const auto&) {
        display_->remove(map_);
        map_->clear();
        throw std::runtime_error("on purpose");
    });
    press({100, 70});
    send(platform::NSEventType::LeftMouseDragged, {140, 70});
    send(platform::NSEventType::LeftMouseUp, {150, 70});
    map_->setMarker(rect(0, 0, 4, 4, 0xFFFF0000), {});
    EXPECT_EQ(map_->getParent(), nullptr);
}

}  // namespace orvane::display
