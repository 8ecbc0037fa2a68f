#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <gtkmm/widget.h>
#include <sqlite3.h>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <numbers>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "orvane/display/geometry/webMercator.h"
#include "orvane/services/families.h"
#include "platform/map/NSMapView.h"
#include "platform/quartzcore/CALayer.h"
#include "tests/gtk/TestWindow.h"
#include "tests/map/TestTiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/urlsession/TestServer.h"

// Maps in a real window, with the desktop's library.
namespace orvane::tests {

namespace {

using platform::CGPoint;
using platform::NSMapTile;
using platform::NSMapTiles;
using platform::NSMapView;
using Kind = NSMapTiles::Kind;

constexpr int kMostZoom = 3;

std::string contentOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void writeFile(const std::filesystem::path& file, const std::string& content) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

// Runs statements in a database; the parameter of each is the content.
void execute(const std::filesystem::path& file, const std::string& statement,
             const std::string& content = {}) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
    sqlite3_stmt* query = nullptr;
    EXPECT_EQ(sqlite3_prepare_v2(database, statement.c_str(), -1, &query, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_bind_blob(query, 1, content.data(), static_cast<int>(content.size()), SQLITE_STATIC);
    EXPECT_EQ(sqlite3_step(query), SQLITE_DONE);
    sqlite3_finalize(query);
    sqlite3_close(database);
}

// Where there is no tile.
constexpr std::uint32_t kGround = 0xE6EAEC;

// A map that is not in the window yet.
class PlainMap : public WindowTest {
protected:
    PlainMap() {
        map_->setFrame({{50, 50}, {300, 200}});
        map_->setHandlers(
            {{}, {}, [this](const std::string& message) { failures_.push_back(message); }});
        showTile({3, 4, 2});
    }

    std::filesystem::path folder() const { return folder_.path() / "tiles"; }
    std::filesystem::path fileOf(const NSMapTile& tile) const {
        return folder() / std::to_string(tile.zoom) / std::to_string(tile.x) /
               (std::to_string(tile.y) + ".png");
    }
    NSMapTiles tilesOf(Kind kind, const std::string& location) const {
        return {.kind = kind,
                .location = location,
                .attribution = "Test",
                .maximumZoom = kMostZoom,
                .cacheFolder = folder_.path() / "cache"};
    }
    // The middle of the map, at 200, 150 in the window, is in the middle of a tile.
    void showTile(const NSMapTile& tile) {
        const double count = 1 << tile.zoom;
        map_->moveTo(
            display::geometry::fromWebMercator({(tile.x + 0.5) / count, (tile.y + 0.5) / count}),
            tile.zoom, false);
    }
    // Waits until a point of the window, in points, has a color. Returns the last color.
    std::uint32_t waitForColor(CGPoint point, std::uint32_t color) {
        std::uint32_t found = 0;
        desktop::runUntil([&] {
            found = window_.picture().at(pixels(point.x), pixels(point.y));
            return found == color;
        });
        return found;
    }
    int pixels(double points) {
        return static_cast<int>(points * window_.window().backingScaleFactor());
    }
    void expectTiles(const std::vector<std::tuple<double, double, NSMapTile>>& places) {
        for (const auto& [x, y, tile] : places) {
            EXPECT_EQ(waitForColor({x, y}, tileColor(tile)), tileColor(tile)) << x << ", " << y;
        }
    }
    void expectTiles() {
        expectTiles({{200, 150, {3, 4, 2}},
                     {60, 150, {3, 3, 2}},
                     {340, 150, {3, 5, 2}},
                     {200, 240, {3, 4, 2}}});
    }

    TemporaryFolder folder_;
    std::shared_ptr<NSMapView> map_ = NSMapView::create();
    std::vector<std::string> failures_;
};

class GTKMap : public PlainMap {
protected:
    GTKMap() { root_->addSubview(map_); }
};

// A server that has the tiles of a folder, and counts its answers.
class TileServer {
public:
    explicit TileServer(std::filesystem::path folder, std::string headers = {})
        : folder_(std::move(folder)),
          headers_(std::move(headers)),
          server_([this](const TestServer::Request& request, TestServer::Connection& connection) {
              const std::string path = request.target.substr(0, request.target.find('?'));
              const std::string tile = contentOf(folder_ / path.substr(1));
              ++answers_;
              connection.answer(tile.empty() ? 404 : 200, tile, headers_);
          }) {}

    std::string address() const { return server_.url("/") + "{z}/{x}/{y}.png?key=a%20b"; }
    int answers() const { return answers_; }

private:
    const std::filesystem::path folder_;
    const std::string headers_;
    std::atomic<int> answers_ = 0;
    TestServer server_;
};

}  // namespace

TEST_F(GTKMap, ShowsTheTilesOfEachSourceWhereTheyBelong) {
    writeTiles(folder(), kMostZoom);
    const std::string file = folder_.path() / "map.mbtiles";
    execute(file, "CREATE TABLE tiles (zoom_level, tile_column, tile_row, tile_data)");
    for (int x = 3; x <= 5; ++x) {
        // Rows count from the south: row 2 of 8 is row 5.
        execute(file, "INSERT INTO tiles VALUES (3, " + std::to_string(x) + ", 5, ?)",
                contentOf(fileOf({3, x, 2})));
    }
    const TileServer server(folder());
    EXPECT_EQ(waitForColor({200, 150}, kGround), kGround);
    for (const NSMapTiles& tiles : {tilesOf(Kind::Folder, folder()), tilesOf(Kind::MBTiles, file),
                                    tilesOf(Kind::Server, server.address())}) {
        map_->setTiles(tiles);
        expectTiles();
        EXPECT_NE(window_.picture().at(pixels(346), pixels(246)), tileColor({3, 5, 2}))
            << "the attribution";
        map_->setTiles({});
        EXPECT_EQ(waitForColor({200, 150}, kGround), kGround);
    }
    // It follows the control, also between the levels.
    map_->setTiles(tilesOf(Kind::Folder, folder()));
    map_->moveTo(display::geometry::fromWebMercator({0.5, 0.25}), 2.5, false);
    expectTiles({{190, 140, {2, 1, 0}}, {210, 140, {2, 2, 0}}, {210, 160, {2, 2, 1}}});
    EXPECT_TRUE(failures_.empty());
}

TEST_F(GTKMap, TurnsAndFadesWithItsLayer) {
    writeTiles(folder(), kMostZoom);
    map_->setTiles(tilesOf(Kind::Folder, folder()));
    expectTiles();
    map_->layer()->setTransform(platform::CATransform3D::makeAffineTransform(
        {0.9 * std::cos(0.4), 0.9 * std::sin(0.4), -0.9 * std::sin(0.4), 0.9 * std::cos(0.4), 90,
         10}));
    const std::tuple<CGPoint, NSMapTile> places[] = {
        {{150, 100}, {3, 4, 2}}, {{10, 100}, {3, 3, 2}}, {{290, 100}, {3, 5, 2}}};
    for (const auto& [point, tile] : places) {
        expectTiles({{map_->transformToWindow().apply(point).x,
                      map_->transformToWindow().apply(point).y, tile}});
    }
    map_->layer()->setOpacity(0.5);
    const CGPoint middle = map_->transformToWindow().apply(CGPoint{150, 100});
    // Half of the tile's color in front of black.
    const std::uint32_t half = tileColor({3, 4, 2}) >> 1 & 0x7F7F7F;
    EXPECT_TRUE(desktop::runUntil([&] {
        const std::uint32_t found = waitForColor(middle, half);
        return ((found - half) & ~0x010101U) == 0;
    }));
}

TEST_F(GTKMap, FollowsThePointerAsTheProjectionSays) {
    writeTiles(folder(), kMostZoom);
    map_->setTiles(tilesOf(Kind::Folder, folder()));
    expectTiles();
    // The world has 2048 points.
    const auto before = display::geometry::toWebMercator(map_->center());
    const auto hasMoved = [&](double x, double y) {
        const auto now = display::geometry::toWebMercator(map_->center());
        return std::abs(now.x - before.x - x / 2048) < 1e-9 &&
               std::abs(now.y - before.y - y / 2048) < 1e-9;
    };
    desktop::xdotool("mousemove 200 150 mousedown 1 mousemove 230 140 mousemove 264 118");
    EXPECT_TRUE(desktop::runUntil([&] { return hasMoved(-64, 32); }));
    EXPECT_TRUE(map_->isMoving());
    expectTiles({{200, 150, {3, 4, 2}}, {130, 150, {3, 3, 2}}});
    desktop::xdotool("mouseup 1");
    EXPECT_TRUE(desktop::runUntil([&] { return !map_->isMoving(); }));
    // The wheel zooms in around the pointer, and a key out again.
    const CGPoint under{100, 60};
    map_->moveTo(map_->center(), 2, false);
    const auto anchor = map_->coordinateAt(under);
    desktop::xdotool("mousemove 150 110 click 4");
    EXPECT_TRUE(desktop::runUntil([&] { return map_->zoom() == 2.5; }));
    EXPECT_NEAR(map_->pointOf(anchor).x, under.x, 1e-6);
    EXPECT_NEAR(map_->pointOf(anchor).y, under.y, 1e-6);
    desktop::focus(window_.toplevel());
    desktop::xdotool("click 1 key minus");
    EXPECT_TRUE(desktop::runUntil([&] { return map_->zoom() == 1.5; }));
}

TEST_F(GTKMap, ReportsOnceThatThereAreNoTiles) {
    const std::filesystem::path bad = folder_.path() / "bad";
    const std::string text = bad / "text.mbtiles";
    writeFile(text, std::string(5000, 'x'));
    const std::string endless = bad / "endless.mbtiles";
    execute(endless,
            "CREATE VIEW tiles AS WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
            "SELECT 3 AS zoom_level, i AS tile_column, i AS tile_row, x'00' AS tile_data FROM n");
    const std::string vectors = bad / "vectors.mbtiles";
    execute(vectors,
            "CREATE VIEW tiles AS SELECT 3 AS zoom_level, 4 AS tile_column, 5 AS tile_row, "
            "x'1F8B08' AS tile_data");
    const std::string huge = bad / "huge.mbtiles";
    execute(huge,
            "CREATE VIEW tiles AS SELECT 3 AS zoom_level, 4 AS tile_column, 5 AS tile_row, "
            "zeroblob(100000000) AS tile_data");
    writeFile(bad / "damaged" / "3" / "4" / "2.png", "\x89PNG\r\n\x1A\n and nothing else");
    TestServer failing(
        [](const auto&, TestServer::Connection& connection) { connection.answer(503, "busy"); });
    TestServer page(
        [](const auto&, TestServer::Connection& connection) { connection.answer(200, "<html>"); });
    // A port that nothing listens on any more.
    std::string away;
    {
        away = TestServer([](const auto&, auto&) {}).url("/{z}/{x}/{y}.png");
    }
    const std::pair<Kind, std::string> sources[] = {{Kind::Folder, bad / "missing"},
                                                    {Kind::Folder, bad / "damaged"},
                                                    {Kind::MBTiles, bad / "missing.mbtiles"},
                                                    {Kind::MBTiles, text},
                                                    {Kind::MBTiles, endless},
                                                    {Kind::MBTiles, vectors},
                                                    {Kind::MBTiles, huge},
                                                    {Kind::Server, failing.url("/{z}/{x}/{y}.png")},
                                                    {Kind::Server, page.url("/{z}/{x}/{y}.png")},
                                                    {Kind::Server, away}};
    window_.show();
    for (const auto& [kind, location] : sources) {
        failures_.clear();
        testing::internal::CaptureStderr();
        map_->setTiles(tilesOf(kind, location));
        EXPECT_TRUE(desktop::runUntil([&] { return !failures_.empty(); })) << location;
        // Another part of the map is not told again.
        showTile({3, 5, 2});
        window_.show();
        desktop::runUntilAsleep();
        showTile({3, 4, 2});
        const std::string log = testing::internal::GetCapturedStderr();
        EXPECT_EQ(failures_.size(), 1U) << location;
        EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
        EXPECT_NE(log.find(location), std::string::npos) << log;
    }
    // What does not exist is no failure.
    failures_.clear();
    writeTile({3, 4, 2}, fileOf({3, 4, 2}));
    const TileServer server(folder());
    map_->setTiles(tilesOf(Kind::Server, server.address()));
    EXPECT_TRUE(desktop::runUntil([&] { return server.answers() >= 3; }));
    expectTiles({{200, 150, {3, 4, 2}}});
    EXPECT_EQ(waitForColor({60, 150}, kGround), kGround);
    EXPECT_TRUE(failures_.empty());
}

TEST_F(GTKMap, KeepsTilesOfAServerAndShowsThemWithoutIt) {
    writeTiles(folder(), kMostZoom);
    NSMapTiles tiles;
    {
        const TileServer server(folder(), "Cache-Control: max-age=1000\r\n");
        tiles = tilesOf(Kind::Server, server.address());
        map_->setTiles(tiles);
        expectTiles();
        desktop::runUntilAsleep();
        const int answers = server.answers();
        // The widget is gone and comes back.
        map_->removeFromSuperviewWithoutNeedingDisplay();
        window_.show();
        root_->addSubview(map_);
        expectTiles();
        EXPECT_EQ(server.answers(), answers);
    }
    EXPECT_FALSE(std::filesystem::is_empty(tiles.cacheFolder));
    map_->setTiles(tiles);
    expectTiles();
    EXPECT_TRUE(failures_.empty());
}

TEST_F(GTKMap, IsGoneBeforeItsTilesArrive) {
    TestServer stalling(
        [](const auto&, TestServer::Connection& connection) { connection.stall(); });
    map_->setTiles(tilesOf(Kind::Server, stalling.url("/{z}/{x}/{y}.png")));
    EXPECT_TRUE(desktop::runUntil([&] {
        window_.show();
        return stalling.connections() > 0;
    }));
    map_->removeFromSuperviewWithoutNeedingDisplay();
    map_.reset();
    window_.show();
    EXPECT_TRUE(failures_.empty());
}

// Without the library: the test's environment says what the log says.
TEST_F(PlainMap, WithoutALibraryPaintsItself) {
    const char* const expected = std::getenv("ORVANE_TEST_WITHOUT_MAPS");
    if (expected == nullptr) {
        GTEST_SKIP() << "there is a library";
    }
    if (std::string(expected).find("denies") != std::string::npos) {
        services::denyFamily(services::Family::Map);
    }
    writeTiles(folder(), kMostZoom);
    testing::internal::CaptureStderr();
    root_->addSubview(map_);
    map_->setTiles(tilesOf(Kind::Folder, folder()));
    expectTiles();
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
    EXPECT_NE(log.find(expected), std::string::npos) << log;
}

}  // namespace orvane::tests
