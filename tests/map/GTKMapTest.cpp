#include <gtest/gtest.h>
#include <sqlite3.h>

#include <numbers>
#include <string>

#include "orvane/display/geometry/webMercator.h"
#include "platform/map/NSMapView.h"
#include "platform/quartzcore/CALayer.h"
#include "tests/gtk/TestWindow.h"
#include "tests/map/TestTiles.h"
#include "tests/support/TemporaryFolder.h"

// Maps in a real window, with the desktop's library.
namespace orvane::tests {

namespace {

using platform::CGPoint;
using platform::NSMapTile;
using platform::NSMapTiles;
using platform::NSMapView;

class GTKMap : public WindowTest {
protected:
    GTKMap() {
        map_->setFrame({{50, 50}, {300, 200}});
        map_->setHandlers(
            {{}, {}, [this](const std::string& message) { failures_.push_back(message); }});
        root_->addSubview(map_);
    }

    // The middle of the map is in the middle of a tile.
    void showTile(const NSMapTile& tile) {
        const double count = 1 << tile.zoom;
        map_->moveTo(
            display::geometry::fromWebMercator({(tile.x + 0.5) / count, (tile.y + 0.5) / count}),
            tile.zoom, false);
    }
    // Waits until a point of the window, in points, has a color. Returns the last color.
    std::uint32_t waitForColor(CGPoint point, std::uint32_t color) {
        const double scale = window_.window().backingScaleFactor();
        std::uint32_t found = 0;
        desktop::runUntil([&] {
            found = window_.picture().at(static_cast<int>(point.x * scale),
                                         static_cast<int>(point.y * scale));
            return found == color;
        });
        return found;
    }

    TemporaryFolder folder_;
    std::shared_ptr<NSMapView> map_ = NSMapView::create();
    std::vector<std::string> failures_;
};

}  // namespace

TEST_F(GTKMap, ShowsTheTilesOfAFolderWhereTheyBelong) {
    writeTiles(folder_.path(), 3);
    map_->setTiles({NSMapTiles::Kind::Folder, folder_.path(), "Test", 0, 3});
    showTile({3, 4, 2});
    // The map's middle is at 200, 150 in the window.
    const std::tuple<double, double, NSMapTile> places[] = {
        {200, 150, {3, 4, 2}}, {60, 150, {3, 3, 2}}, {340, 150, {3, 5, 2}}, {200, 240, {3, 4, 2}}};
    for (const auto& [x, y, tile] : places) {
        EXPECT_EQ(waitForColor({x, y}, tileColor(tile)), tileColor(tile)) << x << ", " << y;
    }
    EXPECT_TRUE(failures_.empty());
}

}  // namespace orvane::tests
