#include "platform/map/NSMapLikeness.h"

#include <algorithm>
#include <cmath>

#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/CGSavedState.h"
#include "platform/map/NSMapCamera.h"
#include "platform/map/NSMapTiles.h"

namespace orvane::platform {

namespace {

// More pictures than a large screen shows.
constexpr std::size_t kMostPictures = 256;

void setGridColor(CGContext& canvas) {
    canvas.setRGBFillColor(0.8, 0.825, 0.845, 1);
}

void fill(CGContext& canvas, const CGRect& rect) {
    canvas.addRect(rect);
    canvas.drawPath(CGPathDrawingMode::Fill);
}

// Images have their y axis up.
void drawPicture(CGContext& canvas, const CGImage& image, const CGRect& rect) {
    const CGSavedState state(canvas);
    canvas.translateCTM(rect.origin.x, rect.origin.y + rect.size.height);
    canvas.scaleCTM(1, -1);
    canvas.drawImage({{0, 0}, rect.size}, image);
}

}  // namespace

const CGImage* NSMapLikeness::pictureOf(const NSMapTiles& tiles, const NSMapTile& tile) {
    auto found = pictures_.find(tile);
    if (found == pictures_.end()) {
        if (pictures_.size() >= kMostPictures) {
            pictures_.clear();
        }
        found = pictures_.emplace(tile, readTileFile(tiles.location, tile).image).first;
    }
    return found->second.get();
}

void NSMapLikeness::draw(CGContext& canvas, const CGRect& dirty, const NSMapCamera& camera,
                         const NSMapTiles& tiles) {
    const int level = static_cast<int>(std::floor(camera.zoom()));
    const int count = 1 << level;
    const bool hasPictures = tiles.kind == NSMapTiles::Kind::Folder && level >= tiles.minimumZoom;
    const double edge = camera.worldSize() / count;
    // In tiles, from the corner of the world.
    const CGPoint first = camera.toPlace(dirty.origin);
    const CGPoint last =
        camera.toPlace({dirty.origin.x + dirty.size.width, dirty.origin.y + dirty.size.height});
    const CGPoint corner = camera.toPlace({0, 0});
    const auto from = [&](double place) { return static_cast<int>(std::floor(place * count)); };
    for (int row = std::max(from(first.y), 0); row <= std::min(from(last.y), count - 1); ++row) {
        for (int column = from(first.x); column <= from(last.x); ++column) {
            const CGRect rect{{(column - corner.x * count) * edge, (row - corner.y * count) * edge},
                              {edge, edge}};
            const int x = (column % count + count) % count;
            const CGImage* const picture =
                hasPictures ? pictureOf(tiles, {level, x, row}) : nullptr;
            if (picture != nullptr) {
                // The edges of neighbors are on the same pixels, without a gap between them.
                const double left = std::round(rect.origin.x);
                const double top = std::round(rect.origin.y);
                drawPicture(canvas, *picture,
                            {{left, top},
                             {std::round(rect.origin.x + edge) - left,
                              std::round(rect.origin.y + edge) - top}});
                continue;
            }
            setGridColor(canvas);
            fill(canvas, {{std::round(rect.origin.x), rect.origin.y}, {1, edge}});
            fill(canvas, {{rect.origin.x, std::round(rect.origin.y)}, {edge, 1}});
        }
    }
}

}  // namespace orvane::platform
