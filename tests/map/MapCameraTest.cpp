#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <tuple>
#include <vector>

#include "orvane/display/geometry/webMercator.h"
#include "platform/map/NSMapCamera.h"
#include "platform/map/visibleLine.h"

namespace orvane::tests {

namespace {

using display::geometry::Coordinate;
using display::geometry::fromWebMercator;
using display::geometry::toWebMercator;
using platform::CGPoint;
using platform::NSMapCamera;

// A view of 400 x 300 points, in which the world has 256 x 2^zoom.
NSMapCamera cameraAt(CGPoint center, double zoom) {
    NSMapCamera camera;
    camera.setSize({400, 300});
    camera.jumpTo(center, zoom);
    return camera;
}

void expectNear(CGPoint found, CGPoint expected, double tolerance) {
    EXPECT_NEAR(found.x, expected.x, tolerance);
    EXPECT_NEAR(found.y, expected.y, tolerance);
}

}  // namespace

// The rows of OpenStreetMap's tiles begin at these latitudes at the zoom level 2, and asinh(tan(45
// degrees)) is asinh(1).
TEST(WebMercator, MapsTheEarthToASquareAndBack) {
    const std::tuple<Coordinate, double, double> places[] = {
        {{0, 0}, 0.5, 0.5},
        {{66.51326044311186, -180}, 0, 0.25},
        {{-66.51326044311186, 90}, 0.75, 0.75},
        {{45, 179}, 359.0 / 360, (1 - 0.881373587019543 / std::numbers::pi) / 2},
    };
    for (const auto& [coordinate, x, y] : places) {
        const auto place = toWebMercator(coordinate);
        EXPECT_NEAR(place.x, x, 1e-12) << coordinate.latitude;
        EXPECT_NEAR(place.y, y, 1e-12) << coordinate.latitude;
        const Coordinate back = fromWebMercator(place);
        EXPECT_NEAR(back.latitude, coordinate.latitude, 1e-9);
        EXPECT_NEAR(back.longitude, coordinate.longitude, 1e-9);
    }
    EXPECT_NEAR(toWebMercator({90, 0}).y, 0, 1e-12);
    EXPECT_NEAR(toWebMercator({-90, 0}).y, 1, 1e-12);
    EXPECT_NEAR(fromWebMercator({1.25, 0.5}).longitude, -90, 1e-9);
}

TEST(MapCamera, PansByPointsAndAroundTheWorld) {
    NSMapCamera camera = cameraAt({0.99, 0.5}, 3);  // the world has 2048 points
    const CGPoint place = camera.toPlace({100, 50});
    camera.panBy({-40.96, 20.48});
    expectNear(camera.center(), {0.01, 0.49}, 1e-12);
    expectNear(camera.toView(place), {100 - 40.96, 50 + 20.48}, 1e-9);
    // The copy of a place that is nearest to the middle.
    expectNear(camera.toView({0.99, 0.49}), {200 - 40.96, 150}, 1e-9);
    camera.panBy({0, 1e9});
    EXPECT_EQ(camera.center().y, 0);
}

TEST(MapCamera, ZoomsAroundAPoint) {
    NSMapCamera camera = cameraAt({0.5, 0.5}, 4);
    const CGPoint anchor{390, 20};
    const CGPoint place = camera.toPlace(anchor);
    camera.zoomBy(1.5, anchor);
    EXPECT_EQ(camera.zoom(), 5.5);
    expectNear(camera.toView(place), anchor, 1e-9);
    // The steps of a wheel add up, and the place under the pointer stays where it is.
    camera.glideZoomBy(0.5, anchor, 10);
    camera.step(10.02);
    camera.glideZoomBy(0.5, anchor, 10.02);
    for (double time = 10.04; camera.isMoving() && time < 20; time += 0.02) {
        camera.step(time);
        expectNear(camera.toView(place), anchor, 1e-6);
    }
    EXPECT_FALSE(camera.isMoving());
    EXPECT_EQ(camera.zoom(), 6.5);
    camera.setZoomLimits(2, 6);
    EXPECT_EQ(camera.zoom(), 6);
    camera.zoomBy(-9, anchor);
    EXPECT_EQ(camera.zoom(), 2);
}

TEST(MapCamera, FliesOverAViewOfBothEnds) {
    NSMapCamera camera = cameraAt({0.9, 0.4}, 10);
    // The shorter way leads over the border of the world.
    const CGPoint target{0.1, 0.6};
    camera.flyTo(target, 11, 5);
    double least = 10;
    double way = 0;
    CGPoint before = camera.center();
    double time = 5;
    for (; camera.isMoving() && time < 10; time += 0.02) {
        camera.step(time);
        least = std::min(least, camera.zoom());
        const double dx = camera.center().x - before.x;
        way += dx - std::round(dx);
        before = camera.center();
    }
    EXPECT_LT(time, 8);
    expectNear(camera.center(), target, 1e-12);
    EXPECT_EQ(camera.zoom(), 11);
    EXPECT_NEAR(way, 0.2, 1e-9);
    // Half a world is 400 points at the zoom 1.6.
    EXPECT_LT(least, 4);
    EXPECT_GT(least, 0.5);
    // Without a way it only zooms, and with a duration it takes so long.
    camera.flyTo(target, 9, 20, 0.5);
    camera.step(20.25);
    EXPECT_NEAR(camera.zoom(), 10, 1e-9);
    expectNear(camera.center(), target, 1e-12);
    camera.step(20.5);
    EXPECT_EQ(camera.zoom(), 9);
    EXPECT_FALSE(camera.isMoving());
}

TEST(MapCamera, GoesOnAfterAReleaseAsFarAsScrolledContent) {
    NSMapCamera camera = cameraAt({0.5, 0.5}, 5);
    camera.fling({400, -200}, 1);
    for (double time = 1; camera.isMoving() && time < 10; time += 0.01) {
        camera.step(time);
    }
    EXPECT_FALSE(camera.isMoving());
    // The velocity divided by the friction of 4 per second.
    expectNear(camera.toView({0.5, 0.5}), {200 + 100, 150 - 50}, 0.5);
}

TEST(MapCamera, FitsAnExtentWithAMargin) {
    const NSMapCamera camera = cameraAt({0.5, 0.5}, 0);
    // 200 points remain of the height.
    EXPECT_NEAR(camera.zoomToFit({0.01, 0.1}, 50), std::log2(200 / 25.6), 1e-9);
    EXPECT_EQ(camera.zoomToFit({0, 0}, 10), camera.mostZoom());
    EXPECT_EQ(camera.zoomToFit({1, 1}, 149), camera.leastZoom());
}

TEST(VisibleLine, IsCutOffNearTheViewAndRepeatedWithTheWorld) {
    // The world has 1024 points; the view shows the places from 0.3 to 0.7.
    const NSMapCamera camera = cameraAt({0.5, 0.5}, 2);
    const auto partsOf = [&](std::vector<CGPoint> places) {
        platform::unwrap(places);
        return platform::visibleLine(places, camera, {400, 300}, 10);
    };
    using Parts = std::vector<std::vector<CGPoint>>;
    const auto across = partsOf({{0.1, 0.5}, {0.59, 0.5}});
    ASSERT_EQ(across.size(), 1U);
    EXPECT_EQ(across[0].size(), 2U);
    expectNear(across[0][0], {-10, 150}, 1e-9);
    expectNear(across[0][1], {200 + 0.09 * 1024, 150}, 1e-9);
    EXPECT_EQ(partsOf({{0.1, 0.1}, {0.2, 0.9}}), Parts());
    EXPECT_EQ(partsOf({{0.5, 0.5}}), Parts());
    // Leaves the view and comes back: two parts.
    EXPECT_EQ(partsOf({{0.5, 0.5}, {0.5, 0.9}, {0.6, 0.9}, {0.6, 0.5}}).size(), 2U);
    // The shorter way from 0.95 to 0.05 does not cross the view, the way over 0.5 does.
    EXPECT_EQ(partsOf({{0.95, 0.5}, {0.05, 0.5}}), Parts());
    EXPECT_EQ(partsOf({{0.95, 0.5}, {0.5, 0.5}, {0.05, 0.5}}).size(), 1U);
    // Points that cannot be told apart are left out; the last one stays.
    std::vector<CGPoint> dense;
    for (int i = 0; i <= 10000; ++i) {
        dense.push_back({0.45 + i * 1e-5, 0.5});
    }
    const auto thinned = partsOf(dense);
    ASSERT_EQ(thinned.size(), 1U);
    EXPECT_LT(thinned[0].size(), 250U);
    expectNear(thinned[0].back(), camera.toView({0.55, 0.5}), 1e-6);
    // A world of 256 points is visible more than once.
    const NSMapCamera far = cameraAt({0.5, 0.5}, 0);
    const std::vector<CGPoint> line{{0.45, 0.5}, {0.55, 0.5}};
    EXPECT_EQ(platform::visibleLine(line, far, {400, 300}, 0).size(), 1U);
    EXPECT_EQ(platform::visibleLine(line, far, {800, 300}, 0).size(), 3U);
}

}  // namespace orvane::tests
